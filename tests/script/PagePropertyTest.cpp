#include "tests/script/PageParser.h"
#include "tests/support/RandomChoices.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace orvista {
namespace {

/// A random form, and what its page must say.
struct Case {
    MessageForm form;
    testing::ReadPage said;
};

class RandomForms : private testing::RandomChoices {
public:
    using RandomChoices::RandomChoices;

    Case next() {
        Case made;
        MessageForm& form = made.form = choices(4);
        const std::string shownText = addText(form.txtText, made.said.columns);
        const std::string name = literal(1 + below(12));
        form.txtPath = "/plant/" + name;
        expectPage(made, shownText, name);
        return made;
    }

private:
    /// Characters that begin no placeholder and, being ASCII, are the same in a path and in a script.
    std::string literal(std::size_t length) {
        static constexpr std::string_view characters = "ab vV059\"\\.-IN";
        std::string text;
        while (text.size() < length)
            text += characters[below(characters.size())];
        return text;
    }

    /// Fills `typed` from pieces whose meaning is known. Returns what the display is to show.
    std::string addText(std::string& typed, std::vector<int>& columns) {
        std::string shown;
        for (auto pieces = 1 + below(9); pieces > 0; --pieces) {
            if (below(2) == 0) {
                const std::string text = "\xE9" + literal(below(6));
                typed += text;
                shown += text;
                continue;
            }
            const std::size_t width = below(40);
            typed += "%" + (width == 0 ? std::string() : std::to_string(width)) + "v";
            if (columns.size() < 4) {
                columns.push_back(static_cast<int>(shown.size()));
                shown.append(std::max<std::size_t>(width, 1), ' ');
            }
        }
        return shown;
    }

    static void expectPage(Case& made, const std::string& shownText, const std::string& name) {
        const MessageForm fresh;
        MessageForm& said = made.said.form = made.form;
        said.txtText = said.bitmap ? "" : shownText;
        said.txtPath = said.bitmap ? name : "";
        if (said.bitmap) {
            said.cbFont = fresh.cbFont;
            made.said.columns.clear();
        }
        for (std::size_t slot = made.said.columns.size(); slot < said.fields.size(); ++slot)
            said.fields[slot] = fresh.fields[slot];
        if (said.cbInEffect == 0)
            said.cbIFSpeed = fresh.cbIFSpeed;
        if (said.cbOutEffect == 0)
            said.cbOFSpeed = fresh.cbOFSpeed;
        if (said.cbSpEffect == 1)
            said.cbDelay = fresh.cbDelay;
    }
};

TEST(PageProperty, APageReadAgainGivesTheChoicesBack) {
    for (const unsigned seed : {1U, 2U, 3U, 1252U}) {
        RandomForms forms(seed);
        for (int round = 0; round < 2'000; ++round) {
            const Case each = forms.next();
            const std::string page = BuildPartialScript(each.form, PathRules::posix());
            const testing::ReadPage read = testing::PageParser::read(page);
            ASSERT_EQ(read.form, each.said.form) << page;
            ASSERT_EQ(read.columns, each.said.columns) << page;
        }
    }
}

/// Otherwise the property above would hold for any page.
TEST(PageProperty, TheParserRefusesWhatIsNoPage) {
    const std::string good = "CLEAR\r\nTEXT 0 0 RED BLACK \" \"\r\nTIME 8 0 RED BLACK \r\nACT STILL 1000";
    EXPECT_NO_THROW(testing::PageParser::read(good));
    for (const char* bad :
         {"", "CLEAR", "CLEAR\r\nACT STILL 1000", "CLEAR\r\nTEXT 0 0 RED BLACK \" \"",
          "CLEAR\r\nTEXT 0 5 RED BLACK \" \"\r\nACT STILL 1000",
          "CLEAR\r\nTEXT 0 0 RED BLACK \" \"\r\nTIME 8 0 RED BLACK\r\nACT STILL 1000",
          "CLEAR\r\nTEXT 0 0 RED BLACK \" \"\r\nTIME 7 0 RED BLACK \r\nACT STILL 1000",
          "CLEAR\r\nTEXT 0 0 RED BLACK \" \"\r\nDISPVAR 8 0 RED BLACK RegVar65\r\nACT STILL 1000",
          "CLEAR\r\nTEXT 0 0 RED BLACK \"a\"\r\nACT STILL 1000\r\n",
          "CLEAR\r\nTEXT 0 0 RED BLACK \"a\"\r\nACT STILL 01000"})
        EXPECT_THROW(testing::PageParser::read(bad), std::runtime_error) << bad;
}

} // namespace
} // namespace orvista
