#include "sheets/FleetSheet.h"
#include "sheets/MasterList.h"
#include "tests/sheets/ImportErrors.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace orvista {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using ::testing::StartsWith;

const std::string head = "name,address,port,project\n";

/// What is told of a list that cannot be used.
std::vector<std::string> fleetErrors(const std::string& bytes,
                                     const FleetDefaults& defaults = {"", "P.orx"}) {
    SheetErrors errors;
    readFleetSheet(bytes, defaults, errors);
    return testing::errorTexts(errors);
}

std::vector<FleetDisplay> read(const std::string& bytes, const FleetDefaults& defaults = {"", "P.orx"}) {
    SheetErrors errors;
    auto displays = readFleetSheet(bytes, defaults, errors);
    EXPECT_THAT(testing::errorTexts(errors), IsEmpty());
    return displays;
}

TEST(FleetSheet, TakesPortAndProjectFromTheRowOrTheDefaults) {
    const auto displays = read(head + " a ,10.0.0.1,,\nb,10.0.0.2,7001,sub/B.orx\nc,10.0.0.3:7002,,/C.orx\n",
                               {"/plant/lists/", "/plant/P.orx"});
    ASSERT_EQ(displays.size(), 3U);
    EXPECT_EQ(displays[0].name, "a");
    EXPECT_EQ(displays[0].address, (DisplayAddress{"10.0.0.1", 7000}));
    EXPECT_EQ(displays[0].project, "/plant/P.orx");
    EXPECT_EQ(displays[1].address, (DisplayAddress{"10.0.0.2", 7001}));
    EXPECT_EQ(displays[1].project, "/plant/lists/sub/B.orx");
    EXPECT_EQ(displays[2].address, (DisplayAddress{"10.0.0.3", 7002}));
    EXPECT_EQ(displays[2].project, "/C.orx");
}

TEST(FleetSheet, TakesNumericAddressesOfBothKinds) {
    const auto displays = read(head + "a,fe80::5,7001,\nb,[fe80::6],,\nc,[fe80::7]:7003,,\n");
    ASSERT_EQ(displays.size(), 3U);
    EXPECT_EQ(displays[0].address, (DisplayAddress{"fe80::5", 7001}));
    EXPECT_EQ(displays[1].address, (DisplayAddress{"fe80::6", 7000}));
    EXPECT_EQ(displays[2].address, (DisplayAddress{"fe80::7", 7003}));
}

TEST(FleetSheet, NamesTheDisplaysOfGoodRowsBesideBadOnes) {
    SheetErrors errors;
    const auto displays = readFleetSheet(head + "a,10.0.0.1,,\na/b,10.0.0.2,,\nA,10.0.0.3,,\nc,10.0.0.4,,\n",
                                         {"", "P.orx"}, errors);
    EXPECT_EQ(errors.count(), 2U);
    ASSERT_EQ(displays.size(), 2U);
    EXPECT_EQ(displays[0].name, "a");
    EXPECT_EQ(displays[1].name, "c");
}

TEST(FleetSheet, RefusesNumbersThatBeginWithZero) {
    for (const char* address : {"010.0.0.1", "10.0.0.01", "10.00.0.1", "10.0.0.01:7001", "010"})
        EXPECT_THAT(
            fleetErrors(head + "a," + address + ",,\n"),
            ElementsAre("row 2, address: a number that begins with 0 is read as octal by some systems: "
                        "write it without the 0"));
    EXPECT_THAT(read(head + "a,10.0.0.0,,\nb,0x.example,,\nc,01.example,,\nd,fe80::05,,\n"), SizeIs(4));
}

TEST(FleetSheet, RefusesProjectsThatAreNone) {
    EXPECT_THAT(fleetErrors(head + "a,10.0.0.1,,A.ORX\nb,10.0.0.2,,B.orx.bak\nc,10.0.0.3,,C\n"),
                ElementsAre("row 3, project: the project does not end in .orx",
                            "row 4, project: the project does not end in .orx"));
}

TEST(FleetSheet, RefusesNamesThatAreNoFolders) {
    const std::string characters = "a name holds none of / \\ : * ? \" < > | and no line end";
    for (const char* name : {"a/b", "a\\b", "a:b", "a*", "a?", "<a", "a>", "a|b", "a\x01"})
        EXPECT_THAT(fleetErrors(head + name + ",10.0.0.1,,\n"), ElementsAre("row 2, name: " + characters))
            << name;
    for (const char* name : {"..", "a..b", ".", "a."})
        EXPECT_THAT(fleetErrors(head + name + ",10.0.0.1,,\n"),
                    ElementsAre("row 2, name: a name holds no \"..\" and does not end with a point"));
    for (const char* name : {"con", "NUL.x", "Com9", "lpt\u00B2", "CONIN$", "aux .y"})
        EXPECT_THAT(fleetErrors(head + name + ",10.0.0.1,,\n"),
                    ElementsAre("row 2, name: the name is reserved on Windows"));
    EXPECT_EQ(read(head + "com10,10.0.0.1,,\ncomet,10.0.0.2,,\ncom0,10.0.0.3,,\n").size(), 3U);
    EXPECT_THAT(fleetErrors(head + std::string(101, 'a') + ",10.0.0.1,,\n"),
                ElementsAre("row 2, name: the name is longer than 100 bytes"));
}

