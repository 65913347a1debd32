#include "model/CommandStates.h"

#include <gtest/gtest.h>

namespace orvista {
namespace {

// save, save as, upload entry, four page entries, toolbar save, toolbar upload, pages, tree
constexpr CommandStates resetStates = {false, false, false, false, false, false,
                                       false, false, false, false, false};

CommandStates afterReset() {
    CommandStates states;
    states.reset();
    return states;
}

TEST(CommandStates, ResetDisablesEverything) {
    EXPECT_EQ(afterReset(), resetStates);
}

TEST(CommandStates, StartUpEnablesSaveAsAndBothUploads) {
    CommandStates states = afterReset();
    states.markModified(false);
    EXPECT_EQ(states,
              (CommandStates{false, true, true, false, false, false, false, false, true, false, false}));
}

TEST(CommandStates, ANewProjectCanBeSavedAndUploadedFromTheToolbarOnly) {
    CommandStates states = afterReset();
    states.markModified(true);
    states.enableOpenedProject();
    EXPECT_EQ(states, (CommandStates{true, true, false, true, true, true, true, true, true, true, true}));
}

TEST(CommandStates, AnOpenedProjectCanDoAllButSave) {
    CommandStates states = afterReset();
    states.markModified(false);
    states.enableOpenedProject();
    EXPECT_EQ(states, (CommandStates{false, true, true, true, true, true, true, false, true, true, true}));
}

TEST(CommandStates, ALaterEditDoesNotTakeUploadAway) {
    CommandStates states = afterReset();
    states.markModified(false);
    states.enableOpenedProject();
    states.markModified(true);
    EXPECT_EQ(states, (CommandStates{true, true, true, true, true, true, true, true, true, true, true}));
}

TEST(CommandStates, SavingANewProjectEnablesTheUploadEntry) {
    CommandStates states = afterReset();
    states.markModified(true);
    states.enableOpenedProject();
    states.markModified(false);
    EXPECT_EQ(states, (CommandStates{false, true, true, true, true, true, true, false, true, true, true}));
}

TEST(CommandStates, SavingAsFromTheStartUpStateEnablesTheProject) {
    CommandStates states = afterReset();
    states.markModified(false); // start-up
    states.markModified(false); // the save
    states.enableOpenedProject();
    EXPECT_EQ(states, (CommandStates{false, true, true, true, true, true, true, false, true, true, true}));
}

TEST(CommandStates, ADownloadedProjectCannotBeUploadedBeforeItIsSaved) {
    CommandStates states = afterReset();
    states.markModified(true);
    states.enableProjectCommands();
    EXPECT_EQ(states, (CommandStates{true, true, false, true, true, true, true, true, false, true, true}));
}

} // namespace
} // namespace orvista
