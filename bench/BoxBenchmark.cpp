#include "bench/Pair.h"
#include "dialogs/FolderList.h"
#include "tests/support/TemporaryFolder.h"
#include "widgets/DeviceTextEdit.h"

#include <QApplication>
#include <QClipboard>
#include <QListWidget>

#include <algorithm>
#include <filesystem>

/// The script box beside the bare box that it is made of, and the chooser's folders beside a plain list.
namespace orvista {
namespace {

constexpr std::size_t megabyte = 1 << 20;
constexpr int folders = 10'000;

std::string script(std::size_t size) {
    std::string text;
    while (text.size() < size)
        text += "TEXT 0 0 RED BLACK \"Pump 1\"\r\n";
    return text;
}

void pasteOf1MB(benchmark::State& state) {
    QApplication::clipboard()->setText(QString::fromStdString(script(megabyte)));
    DeviceTextEdit box;
    QPlainTextEdit bare;
    for (QPlainTextEdit* const each : {static_cast<QPlainTextEdit*>(&box), &bare}) {
        each->setFont(box.font());
        each->resize(800, 600);
        each->show();
    }
    const auto pasteInto = [](QPlainTextEdit& each) {
        each.selectAll();
        each.paste();
    };
    bench::runBesideFloor(
        state, [&] { pasteInto(box); }, [&] { pasteInto(bare); });
}

void readingOf1MB(benchmark::State& state) {
    const std::string text = script(megabyte);
    DeviceTextEdit box;
    box.setBytes(text);
    QPlainTextEdit bare(QString::fromStdString(text));
    bench::runBesideFloor(
        state, [&] { benchmark::DoNotOptimize(box.bytes()); },
        [&] { benchmark::DoNotOptimize(bare.toPlainText().toLatin1()); });
}

void openingAFolderOf10000(benchmark::State& state) {
    const testing::TemporaryFolder folder;
    QStringList names;
    for (int i = 0; i < folders; ++i) {
        names += QStringLiteral("Line %1").arg(i);
        std::filesystem::create_directory(folder.file(names.back().toStdString()));
    }
    FolderList list(PathRules::native());
    QListWidget plain;
    list.show();
    plain.show();
    const auto reads = [&folder] {
        return std::distance(std::filesystem::directory_iterator(folder.path()), {});
    };
    bench::runBesideFloor(
        state,
        [&] {
            list.setPath(folder.path());
            list.grab();
        },
        [&] {
            benchmark::DoNotOptimize(reads());
            plain.clear();
            plain.addItems(names);
            plain.grab();
        });
}

BENCHMARK(pasteOf1MB)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(readingOf1MB)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(openingAFolderOf10000)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace
} // namespace orvista
