#include "model/JsonReader.h"

#include "model/Numbers.h"
#include "model/Quotation.h"
#include "model/Utf8.h"

#include <algorithm>
#include <charconv>
#include <map>
#include <utility>

namespace orvista {

namespace {

struct JsonMistake {
    std::size_t position; ///< of the byte that no JSON goes on with
};
struct TooDeep {};

bool isJsonDigit(char c) {
    return c >= '0' && c <= '9';
}

bool standsInText(char c) {
    return static_cast<unsigned char>(c) >= 0x20 && static_cast<unsigned char>(c) < 0x80 && c != '"' &&
           c != '\\';
}

bool hasDoubledKey(const JsonValue::Object& members) {
    constexpr std::size_t few = 8; // are sooner compared each with each than sorted
    if (members.size() <= few) {
        for (auto one = members.begin(); one != members.end(); ++one)
            if (std::ranges::find(one + 1, members.end(), one->key, &JsonMember::key) != members.end())
                return true;
        return false;
    }
    std::vector<std::string_view> keys;
    keys.reserve(members.size());
    for (const JsonMember& member : members)
        keys.push_back(member.key);
    std::ranges::sort(keys);
    return std::ranges::adjacent_find(keys) != keys.end();
}

/// Reads one document. Its functions go down with the arrays and objects, which are not deep.
class JsonParser {
public:
    explicit JsonParser(std::string_view bytes) : bytes_(bytes) {}

    JsonValue document() {
        if (bytes_.starts_with("\xEF\xBB\xBF"))
            at_ = 3;
        skipBlanks();
        JsonValue value = readValue({}, 0);
        skipBlanks();
        if (at_ != bytes_.size())
            fail();
        return value;
    }

    std::vector<std::string> takeDoubledKeys() { return std::move(doubledKeys_); }

private:
    [[noreturn]] void fail() const { throw JsonMistake{at_}; }

    /// The byte that comes; NUL, which is allowed nowhere, at the end.
    char next() const { return at_ < bytes_.size() ? bytes_[at_] : '\0'; }
    bool take(char c) {
        if (next() != c || at_ == bytes_.size())
            return false;
        ++at_;
        return true;
    }
    void expect(char c) {
        if (!take(c))
            fail();
    }
    void skipBlanks() {
        const auto isBlank = [](char c) { return c == ' ' || c == '\n' || c == '\r' || c == '\t'; };
        std::size_t at = at_;
        while (at < bytes_.size() && isBlank(bytes_[at]))
            ++at;
        at_ = at;
    }

    /// \param name of the member that it is the value of \param depth of the arrays and objects around it
    JsonValue readValue(std::string_view name, std::size_t depth) {
        switch (next()) {
        case '{':
            return JsonValue(readObject(name, depth + 1));
        case '[':
            return JsonValue(readArray(depth + 1));
        case '"':
            return JsonValue(readText());
        case 't':
            return readWord("true"), JsonValue(true);
        case 'f':
            return readWord("false"), JsonValue(false);
        case 'n':
            return readWord("null"), JsonValue();
        default:
            return JsonValue::numberSpelt(readNumber());
        }
    }

    void readWord(std::string_view word) {
        for (const char c : word)
            expect(c);
    }

    std::string_view readNumber() {
        const std::size_t start = at_;
        take('-');
        if (!take('0'))
            readDigits();
        if (take('.'))
            readDigits();
        if (take('e') || take('E')) {
            if (!take('+'))
                take('-');
            readDigits();
        }
        return bytes_.substr(start, at_ - start);
    }

    void readDigits() {
        if (!isJsonDigit(next()))
            fail();
        while (isJsonDigit(next()))
            ++at_;
    }

    std::string readText() {
        expect('"');
        std::string text;
        for (;;) {
            const std::size_t start = at_;
            passPlainText();
            text.append(bytes_, start, at_ - start);
            if (take('"'))
                return text;
            expect('\\');
            readEscape(text);
        }
    }

    /// To the quotation mark, backslash or mistake that comes.
    void passPlainText() {
        for (;;) {
            std::size_t at = at_;
            while (at < bytes_.size() && standsInText(bytes_[at]))
                ++at;
            at_ = at;
            if (static_cast<unsigned char>(next()) < 0x80)
                return;
            const std::size_t length = utf8CharacterLength(bytes_.substr(at_));
            if (length == 0)
                fail();
            at_ += length;
        }
    }

