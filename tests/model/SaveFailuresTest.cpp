#include "model/ProjectFile.h"
#include "model/SystemPath.h"

#include "tests/support/ExpectedFiles.h"
#include "tests/support/ScriptedPeople.h"
#include "tests/support/TemporaryFolder.h"
#ifndef _WIN32
#include "tests/support/Unprivileged.h"

#include <csignal>

#include <sys/resource.h>
#include <sys/stat.h>
#endif

#include <gtest/gtest.h>

#include <filesystem>

namespace orvista::DocMgrModule {
namespace {

using namespace orvista::testing;
namespace fs = std::filesystem;
using Shown = ScriptedMessages::Shown;

const std::vector<std::string> deviceFiles = {"modbus.adr", "stdmsg.ilm", "altmsg.ilm", "ilmvar.def",
                                              "default.pls"};

class SaveFailures : public ::testing::Test {
protected:
    SaveOutcome save() { return SaveProject(folder.path(), "Plant", project, context); }
    bool exists(const std::string& name) const {
        return fs::exists(fs::symlink_status(systemPath(folder.file(name))));
    }

    Project project;
    TemporaryFolder folder;
    PathRules rules = PathRules::native();
    ScriptedMessages messages;
    FileContext context{rules, messages};
};

TEST_F(SaveFailures, AFolderThatIsGoneIsTold) {
    fs::remove_all(systemPath(folder.path()));
    EXPECT_EQ(save(), SaveOutcome::ProjectFileFailed);
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0],
              (Shown{MessageIcon::Exclamation, "unable to open " + folder.file("Plant.orx")}));
}

TEST_F(SaveFailures, AFolderInPlaceOfTheProjectFileIsToldAndStays) {
    fs::create_directory(systemPath(folder.file("Plant.orx")));
    EXPECT_EQ(save(), SaveOutcome::ProjectFileFailed);
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].text, "unable to open " + folder.file("Plant.orx"));
    EXPECT_FALSE(exists("modbus.adr"));
}

TEST_F(SaveFailures, AFileInPlaceOfTheFolderIsTold) {
    writeBytes(folder.file("file"), "x");
    EXPECT_EQ(SaveProject(folder.file("file"), "Plant", project, context), SaveOutcome::ProjectFileFailed);
    EXPECT_EQ(messages.shown.at(0).text, "unable to open " + rules.join(folder.file("file"), "Plant.orx"));
}

TEST_F(SaveFailures, ADeviceFileThatCannotBeCreatedDoesNotStopTheOthers) {
    for (const std::string& name : deviceFiles)
        fs::create_directory(systemPath(folder.file(name)));
    EXPECT_EQ(save(), SaveOutcome::DeviceFileFailed);
    ASSERT_EQ(messages.shown.size(), deviceFiles.size());
    for (std::size_t i = 0; i < deviceFiles.size(); ++i)
        EXPECT_EQ(messages.shown[i],
                  (Shown{MessageIcon::Exclamation, "unable to open " + folder.file(deviceFiles[i])}));
    EXPECT_EQ(fileBytes(folder.file("Plant.orx")), expectedProjectFile(project.IP));
}

#ifndef _WIN32

TEST_F(SaveFailures, ALinkInPlaceOfADeviceFileIsToldAndNothingBehindItIsTouched) {
    for (const std::string& linked : deviceFiles) {
        messages.shown.clear();
        for (const std::string& name : deviceFiles)
            fs::remove(folder.file(name));
        writeBytes(folder.file("diary"), "somebody's");
        fs::create_symlink("diary", folder.file(linked));
        EXPECT_EQ(save(), SaveOutcome::DeviceFileFailed);
        ASSERT_EQ(messages.shown.size(), 1U) << linked;
        EXPECT_EQ(messages.shown[0],
                  (Shown{MessageIcon::Exclamation, "unable to open " + folder.file(linked)}));
        EXPECT_EQ(fileBytes(folder.file("diary")), "somebody's");
        for (const std::string& name : deviceFiles) {
            EXPECT_TRUE(name == linked || !fileBytes(folder.file(name)).empty()) << name;
        }
    }
}

