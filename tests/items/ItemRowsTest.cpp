#include "items/ItemRows.h"
#include "tests/support/NamedItem.h"

#include <gtest/gtest.h>

#include <string>

namespace orvista {
namespace {

const std::string tank = "CLEAR\r\nTEXT 0 0 RED BLACK \"Tank      m\"\r\nDISPVAR 40 0 RED BLACK RegVar3\r\n"
                         "DISPVARS 0 5 RED BLACK CoilVar1\r\nACT STILL 1000\r\n"
                         "CLEAR\r\nIMG 0 0 RED BLACK Tank.bmp\r\nIMG 9 0 RED BLACK b c.bmp\r\n"
                         "IMG 20 0 RED BLACK TANK.BMP\r\nDISPVAR 40 0 RED BLACK RegVar1";

TEST(MessageRows, SayWhatAMessageHolds) {
    Project project;
    project.ALTMSG[19] = tank;
    const MessageRow row = messageRows(project, MessageDigests(project)).at(59);
    EXPECT_EQ(row.item, named("ALTMSG20"));
    EXPECT_EQ(row.address, 319);
    EXPECT_EQ(row.reference, "00320");
    EXPECT_TRUE(row.isRead);
    EXPECT_TRUE(row.drawsSomething);
    EXPECT_EQ(row.pages, 2U);
    EXPECT_EQ(row.text, "Tank %5vm");
    EXPECT_EQ(row.variables, "RegVar1 RegVar3 CoilVar1");
    EXPECT_EQ(row.bitmaps, "Tank.bmp, b c.bmp");
}

TEST(MessageRows, CountPagesThatDrawSomethingOrLast) {
    Project project;
    project.STDMSG[0] = "CLEAR\r\n\r\nCLEAR\r\nACT STILL 500\r\nCLEAR\r\nTEXT 0 0 RED BLACK \"a\"\r\nCLEAR";
    const auto rows = messageRows(project, MessageDigests(project));
    EXPECT_EQ(rows[0].pages, 2U);
    EXPECT_EQ(rows[1].item, named("STDMSG2"));
    EXPECT_EQ(rows[1].pages, 0U);
    EXPECT_FALSE(rows[1].drawsSomething);
}

TEST(VariableRows, SayWhereAVariableLiesAndWhoShowsIt) {
    Project project;
    project.STDMSG[4] = tank;
    project.ALTMSG[0] = "DISPVAR 0 0 RED BLACK RegVar3";
    project.RegVar[2].defaultValue = "1.5";
    const auto rows = variableRows(project, MessageDigests(project));
    ASSERT_EQ(rows.size(), 96U);
    EXPECT_EQ(rows[2].item, named("RegVar3"));
    EXPECT_EQ(rows[2].address, 104);
    EXPECT_EQ(rows[2].reference, "40105");
    EXPECT_EQ(rows[2].defaultValue, "1.5");
    EXPECT_EQ(rows[2].format, "7.3");
    EXPECT_EQ(rows[2].usedBy, "STDMSG5 ALTMSG1");
    EXPECT_EQ(rows[64].item, named("CoilVar1"));
    EXPECT_EQ(rows[64].format, "OFF/ON");
    EXPECT_EQ(rows[64].usedBy, "STDMSG5");
}

TEST(MessageDigests, AreReadInPortions) {
    Project project;
    project.STDMSG.fill(tank);
    MessageDigests digests;
    EXPECT_FALSE(digests.update(project, 2 * tank.size()));
    EXPECT_NE(digests.of(allMessages()[1]), nullptr);
    EXPECT_EQ(digests.of(allMessages()[2]), nullptr);
    EXPECT_FALSE(messageRows(project, digests)[2].isRead);
    EXPECT_EQ(messageRows(project, digests)[2].item, named("STDMSG3"));
    EXPECT_FALSE(digests.update(project, 1));
    EXPECT_NE(digests.of(allMessages()[2]), nullptr);
    EXPECT_TRUE(digests.update(project));
    EXPECT_TRUE(digests.update(project, 0)) << "nothing has changed";
}

TEST(MessageDigests, FollowTheScriptAndTheFormats) {
    Project project;
    project.STDMSG[0] = "TEXT 0 0 RED BLACK \"        \"\r\nDISPVAR 0 0 RED BLACK RegVar1";
    MessageDigests digests(project);
    EXPECT_EQ(digests.of(allMessages()[0])->text, "%7v ");
    project.RegVar[0].width = "4";
    digests.update(project);
    EXPECT_EQ(digests.of(allMessages()[0])->text, "%4v    ");
    project.STDMSG[0] = "CLEAR";
    EXPECT_FALSE(digests.update(project, 0));
    EXPECT_EQ(digests.of(allMessages()[0]), nullptr) << "of the old script";
    EXPECT_TRUE(digests.update(project));
    EXPECT_EQ(digests.of(allMessages()[0])->text, "");
}

TEST(MessageHas, LooksIntoNameTextAndScript) {
    Project project;
    project.STDMSG[0] = tank;
    const MessageRow row = messageRows(project, MessageDigests(project))[0];
    const auto has = [&](const std::string& wanted) {
        return messageHas(TextSearch(wanted, Case::Folded), row, tank);
    };
    EXPECT_TRUE(has("stdMSG1"));
    EXPECT_TRUE(has("tank %5Vm"));
    EXPECT_TRUE(has("dispvars 0 5"));
    EXPECT_FALSE(has("320"));
    EXPECT_FALSE(has("tanks"));
}

TEST(TextSearch, FindsWholeTextsFromAPlaceOn) {
    const TextSearch folded("na", Case::Folded);
    EXPECT_EQ(folded.find("BANANA"), 2U);
    EXPECT_EQ(folded.find("banana", 3), 4U);
    EXPECT_EQ(folded.find("banana", 5), std::string::npos);
    EXPECT_EQ(folded.find("banana", 99), std::string::npos);
    EXPECT_EQ(folded.find(""), std::string::npos);
    EXPECT_EQ(TextSearch("na", Case::Matters).find("BANana"), 4U);
    EXPECT_EQ(TextSearch("\xE4", Case::Folded).find("a\xC4"), 1U);
    EXPECT_EQ(TextSearch("\xE4", Case::Matters).find("a\xC4"), std::string::npos);
    EXPECT_EQ(TextSearch(std::string(1, '\0'), Case::Folded).find(std::string("a\0b", 3)), 1U);
}

TEST(TextSearch, AnEmptyTextStandsEverywhere) {
    EXPECT_EQ(TextSearch("", Case::Folded).find("ab", 1), 1U);
    EXPECT_EQ(TextSearch("", Case::Folded).find(""), 0U);
}

} // namespace
} // namespace orvista
