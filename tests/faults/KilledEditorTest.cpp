#include "mainwindow/Recovery.h"
#include "model/ProjectFile.h"
#include "model/SystemPath.h"
#include "tests/support/EditorFixture.h"
#include "widgets/DeviceTextEdit.h"

#include <QApplication>
#include <QDir>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <random>

#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

/// killed_editor_test [kills] [seed]: an editor types, applies and saves in a process of its own until it is
/// killed, again and again. Whenever that happens, the last copy or the saved file has what was typed, but
/// for what was typed since the last copy was due; the saved file is whole. Time is counted in what the
/// editor does, so that a busy machine changes nothing.
namespace {

using namespace orvista;
using namespace orvista::testing;

/// How many things are done before a copy is due.
constexpr int actionsPerCopy = 8;
/// How many within which a kill comes.
constexpr int mostActions = 60;
const char* const lastScript = "CLEAR\r\nACT STILL 1000\r\n";

/// What the editor tells while it runs.
struct Progress {
    std::atomic<int> actions{0};
    std::atomic<int> typed{0}; ///< the number typed last
    std::atomic<int> kept{0};  ///< the one that was typed last when the last copy was due
    std::atomic<int> saved{0}; ///< the one that was applied when the last save was done
};

/// What the parent knows of a round.
struct Round {
    TemporaryFolder folder;
    std::string data = folder.file("recovery");
    std::string project = folder.file("project");
};

QString textOf(int number) {
    return QStringLiteral("CLEAR %1").arg(number);
}

int numberIn(const std::string& script) {
    return std::atoi(script.substr(std::string("CLEAR ").size()).c_str());
}

[[noreturn]] void work(const Round& round, Progress& progress, unsigned seed) {
    ::setenv("TMPDIR", round.folder.path().c_str(), 1);
    int argc = 1;
    char name[] = "editor";
    char* argv[] = {name, nullptr};
    const QApplication application(argc, argv);
    EditorFixture editor;
    editor.recovery = {QString::fromStdString(round.data), std::chrono::hours(1)};
    editor.start();
    editor.chooser.newProjects.push_back({round.project, "Line3"});
    editor.trigger("miFileNew");
    editor.project.STDMSG.back() = editor.project.ALTMSG.back() = lastScript;
    editor.showMessage("R1");
    auto* const box = editor.find<DeviceTextEdit>("txtMsg");
    std::minstd_rand random(seed);
    int applied = 0;
    for (;;) {
        const auto what = random() % 8;
        if (what == 0 && editor.enabled("miFileSave")) {
            editor.trigger("miFileSave");
            progress.saved = applied;
        } else if (what < 3 && applied != progress.typed) {
            editor.click("btnMsgApply");
            applied = progress.typed;
        } else {
            box->selectAll();
            box->insertPlainText(textOf(progress.typed + 1));
            ++progress.typed;
        }
        if (++progress.actions % actionsPerCopy == 0) {
            editor.window->recovery().keeper().keepNow();
            progress.kept = progress.typed.load();
        }
    }
}

/// The number in the saved project file; 0 while there is none. \throws where the file is not whole
int savedNumber(const Round& round) {
    const PathRules paths = PathRules::native();
    const std::string path = DocMgrModule::projectFilePath(paths, round.project, "Line3");
    if (!std::filesystem::exists(systemPath(path)))
        return 0;
    ScriptedMessages messages;
    Project project;
    if (!DocMgrModule::readProjectWithoutWriting(path, project, {paths, messages}) ||
        !messages.shown.empty() || project.STDMSG.back() != lastScript || project.ALTMSG.back() != lastScript)
        throw std::runtime_error("the saved file is not whole");
    return project.STDMSG.front() == std::string(clearScript) + "\r\n" ? 0 : numberIn(project.STDMSG.front());
}

/// The number in the copy; nothing when there is none. \throws where it is not whole, or cannot be restored
std::optional<int> copiedNumber(const Round& round) {
    const QString data = QString::fromStdString(round.data);
    const auto copies = QDir(data).entryList({"*.recovery"}, QDir::Files);
    const auto found = RecoveryFolder(data).abandoned();
    if (copies.size() > 1 || static_cast<qsizetype>(found.size()) != copies.size())
        throw std::runtime_error("the copy is not offered");
    if (found.empty())
        return std::nullopt;
    const auto work = RecoveryFolder::read(found.front().path);
    if (!work || work->project.STDMSG.back() != lastScript)
        throw std::runtime_error("the copy is not whole");
    const std::string& applied = work->project.STDMSG.front();
    if (!work->notApplied.empty())
        return numberIn(work->notApplied.front().texts.front());
    return applied == clearScript ? 0 : numberIn(applied);
}

void judge(const Round& round, const Progress& progress) {
    const int saved = savedNumber(round);
    const int found = copiedNumber(round).value_or(saved);
    if (saved < progress.saved)
        throw std::runtime_error("the saved file is older than the save");
    if (found < progress.kept || found > progress.typed + 1)
        throw std::runtime_error("found " + std::to_string(found) + " of " + std::to_string(progress.typed));
}

void pause(long nanoseconds) {
    const timespec time{0, nanoseconds};
    ::nanosleep(&time, nullptr);
}

void waitUntilDone(const Progress& progress, int actions, pid_t editor) {
    for (int tries = 0; progress.actions < actions; ++tries) {
        if (tries == 120'000 || ::waitpid(editor, nullptr, WNOHANG) != 0)
            throw std::runtime_error("the editor does not work");
        pause(500'000);
    }
}

void killOnce(std::mt19937& random, unsigned seed) {
    const Round round;
    std::filesystem::create_directory(systemPath(round.project));
    void* const shared =
        ::mmap(nullptr, sizeof(Progress), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    auto* const progress = new (shared) Progress;
    const pid_t editor = ::fork();
    if (editor == 0)
        work(round, *progress, seed);
    waitUntilDone(*progress, 1 + static_cast<int>(random() % mostActions), editor);
    pause(static_cast<long>(random() % 4'000'000));
    ::kill(editor, SIGKILL);
    ::waitpid(editor, nullptr, 0);
    judge(round, *progress);
    ::munmap(shared, sizeof(Progress));
}

} // namespace

int main(int argc, char** argv) {
    const int kills = argc > 1 ? std::atoi(argv[1]) : 30;
    const unsigned seed = argc > 2 ? static_cast<unsigned>(std::atoi(argv[2])) : std::random_device()();
    std::mt19937 random(seed);
    for (int i = 1; i <= kills; ++i) {
        try {
            killOnce(random, seed + static_cast<unsigned>(i));
        } catch (const std::exception& failure) {
            std::printf("kill %d of seed %u: %s\n", i, seed, failure.what());
            return 1;
        }
    }
    std::printf("%d kills, nothing lost\n", kills);
    return 0;
}
