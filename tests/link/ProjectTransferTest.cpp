#include "link/ProjectTransfer.h"

#include "link/TransferredFiles.h"
#include "model/Numbers.h"
#include "tests/support/RecordedTransitions.h"
#include "tests/support/ScriptedControl.h"
#include "tests/support/ScriptedPeople.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <string>
#include <vector>

namespace orvista::DocTsfModule {
namespace {

using orvista::testing::ControlScript;
using orvista::testing::fileBytes;
using orvista::testing::lastPart;
using orvista::testing::RecordedTransitions;
using orvista::testing::ScriptedChooser;
using orvista::testing::ScriptedControl;
using orvista::testing::ScriptedMessages;
using orvista::testing::TemporaryFolder;
using orvista::testing::writeBytes;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;

using Lines = std::vector<std::string>;

/// Messages land among the control's calls, so that their order shows.
class JournalMessages final : public Messages {
public:
    explicit JournalMessages(Lines& calls) : calls_(calls) {}
    void show(MessageIcon icon, const std::string& text) override {
        static constexpr std::array icons = {"none", "information", "exclamation"};
        calls_.push_back(std::string(icons.at(static_cast<std::size_t>(icon))) + ": " + text);
    }
    bool askYesNo(const std::string& text) override {
        calls_.push_back("ask: " + text);
        return answer.value();
    }
    Answer askYesNoCancel(const std::string&) override { throw std::logic_error("unexpected question"); }

    std::optional<bool> answer;

private:
    Lines& calls_;
};

class ScriptedDialogs final : public TransferDialogs {
public:
    std::optional<DeviceConnection> chooseConnection(const std::string& deviceAddress,
                                                     const std::string& caption) override {
        captions.push_back(caption);
        proposed.push_back(deviceAddress);
        return connection;
    }
    std::unique_ptr<TransferProgress> showProgress(const std::string& title) override {
        shown.push_back(title);
        ++open;
        return std::make_unique<Progress>(*this);
    }

    void showCause(const std::string& text) override { cause = text; }

    std::string cause = "of an earlier transfer";
    std::optional<DeviceConnection> connection = DeviceConnection{"127.0.0.1", "7000"};
    Lines proposed;
    Lines captions;
    Lines shown;
    int open = 0;

private:
    class Progress final : public TransferProgress {
    public:
        explicit Progress(ScriptedDialogs& dialogs) : dialogs_(dialogs) {}
        ~Progress() override { --dialogs_.open; }
        void showActivity(const std::string& text) override { dialogs_.shown.push_back(text); }
        void showFile(const std::string& name, std::size_t number, std::size_t count) override {
            dialogs_.shown.push_back(name + " " + std::to_string(number) + "/" + std::to_string(count));
        }

    private:
        ScriptedDialogs& dialogs_;
    };
};

class RecordedWindow final : public ProjectWindow {
public:
    void RefreshViews() override { ++refreshes; }
    void showCaption(const std::string& text) override { caption = text; }
    void follow(ProjectTransition transition) override { transitions.add(transition); }
    void showProjectName(const std::string&) override {}
    void beforeReplacing(const std::string&, const FileRemarks&) override {}
    void beforeSaving(const std::string&) override {}

    int refreshes = 0;
    std::string caption;
    RecordedTransitions transitions;
};

class ProjectTransferTest : public ::testing::Test {
protected:
    ProjectTransferTest() {
        std::filesystem::create_directory(projectFolder);
        std::filesystem::create_directory(targetFolder);
        project.ProjPath = projectFolder;
        project.ProjName = "Plant";
        project.IP = "127.0.0.1";
    }

    std::string inProject(const std::string& name) const {
        return PathRules::native().join(projectFolder, name);
    }
    std::string inTarget(const std::string& name) const {
        return PathRules::native().join(targetFolder, name);
    }
    std::string uploadOf(const std::string& name) const { return "UploadFile " + inProject(name); }

    Lines uploadCalls(const Lines& names, const Lines& end) const {
        Lines calls = {"RemoteAddress <127.0.0.1>", "RemotePort 7000", "OpenLink", "PrepareUpload <>"};
        for (const std::string& name : names)
            calls.push_back(uploadOf(name));
        calls.insert(calls.end(), end.begin(), end.end());
        return calls;
    }

