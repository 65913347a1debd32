#pragma once

#include "items/ProjectNotes.h"
#include "tests/support/RandomChoices.h"

#include <array>
#include <cstdlib>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orvista::testing {

/// A project with notes made at random, the same for the same seed, and what a list must say of it.
class RandomPlcProject {
public:
    struct Listed {
        Kind kind;
        std::size_t index;
        std::string name;
        std::string plcName;
        std::string buffer;
        long long address;
        bool isAddressable;
        float value = 0;
        bool holdsValue = true;
        bool flag = false; ///< a state to try

        std::string place() const {
            std::string reference = std::to_string(address + 1);
            while (reference.size() < 4)
                reference.insert(0, "0");
            return (kind == Kind::Float ? "holding register 4" : "coil 0") + reference + ", address " +
                   std::to_string(address);
        }
    };

    explicit RandomPlcProject(unsigned seed) : random_(seed) {
        project.ProjName = "P" + std::to_string(seed);
        prefix = pick<std::string_view>({"", "LINE3_", "x", "_", "Gate_2_"});
        addBlock(Kind::Float, project.AnalogInput, 64, 2, "RegVar", "Registers");
        addBlock(Kind::Boolean, project.DigitalInput, 32, 1, "CoilVar", "Booleans");
        addBlock(Kind::Emergency, project.AlertMessage, 20, 1, "ALTMSG", "Emergency");
        addBlock(Kind::Regular, project.RegularMessage, 40, 1, "STDMSG", "Regular");
        for (std::size_t i = 0; i < 10; ++i)
            project.STDMSG[random_.below(40)] = "DISPVAR 0 0 RED BLACK " + items[random_.below(96)].name;
        notes.displayName = pick<std::string_view>({"", "Line 3, gate", "\"*)\" <&> -->",
                                                    "C:\\Gr\xC3\xB6\xC3\x9F"
                                                    "e"});
    }

    Project project;
    ProjectNotes notes;
    std::string prefix;
    std::vector<Listed> items;

private:
    template <typename T>
    T pick(std::initializer_list<T> choices) {
        return choices.begin()[random_.below(choices.size())];
    }

    void addBlock(Kind kind, std::int32_t& start, std::size_t count, int step, const std::string& word,
                  const std::string& buffer) {
        start = random_.below(4) == 0 ? pick<std::int32_t>({-3, 65500, 65530, 2'147'483'647, 0, 9990})
                                      : static_cast<std::int32_t>(random_.below(65000));
        for (std::size_t index = 0; index < count; ++index) {
            const long long address = static_cast<long long>(start) + step * static_cast<long long>(index);
            items.push_back({.kind = kind,
                             .index = index,
                             .name = word + std::to_string(index + 1),
                             .plcName = prefix + word + std::to_string(index + 1),
                             .buffer = buffer,
                             .address = address,
                             .isAddressable = address >= 0 && address <= 65535,
                             .flag = random_.below(2) == 0});
            giveDefault(items.back());
            giveNotes(items.back());
        }
    }

    void giveDefault(Listed& item) {
        if (item.kind == Kind::Boolean) {
            const auto [text, value] =
                pick<std::pair<std::string_view, float>>({{"0", 0}, {"1", 1}, {"", 0}, {"7", 1}});
            project.CoilVar[item.index].defaultValue = text;
            item.value = value;
        }
        if (item.kind != Kind::Float)
            return;
        std::string text = std::to_string(random_.below(100000)) + "." + std::to_string(random_.below(1000));
        if (random_.below(3) == 0)
            text = "-" + text;
        if (random_.below(3) == 0)
            text.append("e").append(pick<std::string_view>({"-45", "-40", "-30", "5", "30", "39", "300"}));
        const double value = std::strtod(text.c_str(), nullptr);
        item.holdsValue = value > -3.4e38 && value < 3.4e38;
        item.value = item.holdsValue ? static_cast<float>(value) : 0.0F;
        if (item.holdsValue && random_.below(2) == 0)
            text += " unit";
        project.RegVar[item.index].defaultValue = text;
    }

    void giveNotes(Listed& item) {
        ItemNote note;
        if (random_.below(2) == 0) {
            // A letter and the place in the list: no label comes twice.
            note.label = std::string(1, static_cast<char>('A' + random_.below(26))) + "Tag" +
                         std::to_string(items.size()) + "v";
            item.plcName = prefix + note.label;
        }
        note.unit = pick<std::string_view>({"", "m",
                                            "\xC2\xB0"
                                            "C",
                                            "(*", "%"});
        note.comment =
            pick<std::string_view>({"", "Level of tank 1", "*) END_VAR", "a (* b *) c", "<b> & \"q\" --> ' -",
                                    "gr\xC3\xB6\xC3\x9F"
                                    "er",
                                    "\xE6\xB0\xB4", "(*)", "; := 5.0;", "]]>"});
        notes.set({item.kind, item.index}, note);
    }

    RandomChoices random_;
};

} // namespace orvista::testing