TEST_F(SaveFailures, AProjectFileThatLinksToADeviceFileIsNotOverwrittenByIt) {
    fs::create_symlink("altmsg.ilm", folder.file("Plant.orx"));
    EXPECT_EQ(save(), SaveOutcome::DeviceFileFailed);
    EXPECT_EQ(messages.shown, (std::vector<Shown>{{MessageIcon::Exclamation,
                                                   "unable to open " + folder.file("altmsg.ilm")}}));
    EXPECT_EQ(fileBytes(folder.file("Plant.orx")), expectedProjectFile(project.IP));
}

TEST_F(SaveFailures, AFullDiskAtTheProjectFileShowsTheSystemsDescriptionAndEndsTheSave) {
    fs::create_symlink("/dev/full", folder.file("Plant.orx"));
    EXPECT_EQ(save(), SaveOutcome::ProjectFileFailed);
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0], (Shown{MessageIcon::None, "No space left on device"}));
    for (const std::string& name : deviceFiles)
        EXPECT_FALSE(exists(name)) << name;
    EXPECT_TRUE(fs::is_symlink(folder.file("Plant.orx"))) << "a link stays a link";
}

/// Saves in a child process in which no file may grow beyond `limit` bytes.
bool savesWithinLimit(rlim_t limit, const std::function<bool()>& check) {
    return holdsUnprivileged([&] {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit size{limit, limit};
        return setrlimit(RLIMIT_FSIZE, &size) == 0 && check();
    });
}

TEST_F(SaveFailures, ASaveThatFailsHalfWayKeepsTheOldProjectFile) {
    chmod(folder.path().c_str(), 0777);
    writeBytes(folder.file("Plant.orx"), "the good version");
    chmod(folder.file("Plant.orx").c_str(), 0666);
    EXPECT_TRUE(savesWithinLimit(1000, [&] {
        return save() == SaveOutcome::ProjectFileFailed && messages.shown.size() == 1 &&
               messages.shown[0] == Shown{MessageIcon::None, "File too large"};
    }));
    EXPECT_EQ(fileBytes(folder.file("Plant.orx")), "the good version");
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.path()), {}), 1) << "nothing else stays";

    EXPECT_EQ(save(), SaveOutcome::Saved);
    EXPECT_EQ(fileBytes(folder.file("Plant.orx")), expectedProjectFile(project.IP));
}

TEST_F(SaveFailures, AFileOfTheUserIsNeitherReplacedNorRemoved) {
    writeBytes(folder.file("Plant.orx"), "old");
    writeBytes(folder.file("Plant.orx.bak"), "mine");
    writeBytes(folder.file("Plant.orx.new"), "mine, too");
    EXPECT_EQ(save(), SaveOutcome::Saved);
    EXPECT_EQ(fileBytes(folder.file("Plant.orx.bak")), "mine");
    EXPECT_EQ(fileBytes(folder.file("Plant.orx.new")), "mine, too");
}

TEST_F(SaveFailures, AWriteProtectedProjectFileIsRefusedAndStays) {
    chmod(folder.path().c_str(), 0777);
    writeBytes(folder.file("Plant.orx"), "protected");
    chmod(folder.file("Plant.orx").c_str(), 0444);
    EXPECT_TRUE(holdsUnprivileged([&] {
        return save() == SaveOutcome::ProjectFileFailed && messages.shown.size() == 1 &&
               messages.shown[0] ==
                   Shown{MessageIcon::Exclamation, "unable to open " + folder.file("Plant.orx")};
    }));
    EXPECT_EQ(fileBytes(folder.file("Plant.orx")), "protected");
}

TEST_F(SaveFailures, AWriteProtectedFolderIsTold) {
    chmod(folder.path().c_str(), 0555);
    EXPECT_TRUE(holdsUnprivileged([&] {
        return save() == SaveOutcome::ProjectFileFailed && messages.shown.size() == 1 &&
               messages.shown[0].text == "unable to open " + folder.file("Plant.orx");
    }));
    chmod(folder.path().c_str(), 0755);
}

