#include "bench/Pair.h"
#include "link/DisplayWrites.h"
#include "link/ModbusConnection.h"
#include "link/forms/MonitorPanel.h"
#include "tests/support/SimulatorProcess.h"

#include <QDoubleSpinBox>
#include <QEventLoop>
#include <QPushButton>
#include <QTest>

#include <optional>

/// The display monitor at its fastest, beside the same requests over a plain socket. The display is a process
/// of its own.
namespace orvista::bench {
namespace {

constexpr std::chrono::milliseconds fastest{500};

struct Monitored {
    Monitored() {
        project.IP = "127.0.0.1";
        for (std::size_t i = 0; i < project.STDMSG.size(); ++i)
            project.STDMSG[i] = "CLEAR\r\nTEXT 0 0 GREEN BLACK \"Level        m\"\r\n"
                                "DISPVAR 48 0 ORANGE BLACK RegVar1\r\nIN GO-LEFT 1 50\r\nACT STILL 3000\r\n";
        panel.emplace(project, 128, PreviewClock::system(), display.modbusPort(),
                      [] { return std::vector<Item>(); });
        panel->resize(1000, 300);
        panel->show();
        if (!QTest::qWaitForWindowExposed(&*panel))
            throw std::runtime_error("the panel does not show");
        writeToDisplay(address(), switchWrites(project, {"STDMSG3", "STDMSG4"}, {}));
    }
    DisplayAddress address() const { return {"127.0.0.1", display.modbusPort()}; }
    DisplayMonitor& monitor() { return panel->monitor(); }
    /// Waits for the end of the next reading, and paints what it changed.
    void readOnce() {
        QEventLoop loop;
        QObject::connect(&monitor(), &DisplayMonitor::changed, &loop, &QEventLoop::quit);
        monitor().release();
        loop.exec();
        QCoreApplication::processEvents();
    }

    testing::SimulatorProcess display;
    Project project;
    std::optional<MonitorPanel> panel;
};

/// A reading with a value that has changed, until it is painted. "percent" is what readings at the shortest
/// interval take of a core.
void reading(benchmark::State& state) {
    Monitored monitored;
    monitored.monitor().setInterval(std::chrono::seconds(10));
    monitored.monitor().start();
    monitored.readOnce();
    int value = 0;
    std::vector<DisplayItem> items = displayItems(monitored.project);
    runBesideFloor(
        state, [&] { monitored.readOnce(); },
        [&] {
            readFromDisplay(monitored.address(), items);
            writeToDisplay(monitored.address(),
                           assignedWrites({"RegVar1=" + std::to_string(++value)}, &monitored.project));
        });
    state.counters["percent"] =
        100 * state.counters["cpu_us"] / (1000.0 * static_cast<double>(fastest.count()));
}
BENCHMARK(reading)->Iterations(200)->UseManualTime()->Unit(benchmark::kMicrosecond);

/// The panel as a user has it for ten seconds, its picture included.
void tenSeconds(benchmark::State& state) {
    Monitored monitored;
    monitored.monitor().setInterval(fastest);
    monitored.monitor().start();
    monitored.readOnce();
    for ([[maybe_unused]] auto turn : state) {
        const Cost cost = costOf([] { QTest::qWait(10'000); });
        state.SetIterationTime(cost.wall.count());
        state.counters["percent"] = 100 * cost.processor / cost.wall;
    }
}
BENCHMARK(tenSeconds)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace
} // namespace orvista::bench