    void readEscape(std::string& text) {
        static constexpr std::string_view letters = "\"\\/bfnrt";
        static constexpr std::string_view characters = "\"\\/\b\f\n\r\t";
        if (take('u'))
            return appendUtf8(text, readCodePoint());
        const std::size_t index = at_ < bytes_.size() ? letters.find(bytes_[at_]) : std::string_view::npos;
        if (index == std::string_view::npos)
            fail();
        text += characters[index];
        ++at_;
    }

    /// The digits after \u, and a second \u where they are the first half of a pair.
    char32_t readCodePoint() {
        const std::size_t start = at_;
        const char32_t unit = readHexDigits();
        if (unit < 0xD800 || unit > 0xDFFF)
            return unit;
        if (unit < 0xDC00) {
            expect('\\');
            expect('u');
            const char32_t second = readHexDigits();
            if (second >= 0xDC00 && second <= 0xDFFF)
                return 0x10000 + ((unit - 0xD800) << 10) + (second - 0xDC00);
        }
        throw JsonMistake{start};
    }

    char32_t readHexDigits() {
        std::uint32_t unit = 0;
        const char* const first = bytes_.data() + at_;
        const auto read =
            std::from_chars(first, first + std::min<std::size_t>(4, bytes_.size() - at_), unit, 16);
        at_ += static_cast<std::size_t>(read.ptr - first);
        if (read.ptr != first + 4)
            fail();
        return unit;
    }

    JsonValue::Array readArray(std::size_t depth) {
        JsonValue::Array items;
        if (enter(depth, ']'))
            return items;
        do {
            skipBlanks();
            items.push_back(readValue({}, depth));
            skipBlanks();
        } while (take(','));
        expect(']');
        return items;
    }

    JsonValue::Object readObject(std::string_view name, std::size_t depth) {
        JsonValue::Object members;
        if (enter(depth, '}'))
            return members;
        members.reserve(4);
        do {
            skipBlanks();
            std::string key = readText();
            skipBlanks();
            expect(':');
            skipBlanks();
            JsonValue value = readValue(key, depth);
            members.push_back({std::move(key), std::move(value)});
            skipBlanks();
        } while (take(','));
        expect('}');
        if (hasDoubledKey(members))
            return unite(std::move(members), name);
        return members;
    }

    /// Whether the array or object ends at once.
    bool enter(std::size_t depth, char end) {
        if (depth > deepestJson)
            throw TooDeep();
        ++at_;
        skipBlanks();
        return take(end);
    }

    /// \param name of the object \returns the members, each key once
    JsonValue::Object unite(JsonValue::Object members, std::string_view name) {
        JsonValue::Object united;
        std::map<std::string, std::size_t> places;
        for (auto& [key, value] : members) {
            const auto [place, isNew] = places.try_emplace(key, united.size());
            if (isNew) {
                united.push_back({std::move(key), std::move(value)});
                continue;
            }
            united[place->second].value = std::move(value);
            doubledKeys_.push_back(quotation(key) + " stands there twice" +
                                   (name.empty() ? "" : " in " + quotation(name)));
        }
        return united;
    }

    std::string_view bytes_;
    std::size_t at_ = 0;
    std::vector<std::string> doubledKeys_;
};

std::string placeText(std::string_view bytes, std::size_t position) {
    const std::string_view before = bytes.substr(0, position);
    return "line " + decimalText(std::ranges::count(before, '\n') + 1) + ", column " +
           decimalText(before.size() - (before.rfind('\n') + 1) + 1);
}

} // namespace

JsonReading readJson(std::string_view bytes) {
    JsonReading reading;
    try {
        JsonParser parser(bytes);
        reading.value = parser.document();
        reading.doubledKeys = parser.takeDoubledKeys();
    } catch (const JsonMistake& mistake) {
        reading.fault = placeText(bytes, mistake.position) + " is not JSON";
    } catch (const TooDeep&) {
        reading.fault = "it is nested deeper than " + decimalText(deepestJson);
    }
    return reading;
}

} // namespace orvista