TEST_F(SaveFailures, AWritableFileInAProtectedFolderIsWrittenInPlace) {
    for (const std::string& name : deviceFiles) {
        writeBytes(folder.file(name), "old");
        chmod(folder.file(name).c_str(), 0666);
    }
    writeBytes(folder.file("Plant.orx"), "old");
    chmod(folder.file("Plant.orx").c_str(), 0666);
    chmod(folder.path().c_str(), 0555);
    EXPECT_TRUE(holdsUnprivileged([&] { return save() == SaveOutcome::Saved && messages.shown.empty(); }));
    chmod(folder.path().c_str(), 0755);
    EXPECT_EQ(fileBytes(folder.file("Plant.orx")), expectedProjectFile(project.IP));
}

TEST_F(SaveFailures, UnreadableFilesAreToldWhenOpening) {
    chmod(folder.path().c_str(), 0777);
    writeBytes(folder.file("Plant.orx"), "[MODBUS.ADR]\n");
    chmod(folder.file("Plant.orx").c_str(), 0);
    EXPECT_TRUE(holdsUnprivileged([&] {
        return !ReadProject(folder.file("Plant.orx"), project, context) && messages.shown.size() == 1 &&
               messages.shown[0] == Shown{MessageIcon::None, "Unable to open " + folder.file("Plant.orx")};
    }));
}

TEST_F(SaveFailures, AnUnreadableDeviceFileIsToldAndTheOthersAreRead) {
    chmod(folder.path().c_str(), 0777);
    writeBytes(folder.file("Plant.orx"),
               "[MODBUS.ADR]\n[ALTMSG.ILM]\nDEFMSG a\nread\nENDMSG\n[ILMVAR.DEF]\n");
    chmod(folder.file("Plant.orx").c_str(), 0644);
    writeBytes(folder.file("stdmsg.ilm"), "DEFMSG a\nhidden\nENDMSG\n");
    chmod(folder.file("stdmsg.ilm").c_str(), 0);
    EXPECT_TRUE(holdsUnprivileged([&] {
        return ReadProject(folder.file("Plant.orx"), project, context) && messages.shown.size() == 1 &&
               messages.shown[0] == Shown{MessageIcon::None, "Unable to open " + folder.file("stdmsg.ilm")} &&
               project.STDMSG[0] == "CLEAR" && project.ALTMSG[0] == "read\r\n";
    }));
}

TEST_F(SaveFailures, AnUnreadableFolderIsToldWhenOpening) {
    writeBytes(folder.file("Plant.orx"), "[MODBUS.ADR]\n");
    chmod(folder.path().c_str(), 0);
    EXPECT_TRUE(holdsUnprivileged([&] {
        return !ReadProject(folder.file("Plant.orx"), project, context) && messages.shown.size() == 1 &&
               messages.shown[0] == Shown{MessageIcon::None, "Unable to open " + folder.file("Plant.orx")};
    }));
    chmod(folder.path().c_str(), 0755);
}

TEST_F(SaveFailures, AWriteProtectedDeviceFileStopsTheOpening) {
    chmod(folder.path().c_str(), 0777);
    writeBytes(folder.file("Plant.orx"), "[STDMSG.ILM]\n");
    writeBytes(folder.file("stdmsg.ilm"), "old");
    chmod(folder.file("stdmsg.ilm").c_str(), 0444);
    EXPECT_TRUE(holdsUnprivileged([&] {
        return !ReadProject(folder.file("Plant.orx"), project, context) && messages.shown.size() == 1 &&
               messages.shown[0] == Shown{MessageIcon::None, "Unable to open " + folder.file("StdMsg.ilm")};
    }));
    EXPECT_EQ(fileBytes(folder.file("stdmsg.ilm")), "old");
}

TEST_F(SaveFailures, AFullDiskWhileOpeningIsToldByTheFilesPath) {
    chmod(folder.path().c_str(), 0777);
    writeBytes(folder.file("Plant.orx"), "[ALTMSG.ILM]\nDEFMSG a\nmore than fits\n[STDMSG.ILM]\n");
    EXPECT_TRUE(savesWithinLimit(10, [&] {
        return !ReadProject(folder.file("Plant.orx"), project, context) && messages.shown.size() == 1 &&
               messages.shown[0] == Shown{MessageIcon::None, "exception ooccured when writing data to " +
                                                                 folder.file("AltMsg.ilm")};
    }));
    EXPECT_EQ(fileBytes(folder.file("altmsg.ilm")), "DEFMSG a\r\n") << "what fits stays";
    EXPECT_FALSE(exists("stdmsg.ilm"));
}

