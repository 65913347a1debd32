#include "bench/Pair.h"
#include "display/forms/DisplayPreview.h"
#include "tests/support/EditorFixture.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>

/// What playing a message costs the whole program, beside the same window with the message standing still.
namespace orvista::bench {
namespace {

constexpr int milliseconds = 2000;

void wait() {
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

struct Player {
    Player() {
        editor.startWithNewProject();
        editor.project.STDMSG[0] =
            "CLEAR\r\nTEXT 0 0 GREEN BLACK \"Level        m\"\r\n"
            "DISPVAR 48 0 ORANGE BLACK RegVar1\r\nIN GO-LEFT 1 50\r\nACT STILL 3000\r\n"
            "OUT GO-UP 1 50";
        editor.window->resize(1280, 900);
        editor.showMessage("R1");
        QCoreApplication::processEvents();
    }
    testing::EditorFixture editor;
};

/// "share" is of one core, of the whole process.
void playing(benchmark::State& state) {
    Player player;
    wait();
    Costs works;
    for ([[maybe_unused]] auto turn : state) {
        player.editor.click("btnPreviewPlay");
        const Cost cost = costOf(wait);
        player.editor.click("btnPreviewPlay");
        works.add(cost);
        state.SetIterationTime(cost.processor.count());
        state.counters["share"] = cost.processor / cost.wall;
        const Cost still = costOf(wait);
        state.counters["floor_share"] = still.processor / still.wall;
    }
}
BENCHMARK(playing)->UseManualTime()->Iterations(2)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace orvista::bench
