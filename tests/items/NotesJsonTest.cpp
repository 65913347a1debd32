#include "items/NotesJson.h"
#include "tests/support/NamedItem.h"

#include <gmock/gmock.h>

#include <stdexcept>

namespace orvista {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

const NoteField& labelField = noteFields[0];

std::string notesWithItems(const std::string& items) {
    return R"({"version": 1, "items": {)" + items + "}}";
}

std::string notesFaultOf(const std::string& bytes) {
    const NotesReading reading = readNotes(bytes);
    EXPECT_TRUE(reading.fault.empty() || reading.notes == ProjectNotes());
    return reading.fault;
}

std::vector<std::string> badEntriesOf(const std::string& bytes) {
    const NotesReading reading = readNotes(bytes);
    EXPECT_EQ(reading.fault, "");
    return reading.bad;
}

ProjectNotes notesOf(const std::string& bytes) {
    EXPECT_THAT(badEntriesOf(bytes), IsEmpty());
    return readNotes(bytes).notes;
}

TEST(NotesJson, AreReadAsDescribed) {
    const ProjectNotes notes = notesOf(
        R"({"version":1,"display":{"name":"Line 3, gate","columns":96},"items":{"RegVar12":)"
        R"({"label":"TankLevel","unit":"m","comment":"Level of tank 1"},"STDMSG3":{"label":"TankFull"}}})");
    EXPECT_EQ(notes.displayName, "Line 3, gate");
    EXPECT_EQ(notes.columns, 96);
    EXPECT_EQ(notes.of(named("RegVar12")), (ItemNote{"TankLevel", "m", "Level of tank 1"}));
    EXPECT_EQ(notes.of(named("STDMSG3")), (ItemNote{"TankFull", "", ""}));
    EXPECT_EQ(notes.items().size(), 2U);
    EXPECT_EQ(notesOf(R"({"version":1})"), ProjectNotes());
}

TEST(NotesJson, NameTheListOfAMaster) {
    EXPECT_EQ(notesOf(R"({"version":1,"master":{"list":"displays.csv"}})").masterList, "displays.csv");
    EXPECT_EQ(notesOf(R"({"version":1})").masterList, std::nullopt);
    for (const char* master : {"5", "{}", R"({"list":5})", R"({"List":"a"})"})
        EXPECT_THAT(badEntriesOf(std::string(R"({"version":1,"master":)") + master + "}"),
                    ElementsAre("the master has no \"list\" that is a text"));
    EXPECT_THAT(badEntriesOf(R"({"version":1,"master":{"list":""}})"),
                ElementsAre("the master's list is empty"));
    const std::string longest(1000, 'a');
    EXPECT_EQ(notesOf(R"({"version":1,"master":{"list":")" + longest + "\"}}").masterList, longest);
    EXPECT_THAT(badEntriesOf(R"({"version":1,"master":{"list":")" + std::string(1001, 'a') + "\"}}"),
                ElementsAre("the master's list is longer than 1000 characters"));
}

TEST(NotesJson, BecomeThoseOfAMasterAndOfNoneAgain) {
    ProjectNotes notes;
    notes.masterList = "lists/displays.csv";
    const std::string former = "{\"version\":1,\"master\":{\"x\":1},\"y\":2}";
    const std::string bytes = notesBytes(former, notes);
    EXPECT_EQ(notesOf(bytes), notes);
    EXPECT_NE(bytes.find("\"x\""), std::string::npos);
    const std::string again = notesBytes(bytes, ProjectNotes());
    EXPECT_EQ(notesOf(again), ProjectNotes());
    EXPECT_EQ(again.find("master"), std::string::npos);
    EXPECT_NE(again.find("\"y\""), std::string::npos);
}