TEST(FleetSheet, NamesBothRowsOfWhatIsThereTwice) {
    EXPECT_THAT(fleetErrors(head + "a,HOST,,\n\nA,host2,,\nb,host,7000,\n"),
                ElementsAre("row 4, name: the same name stands in row 2 already",
                            "row 5, address: the same address stands in row 2 already"));
}

TEST(FleetSheet, TellsOfAddressesPortsAndProjects) {
    EXPECT_THAT(fleetErrors(head + "a,,,\nb,x y,,\nc,10.0.0.1,0,\nd,10.0.0.2:7001,7002,\n"),
                ElementsAre(StartsWith("row 2, address: an empty text is not"),
                            StartsWith("row 3, address: x y is not"),
                            StartsWith("row 4, port: 0 is not a port"),
                            "row 5, port: the address names another port"));
    EXPECT_THAT(fleetErrors(head + "a,10.0.0.1,,\n", {}),
                ElementsAre("row 2, project: there is no project for this display"));
    EXPECT_EQ(read(head + "a,10.0.0.1,,\n", {{}, {}, false}).size(), 1U);
}

TEST(FleetSheet, NeedsNameAndAddress) {
    EXPECT_THAT(fleetErrors("port\n7000\n"),
                ElementsAre("row 1, name: missing column", "row 1, address: missing column"));
    EXPECT_THAT(fleetErrors("name,address\n"), ElementsAre("has no displays"));
    EXPECT_THAT(fleetErrors(""), ElementsAre("is empty"));
}

TEST(FleetSheet, TakesFurtherColumnsForValues) {
    const auto displays =
        read("Line,name,address,tank_2,COLUMNS\n17, a ,10.0.0.1, S\u00FCd ,\n,b,10.0.0.2,,96\n");
    ASSERT_THAT(displays, SizeIs(2));
    EXPECT_EQ(displays[0].columns, std::nullopt);
    EXPECT_EQ(displays[1].columns, 96);
    EXPECT_THAT(displays[0].values.names(), ElementsAre("Line", "tank_2"));
    EXPECT_EQ(*displays[0].values.find("LINE"), "17");
    EXPECT_EQ(*displays[0].values.find("tank_2"), " S\u00FCd ");
    EXPECT_EQ(*displays[1].values.find("line"), "");
    EXPECT_EQ(displays[0].values.find("columns"), nullptr);
    EXPECT_EQ(displays[0].values.find("name"), nullptr);
}

TEST(FleetSheet, RefusesFurtherHeadsThatAreNoNames) {
    const std::string noName = " is not a name of values: a name is a letter, then letters, digits and _";
    EXPECT_THAT(fleetErrors("name,address,line no,1st,_x,\u00E4,a-b,\na,10.0.0.1,,,,,,\n"),
                ElementsAre("row 1: \"line no\"" + noName, "row 1: \"1st\"" + noName,
                            "row 1: \"_x\"" + noName, "row 1: \"\u00E4\"" + noName,
                            "row 1: \"a-b\"" + noName));
    EXPECT_THAT(
        fleetErrors("name,address,line,Line,Name\na,10.0.0.1,,,\n"),
        ElementsAre("row 1, Line: the column is there twice", "row 1, name: the column is there twice"));
    EXPECT_THAT(fleetErrors("name,address,columns\na,10.0.0.1,31\nb,10.0.0.2,513\nc,10.0.0.3,9x\n"),
                ElementsAre("row 2, columns: \"31\" is not a number from 32 to 512",
                            "row 3, columns: \"513\" is not a number from 32 to 512",
                            "row 4, columns: \"9x\" is not a number from 32 to 512"));
}

/// \param rows, columns each value is "a7bc", by the number of its column
std::string longList(int rows, int columns) {
    std::string bytes = "name,address";
    for (int column = 0; column < columns; ++column)
        bytes += ",v" + std::to_string(column);
    for (int row = 0; row < rows; ++row) {
        bytes += "\nd" + std::to_string(row) + ",10.0." + std::to_string(row / 250) + "." +
                 std::to_string(row % 250);
        for (int column = 0; column < columns; ++column)
            bytes += ",a" + std::to_string(column % 10) + "bc";
    }
    return bytes;
}

TEST(FleetSheet, HoldsManyRowsManyColumnsAndLongCells) {
    EXPECT_EQ(*read(longList(10000, 2)).back().values.find("V1"), "a1bc");
    EXPECT_EQ(*read(longList(100, 200)).back().values.find("V197"), "a7bc");
    const std::string cell(10'000'000, 'x');
    EXPECT_EQ(*read("name,address,v\na,10.0.0.1," + cell)[0].values.find("v"), cell);
}

