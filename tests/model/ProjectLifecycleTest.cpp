#include "model/ProjectLifecycle.h"
#include "model/SystemPath.h"

#include "tests/support/ExpectedFiles.h"
#include "tests/support/RecordedTransitions.h"
#include "tests/support/ScriptedPeople.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <optional>

namespace orvista::DocMgrModule {
namespace {

using namespace orvista::testing;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
namespace fs = std::filesystem;
using Shown = ScriptedMessages::Shown;

/// Keeps what it is shown. Like the real window it marks the project modified when a refresh changes the
/// address box.
class FakeWindow final : public ProjectWindow {
public:
    explicit FakeWindow(const Project& project) : project_(project) {}

    void RefreshViews() override {
        ++refreshes;
        systemName = project_.ProjName;
        if (shownAddress != project_.IP) {
            shownAddress = project_.IP;
            mark->SetModified(true);
        }
    }
    void showCaption(const std::string& text) override { caption = text; }
    void follow(ProjectTransition transition) override { transitions.add(transition); }
    void showProjectName(const std::string& name) override { systemName = name; }
    void beforeReplacing(const std::string& folder, const FileRemarks& remarks) override {
        replacedIn = folder;
        metBefore = remarks.list();
    }
    void beforeSaving(const std::string& path) override { aboutToSave.push_back(path); }

    ModifiedMark* mark = nullptr;
    int refreshes = 0;
    std::string systemName;
    std::string shownAddress;
    std::string caption;
    std::string replacedIn;
    std::vector<FileRemark> metBefore;
    std::vector<std::string> aboutToSave;
    RecordedTransitions transitions;

private:
    const Project& project_;
};

class Lifecycle : public ::testing::Test {
protected:
    Lifecycle() {
        window.mark = &lifecycle;
        fs::create_directory(systemPath(environment.programFolder));
        fs::create_directory(systemPath(plants));
        startUp();
    }

    void startUp() {
        lifecycle.InitProject();
        lifecycle.SetModified(false);
    }
    std::string plant(const std::string& name) const { return environment.paths.join(plants, name); }
    bool exists(const std::string& path) const { return fs::exists(systemPath(path)); }
    /// Writes a project whose address differs from the default one.
    void storeProject(const std::string& name) {
        Project stored;
        stored.IP = "127.0.0.1";
        ScriptedMessages silent;
        ASSERT_EQ(SaveProject(plants, name, stored, {environment.paths, silent}), SaveOutcome::Saved);
    }
    void create(const std::string& name) {
        chooser.newProjects.push_back({plants, name});
        lifecycle.NewProjectCommand();
    }
    void expectReset() {
        EXPECT_EQ(window.caption, "Orvista Message Editor");
        EXPECT_EQ(window.transitions.last(), ProjectTransition::Reset);
        EXPECT_EQ(project.ProjName, "");
        EXPECT_EQ(project.ProjPath, environment.programFolder);
        EXPECT_FALSE(project.modified);
    }

