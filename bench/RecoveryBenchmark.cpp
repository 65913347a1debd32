#include "bench/Pair.h"
#include "mainwindow/RecoveryKeeper.h"
#include "tests/support/TemporaryFolder.h"

#include <QSaveFile>

/// The copy of an ordinary project's unsaved work, 64 KB of scripts, beside writing the same bytes.
namespace orvista::bench {
namespace {

Project ordinaryProject() {
    const std::string line = "TEXT 0 0 GREEN BLACK \"Emergency stop pump\"\r\n";
    Project project;
    for (std::string& script : project.STDMSG)
        while (script.size() < 64 * 1024 / regularMessageCount)
            script += line;
    project.modified = true;
    return project;
}

void CopyOfUnsavedWork(benchmark::State& state) {
    const testing::TemporaryFolder folder;
    Project project = ordinaryProject();
    RecoveryKeeper keeper(project, {}, {.folder = QString::fromStdString(folder.path())}, nullptr);
    const std::string bytes = recoveryBytes(project, {});
    bool written = true;
    runBesideFloor(
        state,
        [&] {
            project.STDMSG[0].back() ^= 1; // the same bytes are not written again
            keeper.noteChange();
            keeper.keepNow();
        },
        [&] {
            QSaveFile file(QString::fromStdString(folder.file("floor")));
            written = file.open(QIODevice::WriteOnly) &&
                      file.write(bytes.data(), static_cast<qint64>(bytes.size())) > 0 && file.commit() &&
                      written;
        });
    if (!written)
        state.SkipWithError("the floor was not written");
}

BENCHMARK(CopyOfUnsavedWork)->UseManualTime()->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace orvista::bench