TEST_F(SaveFailures, OpeningDoesNotWriteThroughLinks) {
    writeBytes(folder.file("diary"), "somebody's");
    fs::create_symlink("diary", folder.file("stdmsg.ilm"));
    writeBytes(folder.file("Plant.orx"), "[ALTMSG.ILM]\n[STDMSG.ILM]\nDEFMSG a\nx\nENDMSG\n");
    EXPECT_FALSE(ReadProject(folder.file("Plant.orx"), project, context));
    EXPECT_EQ(messages.shown,
              (std::vector<Shown>{{MessageIcon::None, "Unable to open " + folder.file("StdMsg.ilm")}}));
    EXPECT_EQ(fileBytes(folder.file("diary")), "somebody's");
}

TEST_F(SaveFailures, OpeningDoesNotWriteIntoTheProjectFileItself) {
    const std::string bytes = "[MODBUS.ADR]\n[ALTMSG.ILM]\nDEFMSG a\nx\nENDMSG\n";
    writeBytes(folder.file("Plant.orx"), bytes);
    fs::create_symlink(folder.file("Plant.orx"), folder.file("altmsg.ilm"));
    EXPECT_FALSE(ReadProject(folder.file("Plant.orx"), project, context));
    EXPECT_EQ(messages.shown,
              (std::vector<Shown>{{MessageIcon::None, "Unable to open " + folder.file("AltMsg.ilm")}}));
    EXPECT_EQ(fileBytes(folder.file("Plant.orx")), bytes);
}

TEST_F(SaveFailures, TheOtherNamesOfADeviceFileKeepTheirBytes) {
    for (const std::string& name : deviceFiles) {
        writeBytes(folder.file("kept " + name), "kept " + name);
        chmod(folder.file("kept " + name).c_str(), 0640);
        fs::create_hard_link(folder.file("kept " + name), folder.file(name));
    }
    EXPECT_EQ(save(), SaveOutcome::Saved);
    EXPECT_TRUE(messages.shown.empty());
    for (const std::string& name : deviceFiles) {
        EXPECT_EQ(fileBytes(folder.file("kept " + name)), "kept " + name);
        EXPECT_NE(fileBytes(folder.file(name)), "kept " + name);
        EXPECT_EQ(fs::hard_link_count(folder.file(name)), 1U);
        EXPECT_EQ(fs::status(folder.file(name)).permissions(), fs::perms(0640));
    }
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.path()), {}), 11);
}

TEST_F(SaveFailures, ADeviceFileMayBeAnotherNameOfTheProjectFile) {
    const std::string bytes = "[MODBUS.ADR]\n[ILMVAR.DEF]\n[STDMSG.ILM]\n[ALTMSG.ILM]\nDEFMSG a\nx\nENDMSG\n";
    writeBytes(folder.file("Plant.orx"), bytes);
    fs::create_hard_link(folder.file("Plant.orx"), folder.file("altmsg.ilm"));
    EXPECT_TRUE(ReadProject(folder.file("Plant.orx"), project, context));
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_EQ(fileBytes(folder.file("Plant.orx")), bytes);
    EXPECT_EQ(fileBytes(folder.file("altmsg.ilm")), "DEFMSG a\r\nx\r\nENDMSG\r\n");
    EXPECT_EQ(project.ALTMSG[0], "x\r\n");
}