    TemporaryFolder folder;
    ProgramEnvironment environment{folder.file("program")};
    std::string plants = folder.file("plants");
    Project project;
    ConfigModule::History history{environment.paths, environment.programFolder};
    ScriptedMessages messages;
    ScriptedChooser chooser;
    FakeWindow window{project};
    ProjectLifecycle lifecycle{project, history, environment, messages, chooser, window};
};

TEST_F(Lifecycle, StartUpLeavesTheUnnamedProjectClean) {
    EXPECT_EQ(window.caption, "Orvista Message Editor");
    EXPECT_FALSE(project.modified);
    EXPECT_EQ(history.rows()[0], environment.programFolder + environment.paths.separator);
    EXPECT_TRUE(window.transitions.enabled(EnablingRules::saveAs));
    EXPECT_TRUE(window.transitions.enabled(EnablingRules::uploadEntry));
    EXPECT_TRUE(window.transitions.enabled(EnablingRules::uploadButton));
    EXPECT_FALSE(window.transitions.enabled(EnablingRules::save));
    EXPECT_FALSE(window.transitions.enabled(EnablingRules::projectWork));
}

TEST_F(Lifecycle, AResetIsUnmodifiedWhateverTheRefreshDid) {
    create("A");
    project.IP = window.shownAddress = "127.0.0.3";
    const auto rows = history.rows();
    lifecycle.InitProject();
    expectReset();
    EXPECT_EQ(history.rows(), rows) << "a reset is not recorded";
    EXPECT_EQ(window.systemName, "A") << "the views are rebuilt before the name is emptied";
}

TEST_F(Lifecycle, AResetFillsEveryTableWithItsDefaults) {
    create("A");
    project.AnalogInput = project.DigitalInput = project.AlertMessage = project.RegularMessage = -1;
    project.RegVar.fill({"x", "x", "x", "x"});
    project.CoilVar.fill({"x", "x", "x", "x"});
    project.STDMSG.fill("x");
    project.ALTMSG.fill("x");
    project.SerialPort = project.IP = "x";
    lifecycle.InitProject();
    const Project defaults;
    EXPECT_EQ(project.AnalogInput, 100);
    EXPECT_EQ(project.DigitalInput, 100);
    EXPECT_EQ(project.AlertMessage, 300);
    EXPECT_EQ(project.RegularMessage, 320);
    EXPECT_EQ(project.RegVar, defaults.RegVar);
    EXPECT_EQ(project.CoilVar, defaults.CoilVar);
    EXPECT_THAT(project.STDMSG, ::testing::Each("CLEAR"));
    EXPECT_THAT(project.ALTMSG, ::testing::Each("CLEAR"));
    EXPECT_EQ(project.SerialPort, "COM1");
    EXPECT_EQ(project.IP, defaults.IP);
    EXPECT_EQ(window.shownAddress, defaults.IP) << "the views are rebuilt from the defaults";
}

TEST_F(Lifecycle, ANewProjectIsModifiedAndNotOnDisk) {
    const int before = window.refreshes;
    create("Plant2");
    EXPECT_EQ(window.caption, "Orvista Message Editor - [Plant2*]");
    EXPECT_TRUE(project.modified);
    EXPECT_EQ(window.refreshes, before + 2);
    EXPECT_TRUE(window.transitions.enabled(EnablingRules::projectWork));
    EXPECT_TRUE(window.transitions.enabled(EnablingRules::uploadButton));
    EXPECT_FALSE(window.transitions.enabled(EnablingRules::uploadEntry));
    EXPECT_FALSE(exists(plant("Plant2.orx")));
    EXPECT_THAT(chooser.newProjectCaptions, ElementsAre(""));
}

TEST_F(Lifecycle, NewThenSaveWritesSixFilesAndClearsTheMark) {
    create("Plant");
    EXPECT_EQ(lifecycle.SaveCommand(), SaveOutcome::Saved);
    EXPECT_EQ(window.caption, "Orvista Message Editor - [Plant]");
    EXPECT_EQ(fileBytes(plant("Plant.orx")), expectedProjectFile(project.IP));
    for (const char* name : {"modbus.adr", "stdmsg.ilm", "altmsg.ilm", "ilmvar.def", "default.pls"})
        EXPECT_TRUE(exists(plant(name))) << name;
    EXPECT_EQ(history.rows()[0], plant("Plant"));
    EXPECT_FALSE(window.transitions.enabled(EnablingRules::save));
    EXPECT_TRUE(window.transitions.enabled(EnablingRules::uploadEntry));
}

TEST_F(Lifecycle, OpeningReadsTheProjectAndRecordsIt) {
    storeProject("Line3");
    chooser.existingProjects.push_back({plants, "Line3"});
    lifecycle.OpenProjectCommand();
    EXPECT_EQ(window.caption, "Orvista Message Editor - [Line3]");
    EXPECT_EQ(project.IP, "127.0.0.1");
    EXPECT_FALSE(project.modified);
    EXPECT_EQ(window.systemName, "Line3");
    EXPECT_EQ(history.rows()[0], plant("Line3"));
    EXPECT_TRUE(window.transitions.enabled(EnablingRules::projectWork));
    EXPECT_TRUE(window.transitions.enabled(EnablingRules::uploadEntry));
    EXPECT_FALSE(window.transitions.enabled(EnablingRules::save));
    EXPECT_THAT(messages.shown, IsEmpty());
}

TEST_F(Lifecycle, OpenOnAModifiedProjectNoThenCancelLosesIt) {
    create("Plant");
    messages.answers = {Answer::No};
    lifecycle.OpenProjectCommand();
    EXPECT_THAT(messages.asked, ElementsAre("Do you want to save current project before open new one?"));
    expectReset();
    EXPECT_FALSE(exists(plant("Plant.orx")));
}

TEST_F(Lifecycle, NewOnAModifiedProjectYesSavesIt) {
    create("Plant");
    messages.answers = {Answer::Yes};
    lifecycle.NewProjectCommand(); // the dialog is cancelled
    EXPECT_THAT(messages.asked, ElementsAre("Do you want to save current project before create new one?"));
    EXPECT_TRUE(exists(plant("Plant.orx")));
    EXPECT_EQ(history.rows()[0], plant("Plant"));
    expectReset();
}

TEST_F(Lifecycle, AnUnmodifiedProjectIsNotAskedFor) {
    create("Plant");
    lifecycle.SaveCommand();
    lifecycle.NewProjectCommand();
    EXPECT_THAT(messages.asked, IsEmpty());
    expectReset();
}

TEST_F(Lifecycle, ASaveThatFailsStopsNewAndOpen) {
    create("Plant");
    fs::create_directory(systemPath(plant("Plant.orx")));
    const auto rows = history.rows();
    for (const bool open : {false, true}) {
        messages.answers = {Answer::Yes};
        open ? lifecycle.OpenProjectCommand() : lifecycle.NewProjectCommand();
        EXPECT_EQ(window.caption, "Orvista Message Editor - [Plant*]");
        EXPECT_TRUE(project.modified);
    }
    EXPECT_EQ(messages.shown.size(), 2U);
    EXPECT_EQ(messages.shown[0], (Shown{MessageIcon::Exclamation, "unable to open " + plant("Plant.orx")}));
    EXPECT_EQ(chooser.existingAsked, 0);
    EXPECT_EQ(history.rows(), rows) << "a save that failed is not recorded";
}

TEST_F(Lifecycle, AFailedDeviceFileDoesNotStopNew) {
    create("Plant");
    fs::create_directory(systemPath(plant("default.pls")));
    messages.answers = {Answer::Yes};
    create("Next");
    EXPECT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(window.caption, "Orvista Message Editor - [Next*]");
}

TEST_F(Lifecycle, AFailedDeviceFileStillClearsTheMark) {
    create("Plant");
    fs::create_directory(systemPath(plant("default.pls")));
    EXPECT_EQ(lifecycle.SaveCommand(), SaveOutcome::DeviceFileFailed);
    EXPECT_EQ(window.caption, "Orvista Message Editor - [Plant]");
}

TEST_F(Lifecycle, AFailedOpenLeavesTheResetState) {
    chooser.existingProjects.push_back({plants, "Gone"});
    lifecycle.OpenProjectCommand();
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0], (Shown{MessageIcon::None, "Unable to open " + plant("Gone.orx")}));
    expectReset();
    EXPECT_EQ(history.rows()[0], environment.programFolder + environment.paths.separator);
}

