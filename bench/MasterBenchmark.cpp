#include "bench/Pair.h"
#include "check/forms/FindingsPanel.h"
#include "display/forms/DisplayPreview.h"
#include "tests/support/EditorFixture.h"
#include "widgets/DeviceTextEdit.h"
#include "widgets/RowsTable.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>

#include <stdexcept>

/// A master of 60 messages with 500 displays in the real window.
namespace orvista::bench {
namespace {

constexpr int displays = 500;
/// Many times what checking them all takes. A panel that is not on the screen would never end it.
constexpr Seconds mostForACheck{60};

std::string listOfDisplays() {
    std::string list = "name,address,line,tank,limit\n";
    for (int i = 1; i <= displays; ++i) {
        const std::string number = std::to_string(i);
        list += "Line " + number + ",10.0." + std::to_string(i / 250) + "." + std::to_string(i % 250 + 1) +
                "," + number + ",Tank " + number + "," + number + ".5\n";
    }
    return list;
}

/// \param note what differs from message to message
std::string messageOf(std::size_t note) {
    return "CLEAR\r\nTEXT 0 0 GREEN BLACK \"Line {line:3>} {tank:8}\"\r\nTEXT 0 8 RED BLACK \"" +
           std::to_string(note) + " above {limit:6}\"\r\nACT STILL 3000";
}

/// The window with the script of message 1, its text's end before the cursor.
struct Plant {
    explicit Plant(bool isMaster) {
        editor.startWithNewProject();
        for (std::size_t i = 0; i < regularMessageCount; ++i)
            editor.project.STDMSG[i] = messageOf(i);
        for (std::size_t i = 0; i < emergencyMessageCount; ++i)
            editor.project.ALTMSG[i] = messageOf(100 + i);
        editor.trigger("miFileSave");
        testing::writeBytes(editor.projectFolder.file("displays.csv"), listOfDisplays());
        if (isMaster)
            testing::writeBytes(editor.projectFolder.file("Line3.notes.json"),
                                R"({"version":1,"master":{"list":"displays.csv"}})");
        editor.openProject("Line3");
        editor.showPage("C4");
        editor.showMessage("R1");
        editor.trigger("miToolsCheck");
        box = editor.find<DeviceTextEdit>("txtMsg");
        box->setFocus();
        box->moveCursor(QTextCursor::Start);
        box->moveCursor(QTextCursor::Down);
        box->moveCursor(QTextCursor::EndOfLine);
        box->moveCursor(QTextCursor::Left);
        QCoreApplication::processEvents();
    }
    testing::EditorFixture editor;
    DeviceTextEdit* box;
};

void pressTwoKeys(DeviceTextEdit& box) {
    QTest::keyClick(&box, 'x');
    QCoreApplication::processEvents();
    QTest::keyClick(&box, Qt::Key_Backspace);
    QCoreApplication::processEvents();
}

/// A key in the box of a master that is shown with a display's values, beside one in the same project that is
/// none: us_per_key and floor_us_per_key, until all is painted.
void keyInMaster(benchmark::State& state) {
    const Plant master(true);
    const Plant plain(false);
    auto* const list = master.editor.find<QComboBox>("cboPreviewDisplay");
    if (list->count() != displays + 1)
        throw std::logic_error("the displays are not there");
    list->setCurrentIndex(displays);
    runBesideFloor(
        state, [&] { pressTwoKeys(*master.box); }, [&] { pressTwoKeys(*plain.box); });
    state.counters["us_per_key"] = state.counters["us"] / 2;
    state.counters["floor_us_per_key"] = state.counters["floor_us"] / 2;
}
BENCHMARK(keyInMaster)->UseManualTime()->Iterations(300)->Unit(benchmark::kMicrosecond);

Seconds since(std::chrono::steady_clock::time_point start) {
    return std::chrono::steady_clock::now() - start;
}

/// All displays checked by the list of findings: longest_ms is what the processor does in one go, while the
/// window is kept from doing anything else. It may be 5 ms.
void checkAllDisplays(benchmark::State& state) {
    const Plant master(true);
    auto* const all = master.editor.find<QCheckBox>("chkFindingsAllDisplays");
    auto& panel = *master.editor.window->findChild<FindingsPanel*>();
    double longest = 0;
    for ([[maybe_unused]] auto turn : state) {
        all->setChecked(false);
        QCoreApplication::processEvents();
        const auto start = std::chrono::steady_clock::now();
        all->setChecked(true);
        while (panel.isChecking()) {
            const Cost slice = costOf([] { QCoreApplication::processEvents(); });
            longest = std::max(longest, slice.processor.count());
            if (since(start) > mostForACheck)
                return state.SkipWithError("the displays are not checked to the end");
        }
        state.SetIterationTime(since(start).count());
    }
    state.counters["longest_ms"] = longest * 1e3;
}
BENCHMARK(checkAllDisplays)->UseManualTime()->Iterations(10)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace orvista::bench