    void chooseTarget() { chooser.newProjects.push_back({targetFolder, "Fetched"}); }
    void blockDeviceFile(const std::string& name) const {
        std::filesystem::create_directory(inProject(name));
    }

    TemporaryFolder folder;
    std::string projectFolder = folder.file("project");
    std::string targetFolder = folder.file("target");
    Project project;
    DocMgrModule::ProgramEnvironment environment{folder.path()};
    ConfigModule::History history{environment.paths, environment.programFolder};
    ControlScript script;
    JournalMessages messages{script.calls};
    ScriptedChooser chooser;
    RecordedWindow window;
    ScriptedDialogs dialogs;
    DocMgrModule::ProjectLifecycle lifecycle{project, history, environment, messages, chooser, window};
    ProjectTransfer transfer{project,
                             lifecycle,
                             chooser,
                             dialogs,
                             messages,
                             [this](TransferProgress& progress) {
                                 return std::make_unique<ScriptedControl>(script, progress); }};

    const Lines deviceFiles = {"modbus.adr", "ilmvar.def", "stdmsg.ilm", "altmsg.ilm", "default.pls"};
    const Lines success = {"FinishUpload", "CloseLink", "information: All files were successfully uploaded"};
};

TEST_F(ProjectTransferTest, UploadWithoutBitmapsSendsExactlyFiveFiles) {
    transfer.Upload();
    EXPECT_THAT(script.calls, ElementsAreArray(uploadCalls(deviceFiles, success)));
    EXPECT_THAT(dialogs.proposed, ElementsAre("127.0.0.1"));
    EXPECT_EQ(dialogs.open, 0);
}

TEST_F(ProjectTransferTest, UploadOfAnUnmodifiedProjectSavesNothing) {
    transfer.Upload();
    EXPECT_THAT(bitmapsOfFolder(projectFolder), IsEmpty());
    EXPECT_TRUE(std::filesystem::is_empty(projectFolder));
}

TEST_F(ProjectTransferTest, BitmapsFollowInTheListsOrder) {
    for (const char* name : {"b.bmp", "A.BMP", "c.Bmp", "_.bmp", ".bmp", "notes.txt", "a.bmp.txt", "abmp"})
        writeBytes(inProject(name), "x");
    std::filesystem::create_directory(inProject("folder.bmp"));
    Lines names = deviceFiles;
    for (const char* name : {".bmp", "_.bmp", "A.BMP", "b.bmp", "c.Bmp"})
        names.emplace_back(name);
    transfer.Upload();
    EXPECT_THAT(script.calls, ElementsAreArray(uploadCalls(names, success)));
}

TEST_F(ProjectTransferTest, BitmapsAreListedAfterTheDeviceFiles) {
    script.upload = [this](const std::string& path) {
        if (lastPart(path) == "default.pls")
            writeBytes(inProject("late.bmp"), "x");
    };
    Lines names = deviceFiles;
    names.emplace_back("late.bmp");
    transfer.Upload();
    EXPECT_THAT(script.calls, ElementsAreArray(uploadCalls(names, success)));
}

TEST_F(ProjectTransferTest, UploadShowsFileAndCount) {
    writeBytes(inProject("logo.bmp"), "x");
    transfer.Upload();
    EXPECT_THAT(dialogs.shown,
                ElementsAre("Upload", "Connecting to 127.0.0.1", "modbus.adr 1/6", "ilmvar.def 2/6",
                            "stdmsg.ilm 3/6", "altmsg.ilm 4/6", "default.pls 5/6", "logo.bmp 6/6"));
}

TEST_F(ProjectTransferTest, FirstFailedFileEndsTheUpload) {
    script.uploadResults["ilmvar.def"] = 0;
    transfer.Upload();
    EXPECT_THAT(script.calls, ElementsAreArray(uploadCalls({"modbus.adr", "ilmvar.def"},
                                                           {"CloseLink", "exclamation: Unable to upload " +
                                                                             inProject("ilmvar.def")})));
    EXPECT_EQ(dialogs.open, 0);
}

TEST_F(ProjectTransferTest, FailedBitmapNamesItsFullPath) {
    writeBytes(inProject("a.bmp"), "x");
    writeBytes(inProject("b.bmp"), "x");
    script.uploadResults["a.bmp"] = -1;
    Lines names = deviceFiles;
    names.emplace_back("a.bmp");
    transfer.Upload();
    EXPECT_THAT(script.calls,
                ElementsAreArray(uploadCalls(
                    names, {"CloseLink", "exclamation: Unable to upload " + inProject("a.bmp")})));
}

TEST_F(ProjectTransferTest, ResultsCountAsSixteenBits) {
    for (const std::int64_t failure : {std::int64_t{0}, std::int64_t{-1}, std::int64_t{32768},
                                       std::int64_t{65537}, std::int64_t{1} << 40, -(std::int64_t{1} << 40)})
        EXPECT_FALSE(transferSucceeded(failure)) << failure;
    EXPECT_TRUE(transferSucceeded(1));
    EXPECT_TRUE(transferSucceeded(32767));

    script.openResult = 32768;
    transfer.Upload();
    EXPECT_EQ(script.calls.back(), "exclamation: Connect Fail!");
}

TEST_F(ProjectTransferTest, FailedConnectionEndsTheUpload) {
    script.openResult = 0;
    transfer.Upload();
    EXPECT_THAT(script.calls, ElementsAre("RemoteAddress <127.0.0.1>", "RemotePort 7000", "OpenLink",
                                          "exclamation: Connect Fail!"));
    EXPECT_EQ(dialogs.open, 0);
}

TEST_F(ProjectTransferTest, TheCauseOfAFailureStandsBesideTheGivenBox) {
    script.cause = "452 disk full";
    script.uploadResults["stdmsg.ilm"] = 0;
    transfer.Upload();
    EXPECT_EQ(dialogs.cause, "stdmsg.ilm was not taken: 452 disk full");
    EXPECT_EQ(script.calls.back(), "exclamation: Unable to upload " + inProject("stdmsg.ilm"));

    script.cause = "connection refused";
    script.openResult = 0;
    transfer.Upload();
    EXPECT_EQ(dialogs.cause, "127.0.0.1: connection refused");
    EXPECT_EQ(script.calls.back(), "exclamation: Connect Fail!");

    script.openResult = 1;
    script.cause = "altmsg.ilm could not be fetched: hung up";
    script.downloadResult = 0;
    chooseTarget();
    transfer.Download();
    EXPECT_EQ(dialogs.cause, "altmsg.ilm could not be fetched: hung up");
    EXPECT_EQ(script.calls[script.calls.size() - 2], "exclamation: Download Fail!");
}

TEST_F(ProjectTransferTest, AnEndThatIsNotConfirmedIsASuccessWithACause) {
    script.endCause = "hung up";
    transfer.Upload();
    EXPECT_EQ(dialogs.cause, "the end was not confirmed: hung up");
    EXPECT_EQ(script.calls.back(), success.back());
    script.endCause.clear();
    transfer.Upload();
    EXPECT_EQ(dialogs.cause, "");
}

TEST_F(ProjectTransferTest, WhatWouldInterruptATransferComesAfterItsLastMessage) {
    const auto interruption = [this] {
        transfer.running().afterwards([this] { script.calls.push_back("interruption"); });
    };
    script.open = interruption;
    transfer.Upload();
    ASSERT_GE(script.calls.size(), 2u);
    EXPECT_EQ(script.calls.back(), "interruption");
    EXPECT_EQ(script.calls[script.calls.size() - 2], success.back());

    script.calls.clear();
    script.openResult = 0;
    chooseTarget();
    transfer.Download();
    EXPECT_THAT(script.calls, ElementsAre("RemoteAddress <127.0.0.1>", "RemotePort 7000", "OpenLink",
                                          "exclamation: Connect Fail!", "interruption"));
}

TEST_F(ProjectTransferTest, ATransferThatOverflowsDoesNotHoldBackForEver) {
    dialogs.connection = DeviceConnection{"127.0.0.1", "32768"};
    EXPECT_THROW(transfer.Upload(), Overflow);
    transfer.running().afterwards([this] { script.calls.push_back("at once"); });
    EXPECT_EQ(script.calls.back(), "at once");
}

TEST_F(ProjectTransferTest, WithoutAControlTheConnectionFails) {
    ProjectTransfer bare{project, lifecycle, chooser,
                         dialogs, messages,  [](TransferProgress&) { return nullptr; }};
    bare.Upload();
    chooseTarget();
    bare.Download();
    EXPECT_THAT(script.calls, ElementsAre("exclamation: Connect Fail!", "exclamation: Connect Fail!"));
    EXPECT_EQ(project.ProjName, "Plant");
}

TEST_F(ProjectTransferTest, CancelledUploadCallsNothing) {
    dialogs.connection.reset();
    transfer.Upload();
    EXPECT_THAT(script.calls, IsEmpty());
    EXPECT_THAT(dialogs.shown, IsEmpty());
}

TEST_F(ProjectTransferTest, AddressAndPortGoAsTyped) {
    dialogs.connection = DeviceConnection{" 127.0.0.1 ", "32767"};
    script.openResult = 0;
    transfer.Upload();
    EXPECT_EQ(script.calls.at(0), "RemoteAddress < 127.0.0.1 >");
    EXPECT_EQ(script.calls.at(1), "RemotePort 32767");
}

TEST_F(ProjectTransferTest, TheDialogStartsWithTheDevicesAddressInUtf8) {
    project.IP = "ger\xE4t";
    dialogs.connection.reset();
    transfer.Upload();
    EXPECT_THAT(dialogs.proposed, ElementsAre("ger\xC3\xA4t"));
}

TEST_F(ProjectTransferTest, PortBeyondSixteenBitsOverflows) {
    for (const char* port : {"32768", "65535", "99999999999999999999"}) {
        script.calls.clear();
        dialogs.connection = DeviceConnection{"127.0.0.1", port};
        EXPECT_THROW(transfer.Upload(), Overflow) << port;
        EXPECT_THAT(script.calls, ElementsAre("RemoteAddress <127.0.0.1>"));
        EXPECT_EQ(dialogs.open, 0);
    }
}

TEST_F(ProjectTransferTest, UploadOfAModifiedProjectSavesItFirstWithoutAQuestion) {
    lifecycle.SetModified(true);
    script.upload = [](const std::string& path) { EXPECT_TRUE(std::filesystem::exists(path)) << path; };
    transfer.Upload();
    EXPECT_THAT(script.calls, ElementsAreArray(uploadCalls(deviceFiles, success)));
    EXPECT_TRUE(std::filesystem::exists(inProject("Plant.orx")));
    EXPECT_FALSE(project.modified);
}

TEST_F(ProjectTransferTest, CancelledUploadHasSavedTheModifiedProject) {
    lifecycle.SetModified(true);
    dialogs.connection.reset();
    transfer.Upload();
    EXPECT_TRUE(std::filesystem::exists(inProject("Plant.orx")));
    EXPECT_FALSE(project.modified);
}

TEST_F(ProjectTransferTest, UploadStopsWhenTheProjectFileWasNotWritten) {
    blockDeviceFile("Plant.orx");
    lifecycle.SetModified(true);
    transfer.Upload();
    EXPECT_THAT(dialogs.proposed, IsEmpty());
    EXPECT_TRUE(project.modified);
    EXPECT_EQ(script.calls.size(), 1u) << "the save's own message";
}

TEST_F(ProjectTransferTest, UploadStopsWhenADeviceFileWasNotWritten) {
    blockDeviceFile("altmsg.ilm");
    lifecycle.SetModified(true);
    transfer.Upload();
    EXPECT_THAT(dialogs.proposed, IsEmpty());
    EXPECT_FALSE(project.modified);
    EXPECT_EQ(script.calls.size(), 1u) << "the save's own message";
}

TEST_F(ProjectTransferTest, AMissingLocalFileIsTheControlsBusiness) {
    std::filesystem::remove_all(projectFolder);
    transfer.Upload();
    EXPECT_THAT(script.calls, ElementsAreArray(uploadCalls(deviceFiles, success)));
}

/// A device whose first regular and emergency message say something, and whose map starts at 1000 and so on.
void putDeviceFiles(const std::string& target, const std::string& addressFile) {
    writeBytes(target + "/" + addressFile, "ANALOGINPUT 1000\r\nDIGITALINPUT 2000\r\nALERTMESSAGE 3000\r\n");
    writeBytes(target + "/stdmsg.ilm", "DEFMSG STDMSG1\r\nCLEAR\r\nTEXT\r\nENDMSG\r\n");
    writeBytes(target + "/altmsg.ilm", "DEFMSG ALTMSG1\r\nCLEAR\r\nALARM\r\nENDMSG\r\n");
    writeBytes(target + "/ilmvar.def",
               "DEFVAR RegVar1\r\nTYPE FLOAT\r\nADDRESS 1000\r\nDEFAULT 1.5\r\nENDVAR\r\n");
}

TEST_F(ProjectTransferTest, DownloadOpensTheFilesAsANewUnsavedProject) {
    chooseTarget();
    script.download = [](const std::string& target) { putDeviceFiles(target, "modbus.adr"); };
    transfer.Download();

    EXPECT_THAT(script.calls, ElementsAre("RemoteAddress <127.0.0.1>", "RemotePort 7000", "OpenLink",
                                          "DownloadFiles <> " + targetFolder, "CloseLink"));
    EXPECT_THAT(chooser.newProjectCaptions, ElementsAre("Create new project for downloaded files"));
    EXPECT_EQ(project.AnalogInput, 1000);
    EXPECT_EQ(project.DigitalInput, 2000);
    EXPECT_EQ(project.AlertMessage, 3000);
    EXPECT_EQ(project.RegularMessage, 3020);
    EXPECT_EQ(project.STDMSG[0], "CLEAR\r\nTEXT\r\n");
    EXPECT_EQ(project.ALTMSG[0], "CLEAR\r\nALARM\r\n");
    EXPECT_EQ(project.ProjPath, targetFolder);
    EXPECT_EQ(project.ProjName, "Fetched");
    EXPECT_TRUE(project.modified);
    EXPECT_EQ(window.caption, "Orvista Message Editor - [Fetched*]");
    EXPECT_FALSE(std::filesystem::exists(inTarget("Fetched.orx")));
    EXPECT_FALSE(std::filesystem::exists(inTarget("default.pls")));
    EXPECT_THAT(dialogs.shown, ElementsAre("Download", "Connecting to 127.0.0.1", "Downloading files"));
    EXPECT_EQ(dialogs.open, 0);
}

TEST_F(ProjectTransferTest, DownloadEnablesTheProjectCommandsButNeitherUpload) {
    chooseTarget();
    transfer.Download();
    EXPECT_TRUE(window.transitions.enabled(EnablingRules::projectWork));
    EXPECT_TRUE(window.transitions.enabled(EnablingRules::save));
    EXPECT_FALSE(window.transitions.enabled(EnablingRules::uploadButton));
    EXPECT_FALSE(window.transitions.enabled(EnablingRules::uploadEntry));
}

TEST_F(ProjectTransferTest, DeviceFilesAreReadInAnyCase) {
    chooseTarget();
    dialogs.connection.reset();
    putDeviceFiles(targetFolder, "MODBUS.ADR");
    transfer.Download();
    EXPECT_EQ(project.AnalogInput, 1000);
    EXPECT_THAT(script.calls, IsEmpty());
}

TEST_F(ProjectTransferTest, CancelledConnectionStillOpensTheTargetFolder) {
    chooseTarget();
    dialogs.connection.reset();
    project.STDMSG[0] = "mine";
    transfer.Download();
    EXPECT_THAT(script.calls, ElementsAre("none: Unable to open " + inTarget("Modbus.adr"),
                                          "none: Unable to open " + inTarget("ilmvar.def"),
                                          "none: Unable to open " + inTarget("stdmsg.ilm"),
                                          "none: Unable to open " + inTarget("altmsg.ilm")));
    EXPECT_EQ(project.STDMSG[0], "CLEAR");
    EXPECT_EQ(project.ProjName, "Fetched");
    EXPECT_TRUE(project.modified);
    EXPECT_THAT(dialogs.shown, IsEmpty());
}

TEST_F(ProjectTransferTest, ADownloadTellsWhatCameOfIt) {
    using End = FetchedDisplay::End;
    EXPECT_EQ(transfer.Download().end, End::Cancelled);
    chooseTarget();
    const FetchedDisplay fetched = transfer.Download();
    EXPECT_EQ(fetched.end, End::Fetched);
    EXPECT_EQ(fetched.name, "127.0.0.1:7000");
    script.downloadResult = 0;
    script.missing = {"stdmsg.ilm", "altmsg.ilm"};
    const FetchedDisplay failed = transfer.Fetch("Verify Display", targetFolder);
    EXPECT_EQ(failed.end, End::Failed);
    EXPECT_THAT(failed.missing, ElementsAre("stdmsg.ilm", "altmsg.ilm"));
    script.openResult = 0;
    EXPECT_THAT(transfer.Fetch("Verify Display", targetFolder).missing, IsEmpty());
    dialogs.connection.reset();
    EXPECT_EQ(transfer.Fetch("Verify Display", targetFolder).end, End::Cancelled);
}

TEST_F(ProjectTransferTest, FailedDownloadLeavesTheOpenProjectAndClosesTheLinkAfterItsMessage) {
    chooseTarget();
    project.STDMSG[0] = "mine";
    script.downloadResult = 0;
    transfer.Download();
    EXPECT_THAT(script.calls,
                ElementsAre("RemoteAddress <127.0.0.1>", "RemotePort 7000", "OpenLink",
                            "DownloadFiles <> " + targetFolder, "exclamation: Download Fail!", "CloseLink"));
    EXPECT_EQ(project.STDMSG[0], "mine");
    EXPECT_EQ(project.ProjName, "Plant");
    EXPECT_EQ(window.refreshes, 0);
}

TEST_F(ProjectTransferTest, ADownloadTellsTheAddressThatWasTyped) {
    chooseTarget();
    dialogs.connection = DeviceConnection{" 127.0.0.1", "7001"};
    EXPECT_EQ(transfer.Download().address, " 127.0.0.1");
}

TEST_F(ProjectTransferTest, FailedConnectionEndsTheDownload) {
    chooseTarget();
    script.openResult = -1;
    transfer.Download();
    EXPECT_EQ(script.calls.back(), "exclamation: Connect Fail!");
    EXPECT_EQ(script.calls.size(), 4u);
    EXPECT_EQ(project.ProjName, "Plant");
    EXPECT_EQ(window.refreshes, 0);
}

TEST_F(ProjectTransferTest, CancelledTargetEndsTheDownload) {
    transfer.Download();
    EXPECT_THAT(script.calls, IsEmpty());
    EXPECT_THAT(dialogs.proposed, IsEmpty());
    EXPECT_EQ(project.ProjName, "Plant");
}

TEST_F(ProjectTransferTest, DownloadPortBeyondSixteenBitsOverflowsAndTouchesNothing) {
    chooseTarget();
    dialogs.connection = DeviceConnection{"127.0.0.1", "32768"};
    EXPECT_THROW(transfer.Download(), Overflow);
    EXPECT_EQ(project.ProjName, "Plant");
    EXPECT_EQ(window.refreshes, 0);
    EXPECT_EQ(dialogs.open, 0);
}

TEST_F(ProjectTransferTest, DownloadAsksToSaveAModifiedProject) {
    chooseTarget();
    lifecycle.SetModified(true);
    messages.answer = true;
    transfer.Download();
    EXPECT_EQ(script.calls.front(), "ask: Do you want to save current project before download?");
    EXPECT_TRUE(std::filesystem::exists(inProject("Plant.orx")));
    EXPECT_EQ(project.ProjName, "Fetched");
}

TEST_F(ProjectTransferTest, DownloadGoesOnWithoutSavingAfterNo) {
    chooseTarget();
    lifecycle.SetModified(true);
    messages.answer = false;
    transfer.Download();
    EXPECT_FALSE(std::filesystem::exists(inProject("Plant.orx")));
    EXPECT_EQ(project.ProjName, "Fetched");
}

TEST_F(ProjectTransferTest, CancelledTargetKeepsWhatYesHasSaved) {
    lifecycle.SetModified(true);
    messages.answer = true;
    transfer.Download();
    EXPECT_TRUE(std::filesystem::exists(inProject("Plant.orx")));
    EXPECT_EQ(project.ProjName, "Plant");
    EXPECT_FALSE(project.modified);
}

TEST_F(ProjectTransferTest, DownloadStopsWhenTheProjectFileWasNotWritten) {
    chooseTarget();
    blockDeviceFile("Plant.orx");
    lifecycle.SetModified(true);
    messages.answer = true;
    transfer.Download();
    EXPECT_THAT(chooser.newProjectCaptions, IsEmpty());
    EXPECT_TRUE(project.modified);
    EXPECT_EQ(project.ProjName, "Plant");
}

TEST_F(ProjectTransferTest, DownloadGoesOnWhenOnlyADeviceFileWasNotWritten) {
    chooseTarget();
    blockDeviceFile("stdmsg.ilm");
    lifecycle.SetModified(true);
    messages.answer = true;
    transfer.Download();
    EXPECT_EQ(project.ProjName, "Fetched");
}

} // namespace
} // namespace orvista::DocTsfModule
