#include "script/forms/frmMessageEdit.h"

#include <QApplication>
#include <QLineEdit>

#include <benchmark/benchmark.h>

/// The wizard is built anew for each use: building it, and building and showing it up to its first picture,
/// beside an empty dialog, and one keystroke in it.
namespace orvista {
namespace {

void showUpToFirstPicture(QDialog& dialog) {
    dialog.show();
    QApplication::processEvents();
    benchmark::DoNotOptimize(dialog.grab());
}

void buildWizard(benchmark::State& state) {
    for (auto _ : state)
        frmMessageEdit wizard{QString()};
}
BENCHMARK(buildWizard)->Unit(benchmark::kMillisecond);

void showEmptyDialog(benchmark::State& state) {
    for (auto _ : state) {
        QDialog dialog;
        showUpToFirstPicture(dialog);
    }
}
BENCHMARK(showEmptyDialog)->Unit(benchmark::kMillisecond);

void showWizard(benchmark::State& state) {
    for (auto _ : state) {
        frmMessageEdit wizard{QString()};
        showUpToFirstPicture(wizard);
    }
}
BENCHMARK(showWizard)->Unit(benchmark::kMillisecond);

/// The argument is the length of the text that is there already.
void typeOneCharacter(benchmark::State& state) {
    frmMessageEdit wizard{QString()};
    auto* const text = wizard.findChild<QLineEdit*>(QStringLiteral("txtText"));
    text->setText(QString(state.range(0), u'%'));
    for (auto _ : state) {
        text->insert(QStringLiteral("v"));
        text->backspace();
    }
}
BENCHMARK(typeOneCharacter)->Arg(0)->Arg(1'000)->Arg(100'000)->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace orvista