/// Nothing can be put in the place of a file there, so that its names stay together.
TEST_F(SaveFailures, SeveralNamesInAProtectedFolderAreWrittenThroughButNeverTheProjects) {
    for (const std::string& name : deviceFiles) {
        writeBytes(folder.file(name), "old");
        chmod(folder.file(name).c_str(), 0666);
    }
    writeBytes(folder.file("Plant.orx"), "old");
    chmod(folder.file("Plant.orx").c_str(), 0666);
    fs::create_hard_link(folder.file("stdmsg.ilm"), folder.file("another name"));
    fs::remove(folder.file("altmsg.ilm"));
    fs::create_hard_link(folder.file("Plant.orx"), folder.file("altmsg.ilm"));
    chmod(folder.path().c_str(), 0555);
    EXPECT_TRUE(holdsUnprivileged([&] {
        return save() == SaveOutcome::DeviceFileFailed && messages.shown.size() == 1 &&
               messages.shown[0] ==
                   Shown{MessageIcon::Exclamation, "unable to open " + folder.file("altmsg.ilm")};
    }));
    chmod(folder.path().c_str(), 0755);
    EXPECT_EQ(fileBytes(folder.file("Plant.orx")), expectedProjectFile(project.IP));
    EXPECT_EQ(fileBytes(folder.file("another name")), fileBytes(folder.file("stdmsg.ilm")));
    EXPECT_NE(fileBytes(folder.file("another name")), "old");
}

TEST_F(SaveFailures, APlayListThatIsALinkIsToldAndTheProjectIsReadAllTheSame) {
    writeBytes(folder.file("diary"), "somebody's");
    fs::create_symlink("diary", folder.file("default.pls"));
    writeBytes(folder.file("Plant.orx"),
               "[MODBUS.ADR]\n[ILMVAR.DEF]\n[ALTMSG.ILM]\n[STDMSG.ILM]\nDEFMSG a\nx\nENDMSG\n");
    EXPECT_TRUE(ReadProject(folder.file("Plant.orx"), project, context));
    EXPECT_EQ(messages.shown, (std::vector<Shown>{{MessageIcon::Exclamation,
                                                   "unable to open " + folder.file("default.pls")}}));
    EXPECT_EQ(fileBytes(folder.file("diary")), "somebody's");
    EXPECT_EQ(project.STDMSG[0], "x\r\n");
}

TEST_F(SaveFailures, AFileThatMayBeWrittenButNotReadIsToldWhenOpening) {
    chmod(folder.path().c_str(), 0777);
    writeBytes(folder.file("Plant.orx"),
               "[MODBUS.ADR]\n[ILMVAR.DEF]\n[ALTMSG.ILM]\n[STDMSG.ILM]\nDEFMSG a\nx\nENDMSG\n");
    chmod(folder.file("Plant.orx").c_str(), 0644);
    writeBytes(folder.file("stdmsg.ilm"), "old");
    chmod(folder.file("stdmsg.ilm").c_str(), 0222);
    EXPECT_TRUE(holdsUnprivileged([&] {
        return ReadProject(folder.file("Plant.orx"), project, context) && messages.shown.size() == 1 &&
               messages.shown[0] == Shown{MessageIcon::None, "Unable to open " + folder.file("stdmsg.ilm")} &&
               project.STDMSG[0] == "CLEAR";
    }));
}

TEST_F(SaveFailures, TheNewFileHasTheOldOnesPermissions) {
    writeBytes(folder.file("Plant.orx"), "old");
    chmod(folder.file("Plant.orx").c_str(), 0600);
    ASSERT_EQ(save(), SaveOutcome::Saved);
    EXPECT_EQ(fs::status(folder.file("Plant.orx")).permissions(),
              fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(SaveFailures, ALinkedProjectFileIsWrittenThrough) {
    writeBytes(folder.file("real"), "old");
    fs::create_symlink(folder.file("real"), folder.file("Plant.orx"));
    ASSERT_EQ(save(), SaveOutcome::Saved);
    EXPECT_TRUE(fs::is_symlink(folder.file("Plant.orx")));
    EXPECT_EQ(fileBytes(folder.file("real")), expectedProjectFile(project.IP));
}

TEST_F(SaveFailures, APipeIsRefusedInsteadOfWaitedFor) {
    mkfifo(folder.file("Plant.orx").c_str(), 0600);
    EXPECT_EQ(save(), SaveOutcome::ProjectFileFailed);
    EXPECT_FALSE(ReadProject(folder.file("Plant.orx"), project, context));
    ASSERT_EQ(messages.shown.size(), 2U);
    EXPECT_EQ(messages.shown[0].text, "unable to open " + folder.file("Plant.orx"));
    EXPECT_EQ(messages.shown[1].text, "Unable to open " + folder.file("Plant.orx"));
}

#endif

} // namespace
} // namespace orvista::DocMgrModule
