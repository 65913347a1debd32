#include "model/ProjectFile.h"
#include "tests/support/ScriptedPeople.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdarg>
#include <cstring>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

/// The save's system calls come through here, where each of them can fail, or end the program: the linker
/// leads the program's own here, and what the C++ library asks of files finds the names of these first.
namespace {

constexpr int killed = -1;
constexpr int killedStatus = 77;

struct Faults {
    bool armed = false;
    int at = 0;    ///< which call fails, from 0
    int error = 0; ///< as errno, or `killed`
    int count = 0; ///< calls so far
    bool newFilesForbidden = false;
    int ofSyncs = 0;                ///< each sync fails so
    std::vector<std::string> calls; ///< the writes, syncs and renames, with the names of their files
} faults;

std::string nameOf(int file) {
    const auto path = std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(file));
    return std::filesystem::is_directory(path) ? "the folder" : path.filename().string();
}

void note(const std::string& call) {
    if (faults.armed)
        faults.calls.push_back(call);
}

bool failsNow() {
    if (!faults.armed || faults.count++ != faults.at)
        return false;
    if (faults.error == killed)
        _exit(killedStatus);
    errno = faults.error;
    return true;
}

} // namespace

// The names are the linker's: --wrap=open calls __wrap_open and __real_open.
// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl50-cpp,cert-dcl51-cpp,readability-identifier-naming)
extern "C" {
int __real_open(const char* path, int flags, mode_t mode);
ssize_t __real_write(int file, const void* bytes, size_t size);
int __real_close(int file);
int __real_rename(const char* from, const char* to);
int __real_ftruncate(int file, off_t size);
int __real_fchmod(int file, mode_t mode);
int __real_fchown(int file, uid_t owner, gid_t group);

int __wrap_open(const char* path, int flags, ...) {
    va_list rest;
    va_start(rest, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(rest, mode_t) : 0;
    va_end(rest);
    if (faults.armed && faults.newFilesForbidden && (flags & O_EXCL) != 0) {
        errno = EACCES;
        return -1;
    }
    return failsNow() ? -1 : __real_open(path, flags, mode);
}
ssize_t __wrap_write(int file, const void* bytes, size_t size) {
    if (faults.armed && faults.at < 0)
        note("write " + nameOf(file));
    // A disk fills up, and a program is killed, half-way through.
    if (faults.armed && faults.count == faults.at && faults.error != EINTR)
        (void)!__real_write(file, bytes, size / 2);
    return failsNow() ? -1 : __real_write(file, bytes, size);
}
int __wrap_fsync(int file) {
    if (faults.at < 0)
        note("sync " + nameOf(file));
    if (faults.armed && faults.ofSyncs != 0) {
        errno = faults.ofSyncs;
        return -1;
    }
    return failsNow() ? -1 : 0; // waiting for the disk itself would only take time here
}
int __wrap_close(int file) {
    const bool fails = failsNow();
    const int result = __real_close(file);
    return fails ? (errno = faults.error, -1) : result;
}
int __wrap_rename(const char* from, const char* to) {
    note("rename " + std::filesystem::path(from).filename().string() + " to " +
         std::filesystem::path(to).filename().string());
    return failsNow() ? -1 : __real_rename(from, to);
}
int __wrap_ftruncate(int file, off_t size) {
    return failsNow() ? -1 : __real_ftruncate(file, size);
}
int __wrap_fchmod(int file, mode_t mode) {
    return failsNow() ? -1 : __real_fchmod(file, mode);
}
int __wrap_fchown(int file, uid_t owner, gid_t group) {
    return failsNow() ? -1 : __real_fchown(file, owner, group);
}
int stat(const char* path, struct stat* status) noexcept {
    return failsNow() ? -1 : fstatat(AT_FDCWD, path, status, 0);
}
int lstat(const char* path, struct stat* status) noexcept {
    return failsNow() ? -1 : fstatat(AT_FDCWD, path, status, AT_SYMLINK_NOFOLLOW);
}
ssize_t readlink(const char* path, char* target, size_t size) noexcept {
    return failsNow() ? -1 : readlinkat(AT_FDCWD, path, target, size);
}
}
// NOLINTEND(bugprone-reserved-identifier,cert-dcl50-cpp,cert-dcl51-cpp,readability-identifier-naming)

namespace orvista::DocMgrModule {
namespace {

using namespace orvista::testing;
namespace fs = std::filesystem;
using Shown = ScriptedMessages::Shown;
using Files = std::map<std::string, std::string>;

Project projectWith(const std::string& text, std::int32_t start) {
    Project project;
    project.AnalogInput = project.DigitalInput = start;
    project.STDMSG[0] = project.ALTMSG[0] = "CLEAR\r\nTEXT 0 0 RED BLACK \"" + text + "\"";
    return project;
}

/// A saved project, and a save of another one over it in which one system call fails.
class FaultySave {
public:
    enum class Becomes { Longer, Shorter };
    enum class Old { None, File, Link };
    explicit FaultySave(Becomes size = Becomes::Shorter, Old old = Old::File)
        : before(projectWith(size == Becomes::Longer ? "a" : "many words that go", 1000)),
          after(projectWith(size == Becomes::Longer ? "many words that come" : "b", 2000)) {
        EXPECT_EQ(SaveProject(folder.path(), "Plant", after, context), SaveOutcome::Saved);
        newFiles = files();
        for (const auto& [name, bytes] : newFiles)
            fs::remove(folder.file(name));
        if (old != Old::None) {
            EXPECT_EQ(SaveProject(folder.path(), "Plant", before, context), SaveOutcome::Saved);
        }
        if (old == Old::Link) {
            fs::rename(folder.file("Plant.orx"), elsewhere.file("real"));
            fs::create_symlink(elsewhere.file("real"), folder.file("Plant.orx"));
        }
        oldFiles = files();
    }

    Files files() const {
        Files found;
        for (const auto& entry : fs::directory_iterator(folder.path()))
            found[entry.path().filename()] = fileBytes(entry.path());
        return found;
    }

    /// False when the save makes fewer calls, so that none failed.
    bool run(int at, int error, bool newFilesForbidden = false) {
        faults = {true, at, error, 0, newFilesForbidden, 0, {}};
        outcome = SaveProject(folder.path(), "Plant", after, context);
        faults.armed = false;
        return faults.count > at;
    }

    /// Without a fault but this one of all syncs.
    void runWithoutFault(bool newFilesForbidden = false, int ofSyncs = 0) {
        faults = {true, -1, 0, 0, newFilesForbidden, ofSyncs, {}};
        outcome = SaveProject(folder.path(), "Plant", after, context);
        faults.armed = false;
    }

    /// The same in a program of its own that ends there.
    bool runKilled(int at) {
        const pid_t child = fork();
        if (child == 0) {
            run(at, killed);
            _exit(0);
        }
        int status = 0;
        waitpid(child, &status, 0);
        EXPECT_TRUE(WIFEXITED(status));
        return WEXITSTATUS(status) == killedStatus;
    }

    void expectOldOrNewAndTheRightMessage(int error) const {
        const Files found = files();
        switch (outcome) {
        case SaveOutcome::Saved:
            EXPECT_EQ(found, newFiles);
            EXPECT_TRUE(messages.shown.empty());
            return;
        case SaveOutcome::DeviceFileFailed:
            EXPECT_EQ(found.at("Plant.orx"), newFiles.at("Plant.orx"));
            ASSERT_EQ(messages.shown.size(), 1U);
            EXPECT_EQ(messages.shown[0].icon, MessageIcon::Exclamation);
            EXPECT_TRUE(messages.shown[0].text.starts_with("unable to open " + folder.path()));
            return;
        case SaveOutcome::ProjectFileFailed:
            break;
        }
        Files withNewProject = oldFiles;
        withNewProject["Plant.orx"] = newFiles.at("Plant.orx");
        EXPECT_TRUE(found == oldFiles || found == withNewProject);
        ASSERT_EQ(messages.shown.size(), 1U);
        const Shown refused{MessageIcon::Exclamation, "unable to open " + folder.file("Plant.orx")};
        const Shown described{MessageIcon::None, std::strerror(error)};
        EXPECT_TRUE(messages.shown[0] == refused || messages.shown[0] == described) << messages.shown[0].text;
    }

    TemporaryFolder folder;
    TemporaryFolder elsewhere; ///< where a link leads to
    PathRules rules = PathRules::native();
    ScriptedMessages messages;
    FileContext context{rules, messages};
    Project before;
    Project after;
    Files oldFiles;
    Files newFiles;
    SaveOutcome outcome = SaveOutcome::Saved;
};

/// A save makes about seventy of them.
constexpr int mostCalls = 200;

using Becomes = FaultySave::Becomes;
using Old = FaultySave::Old;

/// Lets each call that has to do with the project file fail in turn. Returns how many there are.
int failEachCallForTheProjectFile(int error, Old old, Becomes size, bool newFilesForbidden) {
    int at = 0;
    for (bool failed = true; failed && at < mostCalls; ++at) {
        FaultySave save(size, old);
        failed = save.run(at, error, newFilesForbidden) && save.outcome != SaveOutcome::DeviceFileFailed;
        SCOPED_TRACE(at);
        save.expectOldOrNewAndTheRightMessage(error);
    }
    return at;
}

class SaveFaults : public ::testing::TestWithParam<int> {};

TEST_P(SaveFaults, LeaveTheOldProjectOrTheNewOneAtEveryCall) {
    const int error = GetParam();
    int at = 0;
    for (bool failed = true; failed; ++at) {
        FaultySave save;
        failed = save.run(at, error);
        SCOPED_TRACE(at);
        save.expectOldOrNewAndTheRightMessage(error);
        ASSERT_LT(at, mostCalls);
    }
    EXPECT_GT(at, 50);
}

TEST_P(SaveFaults, LeaveNoHalfProjectWhereThereWasNone) {
    const int error = GetParam();
    int at = 0;
    for (bool failed = true; failed; ++at) {
        FaultySave save(Becomes::Shorter, Old::None);
        failed = save.run(at, error);
        SCOPED_TRACE(at);
        save.expectOldOrNewAndTheRightMessage(error);
        ASSERT_LT(at, mostCalls);
    }
}

TEST_P(SaveFaults, PutTheOldProjectBackThatIsWrittenInPlace) {
    for (const Becomes size : {Becomes::Longer, Becomes::Shorter}) {
        EXPECT_GT(failEachCallForTheProjectFile(GetParam(), Old::File, size, true), 10);
    }
}

INSTANTIATE_TEST_SUITE_P(Errors, SaveFaults, ::testing::Values(ENOSPC, EIO, EINTR), [](const auto& test) {
    return test.param == ENOSPC ? "FullDisk" : test.param == EIO ? "DamagedDisk" : "Signal";
});

TEST(LinkedProject, IsLeftOrReplacedWhereTheLinkLeadsAtEveryCallThatFails) {
    for (const Becomes size : {Becomes::Longer, Becomes::Shorter}) {
        EXPECT_GT(failEachCallForTheProjectFile(EIO, Old::Link, size, false), 10);
    }
}

/// Of the device files of a save, which are all written in their places.
std::vector<std::string> withDeviceFiles(std::vector<std::string> calls) {
    for (const std::string name : {"modbus.adr", "stdmsg.ilm", "altmsg.ilm", "ilmvar.def", "default.pls"}) {
        calls.push_back("write " + name);
        calls.push_back("sync " + name);
    }
    calls.emplace_back("sync the folder");
    return calls;
}

TEST(SyncedSave, WaitsForTheBytesBeforeTheNameAndForTheNameBeforeTheRest) {
    FaultySave save;
    save.runWithoutFault();
    EXPECT_EQ(save.outcome, SaveOutcome::Saved);
    EXPECT_EQ(faults.calls, withDeviceFiles({"write Plant.orx.new", "sync Plant.orx.new",
                                             "rename Plant.orx.new to Plant.orx", "sync the folder"}));
}

TEST(SyncedSave, WaitsForBytesThatAreWrittenInPlace) {
    FaultySave save;
    save.runWithoutFault(true);
    EXPECT_EQ(save.outcome, SaveOutcome::Saved);
    EXPECT_EQ(faults.calls, withDeviceFiles({"write Plant.orx", "sync Plant.orx"}));
}

TEST(SyncedSave, IsDoneWhereTheDiskKnowsNoSync) {
    for (const int unknown : {EINVAL, ENOSYS, ENOTSUP}) {
        FaultySave save;
        save.runWithoutFault(false, unknown);
        EXPECT_EQ(save.outcome, SaveOutcome::Saved) << unknown;
        EXPECT_EQ(save.files(), save.newFiles);
    }
    FaultySave save;
    save.runWithoutFault(false, EIO);
    EXPECT_EQ(save.outcome, SaveOutcome::ProjectFileFailed);
}

TEST(InterruptedSave, IsDoneAllTheSame) {
    bool failed = true;
    for (int at = 0; failed; ++at) {
        FaultySave save;
        failed = save.run(at, EINTR);
        EXPECT_EQ(save.outcome, SaveOutcome::Saved) << at;
        ASSERT_LT(at, mostCalls);
    }
}

TEST(KilledSave, LeavesTheOldProjectOrTheNewOneAtEveryCall) {
    int old = 0;
    int at = 0;
    for (bool ended = true; ended; ++at) {
        FaultySave save;
        ended = save.runKilled(at);
        const std::string bytes = save.files().at("Plant.orx");
        EXPECT_TRUE(bytes == save.oldFiles.at("Plant.orx") || bytes == save.newFiles.at("Plant.orx")) << at;
        old += bytes == save.oldFiles.at("Plant.orx") ? 1 : 0;
        Project read;
        EXPECT_TRUE(ReadProject(save.folder.file("Plant.orx"), read, save.context));
        EXPECT_TRUE(save.messages.shown.empty());
        EXPECT_EQ(read.STDMSG[0],
                  (bytes == save.oldFiles.at("Plant.orx") ? save.before : save.after).STDMSG[0] + "\r\n");
        ASSERT_LT(at, mostCalls);
    }
    EXPECT_GT(old, 5);
    EXPECT_LT(old, at - 5);
}

} // namespace
} // namespace orvista::DocMgrModule
