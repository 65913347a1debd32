#include "items/CopiedItems.h"
#include "sheets/CopiedTable.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace orvista {
namespace {

using Names = std::vector<std::string>;
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
    const CopiedItems messages = copiedItems(projectToCopy(), {"STDMSG3", "ALTMSG1"});
    EXPECT_EQ(copiedBytes(messages), "orvista-items 1\n6:/plant1:27:STDMSG3" + std::to_string(pump.size()) +
                                         ":" + pump + "7:ALTMSG15:CLEAR");
    const CopiedItems variables = copiedItems(projectToCopy(), {"RegVar1", "CoilVar4"});
    EXPECT_EQ(copiedBytes(variables),
              "orvista-items 1\n6:/plant1:27:RegVar13:1.51:61:28:CoilVar41:14:OPEN4:SHUT");
}

TEST(CopiedItems, ComeBackByteForByte) {
    Project project = projectToCopy();
    for (int byte = 0; byte < 256; ++byte)
        project.ALTMSG[0] += static_cast<char>(byte);
    project.ALTMSG[1].clear();
    for (const Names& names : {Names{"ALTMSG1", "STDMSG3", "ALTMSG2"}, Names{"CoilVar4", "RegVar1"}}) {
        const CopiedItems copied = copiedItems(project, names);
        EXPECT_EQ(readBack(copiedBytes(copied)), copied);
    }
}

TEST(CopiedItems, OfEveryItemComeBack) {
    Names messages;
    Names variables;
    for (int n = 1; n <= 64; ++n) {
        if (n <= 40)
            messages.push_back("STDMSG" + std::to_string(n));
        if (n <= 20)
            messages.push_back("ALTMSG" + std::to_string(n));
        variables.push_back("RegVar" + std::to_string(n));
        if (n <= 32)
            variables.push_back("CoilVar" + std::to_string(n));
    }
    EXPECT_EQ(readBack(copiedBytes(copiedItems(projectToCopy(), messages))).items.size(), 60U);
    EXPECT_EQ(readBack(copiedBytes(copiedItems(projectToCopy(), variables))).items.size(), 96U);
}

TEST(CopiedItems, AnythingElseIsRefused) {
    const std::string whole = copiedBytes(copiedItems(projectToCopy(), {"STDMSG3"}));
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
    EXPECT_EQ(copiedText(copiedItems(project, {"STDMSG3", "STDMSG1"}), project, messages),
              "name\taddress\treference\tpages\ttext\tvariables\tbitmaps\tscript\r\n"
              "STDMSG3\t322\t00323\t1\tP\u00FCmp\t\t\t\"CLEAR\r\nTEXT 0 0 RED BLACK \"\"P\u00FCmp\"\"\"\r\n"
              "STDMSG1\t320\t00321\t0\t\t\t\tCLEAR\r\n");
    EXPECT_EQ(copiedText(copiedItems(project, {"CoilVar4", "RegVar1"}), project, messages),
              "name\taddress\treference\tdefault\tformat\tused by\r\n"
              "CoilVar4\t103\t00104\t1\tSHUT/OPEN\t\r\n"
              "RegVar1\t100\t40101\t1.5\t6.2\t\r\n");
}

Names namesOf(const Pasted& pasted) {
    Names names;
    for (const ItemState& item : pasted.items)
        names.push_back(item.item);
    return names;
}

TEST(PasteOnto, OneItemFillsTheSelection) {
    const CopiedItems one = copiedItems(projectToCopy(), {"STDMSG3"});
    const Pasted pasted = pasteOnto(one, {"STDMSG5", "ALTMSG2"}, {"STDMSG5", "STDMSG6", "ALTMSG2"});
    EXPECT_EQ(pasted.refusal, "");
    EXPECT_THAT(pasted.items, ElementsAre(ItemState{"STDMSG5", pump}, ItemState{"ALTMSG2", pump}));
}

TEST(PasteOnto, SeveralGoOntoTheFirstSelectedRowAndOn) {
    const CopiedItems two = copiedItems(projectToCopy(), {"STDMSG3", "ALTMSG1"});
    const Pasted pasted = pasteOnto(two, {"STDMSG40"}, {"STDMSG40", "ALTMSG1", "ALTMSG2"});
    EXPECT_THAT(pasted.items, ElementsAre(ItemState{"STDMSG40", pump}, ItemState{"ALTMSG1", "CLEAR"}));
}

TEST(PasteOnto, NothingIsPastedBeyondTheLastRow) {
    const CopiedItems two = copiedItems(projectToCopy(), {"STDMSG3", "ALTMSG1"});
    const Pasted pasted = pasteOnto(two, {"ALTMSG20"}, {"ALTMSG20"});
    EXPECT_THAT(pasted.items, IsEmpty());
    EXPECT_EQ(pasted.refusal, "2 rows were copied; there is room for 1 from ALTMSG20 on: nothing was pasted");
    EXPECT_EQ(pasteOnto(two, {}, {}).refusal, "Select the row to paste onto first");
}

TEST(PasteOnto, VariablesKeepTheNamesOfTheirPlaces) {
    Project project = projectToCopy();
    const CopiedItems one = copiedItems(project, {"RegVar1"});
    const Pasted pasted = pasteOnto(one, {"RegVar9"}, {"RegVar9"});
    ASSERT_EQ(namesOf(pasted), Names{"RegVar9"});
    setItem(project, pasted.items[0]);
    EXPECT_EQ(project.RegVar[8], (FloatVariable{"RegVar9", "1.5", "6", "2"}));
}

TEST(PasteOnto, KindsThatDoNotMatchAreRefusedAsAWhole) {
    const CopiedItems mixed = copiedItems(projectToCopy(), {"RegVar1", "CoilVar4"});
    EXPECT_EQ(
        pasteOnto(mixed, {"RegVar63"}, {"RegVar63", "RegVar64"}).refusal,
        "CoilVar4 cannot be pasted onto RegVar64: a Boolean has no width and precision. Nothing was pasted");
    EXPECT_THAT(pasteOnto(mixed, {"RegVar63"}, {"RegVar63", "RegVar64"}).items, IsEmpty());
    EXPECT_EQ(namesOf(pasteOnto(mixed, {"RegVar64"}, {"RegVar64", "CoilVar1"})),
              (Names{"RegVar64", "CoilVar1"}));
    EXPECT_EQ(pasteOnto(copiedItems(projectToCopy(), {"RegVar1"}), {"CoilVar1"}, {"CoilVar1"}).refusal,
              "RegVar1 cannot be pasted onto CoilVar1: a float has no ON and OFF texts. Nothing was pasted");
    EXPECT_EQ(pasteOnto(copiedItems(projectToCopy(), {"STDMSG3"}), {"RegVar1"}, {"RegVar1"}).refusal,
              "Messages were copied; they cannot be pasted onto variables. Nothing was pasted");
    EXPECT_EQ(pasteOnto(mixed, {"STDMSG1"}, {"STDMSG1", "STDMSG2"}).refusal,
              "Variables were copied; they cannot be pasted onto messages. Nothing was pasted");
}

TEST(ClearedItems, AreThoseOfANewProject) {
    Project project = projectToCopy();
    for (const ItemState& item : clearedItems({"STDMSG3", "RegVar1", "CoilVar4"}))
        setItem(project, item);
    EXPECT_EQ(project.STDMSG[2], "CLEAR");
    EXPECT_EQ(project.RegVar, Project().RegVar);
    EXPECT_EQ(project.CoilVar, Project().CoilVar);
}

} // namespace
} // namespace orvista
