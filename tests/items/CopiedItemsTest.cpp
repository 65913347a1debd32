#include "items/CopiedItems.h"
#include "sheets/CopiedTable.h"
#include "tests/support/NamedItem.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace orvista {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

const std::string pump = "CLEAR\r\nTEXT 0 0 RED BLACK \"P\xFCmp\"";

Project projectToCopy() {
    Project project;
    project.ProjPath = "/plant";
    project.STDMSG[2] = pump;
    project.RegVar[0] = {"RegVar1", "1.5", "6", "2"};
    project.CoilVar[3] = {"CoilVar4", "1", "OPEN", "SHUT"};
    return project;
}

CopiedItems readBack(const std::string& bytes) {
    const auto read = readCopied(bytes);
    return std::get<CopiedItems>(read);
}

CopyFault faultOf(const std::string& bytes) {
    const auto read = readCopied(bytes);
    return std::get<CopyFault>(read);
}

TEST(CopiedItems, AreBytesAsDescribed) {
    const CopiedItems messages = copiedItems(projectToCopy(), itemsNamed({"STDMSG3", "ALTMSG1"}));
    EXPECT_EQ(copiedBytes(messages), "orvista-items 1\n6:/plant1:27:STDMSG3" + std::to_string(pump.size()) +
                                         ":" + pump + "7:ALTMSG15:CLEAR");
    const CopiedItems variables = copiedItems(projectToCopy(), itemsNamed({"RegVar1", "CoilVar4"}));
    EXPECT_EQ(copiedBytes(variables),
              "orvista-items 1\n6:/plant1:27:RegVar13:1.51:61:28:CoilVar41:14:OPEN4:SHUT");
}

TEST(CopiedItems, ComeBackByteForByte) {
    Project project = projectToCopy();
    for (int byte = 0; byte < 256; ++byte)
        project.ALTMSG[0] += static_cast<char>(byte);
    project.ALTMSG[1].clear();
    for (const auto& items :
         {itemsNamed({"ALTMSG1", "STDMSG3", "ALTMSG2"}), itemsNamed({"CoilVar4", "RegVar1"})}) {
        const CopiedItems copied = copiedItems(project, items);
        EXPECT_EQ(readBack(copiedBytes(copied)), copied);
    }
}

TEST(CopiedItems, OfEveryItemComeBack) {
    EXPECT_EQ(readBack(copiedBytes(copiedItems(projectToCopy(), allMessages()))).items.size(), 60U);
    EXPECT_EQ(readBack(copiedBytes(copiedItems(projectToCopy(), allVariables()))).items.size(), 96U);
}

TEST(CopiedItems, AnythingElseIsRefused) {
    const std::string whole = copiedBytes(copiedItems(projectToCopy(), itemsNamed({"STDMSG3"})));
    for (std::size_t length = 0; length < whole.size(); ++length)
        EXPECT_EQ(faultOf(whole.substr(0, length)), CopyFault::NotItems) << length;
    for (const std::string& bytes :
         {std::string("name\tscript\r\n"), whole + "x", std::string("orvista-items 1\r\n0:1:0"),
          std::string("orvista-items 1\n0:1:0"), std::string("orvista-items 1\n0:1:17:STDMSG0 5:CLEAR"),
          std::string("orvista-items 1\n0:1:18:STDMSG411:x"),
          std::string("orvista-items 1\n0:1:17:stdmsg31:x"),
          std::string("orvista-items 1\n0:1:28:STDMSG031:x"),
          std::string("orvista-items 1\n0:1:27:STDMSG31:x7:STDMSG31:x"),
          std::string("orvista-items 1\n0:1:27:STDMSG31:x7:RegVar11:11:71:3"),
          std::string("orvista-items 1\n0:1:111:address map1:1"), std::string("orvista-items 1\n0:2:97"),
          std::string("orvista-items 1\n0:20:999999999999999999991:x"),
          std::string("orvista-items 0\n0:1:17:STDMSG31:x")})
        EXPECT_EQ(faultOf(bytes), CopyFault::NotItems) << bytes;
}

TEST(CopiedItems, ANewerVersionIsToldFromRubbish) {
    EXPECT_EQ(faultOf("orvista-items 2\nanything"), CopyFault::NewerVersion);
    EXPECT_EQ(faultOf("orvista-items 2"), CopyFault::NotItems);
    EXPECT_EQ(faultOf("orvista-items x\n"), CopyFault::NotItems);
    EXPECT_EQ(faultOf("orvista-items 99999999999\n"), CopyFault::NotItems);
}

TEST(CopiedItems, AreTextToRead) {
    const Project project = projectToCopy();
    const MessageDigests messages(project);
    EXPECT_EQ(copiedText(copiedItems(project, itemsNamed({"STDMSG3", "STDMSG1"})), project, messages),
              "name\taddress\treference\tpages\ttext\tvariables\tbitmaps\tscript\r\n"
              "STDMSG3\t322\t00323\t1\tP\u00FCmp\t\t\t\"CLEAR\r\nTEXT 0 0 RED BLACK \"\"P\u00FCmp\"\"\"\r\n"
              "STDMSG1\t320\t00321\t0\t\t\t\tCLEAR\r\n");
    EXPECT_EQ(copiedText(copiedItems(project, itemsNamed({"CoilVar4", "RegVar1"})), project, messages),
              "name\taddress\treference\tdefault\tformat\tused by\r\n"
              "CoilVar4\t103\t00104\t1\tSHUT/OPEN\t\r\n"
              "RegVar1\t100\t40101\t1.5\t6.2\t\r\n");
}

