#include "model/JsonText.h"

#include "model/JsonValue.h"
#include "model/Utf8.h"

#include <cstddef>
#include <string_view>

namespace orvista {

namespace {

enum class JsonLayout { Lines, OneLine };

/// Appends values to a text.
class JsonWriter {
public:
    explicit JsonWriter(JsonLayout layout) : isIndented_(layout == JsonLayout::Lines) {}

    void write(const JsonValue& value) {
        if (const JsonValue::Object* const members = value.object())
            writeList(*members, '{', '}');
        else if (const JsonValue::Array* const items = value.array())
            writeList(*items, '[', ']');
        else if (const std::string* const text = value.text())
            writeText(*text);
        else if (const std::string* const spelling = value.spelling())
            text_ += *spelling;
        else if (const bool* const boolean = value.boolean())
            text_ += *boolean ? "true" : "false";
        else
            text_ += "null";
    }

    void writeText(std::string_view text) {
        text_ += '"';
        while (!text.empty()) {
            const std::size_t length = utf8CharacterLength(text);
            if (length == 1)
                writeAscii(text.front());
            else
                text_ += length > 1 ? text.substr(0, length) : "\uFFFD";
            text.remove_prefix(length > 0 ? length : utf8FaultLength(text));
        }
        text_ += '"';
    }

    std::string take() { return std::move(text_); }

private:
    template <typename List>
    void writeList(const List& list, char start, char end) {
        text_ += start;
        ++depth_;
        for (bool isFirst = true; const auto& one : list) {
            if (!isFirst)
                text_ += ',';
            isFirst = false;
            startLine();
            write(one);
        }
        --depth_;
        if (!list.empty())
            startLine();
        text_ += end;
    }

    void write(const JsonMember& member) {
        writeText(member.key);
        text_ += isIndented_ ? ": " : ":";
        write(member.value);
    }

    void startLine() {
        if (!isIndented_)
            return;
        text_ += '\n';
        text_.append(2 * depth_, ' ');
    }

    void writeAscii(char c) {
        static constexpr std::string_view characters = "\"\\\b\f\n\r\t";
        static constexpr std::string_view letters = "\"\\bfnrt";
        if (const std::size_t index = characters.find(c); index != std::string_view::npos)
            (text_ += '\\') += letters[index];
        else if (static_cast<unsigned char>(c) < 0x20)
            ((text_ += "\\u00") += c < 0x10 ? '0' : '1') += "0123456789abcdef"[c & 0xF];
        else
            text_ += c;
    }

    bool isIndented_;
    std::string text_;
    std::size_t depth_ = 0;
};

std::string writtenJson(const JsonValue& value, JsonLayout layout) {
    JsonWriter writer(layout);
    writer.write(value);
    return writer.take() + "\n";
}

} // namespace

std::string jsonText(const JsonValue& value) {
    return writtenJson(value, JsonLayout::Lines);
}

std::string jsonLine(const JsonValue& value) {
    return writtenJson(value, JsonLayout::OneLine);
}

std::string jsonString(std::string_view text) {
    JsonWriter writer(JsonLayout::OneLine);
    writer.writeText(text);
    return writer.take();
}

} // namespace orvista
