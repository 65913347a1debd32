#include "tests/support/RecordedTransitions.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>

namespace orvista::testing {
namespace {

using enum ProjectTransition;

/// The kinds of commands that are enabled after these transitions.
std::string enabledAfter(std::initializer_list<ProjectTransition> transitions) {
    RecordedTransitions recorded;
    for (const ProjectTransition transition : transitions)
        recorded.add(transition);
    std::string enabled;
    for (const auto& [name, rule] : {std::pair{"always ", EnablingRules::always},
                                     {"save ", EnablingRules::save},
                                     {"saveAs ", EnablingRules::saveAs},
                                     {"uploadEntry ", EnablingRules::uploadEntry},
                                     {"uploadButton ", EnablingRules::uploadButton},
                                     {"projectWork ", EnablingRules::projectWork}}) {
        if (recorded.enabled(rule))
            enabled += name;
    }
    return enabled;
}

TEST(CommandEnabling, AResetDisablesAllThatIsNotAlwaysEnabled) {
    EXPECT_EQ(enabledAfter({Reset}), "always ");
    EXPECT_EQ(enabledAfter({Saved, Opened, Modified, Reset}), "always ");
}

TEST(CommandEnabling, StartUpEnablesSaveAsAndBothUploads) {
    EXPECT_EQ(enabledAfter({Reset, Saved}), "always saveAs uploadEntry uploadButton ");
}

TEST(CommandEnabling, ANewProjectCanBeSavedAndUploadedFromTheToolbarOnly) {
    EXPECT_EQ(enabledAfter({Reset, Modified, Opened}), "always save saveAs uploadButton projectWork ");
}

TEST(CommandEnabling, ANewProjectOfTheStartUpDialogKeepsTheUploadEntry) {
    EXPECT_EQ(enabledAfter({Reset, Saved, Modified, Opened}),
              "always save saveAs uploadEntry uploadButton projectWork ");
}

TEST(CommandEnabling, AnOpenedProjectCanDoAllButSave) {
    EXPECT_EQ(enabledAfter({Reset, Saved, Opened}), "always saveAs uploadEntry uploadButton projectWork ");
}

TEST(CommandEnabling, ALaterEditDoesNotTakeUploadAway) {
    EXPECT_EQ(enabledAfter({Reset, Saved, Opened, Modified}),
              "always save saveAs uploadEntry uploadButton projectWork ");
}

TEST(CommandEnabling, SavingANewProjectEnablesTheUploadEntry) {
    EXPECT_EQ(enabledAfter({Reset, Modified, Opened, Saved}),
              "always saveAs uploadEntry uploadButton projectWork ");
}

TEST(CommandEnabling, ADownloadedProjectCannotBeUploadedBeforeItIsSaved) {
    EXPECT_EQ(enabledAfter({Reset, Modified, ProjectCommands}), "always save saveAs projectWork ");
}

} // namespace
} // namespace orvista::testing