TEST_F(Lifecycle, TheUnnamedHistoryRowFailsToOpen) {
    chooser.existingProjects.push_back({environment.programFolder, ""});
    lifecycle.OpenProjectCommand();
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].text,
              "Unable to open " + environment.programFolder + environment.paths.separator + ".orx");
}

TEST_F(Lifecycle, AGivenFileIsOpenedAsByOpenWithoutItsDialog) {
    storeProject("Line3");
    create("Plant");
    messages.answers = {Answer::No};
    lifecycle.openGivenProject(plant("Line3.orx"));
    EXPECT_THAT(messages.asked, ElementsAre("Do you want to save current project before open new one?"));
    EXPECT_EQ(chooser.existingAsked, 0);
    EXPECT_EQ(window.caption, "Orvista Message Editor - [Line3]");
    EXPECT_EQ(project.IP, "127.0.0.1");
    EXPECT_EQ(history.rows()[0], plant("Line3"));
    EXPECT_TRUE(window.transitions.enabled(EnablingRules::projectWork));
    EXPECT_TRUE(window.transitions.enabled(EnablingRules::uploadButton));
    EXPECT_FALSE(exists(plant("Plant.orx")));
}

TEST_F(Lifecycle, ASaveThatFailsStopsTheOpeningOfAGivenFile) {
    storeProject("Line3");
    create("Plant");
    fs::create_directory(systemPath(plant("Plant.orx")));
    messages.answers = {Answer::Yes};
    lifecycle.openGivenProject(plant("Line3.orx"));
    EXPECT_EQ(window.caption, "Orvista Message Editor - [Plant*]");
    EXPECT_TRUE(window.transitions.enabled(EnablingRules::projectWork));
}

