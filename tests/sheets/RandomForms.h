#pragma once

#include "tests/support/RandomChoices.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace orvista::testing {

/// Forms as a user could leave the message wizard, and the cells that a sheet has for them, written from the
/// wizard's captions.
class RandomForms : public RandomChoices {
public:
    using RandomChoices::RandomChoices;

    MessageForm next() {
        MessageForm form = choices(5);
        form.txtText = text();
        form.txtPath = "C:\\plant\\pump " + std::to_string(below(9)) + ".bmp";
        return form;
    }

    /// All cells of a row but message, page and script. `typed` cells say the same as those exported.
    static std::vector<std::string> typedCells(const MessageForm& form) {
        static const std::vector<std::string> colours{"RED", "GREEN", "ORANGE", "BLACK"};
        static const std::vector<std::string> effects{"NONE",  "GO-LEFT", "GO-RIGHT",
                                                      "GO-UP", "GO-DOWN", "FADE"};
        static const std::vector<std::string> speeds{"Low", "Medium", "High"};
        std::vector<std::string> cells{form.bitmap ? "" : form.txtText, form.bitmap ? form.txtPath : "",
                                       form.cbFont == 0 ? "5x7" : "8x15", colours[form.cbFgClr],
                                       colours[form.cbBgClr]};
        for (const FieldChoice& field : form.fields) {
            cells.push_back(source(field.cbVar));
            cells.push_back(colours[field.cbVarFgClr]);
            cells.push_back(colours[field.cbVarBgClr]);
        }
        cells.insert(cells.end(), {effects[form.cbInEffect], speeds[form.cbIFSpeed],
                                   form.cbSpEffect == 0 ? "STILL" : "BLINK", std::to_string(form.cbDelay + 1),
                                   effects[form.cbOutEffect], speeds[form.cbOFSpeed]});
        return cells;
    }

private:
    static std::string source(std::size_t position) {
        if (position < 32)
            return "CoilVar" + std::to_string(position + 1);
        if (position < 96)
            return "RegVar" + std::to_string(position - 31);
        return position == 96 ? "DATE" : "TIME";
    }

    /// At most four placeholders among characters that make no other.
    std::string text() {
        static constexpr std::string_view characters = "ab V059\"\\.-IN=,;'";
        std::string made(1, "Tt=-'\""[below(6)]);
        std::size_t fields = 0;
        for (auto pieces = below(9); pieces > 0; --pieces) {
            if (fields < 4 && below(2) == 0) {
                ++fields;
                made += "%" + (below(4) == 0 ? "" : std::to_string(below(20))) + "v";
            } else if (below(8) == 0) {
                made += "50% ";
            } else {
                made += characters[below(characters.size())];
            }
        }
        return made;
    }
};

/// What saving a script and opening it again leaves of it.
inline std::string reopened(std::string_view script) {
    std::string again;
    while (!script.empty()) {
        const auto end = std::min(script.find("\r\n"), script.size());
        std::string_view line = script.substr(0, end);
        script.remove_prefix(std::min(end + 2, script.size()));
        while (line.starts_with(' '))
            line.remove_prefix(1);
        while (line.ends_with(' '))
            line.remove_suffix(1);
        if (!line.empty())
            again.append(line).append("\r\n");
    }
    return again;
}

} // namespace orvista::testing
