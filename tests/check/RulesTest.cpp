#include "check/Rules.h"

#include "check/FileFindings.h"
#include "check/FindingList.h"
#include "check/MasterCheck.h"
#include "model/ProjectFile.h"
#include "sheets/FleetSheet.h"
#include "tests/check/ExampleProject.h"
#include "tests/support/ScriptedPeople.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace orvista {
namespace {

using Found = std::vector<std::string>;

/// Findings of a project file, in whose folder lie the device files of a new project.
Findings foundInFile(const std::string& bytes) {
    const testing::TemporaryFolder folder;
    const PathRules paths = PathRules::native();
    testing::ScriptedMessages messages;
    const DocMgrModule::FileContext context{paths, messages};
    DocMgrModule::SaveProject(folder.path(), "P", {}, context);
    testing::writeBytes(folder.file("P.orx"), bytes);
    FileRemarks remarks;
    Project project;
    DocMgrModule::readProjectWithoutWriting(folder.file("P.orx"), project, context, &remarks);
    return fileFindings(remarks);
}

/// Findings of the master of a list, for each of its displays.
Findings foundOnDisplays(const ExampleProject& made, Notes notes) {
    const Master master(made.project);
    MasterCheck check(master, made.bitmaps);
    SheetErrors errors;
    Findings findings;
    for (const FleetDisplay& display : readFleetSheet(*made.displays, {"", "P.orx"}, errors))
        append(findings, check.check(master.expand(display), 128, notes));
    EXPECT_TRUE(errors.none());
    return findings;
}

/// Names of the codes that are found in an example.
Found foundIn(std::string_view example, Notes notes) {
    const ExampleProject made(example);
    Found names;
    const Findings findings = made.projectFile ? foundInFile(*made.projectFile)
                              : made.displays  ? foundOnDisplays(made, notes)
                                               : checkProject(made.project, made.bitmaps, 128, notes);
    for (const Finding& finding : findings.list)
        names.emplace_back(finding.rule().name);
    return names;
}

bool isAboutAFile(const Rule& rule) {
    return rule.example.starts_with(projectFileName);
}

/// Such examples are parts of a file, so that other rules are found, too.
TEST(Rules, OfFilesAreFoundInTheirExampleAndNotBesideIt) {
    for (const Rule& rule : rules()) {
        if (!isAboutAFile(rule))
            continue;
        EXPECT_THAT(foundIn(rule.example, Notes::LeftOut), ::testing::Contains(rule.name));
        EXPECT_THAT(foundIn(rule.clean, Notes::LeftOut), ::testing::Not(::testing::Contains(rule.name)));
    }
}

TEST(Rules, AreFoundInTheirExampleAndNotBesideIt) {
    for (const Rule& rule : rules()) {
        if (isAboutAFile(rule))
            continue;
        const Notes notes = rule.severity == Severity::Note ? Notes::Included : Notes::LeftOut;
        EXPECT_EQ(foundIn(rule.example, notes), Found{std::string(rule.name)});
        EXPECT_EQ(foundIn(rule.clean, notes), Found{}) << rule.name;
    }
}

TEST(Rules, HaveExamplesThatDiffer) {
    for (const Rule& rule : rules())
        EXPECT_NE(rule.example, rule.clean) << rule.name;
}

TEST(Rules, HaveTextsThatEveryTerminalAndHelpViewerShows) {
    for (const Rule& rule : rules()) {
        for (const std::string_view text : {rule.name, rule.title, rule.explanation}) {
            EXPECT_FALSE(text.empty()) << rule.name;
            EXPECT_TRUE(std::ranges::all_of(text, [](char c) { return c >= ' ' && c <= '~'; })) << text;
        }
        EXPECT_FALSE(rule.title.ends_with('.')) << rule.name;
        EXPECT_TRUE(rule.explanation.ends_with('.')) << rule.name;
    }
}

TEST(Rules, AreKnownByTheirNames) {
    EXPECT_EQ(rules().size(), static_cast<std::size_t>(Code::Count));
    for (const Rule& rule : rules())
        EXPECT_EQ(ruleNamed(rule.name), &rule);
    EXPECT_EQ(ruleNamed("text"), nullptr);
    EXPECT_EQ(ruleNamed(""), nullptr);
    EXPECT_EQ(ruleOf(Code::NotInUse).name, "not-in-use");
    EXPECT_EQ(ruleOf(Code::NotInUse).severity, Severity::Note);
    EXPECT_EQ(ruleOf(Code::TextCut).severity, Severity::Warning);
    EXPECT_EQ(ruleOf(Code::LostMessage).severity, Severity::Error);
}

TEST(Examples, AreReadAsTheyAreWritten) {
    EXPECT_EQ(placesOf("STDMSG1:\n  CLEAR\n  2 x TIME 0\n    a\n  (a blank)\nproject file:\n  [CONFIG]"),
              (std::map<std::string, std::string>{{"STDMSG1", "CLEAR\r\nTIME 0\r\nTIME 0\r\n  a\r\n "},
                                                  {"project file", "[CONFIG]"}}));
    EXPECT_THROW(placesOf("STDMSG1"), std::invalid_argument);
    EXPECT_THROW(ExampleProject("STDMSG41:\n  CLEAR"), std::invalid_argument);
    EXPECT_THROW(ExampleProject("RegVar1:\n  with 7"), std::invalid_argument);
    EXPECT_THROW(ExampleProject("nowhere:\n  CLEAR 1"), std::invalid_argument);
}

} // namespace
} // namespace orvista
