#pragma once

#include "model/Lines.h"
#include "model/Place.h"
#include "model/Project.h"
#include "tests/check/ScriptFindings.h"
#include "tests/support/NamedItem.h"
#include "tests/support/StoredBitmaps.h"

#include <charconv>
#include <map>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>

namespace orvista {

/// The places of an example of a rule, and what is there; see check/Rules.h.
inline std::map<std::string, std::string> placesOf(std::string_view example) {
    std::map<std::string, std::string> places;
    std::string* place = nullptr;
    std::istringstream lines{std::string(example)};
    for (std::string line; std::getline(lines, line);) {
        if (!line.starts_with("  ")) {
            if (!line.ends_with(":"))
                throw std::invalid_argument(line);
            place = &places[line.substr(0, line.size() - 1)];
            continue;
        }
        std::string content = line.substr(2);
        std::size_t times = 1;
        const auto [end, error] = std::from_chars(content.data(), content.data() + content.size(), times);
        if (error == std::errc{} && std::string_view(end, content.data() + content.size()).starts_with(" x "))
            content.erase(0, static_cast<std::size_t>(end - content.data()) + 3);
        if (content == "(a blank)")
            content = " ";
        if (content == "(a NUL byte)")
            content.assign(1, '\0');
        if (constexpr std::string_view mark = "(a mark)"; content.starts_with(mark))
            content.replace(0, mark.size(), utf8ByteOrderMark);
        for (; place != nullptr && times > 0; --times)
            place->append(place->empty() ? "" : "\r\n").append(content);
    }
    return places;
}

/// Gives a project's settings and messages what an example says.
class ExampleProject {
public:
    explicit ExampleProject(std::string_view example) {
        bitmaps.store("pump16x16.bmp", pictureBytes(16, 16));
        bitmaps.store("plan200x16.bmp", pictureBytes(200, 16));
        std::string compressed = pictureBytes(16, 16);
        compressed[30] = 1; // how it is compressed
        bitmaps.store("compressed.bmp", compressed);
        for (const auto& [place, content] : placesOf(example)) {
            if (place == projectFileName)
                projectFile = content;
            else if (place == "displays.csv")
                displays = content;
            else
                take(place, content);
        }
    }

    Project project;
    std::optional<std::string> projectFile; ///< its bytes, where the example is about them
    std::optional<std::string> displays;    ///< a list, where the project is its master
    StoredBitmaps bitmaps;

private:
    void take(const std::string& place, const std::string& content) {
        const Item item = named(place);
        if (isMessage(item)) {
            scriptOf(project, item) = content;
            return;
        }
        std::istringstream lines(content);
        for (std::string name, value; lines >> name && std::getline(lines >> std::ws, value);) {
            if (value.ends_with('\r'))
                value.pop_back();
            if (!setText(project, item, *fieldOf(place, name), value))
                throw std::invalid_argument(value);
        }
    }
};

} // namespace orvista
