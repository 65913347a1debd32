#include "script/WizardLists.h"

#include "script/MessagePage.h"

#include <gmock/gmock.h>

#include <string_view>
#include <vector>

namespace orvista {
namespace {

using ::testing::ElementsAre;

template <typename Table>
std::vector<std::string_view> shown(const Table& table) {
    std::vector<std::string_view> texts;
    for (const auto& entry : table)
        texts.push_back(entry.shown);
    return texts;
}

TEST(WizardLists, ShowTheseEntriesInThisOrder) {
    EXPECT_THAT(shown(colourStyles), ElementsAre("RED", "GREEN", "ORANGE", "BLACK"));
    EXPECT_THAT(shown(fontStyles), ElementsAre("5x7", "8x15"));
    EXPECT_THAT(shown(wizard::effects),
                ElementsAre("NONE", "GO-LEFT", "GO-RIGHT", "GO-UP", "GO-DOWN", "FADE"));
    EXPECT_THAT(shown(wizard::speeds), ElementsAre("Low", "Medium", "High"));
    EXPECT_THAT(shown(actStyles), ElementsAre("STILL", "BLINK"));
    EXPECT_THAT(shown(wizard::delays),
                ElementsAre(" 1", " 2", " 3", " 4", " 5", " 6", " 7", " 8", " 9", " 10"));
}

TEST(WizardLists, FieldSources) {
    const auto sources = shown(wizard::fieldSources());
    ASSERT_EQ(sources.size(), 98U);
    EXPECT_EQ(sources[0], "CoilVar1");
    EXPECT_EQ(sources[31], "CoilVar32");
    EXPECT_EQ(sources[32], "RegVar1");
    EXPECT_EQ(sources[95], "RegVar64");
    EXPECT_EQ(sources[96], "DATE");
    EXPECT_EQ(sources[97], "TIME");
    for (std::size_t position = 0; position < sources.size(); ++position) {
        const wizard::FieldSource& source = wizard::fieldSources()[position];
        EXPECT_EQ(wizard::fieldSourcePosition(source.value, source.index), position);
    }
}

TEST(WizardLists, FreshForm) {
    const MessageForm form;
    EXPECT_FALSE(form.bitmap);
    EXPECT_EQ(colourStyles.at(form.cbFgClr).shown, "RED");
    EXPECT_EQ(colourStyles.at(form.cbBgClr).shown, "BLACK");
    EXPECT_EQ(fontStyles.at(form.cbFont).shown, "8x15");
    EXPECT_EQ(wizard::effects.at(form.cbInEffect).shown, "GO-LEFT");
    EXPECT_EQ(wizard::effects.at(form.cbOutEffect).shown, "GO-LEFT");
    EXPECT_EQ(wizard::speeds.at(form.cbIFSpeed).shown, "Medium");
    EXPECT_EQ(wizard::speeds.at(form.cbOFSpeed).shown, "Medium");
    EXPECT_EQ(actStyles.at(form.cbSpEffect).shown, "STILL");
    EXPECT_EQ(wizard::delays.at(form.cbDelay).shown, " 1");
    for (const FieldChoice& field : form.fields) {
        EXPECT_EQ(wizard::fieldSources().at(field.cbVar).shown, "CoilVar1");
        EXPECT_EQ(colourStyles.at(field.cbVarFgClr).shown, "RED");
        EXPECT_EQ(colourStyles.at(field.cbVarBgClr).shown, "BLACK");
    }
}

} // namespace
} // namespace orvista
