#include "link/TransferCommands.h"
#include "mainwindow/RecoveryFolder.h"
#include "model/FolderCopy.h"
#include "tests/faults/CarriedOut.h"
#include "tests/support/EditorFixture.h"
#include "tests/support/SimulatorProcess.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QMessageBox>
#include <QProcess>
#include <QPushButton>
#include <QTimer>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <random>

/// killed_accepting_editor_test [kills] [seed]: an editor accepts the messages of a display until it is
/// killed, again and again. Whenever that happens the display is as it was before, or what is to be put back
/// is offered; what others switched stays.
namespace {

using namespace orvista;
using namespace orvista::testing;

/// After the first of its requests a kill comes within this time.
constexpr int mostMilliseconds = 700;

Project acceptedProject() {
    Project project;
    for (const Item message :
         {Item(Kind::Regular, 0), Item(Kind::Regular, 1), Item(Kind::Regular, 7), Item(Kind::Emergency, 2)})
        scriptOf(project, message) = "CLEAR\r\nDISPVAR 0 0 RED BLACK RegVar1\r\n"
                                     "DISPVARS 60 0 RED BLACK CoilVar1\r\nACT STILL 2000";
    project.DigitalInput = 500;
    return project;
}

/// Hands out the project's own files as those of the display.
class OwnFiles final : public TransferCommands {
public:
    explicit OwnFiles(const Project& project) : project_(project) {}
    void upload() override {}
    FetchedDisplay download() override { return {}; }
    FetchedDisplay fetch(const std::string& /*title*/, const std::string& folder) override {
        copyFiles(project_.ProjPath, folder);
        return {FetchedDisplay::End::Fetched, "127.0.0.1:7000", {}, "127.0.0.1"};
    }

private:
    const Project& project_;
};

/// Somebody who answers whatever is asked, quickly and at random.
class Hasty {
public:
    Hasty(QString result, unsigned seed) : result_(std::move(result)), random_(seed) {}

    void goOn() {
        QTimer::singleShot(5, qApp, [this] {
            goOn(); // also while a dialog is open that this opens
            act();
        });
    }

private:
    void act() {
        QWidget* const dialog = QApplication::activeModalWidget();
        if (auto* const files = qobject_cast<QFileDialog*>(dialog)) {
            files->selectFile(result_);
            QMetaObject::invokeMethod(files, "accept");
        } else if (auto* const question = qobject_cast<QMessageBox*>(dialog)) {
            question->button(QMessageBox::Yes)->click();
        } else if (dialog && !press(*dialog, "btnAcceptStart")) {
            constexpr std::array buttons{"btnAcceptGood",  "btnAcceptBad",    "btnAcceptSkip",
                                         "btnAcceptBack",  "btnAcceptWidest", "btnAcceptStop",
                                         "btnAcceptWidest"};
            if (press(*dialog, buttons.at(random_() % buttons.size())) && !std::exchange(hasTold_, true)) {
                std::puts("begun");
                std::fflush(stdout);
            }
        }
    }
    static bool press(const QWidget& dialog, const char* name) {
        auto* const button = dialog.findChild<QPushButton*>(QLatin1String(name));
        if (button == nullptr || !button->isEnabled())
            return false;
        button->click();
        return true;
    }

    QString result_;
    std::minstd_rand random_;
    bool hasTold_ = false;
};

int edit(int argc, char** argv) {
    const QApplication application(argc, argv);
    EditorFixture editor;
    editor.recovery.folder = QString::fromUtf8(argv[2]);
    editor.modbusPort = static_cast<std::uint16_t>(std::atoi(argv[3]));
    editor.startWithNewProject("Plant");
    editor.type("txtSystemIP", QStringLiteral("127.0.0.1"));
    const Project wanted = acceptedProject();
    editor.project.STDMSG = wanted.STDMSG;
    editor.project.ALTMSG = wanted.ALTMSG;
    editor.project.DigitalInput = wanted.DigitalInput;
    editor.trigger("miFileSave");
    OwnFiles files(editor.project);
    editor.window->useTransfer(files);
    Hasty hasty(QString::fromStdString(editor.projectFolder.file("Plant-accepted.json")),
                static_cast<unsigned>(std::atoi(argv[4])));
    hasty.goOn();
    editor.trigger("miToolsAccept");
    return EXIT_FAILURE; // it was to be killed before
}

void killOneAtWork(const QString& folder, const QString& data, quint16 port, unsigned seed) {
    QProcess editor;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("TMPDIR"), folder);
    editor.setProcessEnvironment(environment);
    editor.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    editor.start(QCoreApplication::applicationFilePath(),
                 {QStringLiteral("edit"), data, QString::number(port), QString::number(seed)});
    QByteArray told;
    while (!told.contains("begun")) {
        if (!editor.waitForReadyRead(60'000))
            throw std::runtime_error("the editor does not begin");
        told += editor.readAll();
    }
    if (editor.waitForFinished(static_cast<int>(std::minstd_rand(seed)() % mostMilliseconds)))
        throw std::runtime_error("the editor has ended by itself");
    editor.kill();
    editor.waitForFinished();
}

void othersSwitch(const DisplayAddress& display, const Project& project, const std::string& on,
                  const std::string& off) {
    const auto names = [](const std::string& name) {
        return name.empty() ? std::vector<std::string>() : std::vector{name};
    };
    writeToDisplay(display, switchWrites(project, names(on), names(off)));
}

void run(int kills, unsigned seed) {
    const SimulatorProcess simulator;
    const DisplayAddress display{"127.0.0.1", simulator.modbusPort()};
    const Project project = acceptedProject();
    writeToDisplay(display, switchWrites(project, {"STDMSG8", "STDMSG30"}, {}));
    writeToDisplay(display, assignedWrites({"RegVar1=1.5", "CoilVar9=on"}, &project));
    const std::vector<DisplayItem> before = heldBy(display, project);
    othersSwitch(display, project, "ALTMSG15", {});
    const std::vector<DisplayItem> after = heldBy(display, project);
    int offered = 0;
    for (int kill = 0; kill < kills; ++kill) {
        othersSwitch(display, project, {}, "ALTMSG15");
        if (heldBy(display, project) != before)
            throw std::runtime_error("something is not as before, kill " + std::to_string(kill));
        const TemporaryFolder folder;
        const QString data = QString::fromStdString(folder.file("data"));
        killOneAtWork(QString::fromStdString(folder.path()), data, simulator.modbusPort(),
                      seed + static_cast<unsigned>(kill));
        othersSwitch(display, project, "ALTMSG15", {});
        for (const RecoveryFolder::Copy& copy :
             RecoveryFolder(data, RecoveryFolder::acceptances).abandoned()) {
            putBackCopy(display, RecoveryFolder::bytesOf(copy.path));
            ++offered;
        }
        if (heldBy(display, project) != after)
            throw std::runtime_error("something is not as others left it, kill " + std::to_string(kill));
        QCoreApplication::processEvents(); // what the display prints has to be read
    }
    std::printf("%d kills, %d offered\n", kills, offered);
}

} // namespace

int main(int argc, char** argv) {
    if (argc == 5 && std::string(argv[1]) == "edit")
        return edit(argc, argv);
    const QCoreApplication application(argc, argv);
    try {
        run(argc > 1 ? std::atoi(argv[1]) : 30, argc > 2 ? static_cast<unsigned>(std::atoi(argv[2])) : 1);
        return EXIT_SUCCESS;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return EXIT_FAILURE;
    }
}
