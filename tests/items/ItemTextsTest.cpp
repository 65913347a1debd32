#include "items/ItemTexts.h"
#include "tests/support/NamedItem.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace orvista {
namespace {

TEST(ItemTexts, OfMessagesAreTheirOwnFromTheFirstToTheLast) {
    Project project;
    for (const char* const name : {"STDMSG1", "STDMSG40", "ALTMSG1", "ALTMSG20"})
        applyChanges(project,
                     std::vector{scriptChange(
                         project, name, std::string("CLEAR\r\nTEXT 0 0 RED BLACK \"") + name + " \xFC\"")});
    const ItemTexts texts(project);
    for (const char* const name : {"STDMSG1", "STDMSG40", "ALTMSG1", "ALTMSG20"})
        EXPECT_EQ(texts.message(named(name)), std::string(name) + " \xC3\xBC");
    EXPECT_EQ(texts.message(named("STDMSG2")), "");
    EXPECT_EQ(texts.message(named("ALTMSG19")), "");
}

TEST(ItemTexts, OfVariablesAreAsTheDisplayWritesThem) {
    Project project;
    project.RegVar[1] = {"RegVar2", "0", "8", "2"};
    project.CoilVar[31] = {"CoilVar32", "0",
                           "\xFC"
                           "ber",
                           "unter"};
    const ItemTexts texts(project);
    EXPECT_EQ(texts.floatVariable(1, 1.5F), "1.50");
    EXPECT_EQ(texts.floatVariable(0, 1.5F), "1.500");
    EXPECT_EQ(texts.booleanVariable(31, true), "\xC3\xBC"
                                               "ber");
    EXPECT_EQ(texts.booleanVariable(31, false), "unter");
    EXPECT_EQ(texts.booleanVariable(30, true), "ON");
}

} // namespace
} // namespace orvista