TEST(FleetSheet, IsReadAgainWithItsValues) {
    const std::string list = "name,address,a,b\nx,10.0.0.1,=1,\"q\"\"\n\"\ny,10.0.0.2, ,\n";
    auto displays = read(list);
    displays[1].columns = 64;
    const auto other = read("name,address,c,A\nz,10.0.0.3,3,4\n");
    displays.push_back(other[0]);
    const std::string written = fleetSheet(displays);
    EXPECT_EQ(written.substr(0, written.find('\r')), "\xEF\xBB\xBFname,address,port,project,columns,a,b,c");
    const auto again = read(written);
    ASSERT_THAT(again, SizeIs(3));
    EXPECT_EQ(*again[0].values.find("a"), "=1");
    EXPECT_EQ(*again[0].values.find("b"), "q\"\n");
    EXPECT_EQ(*again[1].values.find("a"), " ");
    EXPECT_EQ(again[1].columns, 64);
    EXPECT_EQ(*again[2].values.find("a"), "4");
    EXPECT_EQ(*again[2].values.find("c"), "3");
}

TEST(MasterList, LiesWhereTheNotesSay) {
    EXPECT_EQ(std::filesystem::path(masterListPath("plant/PLANT.orx", "lists/d.csv")), "plant/lists/d.csv");
    EXPECT_EQ(masterListPath("PLANT.orx", "d.csv"), "d.csv");
    const testing::TemporaryFolder folder;
    const auto noted = [&](const std::string& list) {
        return notedListPath(folder.file("a/P.orx"), folder.file(list));
    };
    EXPECT_EQ(noted("a/d.csv"), "d.csv");
    EXPECT_EQ(noted("a/b/d.csv"), "b/d.csv");
    EXPECT_EQ(noted("d.csv"), "../d.csv");
}

TEST(MasterList, HasTheMastersDisplaysOnly) {
    SheetErrors errors;
    const std::string bytes =
        head + "a,10.0.0.1,,\nb,10.0.0.2,,P.orx\nc,10.0.0.3,,Q.orx\nd,10.0.0.4,,../plant/P.orx\n";
    const auto displays = masterDisplays(bytes, "d.csv", "P.orx", errors);
    EXPECT_THAT(testing::errorTexts(errors), IsEmpty());
    ASSERT_THAT(displays, SizeIs(2));
    EXPECT_EQ(displays[1].name, "b");
}

TEST(FleetSheet, IsReadAgainAsItWasWritten) {
    // One by one: of a braced list GCC 12 fears that it ends what was never made.
    std::vector<FleetDisplay> displays(2);
    displays[0].name = "=a";
    displays[0].address = {"10.0.0.1", 7001};
    displays[0].project = "/plant/a,b.orx";
    displays[1].name = "\u00D6l 'x'";
    displays[1].address = {"fe80::5", 7000};
    displays[1].project = "/plant/\u0393.orx";
    const auto again = read(fleetSheet(displays), {"/elsewhere", {}});
    ASSERT_EQ(again.size(), 2U);
    for (std::size_t i = 0; i < again.size(); ++i) {
        EXPECT_EQ(again[i].name, displays[i].name);
        EXPECT_EQ(again[i].address, displays[i].address);
        EXPECT_EQ(again[i].project, displays[i].project);
    }
}

TEST(FleetReport, HasARowForEachDisplay) {
    const std::vector<std::string> arrived{"modbus.adr", "ilmvar.def"};
    const std::vector<FleetResult> results{
        {"a", displayArgument({"10.0.0.1", 7000}), {FleetOutcome::Done, {}, 7}, 0.4149},
        {"b", displayArgument({"10.0.0.2", 7001}), {FleetOutcome::Equal, {}, 0}, 12.0},
        {"c", displayArgument({"fe80::5", 7000}), stoppedUpload(arrived, "stdmsg.ilm was not taken"), 1.006},
        {"d", displayArgument({"fe80::5", 7001}), stoppedUpload({}, "modbus.adr was not taken"), 0}};
    EXPECT_EQ(fleetReport(results),
              "\xEF\xBB\xBFname,address,result,reason,files,seconds\r\n"
              "a,10.0.0.1,done,,7,0.41\r\n"
              "b,10.0.0.2:7001,equal,,0,12.00\r\n"
              "c,[fe80::5],half,\"stdmsg.ilm was not taken; arrived: modbus.adr, ilmvar.def\",2,1.01\r\n"
              "d,[fe80::5]:7001,failed,modbus.adr was not taken,0,0.00\r\n");
}

TEST(FleetTally, LeavesOutWhatThereIsNoneOf) {
    FleetTally tally;
    EXPECT_EQ(tally.text(), "nothing to do");
    EXPECT_TRUE(tally.isWell());
    tally.add(FleetOutcome::Done);
    tally.add(FleetOutcome::Equal);
    EXPECT_TRUE(tally.isWell());
    tally.add(FleetOutcome::Half);
    tally.add(FleetOutcome::Failed);
    tally.add(FleetOutcome::Failed);
    EXPECT_FALSE(tally.isWell());
    EXPECT_EQ(tally.text(), "1 done, 1 equal, 1 half, 2 failed");
    EXPECT_EQ(tally.ended(), 5U);
}

} // namespace
} // namespace orvista
