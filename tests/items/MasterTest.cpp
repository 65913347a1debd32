#include "items/Master.h"

#include "items/MasterBitmaps.h"
#include "model/Windows1252.h"
#include "tests/support/ListedDisplay.h"
#include "tests/support/NamedItem.h"

#include <gmock/gmock.h>

namespace orvista {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::listedDisplay;
using ::testing::SizeIs;

const std::string before = "TEXT 0 0 RED BLACK \"";

Project masterWith(const std::string& text) {
    Project project;
    project.STDMSG[2] = "CLEAR\r\n" + before + text + "\"\r\nACT STILL 3000";
    return project;
}

/// The text that the display gets for one between the quotes.
std::string expandedText(const std::string& text, const FleetDisplay& display) {
    const std::string script = expand(masterWith(text), display).project.STDMSG[2];
    const std::size_t start = 7 + before.size();
    return script.substr(start, script.rfind("\"") - start);
}

/// "STDMSG3:2:21+8 'Nord' is 4 wide, its place 3"
std::vector<std::string> errorsOf(const Expansion& expansion) {
    std::vector<std::string> texts;
    for (const PlaceError& error : expansion.errors)
        texts.push_back(nameOf(error.place) + ":" + std::to_string(error.place.line) + ":" +
                        std::to_string(error.place.column) + "+" + std::to_string(error.place.length) + " " +
                        error.text);
    return texts;
}

std::vector<std::string> errorsOf(const std::string& text, const FleetDisplay& display) {
    return errorsOf(expand(masterWith(text), display));
}

TEST(Master, FillsItsPlaces) {
    const FleetDisplay display =
        listedDisplay("Line 17", "10.0.0.17", {{"Line", "17"}, {"tank", "S\u00FCd"}, {"max", "99.5"}});
    EXPECT_EQ(expandedText("Line {line:4}|{LINE:4>}|{line:5^}|", display), "Line 17  |  17| 17  |");
    EXPECT_EQ(expandedText("{tank:3}{max:4}", display), "S\xFC"
                                                        "d99.5");
    EXPECT_EQ(expandedText("{{line:4} {line} {line:33}}", display), "{line:4} {line} {line:33}}");
    EXPECT_EQ(expandedText("no place", display), "no place");
}

TEST(Master, TakesTheAddressAndLeavesAllElse) {
    Project project = masterWith("{line:4}");
    project.ProjPath = "/plant";
    project.ProjName = "PLANT";
    project.IP = "192.168.1.1";
    project.RegVar[0].defaultValue = "{line:4}";
    project.CoilVar[0].onText = "{run}";
    project.CoilVar[0].offText = "{run:5>}|";
    project.ALTMSG[1] = "CLEAR\r\nIMG 0 0 RED BLACK {Logo}.bmp\r\nNOTHING \"{line:4}\"";
    Project expected = project;
    const Expansion expansion =
        expand(project, listedDisplay("a", "display17.plant",
                                      {{"line", "17"}, {"logo", " pump "}, {"run", "l\u00E4"}}));
    expected.IP = "display17.plant";
    expected.STDMSG[2] = "CLEAR\r\n" + before + "17  \"\r\nACT STILL 3000";
    expected.CoilVar[0].onText = "l\xE4";
    expected.CoilVar[0].offText = "   l\xE4|";
    expected.ALTMSG[1] = "CLEAR\r\nIMG 0 0 RED BLACK pump.bmp\r\nNOTHING \"{line:4}\"";
    EXPECT_THAT(expansion.errors, IsEmpty());
    EXPECT_EQ(expansion.project.IP, expected.IP);
    EXPECT_EQ(expansion.project.ProjPath, "/plant");
    EXPECT_EQ(expansion.project.ProjName, "PLANT");
    EXPECT_EQ(expansion.project.RegVar, expected.RegVar);
    EXPECT_EQ(expansion.project.CoilVar, expected.CoilVar);
    EXPECT_EQ(expansion.project.STDMSG, expected.STDMSG);
    EXPECT_EQ(expansion.project.ALTMSG, expected.ALTMSG);
}

TEST(Master, DoesNotSearchValuesAgain) {
    const FleetDisplay display = listedDisplay("a", "h", {{"a", "{b:3}"}, {"b", "{{"}, {"c", "%5v"}});
    EXPECT_EQ(expandedText("{a:6}{b:3}{c:3}", display), "{b:3} {{ %5v");
}

TEST(Master, TellsOfAllErrorsByTheirPlaces) {
    const FleetDisplay display = listedDisplay("Line 17", "h",
                                               {{"tank", "R\u00FChrwerk Nord"},
                                                {"none", ""},
                                                {"greek", "a\u0393b"},
                                                {"quote", "a\"b"},
                                                {"end", "a\nb"},
                                                {"tab", "a\tb"}});
    EXPECT_THAT(errorsOf("{tank:8} {none:8}", display),
                ElementsAre("STDMSG3:2:21+8 'R\u00FChrwerk Nord' is 13 wide, its place 8",
                            "STDMSG3:2:30+8 the value of 'none' is empty"));
    EXPECT_THAT(errorsOf("{Lime:8}{port:8}", display),
                ElementsAre("STDMSG3:2:21+8 the list has no column 'lime'",
                            "STDMSG3:2:29+8 the list's column 'port' is not a value"));
    EXPECT_THAT(errorsOf("{greek:8}{quote:8}{end:8}{tab:8}", display),
                ElementsAre("STDMSG3:2:21+9 '\u0393' is not a character of the display",
                            "STDMSG3:2:30+9 'a\"b' holds a quote", "STDMSG3:2:39+7 'a b' holds a line end",
                            "STDMSG3:2:46+7 'a<a tab>b' holds a control character"));
    const Expansion expansion = expand(masterWith("{tank:13}{tank:12}"), display);
    ASSERT_THAT(expansion.errors, SizeIs(1));
    EXPECT_EQ(expansion.errors[0].display, "Line 17");
    EXPECT_EQ(expansion.errors[0].fault, PlaceFault::Width);
    EXPECT_EQ(expansion.project.STDMSG[2],
              "CLEAR\r\n" + before + "R\xFChrwerk Nordtank        \"\r\nACT STILL 3000");
}

TEST(Master, JudgesValuesWithoutWidth) {
    Project project;
    project.CoilVar[1].onText = "{on}";
    project.STDMSG[0] = "IMG 0 0 RED BLACK {logo}.bmp";
    EXPECT_THAT(
        errorsOf(expand(project, listedDisplay("a", "h", {{"on", std::string(200, 'x')}, {"logo", "x"}}))),
        IsEmpty());
    EXPECT_THAT(
        errorsOf(expand(project, listedDisplay("a", "h", {{"on", std::string(201, 'x')}, {"logo", "  "}}))),
        ElementsAre("CoilVar2:0:0+0 '" + std::string(40, 'x') + "\u2026' is 201 wide, at most 200",
                    "STDMSG1:1:19+6 the value of 'logo' is blank"));
}

TEST(Master, TakesEveryCharacterThatTheDisplayHas) {
    std::size_t taken = 0;
    for (int byte = 0; byte < 256; ++byte) {
        const std::string character(1, static_cast<char>(byte));
        const FleetDisplay display = listedDisplay("a", "h", {{"a", utf8FromWindows1252(character)}});
        if (!errorsOf("{a:1}", display).empty())
            continue;
        EXPECT_EQ(expandedText("{a:1}", display), character);
        ++taken;
    }
    // Neither the quote nor 32 controls and DEL, nor five bytes that stand for nothing.
    EXPECT_EQ(taken, 256U - 1 - 33 - 5);
}

TEST(Master, ListsSoManyErrorsAndCountsTheRest) {
    Project project;
    project.STDMSG[0].clear();
    for (std::size_t i = 0; i < 2 * mostPlaceErrors; ++i)
        project.STDMSG[0] += before + "{a:1}\"\r\n";
    const Expansion expansion = expand(project, listedDisplay("a", "h", {}));
    EXPECT_THAT(expansion.errors, SizeIs(mostPlaceErrors));
    EXPECT_EQ(expansion.errorsNotListed, mostPlaceErrors);
}

TEST(Master, ItselfShowsNames) {
    Project project = masterWith("{line:6>}|{Tank:2}|{{x");
    project.CoilVar[0].onText = "{run} {run:4}";
    project.CoilVar[0].offText = "{{";
    project.ALTMSG[0] = "IMG 0 0 RED BLACK {Logo}.bmp";
    const Master master(project);
    const Project itself = master.itself();
    EXPECT_EQ(itself.STDMSG[2], "CLEAR\r\n" + before + "  line|ta|{x\"\r\nACT STILL 3000");
    EXPECT_EQ(itself.CoilVar[0].onText, "run run ");
    EXPECT_EQ(itself.ALTMSG[0], "IMG 0 0 RED BLACK {Logo}.bmp");
    EXPECT_EQ(scriptWithNames(project.STDMSG[2]), itself.STDMSG[2]);
    EXPECT_THAT(master.names(), ElementsAre("run", "line", "tank", "logo"));
    EXPECT_THAT(master.items(), ElementsAre(named("CoilVar1"), named("STDMSG3"), named("ALTMSG1")));
}

TEST(Master, ItselfHasFramesForBitmapsThatArePlaces) {
    const NoBitmaps none;
    const MasterBitmaps bitmaps(none);
    const FoundBitmap frame = bitmaps.bitmap("{logo}.bmp");
    ASSERT_NE(frame.image, nullptr);
    EXPECT_TRUE(frame.image->isStandIn);
    EXPECT_EQ(bitmaps.bitmap("{logo}.bmp").image, frame.image);
    EXPECT_EQ(bitmaps.bitmap("logo.bmp").image, nullptr);
}

TEST(Master, LeadsBackFromAnExpansion) {
    //               column 21     30   34
    const Master master(masterWith("ab{line:3}cd{{ef"));
    const Item message = named("STDMSG3");
    const auto inMaster = [&](std::size_t column, std::size_t length) {
        const Place place = master.inMaster({message, 2, column, length});
        return std::pair(place.column, place.length);
    };
    // "ab17 cd{ef" begins at column 21.
    EXPECT_EQ(inMaster(1, 4), std::pair(std::size_t{1}, std::size_t{4}));
    EXPECT_EQ(inMaster(21, 10), std::pair(std::size_t{21}, std::size_t{16}));
    EXPECT_EQ(inMaster(23, 3), std::pair(std::size_t{23}, std::size_t{8}));
    EXPECT_EQ(inMaster(24, 1), std::pair(std::size_t{23}, std::size_t{8}));
    EXPECT_EQ(inMaster(26, 1), std::pair(std::size_t{31}, std::size_t{1}));
    EXPECT_EQ(inMaster(29, 2), std::pair(std::size_t{35}, std::size_t{2}));
    EXPECT_EQ(inMaster(31, 0), std::pair(std::size_t{37}, std::size_t{0}));
    EXPECT_EQ(master.inMaster({message, 1, 3, 1}), (Place{message, 1, 3, 1}));
    EXPECT_EQ(master.inMaster({named("STDMSG4"), 2, 26, 1}), (Place{named("STDMSG4"), 2, 26, 1}));
}

TEST(Master, ExpandsOneMessage) {
    const auto [script, errors] =
        expandScript(named("STDMSG3"), before + "{a:2}{b:2}\"", listedDisplay("a", "h", {{"a", "x"}}));
    EXPECT_EQ(script, before + "x b \"");
    ASSERT_THAT(errors, SizeIs(1));
    EXPECT_EQ(errors[0].place, (Place{named("STDMSG3"), 1, 26, 5}));
}

TEST(Master, HasNotesForAllDisplays) {
    ProjectNotes notes;
    notes.masterList = "displays.csv";
    notes.columns = 96;
    notes.set(named("STDMSG3"), {"Full", "", ""});
    FleetDisplay display = listedDisplay("Line 17", "h", {});
    ProjectNotes expanded = expandedNotes(notes, display);
    EXPECT_EQ(expanded.masterList, std::nullopt);
    EXPECT_EQ(expanded.displayName, "Line 17");
    EXPECT_EQ(expanded.columns, 96);
    EXPECT_EQ(expanded.items(), notes.items());
    notes.displayName = "Gate";
    display.columns = 128;
    expanded = expandedNotes(notes, display);
    EXPECT_EQ(expanded.displayName, "Gate");
    EXPECT_EQ(expanded.columns, 128);
}

} // namespace
} // namespace orvista
