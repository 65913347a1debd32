#include "model/SystemPath.h"
#include "simulator/Announcement.h"
#include "simulator/EndSignals.h"
#include "simulator/InputEnd.h"
#include "simulator/Options.h"
#include "simulator/Snapshot.h"
#include "simulator/forms/SimulatorWindow.h"
#include "widgets/CommandLine.h"
#include "widgets/FileChoice.h"

#include <QApplication>
#include <QDir>
#include <QTemporaryDir>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>

namespace {

using namespace orvista;

/// Scripts read these lines while the program runs, so none may wait in a buffer.
void print(const QString& line) {
    std::puts(line.toUtf8().constData());
    std::fflush(stdout);
}

void connectOutput(SimulatedDevice& device, const Options& options) {
    if (options.printLog)
        QObject::connect(&device, &SimulatedDevice::logged,
                         [](const RequestRecord& record) { print(logLine(record)); });
}

std::unique_ptr<Snapshot> makeSnapshot(const SimulatedDevice& device, const Options& options) {
    if (options.snapshot.isEmpty())
        return nullptr;
    auto snapshot = std::make_unique<Snapshot>(device, options.snapshot, options.moment);
    QObject::connect(snapshot.get(), &Snapshot::written,
                     [](const QString& file) { print("Picture written to " + file); });
    QObject::connect(snapshot.get(), &Snapshot::failed,
                     [](const QString& reason) { print("Picture not written: " + reason); });
    return snapshot;
}

/// Mistakes, help and the version are answered without a display.
Options optionsBeforeStart(int argumentCount, char** arguments) {
    const QCoreApplication windowless(argumentCount, arguments); // its name stands in the help
    return parseOptions(programArguments(argumentCount, arguments));
}

int run(const Options& options) {
    SimulatedDevice device(options.device, options.faults);
    connectOutput(device, options);
    const EndSignals endSignals;
    QObject::connect(&endSignals, &EndSignals::terminationRequested, qApp, &QCoreApplication::quit);
    if (options.untilInputEnds)
        quitWhenInputEnds();
    const bool hasModbus = device.startModbus();
    const bool hasTransfer = device.startTransfer();
    print(modbusLine(device));
    print(transferLine(device));
    print("Files in " + QDir::toNativeSeparators(QString::fromStdString(options.device.root)));
    if (options.headless && !hasModbus && !hasTransfer)
        return 1;
    std::unique_ptr<SimulatorWindow> window;
    if (!options.headless)
        window = std::make_unique<SimulatorWindow>(device);
    const std::unique_ptr<Snapshot> snapshot = makeSnapshot(device, options);
    device.loadFiles();
    if (window && options.beside)
        window->standBeside(*options.beside);
    if (window)
        window->show();
    const int result = QApplication::exec();
    if (snapshot && !options.moment && !snapshot->write())
        return 1;
    return result;
}

} // namespace

int main(int argc, char* argv[]) {
    QCoreApplication::setApplicationName("lx400d-simulator");
    QCoreApplication::setApplicationVersion(ORVISTA_RELEASE);
    try {
        Options options = optionsBeforeStart(argc, argv);
        if (options.untilInputEnds)
            outliveReaders(); // before Qt says something
        if (options.headless)
            qputenv("QT_QPA_PLATFORM", "offscreen");
        const QApplication application(argc, argv);
        keepNoDialogSettings();
        std::optional<QTemporaryDir> ownFolder;
        std::error_code ignored;
        if (options.device.root.empty())
            options.device.root = ownFolder.emplace().path().toStdString();
        else if (!std::filesystem::is_directory(systemPath(options.device.root), ignored))
            throw UsageError("there is no folder " + options.device.root);
        const int result = run(options);
        if (options.removeRoot)
            std::filesystem::remove_all(systemPath(options.device.root), ignored);
        return result;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "lx400d-simulator: %s\n", failure.what());
        return 2;
    }
}