TEST(NotesJson, NothingIsTakenOfWhatIsNoNotes) {
    EXPECT_EQ(notesFaultOf(""), "line 1, column 1 is not JSON");
    EXPECT_EQ(notesFaultOf("{\"version\": 1,\n  x}"), "line 2, column 3 is not JSON");
    EXPECT_EQ(notesFaultOf("{\"version\": 1} {}"), "line 1, column 16 is not JSON");
    EXPECT_EQ(notesFaultOf("{\"version\": 1, \"a\": \"\xFF\"}"), "line 1, column 22 is not JSON");
    EXPECT_EQ(notesFaultOf("[]"), "it is not a JSON object");
    EXPECT_EQ(notesFaultOf("{}"), "its \"version\" is not 1");
    EXPECT_EQ(notesFaultOf(R"({"version": 2})"), "its \"version\" is not 1");
    EXPECT_EQ(notesFaultOf(R"({"version": "1"})"), "its \"version\" is not 1");
    EXPECT_EQ(notesFaultOf(R"({"version": 1, "items": []})"), "its \"items\" is not an object");
}

TEST(NotesJson, NothingIsTakenBeyondALimit) {
    const auto commented = [](std::size_t length) {
        return notesWithItems(R"("RegVar1": {"comment": ")" + std::string(length, 'x') + "\"}");
    };
    EXPECT_EQ(notesFaultOf(commented(200)), "");
    EXPECT_EQ(notesFaultOf(commented(201)),
              "RegVar1, comment: \"" + std::string(40, 'x') + "…\" is longer than 200 characters");
    const auto called = [](std::size_t length) {
        return R"({"version": 1, "display": {"name": ")" + std::string(length, 'x') + "\"}}";
    };
    EXPECT_EQ(notesOf(called(200)).displayName, std::string(200, 'x'));
    EXPECT_EQ(notesFaultOf(called(201)), "the display's name is longer than 200 characters");
    EXPECT_EQ(notesFaultOf(notesWithItems(R"("RegVar1": {"unit": "12345678901234567"})")),
              "RegVar1, unit: \"12345678901234567\" is longer than 16 characters");
    EXPECT_EQ(notesFaultOf(notesWithItems(R"("RegVar1": {"unit": "°°°°°°°°°°°°°°°°"})")), "");
    const std::string start = R"({"version": 1, "other": ")";
    EXPECT_EQ(notesFaultOf(start + std::string((1 << 20) - start.size() - 2, 'x') + "\"}"), "");
    EXPECT_EQ(notesFaultOf(start + std::string((1 << 20) - start.size() - 1, 'x') + "\"}"),
              "it is longer than 1 MB");
}

TEST(NotesJson, AreNotNestedDeep) {
    const auto nested = [](std::size_t depth) {
        return R"({"version": 1, "other": )" + std::string(depth - 1, '[') + std::string(depth - 1, ']') +
               "}";
    };
    EXPECT_EQ(notesFaultOf(nested(16)), "");
    EXPECT_EQ(notesFaultOf(nested(17)), "it is nested deeper than 16");
    EXPECT_EQ(notesFaultOf(std::string(1 << 20, '[')), "it is nested deeper than 16");
}

TEST(NotesJson, NamesBadEntriesAndTakesTheOthers) {
    const std::string bytes =
        notesWithItems(R"("RegVar99": {"label": "A"}, "RegVar1": {"label": "two words", "unit": "m"},
        "RegVar2": {"label": "Level"}, "STDMSG1": {"label": "LEVEL"}, "CoilVar1": 5, "CoilVar2": {"unit": 7},
        "ALTMSG1": {"comment": "two\nlines"})");
    EXPECT_THAT(
        badEntriesOf(bytes),
        ElementsAre("\"RegVar99\" is not a variable or message",
                    "RegVar1, label: \"two words\" holds something else than letters A to Z, digits and _",
                    "STDMSG1, label: \"LEVEL\" is the label of RegVar2 already", "CoilVar1 is not an object",
                    "CoilVar2, unit: it is not a text",
                    "ALTMSG1, comment: \"two lines\" holds a tab, a line end or another control character"));
    const ProjectNotes notes = readNotes(bytes).notes;
    EXPECT_EQ(notes.items().size(), 2U);
    EXPECT_EQ(notes.of(named("RegVar1")).unit, "m");
    EXPECT_EQ(notes.labelled("level"), named("RegVar2"));
}