using Items = std::vector<Item>;

/// Onto the places of the plant.
Pasted paste(const CopiedItems& copied, const Items& selected, const Items& onwards) {
    return pasteOnto(projectToCopy(), copied, selected, onwards);
}

TEST(PasteOnto, OneItemFillsTheSelection) {
    const CopiedItems one = copiedItems(projectToCopy(), itemsNamed({"STDMSG3"}));
    const Pasted pasted =
        paste(one, itemsNamed({"STDMSG5", "ALTMSG2"}), itemsNamed({"STDMSG5", "STDMSG6", "ALTMSG2"}));
    EXPECT_EQ(pasted.refusal, "");
    EXPECT_THAT(pasted.changes, ElementsAre(changed("STDMSG5", "script", "CLEAR", pump),
                                            changed("ALTMSG2", "script", "CLEAR", pump)));
}

TEST(PasteOnto, SeveralGoOntoTheFirstSelectedRowAndOn) {
    const CopiedItems two = copiedItems(projectToCopy(), itemsNamed({"STDMSG3", "ALTMSG1"}));
    const Pasted pasted =
        paste(two, itemsNamed({"STDMSG40"}), itemsNamed({"STDMSG40", "ALTMSG1", "ALTMSG2"}));
    // The emergency message holds its text already.
    EXPECT_THAT(pasted.changes, ElementsAre(changed("STDMSG40", "script", "CLEAR", pump)));
}

TEST(PasteOnto, NothingIsPastedBeyondTheLastRow) {
    const CopiedItems two = copiedItems(projectToCopy(), itemsNamed({"STDMSG3", "ALTMSG1"}));
    const Pasted pasted = paste(two, itemsNamed({"ALTMSG20"}), itemsNamed({"ALTMSG20"}));
    EXPECT_THAT(pasted.changes, IsEmpty());
    EXPECT_EQ(pasted.refusal, "2 rows were copied; there is room for 1 from ALTMSG20 on: nothing was pasted");
    EXPECT_EQ(paste(two, {}, {}).refusal, "Select the row to paste onto first");
}

TEST(PasteOnto, VariablesKeepTheNamesOfTheirPlaces) {
    Project project = projectToCopy();
    const CopiedItems one = copiedItems(project, itemsNamed({"RegVar1"}));
    const Pasted pasted = paste(one, itemsNamed({"RegVar9"}), itemsNamed({"RegVar9"}));
    applyChanges(project, pasted.changes);
    EXPECT_EQ(project.RegVar[8], (FloatVariable{"RegVar9", "1.5", "6", "2"}));
}

TEST(PasteOnto, KindsThatDoNotMatchAreRefusedAsAWhole) {
    const CopiedItems mixed = copiedItems(projectToCopy(), itemsNamed({"RegVar1", "CoilVar4"}));
    EXPECT_EQ(
        paste(mixed, itemsNamed({"RegVar63"}), itemsNamed({"RegVar63", "RegVar64"})).refusal,
        "CoilVar4 cannot be pasted onto RegVar64: a Boolean has no width and precision. Nothing was pasted");
    EXPECT_THAT(paste(mixed, itemsNamed({"RegVar63"}), itemsNamed({"RegVar63", "RegVar64"})).changes,
                IsEmpty());
    EXPECT_EQ(itemsOf(paste(mixed, itemsNamed({"RegVar64"}), itemsNamed({"RegVar64", "CoilVar1"})).changes),
              itemsNamed({"RegVar64", "CoilVar1"}));
    EXPECT_EQ(paste(copiedItems(projectToCopy(), itemsNamed({"RegVar1"})), itemsNamed({"CoilVar1"}),
                    itemsNamed({"CoilVar1"}))
                  .refusal,
              "RegVar1 cannot be pasted onto CoilVar1: a float has no ON and OFF texts. Nothing was pasted");
    EXPECT_EQ(paste(copiedItems(projectToCopy(), itemsNamed({"STDMSG3"})), itemsNamed({"RegVar1"}),
                    itemsNamed({"RegVar1"}))
                  .refusal,
              "Messages were copied; they cannot be pasted onto variables. Nothing was pasted");
    EXPECT_EQ(paste(mixed, itemsNamed({"STDMSG1"}), itemsNamed({"STDMSG1", "STDMSG2"})).refusal,
              "Variables were copied; they cannot be pasted onto messages. Nothing was pasted");
}

TEST(ClearedItems, AreThoseOfANewProject) {
    Project project = projectToCopy();
    applyChanges(project, clearedItems(project, itemsNamed({"STDMSG3", "RegVar1", "CoilVar4"})));
    EXPECT_EQ(project.STDMSG[2], "CLEAR");
    EXPECT_EQ(project.RegVar, Project().RegVar);
    EXPECT_EQ(project.CoilVar, Project().CoilVar);
}

} // namespace
} // namespace orvista
