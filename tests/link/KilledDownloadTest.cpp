#include "link/ftp/DownloadStaging.h"
#include "model/ProjectFile.h"
#include "model/StagedFiles.h"
#include "model/SystemFile.h"
#include "tests/support/ScriptedPeople.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <functional>
#include <map>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

/// The calls that change a folder find the names of these first; the program can end before each of them.
namespace {

struct Kill {
    bool armed = false;
    int at = 0;
    int count = 0;
    bool oneNameForAFile = false; ///< as on sticks and memory cards
} toKill;

constexpr int killedStatus = 77;

void mayEnd() {
    if (toKill.armed && toKill.count++ == toKill.at)
        _exit(killedStatus);
}

template <typename... Arguments>
int call(long number, Arguments... arguments) {
    mayEnd();
    return static_cast<int>(syscall(number, arguments...));
}

} // namespace

extern "C" {
int rename(const char* from, const char* to) noexcept {
    return call(SYS_renameat, AT_FDCWD, from, AT_FDCWD, to);
}
int link(const char* from, const char* to) noexcept {
    if (toKill.oneNameForAFile) {
        errno = EPERM;
        return -1;
    }
    return call(SYS_linkat, AT_FDCWD, from, AT_FDCWD, to, 0);
}
int unlink(const char* path) noexcept {
    return call(SYS_unlinkat, AT_FDCWD, path, 0);
}
int rmdir(const char* path) noexcept {
    return call(SYS_unlinkat, AT_FDCWD, path, AT_REMOVEDIR);
}
int unlinkat(int folder, const char* path, int flags) noexcept {
    return call(SYS_unlinkat, folder, path, flags);
}
int remove(const char* path) noexcept {
    struct stat status {};
    const bool isFolder =
        fstatat(AT_FDCWD, path, &status, AT_SYMLINK_NOFOLLOW) == 0 && S_ISDIR(status.st_mode);
    return isFolder ? rmdir(path) : unlink(path);
}
int mkdir(const char* path, mode_t mode) noexcept {
    return call(SYS_mkdirat, AT_FDCWD, path, mode);
}
ssize_t write(int file, const void* bytes, size_t size) {
    if (toKill.armed && toKill.count == toKill.at)
        syscall(SYS_write, file, bytes, size / 2);
    mayEnd();
    return syscall(SYS_write, file, bytes, size);
}
}

namespace orvista {
namespace {

namespace fs = std::filesystem;
using orvista::testing::fileBytes;
using orvista::testing::TemporaryFolder;
using orvista::testing::writeBytes;
using Files = std::map<std::string, std::string>;

constexpr int mostCalls = 200;

/// A folder with an old project into which a new one is downloaded.
struct Target {
    Target() {
        for (const char* const name : {"Plant.orx", "stdmsg.ilm", "b.bmp"})
            writeBytes(folder.file(name), std::string("old ") + name);
        writeBytes(folder.file("notes.txt"), "somebody's");
        old = files();
        whole = old;
        for (const std::string& name : names)
            whole[name] = "new " + name;
    }
    /// Without what waits.
    Files files() const {
        Files found;
        for (const auto& entry : fs::directory_iterator(folder.path()))
            if (!entry.is_directory())
                found[entry.path().filename()] = fileBytes(entry.path());
        return found;
    }
    void expectOldOrNew() const { EXPECT_TRUE(files() == old || files() == whole); }
    bool nothingWaits() const { return !fs::exists(folder.file("download0.tmp")); }

    /// \param inTheWay a name that the last file is to take and a folder has by then
    void download(const std::string& inTheWay = {}) const {
        DownloadStaging staging(folder.path(), PathRules::native());
        for (const std::string& name : names)
            writeBytes(staging.pathFor(folder.file(name)), "new " + name);
        if (!inTheWay.empty()) {
            writeBytes(staging.pathFor(folder.file(inTheWay)), "new");
            fs::create_directory(folder.file(inTheWay));
        }
        staging.complete();
    }

