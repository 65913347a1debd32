#include "mainwindow/TryOut.h"

#include "dialogs/frmSelDir.h"
#include "mainwindow/Navigator.h"
#include "mainwindow/PanelDock.h"
#include "mainwindow/ProgramBeside.h"
#include "model/FolderCopy.h"
#include "model/Place.h"
#include "model/SystemPath.h"
#include "widgets/PathText.h"

#include <QWidget>

#include <filesystem>
#include <system_error>
#include <utility>

namespace orvista {

namespace {

/// The message that a newcomer sees first: it moves.
constexpr Item firstMessage(Kind::Regular, 0);

constexpr const char* displayNotice = "TryDisplay";
constexpr const char* transferNotice = "TryTransfer";
constexpr const char* nextStep = "GoThere";

} // namespace

TryOutSettings TryOutSettings::usual(const DocMgrModule::ProgramEnvironment& environment, QWidget* parent) {
    const PathRules& paths = environment.paths;
    const std::string& folder = environment.programFolder;
    return {.chooseFolder = [paths, parent](const std::string& caption) -> std::optional<std::string> {
                frmSelDir dialog(paths, {}, parent);
                dialog.setWindowTitle(QString::fromStdString(caption));
                dialog.exec();
                return dialog.IsCanceled ? std::nullopt : std::optional(dialog.FullPath);
            },
            .example = paths.join(paths.join(folder, "examples"), "pumpstation"),
            .project = "PUMPSTATION",
            .simulator = shownPath(programBeside(environment, "lx400d-simulator")),
            .options = {}};
}

TryOut::TryOut(DocMgrModule::ProjectLifecycle& lifecycle, Navigator& navigator, PanelDock& dock,
               TryOutSettings settings, QWidget& window, std::function<void()> showTester)
    : QObject(&window),
      lifecycle_(lifecycle),
      navigator_(navigator),
      dock_(dock),
      settings_(std::move(settings)),
      window_(window),
      showTester_(std::move(showTester)) {}

TryOut::~TryOut() {
    if (display_)
        display_->disconnect(this); // its end is no news any more
}

void TryOut::miToolsTry_Click() {
    const auto parent = settings_.chooseFolder("Choose a folder for a copy of the example");
    if (!parent)
        return;
    std::error_code unknown;
    if (!std::filesystem::is_directory(systemPath(settings_.example), unknown)) {
        lifecycle_.fileContext().messages.show(MessageIcon::Exclamation,
                                               "The example is missing: " + settings_.example);
        return;
    }
    try {
        openCopy(copyToNewFolder(settings_.example, *parent));
    } catch (const std::system_error& failure) {
        lifecycle_.fileContext().messages.show(
            MessageIcon::Exclamation,
            "Unable to copy the example into " + *parent + ": " + failure.code().message() +
                ". Choose a folder that you may write to, on a disk that is not full.");
    }
}

void TryOut::openCopy(const std::string& folder) {
    lifecycle_.openGivenProject(
        DocMgrModule::projectFilePath(lifecycle_.environment().paths, folder, settings_.project));
    if (lifecycle_.project().ProjPath != folder)
        return; // the project before it could not be saved, and stays
    copy_ = folder;
    try {
        startDisplay();
    } catch (const std::system_error& failure) { // of the folder for its files
        const std::string fault = held_ ? writingFault(held_->path()) : failure.what();
        tellOutOfReach(tr("The simulated display cannot be started: %1")
                           .arg(QString::fromStdString(fault.empty() ? failure.code().message() : fault)));
    }
    navigator_.goTo({firstMessage, 0});
}

void TryOut::follow() {
    if (lifecycle_.project().ProjPath == copy_)
        return;
    takeHintAway();
    takeFaultsAway();
}

void TryOut::takeHintAway() {
    dock_.withdraw(QString::fromLatin1(nextStep));
}

void TryOut::takeFaultsAway() {
    dock_.withdraw(displayNotice);
    dock_.withdraw(transferNotice);
}

void TryOut::tellHowToGoOn() {
    dock_.offer({QString::fromLatin1(nextStep), tr("Tick a message on the TCP Tester page and press Update"),
                 tr("Go There"), showTester_});
}

void TryOut::startDisplay() {
    takeFaultsAway(); // of the last try, whose copy may still be open
    display_.reset(); // of the last try: its ports are wanted
    copyFiles(settings_.example, held_.emplace().path());
    display_.emplace();
    const QRect place = window_.frameGeometry();
    const QString beside =
        QStringLiteral("%1,%2,%3,%4").arg(place.x()).arg(place.y()).arg(place.width()).arg(place.height());
    display_->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    connect(&*display_, &QProcess::readyReadStandardOutput, this, &TryOut::readOutput);
    connect(&*display_, &QProcess::errorOccurred, this, &TryOut::tellNotStarted);
    connect(&*display_, &QProcess::finished, this, &TryOut::takeHintAway);
    // Before it starts: a failure takes the hint away, and may be reported at once.
    tellHowToGoOn();
    display_->start(settings_.simulator,
                    settings_.options + QStringList{"--until-input-ends", "--remove-root", "--beside", beside,
                                                    "--root", shownPath(held_->path())});
}

void TryOut::readOutput() {
    while (display_->canReadLine())
        takeLine(QString::fromUtf8(display_->readLine()).trimmed());
}

void TryOut::takeLine(const QString& line) {
    if (line.startsWith(QStringLiteral("Modbus/TCP not available")))
        tellOutOfReach(tr("The test page cannot reach the simulated display. %1").arg(line));
    if (line.startsWith(QStringLiteral("File transfer not available")))
        tell(transferNotice, tr("Upload and Download cannot reach the simulated display. %1").arg(line));
}

void TryOut::tellNotStarted(QProcess::ProcessError error) {
    if (error == QProcess::FailedToStart)
        tellOutOfReach(tr("The simulated display cannot be started: %1").arg(settings_.simulator));
}

void TryOut::tellOutOfReach(const QString& text) {
    takeHintAway();
    tell(displayNotice, text);
}

void TryOut::tell(const char* notice, const QString& text) {
    dock_.offer({.name = QString::fromLatin1(notice), .text = text, .button = {}, .run = nullptr});
}

} // namespace orvista
