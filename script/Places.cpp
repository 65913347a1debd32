#include "script/Places.h"

#include "model/Text.h"
#include "script/ScriptCommands.h"
#include "script/ScriptText.h"

#include <algorithm>
#include <optional>
#include <variant>

namespace orvista {

namespace {

constexpr std::string_view bitmapEnding = ".bmp";

bool isPlaceLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool isPlaceDigit(char c) {
    return c >= '0' && c <= '9';
}

/// Takes the front of a text that begins with a brace.
class PlaceReader {
public:
    /// \param text after the brace
    explicit PlaceReader(std::string_view text) : text_(text) {}

    /// Up to the closing brace. \param mayLackWidth whether "{name}" is one
    std::optional<TextPlace> read(bool mayLackWidth) {
        TextPlace place;
        place.name = name();
        if (place.name.empty())
            return std::nullopt;
        if (!take(':'))
            return mayLackWidth && take('}') ? closed(std::move(place)) : std::nullopt;
        place.width = width();
        if (take('>'))
            place.alignment = PlaceAlignment::Right;
        else if (take('^'))
            place.alignment = PlaceAlignment::Centre;
        return place.width > 0 && take('}') ? closed(std::move(place)) : std::nullopt;
    }

private:
    std::optional<TextPlace> closed(TextPlace place) const {
        place.length = at_ + 1;
        return place;
    }
    bool take(char wanted) {
        const bool isThere = at_ < text_.size() && text_[at_] == wanted;
        at_ += isThere ? 1 : 0;
        return isThere;
    }
    /// Empty where there is none.
    std::string name() {
        if (text_.empty() || !isPlaceLetter(text_.front()))
            return {};
        while (at_ < text_.size() &&
               (isPlaceLetter(text_[at_]) || isPlaceDigit(text_[at_]) || text_[at_] == '_'))
            ++at_;
        return lowerAscii(text_.substr(0, at_));
    }
    /// 0 where it is none.
    std::size_t width() {
        std::size_t number = 0;
        if (at_ < text_.size() && text_[at_] == '0')
            return 0;
        for (; at_ < text_.size() && isPlaceDigit(text_[at_]) && number <= widestPlace; ++at_)
            number = number * 10 + static_cast<std::size_t>(text_[at_] - '0');
        return number <= widestPlace ? number : 0;
    }

    std::string_view text_;
    std::size_t at_ = 0;
};

std::vector<TextPlace> placesInText(std::string_view text, bool mayLackWidth) {
    std::vector<TextPlace> places;
    for (std::size_t at = text.find('{'); at != std::string_view::npos;) {
        std::optional<TextPlace> place;
        if (text.substr(at + 1).starts_with('{')) {
            place.emplace().kind = TextPlace::Kind::Brace;
            place->length = 2;
        } else {
            place = PlaceReader(text.substr(at + 1)).read(mayLackWidth);
        }
        std::size_t next = at + 1;
        if (place) {
            place->at = at;
            next = at + place->length;
            places.push_back(std::move(*place));
        }
        at = text.find('{', next);
    }
    return places;
}

std::vector<TextPlace> placesInBitmapName(std::string_view name) {
    if (!name.starts_with('{') || !endsWithIgnoringCase(name, bitmapEnding))
        return {};
    const std::string_view stem = name.substr(0, name.size() - bitmapEnding.size());
    auto place = PlaceReader(stem.substr(1)).read(true);
    if (!place || place->width > 0 || place->length != stem.size())
        return {};
    place->kind = TextPlace::Kind::Bitmap;
    return {std::move(*place)};
}

/// Of a line that draws something.
std::vector<TextPlace> placesIn(const ScriptElement& element) {
    if (const auto* const text = std::get_if<TextElement>(&element))
        return placesInText(text->text, false);
    if (const auto* const image = std::get_if<ImageElement>(&element))
        return placesInBitmapName(image->name);
    return {};
}

} // namespace

bool isPlaceName(std::string_view text) {
    return !text.empty() && isPlaceLetter(text.front()) &&
           std::ranges::all_of(text, [](char c) { return isPlaceLetter(c) || isPlaceDigit(c) || c == '_'; });
}

bool isPlaceOfBitmap(std::string_view name) {
    return !placesInBitmapName(name).empty();
}

std::vector<TextPlace> placesInScript(std::string_view script) {
    std::vector<TextPlace> places;
    if (script.find('{') == std::string_view::npos)
        return places;
    const ScriptText lines(script);
    for (std::size_t number = 1; number <= lines.count(); ++number) {
        if (lines.line(number).find('{') == std::string_view::npos)
            continue;
        const std::size_t skipped = lines.skipped(number);
        ScriptWords words(lines.line(number).substr(skipped), skipped);
        const ScriptCommand command = scriptCommand(number, words);
        const auto* const element = std::get_if<ScriptElement>(&command);
        if (element == nullptr)
            continue;
        for (TextPlace& place : placesIn(*element)) {
            place.line = number;
            place.column = sourceOf(*element).content.column + place.at;
            place.at = lines.start(number) + place.column - 1;
            places.push_back(std::move(place));
        }
    }
    return places;
}

std::vector<TextPlace> placesInSwitchText(std::string_view text) {
    return placesInText(text, true);
}

std::size_t shownColumn(std::string_view text, std::size_t at) {
    std::size_t column = at;
    for (const TextPlace& place : placesInText(text.substr(0, at), false))
        column += (place.kind == TextPlace::Kind::Brace ? 1 : place.width) - place.length;
    return column;
}

std::string placed(std::string_view text, std::size_t width, PlaceAlignment alignment) {
    if (width == 0)
        return std::string(text);
    text = text.substr(0, width);
    const std::size_t blanks = width - text.size();
    const std::size_t before = alignment == PlaceAlignment::Left    ? 0
                               : alignment == PlaceAlignment::Right ? blanks
                                                                    : blanks / 2;
    return std::string(before, ' ').append(text).append(blanks - before, ' ');
}

} // namespace orvista
