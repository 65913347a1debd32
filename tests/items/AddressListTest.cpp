#include "items/AddressList.h"
#include "sheets/AddressSheet.h"
#include "tests/support/ExampleProject.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace orvista {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

AddressRow rowOf(const Project& project, std::string_view name) {
    const auto rows = addressList(project);
    return *std::ranges::find(rows, name, &AddressRow::name);
}

TEST(AddressList, OfTheExampleIsAsWrittenFromTheDescription) {
    Project project = testing::exampleProject();
    const ProjectNotes notes = testing::exampleNotes();
    const auto rows = [&](AddressRows which = AddressRows::All) {
        auto listed = addressList(project, which);
        addNotes(listed, notes);
        return listed;
    };
    EXPECT_EQ(addressCsv(rows()), testing::golden("addresses.csv"));
    EXPECT_EQ(addressCsv(rows(), ';'), testing::golden("addresses-semicolon.csv"));
    EXPECT_EQ(addressCsv(rows(AddressRows::UsedOnly)), testing::golden("addresses-used.csv"));
    EXPECT_EQ(
        addressHtml(rows(), project, {"0123456789ab", "2026-11-22T03:15:07Z", notes.displayName, "1.03-2"}),
        testing::golden("addresses.html"));
    project.DigitalInput = 65530;
    project.AlertMessage = 65510;
    project.RegularMessage = 65530;
    project.AnalogInput = 9950;
    EXPECT_EQ(addressCsv(rows()), testing::golden("addresses-shared.csv"));
}

TEST(AddressList, HasTheRowsOfTheDescription) {
    Project project;
    project.RegVar[11].defaultValue = "0.0";
    project.STDMSG[3] = "DISPVAR 0 0 RED BLACK RegVar12\r\nCLEAR\r\ndispvars 0 0 red black REGVAR12";
    project.ALTMSG[1] = "DISPVAR 0 0 RED BLACK RegVar12";
    project.ALTMSG[2] = "DISPVAR 0 0 PINK BLACK RegVar12";
    const auto rows = addressList(project);
    ASSERT_EQ(rows.size(), 156U);
    const std::string csv = addressCsv(rows);
    EXPECT_THAT(
        csv, HasSubstr("\r\nfloat,12,RegVar12,holding register,122,0x007A,40123,2,float32,low word first,16,"
                       "STDMSG4 ALTMSG2,0.0,7.3,,,,,\r\n"));
    EXPECT_EQ(rows[0].name, "RegVar1");
    EXPECT_EQ(rows[64].name, "CoilVar1");
    EXPECT_EQ(rows[96].name, "ALTMSG1");
    EXPECT_EQ(rows[116].name, "STDMSG1");
}

TEST(AddressList, WritesReferencesInFiveDigitsFrom10000) {
    Project project;
    project.AnalogInput = 9998;
    project.AlertMessage = 65535;
    EXPECT_EQ(rowOf(project, "RegVar1").reference, "49999");
    EXPECT_EQ(rowOf(project, "RegVar2").reference, "410001");
    EXPECT_EQ(rowOf(project, "ALTMSG1").reference, "065536");
    EXPECT_EQ(rowOf(project, "ALTMSG1").addressHex, "0xFFFF");
    EXPECT_EQ(rowOf(project, "ALTMSG2").address, 65536);
    EXPECT_EQ(rowOf(project, "ALTMSG2").reference, "");
    EXPECT_EQ(rowOf(project, "ALTMSG2").addressHex, "");
    EXPECT_EQ(rowOf(project, "ALTMSG2").note, "not addressable");
    project.AlertMessage = -1;
    EXPECT_EQ(rowOf(project, "ALTMSG1").note, "not addressable");
    EXPECT_EQ(rowOf(project, "ALTMSG2").addressHex, "0x0000");
    EXPECT_EQ(rowOf(project, "ALTMSG2").reference, "00001");
}