    TemporaryFolder folder;
    const std::vector<std::string> names{"Plant.orx", "a.bmp", "stdmsg.ilm", "b.bmp", "c.bmp"};
    Files old;
    Files whole;
};

/// Runs `act` in a program of its own that ends before the call of this number. False when it makes fewer.
bool killedAt(int at, const std::function<void()>& act) {
    const pid_t child = fork();
    if (child == 0) {
        toKill.armed = true;
        toKill.at = at;
        try {
            act();
        } catch (const std::exception&) {
            _exit(1);
        }
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status));
    return WEXITSTATUS(status) == killedStatus;
}

class KilledDownload : public ::testing::TestWithParam<bool> {
protected:
    void SetUp() override { toKill.oneNameForAFile = GetParam(); }
    void TearDown() override { toKill = {}; }
};

TEST_P(KilledDownload, IsFinishedOrUndoneWhenTheFolderIsOpened) {
    int finished = 0;
    int undone = 0;
    int at = 0;
    for (bool killed = true; killed && at < mostCalls; ++at) {
        const Target target;
        killed = killedAt(at, [&] { target.download(); });
        finishStaging(target.folder.path());
        SCOPED_TRACE(at);
        target.expectOldOrNew();
        (target.files() == target.old ? undone : finished) += 1;
        clearStaging(target.folder.path());
        EXPECT_TRUE(target.nothingWaits());
        target.expectOldOrNew();
    }
    EXPECT_LT(at, mostCalls);
    EXPECT_GT(undone, 5);
    EXPECT_GT(finished, 10);
}

TEST_P(KilledDownload, IsFinishedOrUndoneByTheNextDownload) {
    for (int at = 0; at < mostCalls; ++at) {
        const Target target;
        const bool killed = killedAt(at, [&] { target.download(); });
        { const DownloadStaging next(target.folder.path(), PathRules::native()); }
        SCOPED_TRACE(at);
        target.expectOldOrNew();
        EXPECT_TRUE(target.nothingWaits());
        if (!killed)
            return;
    }
    FAIL() << "more calls than expected";
}

TEST_P(KilledDownload, IsFinishedOrUndoneThoughWhoFinishesItIsKilledToo) {
    bool killed = true;
    for (int at = 0; killed; ++at) {
        bool killedAgain = true;
        for (int again = 0; killedAgain; ++again) {
            const Target target;
            killed = killedAt(at, [&] { target.download(); });
            killedAgain = killedAt(again, [&] { finishStaging(target.folder.path()); });
            finishStaging(target.folder.path());
            SCOPED_TRACE(std::to_string(at) + ", " + std::to_string(again));
            target.expectOldOrNew();
        }
        ASSERT_LT(at, mostCalls);
    }
}

TEST_P(KilledDownload, IsTakenBackAtEveryMomentWhereAFileCannotBeReplaced) {
    int at = 0;
    for (bool killed = true; killed && at < mostCalls; ++at) {
        const Target target;
        killed = killedAt(at, [&] { target.download("b.bmp.folder"); });
        finishStaging(target.folder.path());
        SCOPED_TRACE(at);
        EXPECT_EQ(target.files(), target.old);
    }
    EXPECT_GT(at, 30);
    EXPECT_LT(at, mostCalls);
}

INSTANTIATE_TEST_SUITE_P(Disks, KilledDownload, ::testing::Bool(), [](const auto& test) {
    return test.param ? "WithOneNameForAFile" : "WithManyNamesForAFile";
});

/// What a download leaves that was killed between its list and its first file.
class LeftDownload : public ::testing::Test {
protected:
    void leave(const std::string& list) const {
        fs::create_directory(inner);
        writeBytes(inner + "/0", "new Plant.orx");
        writeBytes(inner + "/names", list);
    }

    const Target target;
    const std::string inner = target.folder.file("download0.tmp");
    const std::string list = std::string("Plant.orx\0\0", 11);
};

TEST_F(LeftDownload, IsLeftAloneWhileItRuns) {
    leave(list);
    {
        SystemFile running(inner + "/names", SystemFile::Mode::Existing);
        ASSERT_TRUE(running.lock());
        finishStaging(target.folder.path());
        clearStaging(target.folder.path());
        EXPECT_EQ(target.files(), target.old);
        EXPECT_EQ(fileBytes(inner + "/0"), "new Plant.orx");
    }
    finishStaging(target.folder.path());
    EXPECT_EQ(fileBytes(target.folder.file("Plant.orx")), "new Plant.orx");
    EXPECT_TRUE(target.nothingWaits());
}

TEST_F(LeftDownload, IsFinishedByASaveAndByOpening) {
    const PathRules paths = PathRules::native();
    testing::ScriptedMessages messages;
    Project project;
    leave(list);
    EXPECT_TRUE(
        DocMgrModule::readProjectWithoutWriting(target.folder.file("Plant.orx"), project, {paths, messages}));
    EXPECT_EQ(fileBytes(target.folder.file("Plant.orx")), "new Plant.orx");
    leave(list);
    DocMgrModule::ReadProject(target.folder.file("Plant.orx"), project, {paths, messages});
    EXPECT_TRUE(target.nothingWaits());
    leave(list);
    DocMgrModule::SaveProject(target.folder.path(), "Plant", project, {paths, messages});
    EXPECT_TRUE(target.nothingWaits());
    EXPECT_TRUE(fileBytes(target.folder.file("Plant.orx")).starts_with("[CONFIG]")) << "what was saved stays";
}

TEST_F(LeftDownload, IsNotFinishedByAListThatIsNotOurs) {
    for (const std::string& other :
         {std::string("Plant.orx\0", 10), std::string("Plant.orx"), std::string("a/Plant.orx\0\0", 13),
          std::string("..\0\0", 4), std::string(".\0\0", 3), std::string()}) {
        leave(other);
        finishStaging(target.folder.path());
        EXPECT_EQ(target.files(), target.old);
        EXPECT_EQ(fileBytes(inner + "/0"), "new Plant.orx");
        clearStaging(target.folder.path());
        EXPECT_EQ(target.files(), target.old);
        EXPECT_TRUE(target.nothingWaits());
    }
}

} // namespace
} // namespace orvista