TEST_F(Lifecycle, AGivenFileThatCannotBeReadLeavesTheResetState) {
    create("Plant");
    lifecycle.SaveCommand();
    lifecycle.openGivenProject(plant("Gone.orx"));
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0], (Shown{MessageIcon::None, "Unable to open " + plant("Gone.orx")}));
    expectReset();
}

TEST_F(Lifecycle, AReloadDiscardsChangesWithoutAQuestion) {
    storeProject("A");
    lifecycle.openProjectFile(plant("A.orx"));
    project.STDMSG[0] = "mine";
    lifecycle.SetModified(true);
    lifecycle.ReloadCommand();
    EXPECT_EQ(project.STDMSG[0], "CLEAR\r\n");
    EXPECT_EQ(window.caption, "Orvista Message Editor - [A]");
    EXPECT_TRUE(messages.asked.empty());
}

TEST_F(Lifecycle, AReloadOfAFileThatCannotBeReadChangesNothing) {
    create("A");
    lifecycle.ReloadCommand();
    EXPECT_EQ(window.caption, "Orvista Message Editor - [A*]");
    EXPECT_EQ(messages.shown, (std::vector<ScriptedMessages::Shown>{
                                  {MessageIcon::None, "Unable to open " + plant("A.orx")}}));
}

TEST_F(Lifecycle, TheWindowIsToldOfEverySaveBefore) {
    create("A");
    lifecycle.SaveCommand();
    chooser.saveAsPaths.push_back(plant("B.orx"));
    lifecycle.SaveAsCommand();
    EXPECT_EQ(window.aboutToSave, (std::vector<std::string>{plant("A.orx"), plant("B.orx")}));
}

TEST_F(Lifecycle, SaveAsTakesFolderAndNameFromThePath) {
    create("Plant");
    chooser.saveAsPaths.push_back(plant("Line3.orx"));
    lifecycle.SaveAsCommand();
    EXPECT_THAT(chooser.proposedNames, ElementsAre("Plant"));
    EXPECT_EQ(project.ProjPath, plants);
    EXPECT_EQ(project.ProjName, "Line3");
    EXPECT_EQ(window.caption, "Orvista Message Editor - [Line3]");
    EXPECT_EQ(window.systemName, "Line3");
    EXPECT_EQ(history.rows()[0], plant("Line3"));
    EXPECT_THAT(history.rows(), ::testing::Not(::testing::Contains(plant("Plant"))));
    EXPECT_TRUE(exists(plant("Line3.orx")));
}

TEST_F(Lifecycle, SaveAsSplitsAWindowsPathAtItsLastBackslash) {
    environment.paths = PathRules::windows();
    const std::string p = plants + "\\P";
    fs::create_directory(systemPath(p));
    create("Plant");
    chooser.saveAsPaths.push_back(p + "\\Line3.orx");
    lifecycle.SaveAsCommand();
    EXPECT_EQ(project.ProjPath, p);
    EXPECT_EQ(project.ProjName, "Line3");
    EXPECT_EQ(fileBytes(p + "\\Line3.orx"), expectedProjectFile(project.IP));
    EXPECT_EQ(history.rows()[0], p + "\\Line3");
}

TEST_F(Lifecycle, SaveAsFromTheStartUpStateEnablesTheProject) {
    chooser.saveAsPaths.push_back(plant("First.orx"));
    lifecycle.SaveAsCommand();
    EXPECT_TRUE(window.transitions.enabled(EnablingRules::projectWork));
    EXPECT_FALSE(window.transitions.enabled(EnablingRules::save));
}

TEST_F(Lifecycle, SaveAsWithAShortFilePartTakesAnEmptyName) {
    create("Plant");
    chooser.saveAsPaths.push_back(plant("abc"));
    lifecycle.SaveAsCommand();
    EXPECT_EQ(project.ProjName, "");
    EXPECT_TRUE(exists(plant(".orx")));
}