TEST(AddressList, CountsBeyond32Bits) {
    Project project;
    project.AnalogInput = 2'147'483'647;
    EXPECT_EQ(rowOf(project, "RegVar64").address, 2'147'483'773);
}

TEST(AddressList, NamesEveryOtherItemOnACoil) {
    Project project;
    project.AlertMessage = project.RegularMessage = project.DigitalInput = -2;
    EXPECT_EQ(rowOf(project, "ALTMSG1").note, "not addressable; also CoilVar1; also STDMSG1");
    EXPECT_EQ(rowOf(project, "STDMSG3").note, "also CoilVar3; also ALTMSG3");
    project.AnalogInput = -2;
    EXPECT_EQ(rowOf(project, "RegVar1").note, "not addressable") << "registers are another table";
}

TEST(AddressList, ShowsTheFirstTextWithItsFields) {
    Project project;
    const auto textOf = [&project](const std::string& script) {
        project.STDMSG[0] = script;
        return rowOf(project, "STDMSG1").text;
    };
    EXPECT_EQ(textOf("CLEAR"), "");
    EXPECT_EQ(textOf("IMG 0 0 RED BLACK a.bmp\r\nCLEAR\r\nTEXT 0 0 RED BLACK \"two\""), "two");
    EXPECT_EQ(textOf("TEXT 8 0 RED BLACK \"a         b\"\r\nDISPVAR 24 0 RED BLACK RegVar1"), "a %7v b");
    EXPECT_EQ(textOf("TEXT 0 0 RED BLACK \"a    b\"\r\nDISPVAR 16 0 RED BLACK RegVar1"), "a %3vb");
    EXPECT_EQ(textOf("TEXT 0 0 RED BLACK \"a\"\r\nDISPVAR 24 0 RED BLACK RegVar1"), "a  %1v");
    EXPECT_EQ(textOf("TEXT 0 0 RED BLACK \"a    b\"\r\nDISPVAR 12 0 RED BLACK RegVar1"), "a    b")
        << "between columns";
    EXPECT_EQ(textOf("TEXT 0 0 RED BLACK \"a    b\"\r\nDISPVARS 12 0 RED BLACK RegVar1"), "a    b")
        << "another font";
    EXPECT_EQ(textOf("TEXT 0 0 RED BLACK \"a    b\"\r\nDISPVAR 16 1 RED BLACK RegVar1"), "a    b")
        << "another row";
    EXPECT_EQ(textOf("TEXT 0 0 RED BLACK \"a  b\"\r\nDISPVAR 999999 0 RED BLACK RegVar1"), "a  b");
    EXPECT_EQ(textOf("TEXTS 0 0 RED BLACK \"            \"\r\nTIMES 0 0 RED BLACK"), "%8v    ");
    EXPECT_EQ(textOf("TEXT 0 0 RED BLACK \"\xFC\""), "\xC3\xBC");
}

TEST(AddressList, PrintsAsOneFile) {
    Project project = testing::exampleProject();
    project.STDMSG[0] = "TEXT 0 0 RED BLACK \"<b>&\"";
    const std::string html = addressHtml(addressList(project), project,
                                         {"0123456789ab", "2026-11-22T03:15:07Z", "Line 3 & 4", "1.03-2"});
    for (const char* const part :
         {"<h1>Addresses of PUMPSTATION</h1>", "Device address: 127.0.0.1",
          "<p>Display: Line 3 &amp; 4<br>\nFile: PUMPSTATION.orx</p>", "<td>low word first (CDAB)</td>",
          "<p>Fingerprint of the project: 0123456789ab<br>\nAs of 2026-11-22 03:15:07 UTC</p>",
          "addresses count from 0, as in the request", "E9 79 42 F6", "<h2>Float variables</h2>",
          "<h2>Regular messages</h2>", "display: table-header-group", "<td>&lt;b&gt;&amp;</td>",
          "<td>40101</td>", "<td>STDMSG3 ALTMSG1</td>"})
        EXPECT_THAT(html, HasSubstr(part));
    for (const char* const other : {"<b>", "http", "src=", "<script"})
        EXPECT_THAT(html, Not(HasSubstr(other)));
}

} // namespace
} // namespace orvista
