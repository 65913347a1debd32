#include "bench/Pair.h"
#include "display/forms/DisplayPreview.h"
#include "tests/support/EditorFixture.h"
#include "widgets/DeviceTextEdit.h"
#include "widgets/PanelView.h"

#include <QCoreApplication>

/// A key in the script box of the real window until all that it changes is painted, beside the same key with
/// the preview hidden, and beside painting the panel alone.
namespace orvista::bench {
namespace {

/// Pages of five lines, as the wizard makes them.
std::string scriptOf(std::size_t lines) {
    std::string script;
    for (std::size_t line = 0; line < lines; line += 5)
        script += "CLEAR\r\nTEXT 0 0 GREEN BLACK \"Level        m\"\r\nDISPVAR 48 0 ORANGE BLACK RegVar1\r\n"
                  "IN GO-LEFT 1 50\r\nACT STILL 3000\r\n";
    return script;
}

/// A key that adds a character to the first text, and one that takes it back: of all keys the dearest, since
/// each changes what stands beside Apply, too.
void typeInto(DeviceTextEdit& box) {
    QTest::keyClick(&box, 'x');
    QCoreApplication::processEvents();
    QTest::keyClick(&box, Qt::Key_Backspace);
    QCoreApplication::processEvents();
}

constexpr double keys = 2;

struct Typist {
    explicit Typist(std::size_t lines) {
        editor.startWithNewProject();
        editor.project.STDMSG[0] = scriptOf(lines);
        editor.showMessage("R1");
        box = editor.find<DeviceTextEdit>("txtMsg");
        preview = editor.find<DisplayPreview>("displayPreview");
        box->setFocus();
        box->moveCursor(QTextCursor::Down);
        box->moveCursor(QTextCursor::EndOfLine);
        box->moveCursor(QTextCursor::Left);
        QCoreApplication::processEvents();
    }
    testing::EditorFixture editor;
    DeviceTextEdit* box;
    DisplayPreview* preview;
};

/// The whole of a key, beside the same key without a preview.
void keyToPaintedPreview(benchmark::State& state) {
    Typist typist(static_cast<std::size_t>(state.range(0)));
    Typist without(static_cast<std::size_t>(state.range(0)));
    without.preview->hide();
    auto* const panel = typist.editor.find<PanelView>("panelPreview");
    Costs painting;
    runBesideFloor(
        state, [&] { typeInto(*typist.box); },
        [&] {
            typeInto(*without.box);
            painting.add(costOf([&] { panel->repaint(); }));
        });
    const double paint = painting.wall().count() * 1e6;
    const double key = state.counters["us"] / keys;
    const double box = (state.counters["floor_us"] - paint) / keys;
    state.counters["us_per_key"] = key;
    state.counters["box_us"] = box;
    state.counters["paint_us"] = paint;
    state.counters["share_per_paint"] = (key - box) / paint;
}
BENCHMARK(keyToPaintedPreview)->Arg(40)->Arg(50'000)->UseManualTime()->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace orvista::bench