TEST(NotesJson, NamesColumnsThatNoDisplayHas) {
    for (const char* const columns : {"31", "513", "96.5", "\"96\"", "1e99", "-1"})
        EXPECT_THAT(badEntriesOf(R"({"version":1,"display":{"columns":)" + std::string(columns) + "}}"),
                    ElementsAre("the display's columns are not a whole number from 32 to 512"));
    EXPECT_EQ(notesOf(R"({"version":1,"display":{"columns":512}})").columns, 512);
}

TEST(NotesJson, OfADoubledKeyTheLastValueCounts) {
    const std::string bytes =
        notesWithItems(R"("RegVar1": {"unit": "m", "unit": "cm"}, "RegVar1": {"unit": "km"})");
    EXPECT_THAT(badEntriesOf(bytes),
                ElementsAre("\"unit\" stands there twice in \"RegVar1\"; the last one counts",
                            "\"RegVar1\" stands there twice in \"items\"; the last one counts"));
    EXPECT_EQ(readNotes(bytes).notes.of(named("RegVar1")).unit, "km");
    EXPECT_THAT(badEntriesOf(notesWithItems(R"("RegVar1": {"unit": "m"}, "regvar01": {"label": "A"})")),
                ElementsAre("RegVar1 stands there twice; the last one counts"));
}

TEST(NotesJson, CountsBadEntriesBeyondTheList) {
    std::string items;
    for (int i = 0; i < 150; ++i)
        items += (items.empty() ? "\"X" : ", \"X") + std::to_string(i) + "\": {}";
    const NotesReading reading = readNotes(notesWithItems(items));
    EXPECT_EQ(reading.bad.size(), 100U);
    EXPECT_EQ(reading.badNotListed, 50U);
}

TEST(NotesJson, AreWrittenInTheOrderOfTheItems) {
    ProjectNotes notes;
    notes.set(named("STDMSG3"), {"TankFull", "", "Stop \"P1\""});
    notes.set(named("RegVar12"), {"TankLevel", "m³", ""});
    notes.displayName = "Gate";
    notes.columns = 96;
    const std::string bytes = "{\n"
                              "  \"version\": 1,\n"
                              "  \"display\": {\n"
                              "    \"name\": \"Gate\",\n"
                              "    \"columns\": 96\n"
                              "  },\n"
                              "  \"items\": {\n"
                              "    \"RegVar12\": {\n"
                              "      \"label\": \"TankLevel\",\n"
                              "      \"unit\": \"m³\"\n"
                              "    },\n"
                              "    \"STDMSG3\": {\n"
                              "      \"label\": \"TankFull\",\n"
                              "      \"comment\": \"Stop \\\"P1\\\"\"\n"
                              "    }\n"
                              "  }\n"
                              "}\n";
    EXPECT_EQ(notesBytes("", notes), bytes);
    EXPECT_EQ(notesOf(bytes), notes);
    EXPECT_EQ(notesBytes("", ProjectNotes()), "");
}