TEST_F(Lifecycle, SaveAsCancelledOrWithoutAFolderDoesNothing) {
    create("Plant");
    lifecycle.SaveAsCommand();
    chooser.saveAsPaths.push_back("Line3.orx");
    lifecycle.SaveAsCommand();
    EXPECT_EQ(window.caption, "Orvista Message Editor - [Plant*]");
    EXPECT_THAT(messages.shown, IsEmpty());
}

TEST_F(Lifecycle, ASaveAsThatFailsKeepsTheOldIdentity) {
    create("Plant");
    const auto rows = history.rows();
    const std::string chosen = environment.paths.join(plant("missing"), "Line3.orx");
    chooser.saveAsPaths.push_back(chosen);
    lifecycle.SaveAsCommand();
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0], (Shown{MessageIcon::Exclamation, "unable to open " + chosen}));
    EXPECT_EQ(window.caption, "Orvista Message Editor - [Plant*]");
    EXPECT_EQ(project.ProjPath, plants);
    EXPECT_EQ(project.ProjName, "Plant");
    EXPECT_EQ(window.systemName, "Plant");
    EXPECT_EQ(history.rows(), rows);
}

TEST_F(Lifecycle, AFileOfTheCommandLineIsOpenedAtOnce) {
    storeProject("Line3");
    lifecycle.openProjectFile(plant("Line3.orx"));
    EXPECT_EQ(window.caption, "Orvista Message Editor - [Line3]");
    EXPECT_TRUE(window.transitions.enabled(EnablingRules::projectWork));
}

TEST_F(Lifecycle, AFileOfTheCommandLineThatCannotBeReadLeavesTheResetState) {
    lifecycle.openProjectFile(plant("Gone.orx"));
    lifecycle.openProjectFile(plant("notes.txt"));
    ASSERT_EQ(messages.shown.size(), 2U);
    EXPECT_EQ(messages.shown[0].text, "Unable to open " + plant("Gone.orx"));
    EXPECT_EQ(messages.shown[1].text, "Unable to open " + plant("notes.txt"));
    EXPECT_EQ(window.caption, "Orvista Message Editor");
    EXPECT_FALSE(window.transitions.enabled(EnablingRules::projectWork));
}

TEST_F(Lifecycle, ADownloadedProjectIsModifiedAndNotUploadable) {
    lifecycle.InitProject();
    lifecycle.adoptDownloadedProject({plants, "Fetched"});
    EXPECT_EQ(window.caption, "Orvista Message Editor - [Fetched*]");
    EXPECT_TRUE(window.transitions.enabled(EnablingRules::projectWork));
    EXPECT_FALSE(window.transitions.enabled(EnablingRules::uploadButton));
    EXPECT_FALSE(window.transitions.enabled(EnablingRules::uploadEntry));
    EXPECT_FALSE(exists(plant("Fetched.orx")));
}

TEST_F(Lifecycle, UnsavedWorkBecomesAProjectThatIsModified) {
    Project work;
    work.ProjPath = plants;
    work.ProjName = "Lost";
    work.STDMSG[0] = "CLEAR\r\nACT STILL 1";
    EXPECT_TRUE(lifecycle.openUnsavedWork(work));
    EXPECT_EQ(project.STDMSG[0], work.STDMSG[0]);
    EXPECT_EQ(window.caption, "Orvista Message Editor - [Lost*]");
    EXPECT_TRUE(window.transitions.enabled(EnablingRules::projectWork));
    EXPECT_FALSE(exists(plant("Lost.orx")));
}

TEST_F(Lifecycle, ASaveThatFailsStopsTheOpeningOfUnsavedWork) {
    create("Plant");
    fs::create_directory(systemPath(plant("Plant.orx")));
    messages.answers = {Answer::Yes};
    EXPECT_FALSE(lifecycle.openUnsavedWork({}));
    EXPECT_EQ(window.caption, "Orvista Message Editor - [Plant*]");
}

TEST_F(Lifecycle, AProjectFolderThatWasRemovedKeepsTheProjectOpenAndModified) {
    create("Plant");
    lifecycle.SaveCommand();
    lifecycle.SetModified(true);
    fs::remove_all(systemPath(plants));
    EXPECT_EQ(lifecycle.SaveCommand(), SaveOutcome::ProjectFileFailed);
    EXPECT_EQ(window.caption, "Orvista Message Editor - [Plant*]");
    EXPECT_TRUE(window.transitions.enabled(EnablingRules::save));
}

} // namespace
} // namespace orvista::DocMgrModule