TEST(NotesJson, KeepsWhatItDoesNotKnow) {
    const std::string former =
        R"({"zone": [1, 2.50], "items": {"RegVar9": {"tag": "x", "label": "A"}, "Pump": {},
        "RegVar2": {"label": "bad label", "unit": "m"}, "CoilVar1": {"label": "B"}}, "version": 1, "author": null})";
    ProjectNotes notes = readNotes(former).notes;
    EXPECT_EQ(notesBytes(former, notes), former);
    notes.set(named("RegVar9"), {});
    notes.set(named("RegVar2"), {"", "cm", ""});
    notes.set(named("CoilVar1"), {});
    EXPECT_EQ(notesBytes(former, notes), "{\n"
                                         "  \"zone\": [\n"
                                         "    1,\n"
                                         "    2.50\n"
                                         "  ],\n"
                                         "  \"items\": {\n"
                                         "    \"RegVar9\": {\n"
                                         "      \"tag\": \"x\"\n"
                                         "    },\n"
                                         "    \"Pump\": {},\n"
                                         "    \"RegVar2\": {\n"
                                         "      \"label\": \"bad label\",\n"
                                         "      \"unit\": \"cm\"\n"
                                         "    }\n"
                                         "  },\n"
                                         "  \"version\": 1,\n"
                                         "  \"author\": null\n"
                                         "}\n");
}

TEST(NotesJson, LetsABadEntryGiveWayToAGoodOne) {
    const std::string former = notesWithItems(R"("RegVar2": {"label": "A"}, "RegVar1": {"label": "A"})");
    ProjectNotes notes = readNotes(former).notes;
    notes.set(named("RegVar2"), labelField, "B");
    notes.set(named("STDMSG1"), labelField, "A");
    EXPECT_EQ(notesOf(notesBytes(former, notes)), notes);
}

TEST(NotesJson, AreNotWrittenOverWhatIsNoNotes) {
    EXPECT_THROW(notesBytes("{}", ProjectNotes()), std::invalid_argument);
    const std::string start = R"({"version": 1, "other": ")";
    const std::string full = start + std::string((1 << 20) - start.size() - 2, 'x') + "\"}";
    ProjectNotes notes;
    notes.columns = 96;
    EXPECT_THROW(notesBytes(full, notes), std::invalid_argument);
}

TEST(ProjectNotes, NameItemsByNameBeforeLabel) {
    ProjectNotes notes;
    notes.set(named("RegVar1"), labelField, "TankLevel");
    notes.set(named("RegVar2"), labelField, "STDMSG3"); // which no file and no table lets in
    EXPECT_EQ(itemCalled("tanklevel", notes), named("RegVar1"));
    EXPECT_EQ(itemCalled("STDMSG3", notes), named("STDMSG3"));
    EXPECT_EQ(itemCalled("regular3", notes), named("STDMSG3"));
    EXPECT_EQ(itemCalled("Emergency2", notes), named("ALTMSG2"));
    EXPECT_EQ(itemCalled("Tank", notes), std::nullopt);
    EXPECT_EQ(itemCalled("", notes), std::nullopt);
}

TEST(ProjectNotes, TellFaultsByItem) {
    ProjectNotes notes;
    notes.set(named("RegVar1"), {"Level", "", ""});
    notes.set(named("RegVar2"), {"level", "12345678901234567", ""});
    EXPECT_THAT(
        noteFaults(notes),
        ElementsAre(
            NoteFault{named("RegVar2"), &noteFields[1], "\"12345678901234567\" is longer than 16 characters"},
            NoteFault{named("RegVar2"), &labelField, "\"level\" is the label of RegVar1 already"}));
}

TEST(NotesJson, SayWhereAMasterMayBeHidden) {
    EXPECT_FALSE(readNotes(R"({"version": 1, "master": {"list": "d.csv"}})").mayHideMaster);
    EXPECT_FALSE(readNotes(R"({"version": 1, "items": 7})").mayHideMaster);
    EXPECT_FALSE(readNotes("x").mayHideMaster);
    EXPECT_TRUE(readNotes(R"({"version": 1, "master": {"list": 7}})").mayHideMaster);
    EXPECT_TRUE(readNotes(R"({"version": 1, "master": {"list": "d.csv"})").mayHideMaster);
    EXPECT_TRUE(readNotes(std::string(mostNotesBytes + 1, ' ')).mayHideMaster);
}

} // namespace
} // namespace orvista
