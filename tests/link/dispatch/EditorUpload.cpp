#include "mainwindow/EditorProgram.h"
#include "tests/link/dispatch/Registration.h"
#include "tests/support/ModalDriver.h"
#include "tests/support/TemporaryFolder.h"
#include "tools/tour/Hands.h"

#include <QApplication>
#include <QMessageBox>
#include <QTest>
#include <QToolBar>

#include <cstdio>

namespace {

using namespace orvista;
using tour::Hands;

/// The editor as a user with the maker's control runs it: a project is made, saved and uploaded.
/// Everything stays in one folder: the project, what the device got, and pictures.
class EditorUpload final : public QObject {
    Q_OBJECT
public:
    EditorUpload(QString folder, QString bitmap) : folder_(std::move(folder)), bitmap_(std::move(bitmap)) {}

private slots:
    void initTestCase();
    void makesAProject();
    void savesIt();
    void uploadsItThroughTheControl();

private:
    QString path(const QString& name) const {
        return QDir::toNativeSeparators(folder_ + QLatin1Char('/') + name);
    }
    Hands hands() { return Hands(editor_->window()); }
    void show(QWidget& window, const QString& name) const {
        QVERIFY(window.grab().save(path(name + ".png")));
    }

    QString folder_;
    QString bitmap_;
    std::unique_ptr<EditorProgram> editor_;
};

void EditorUpload::initTestCase() {
    QDir(folder_).removeRecursively();
    for (const char* name : {"program", "plant", "device"})
        QVERIFY(QDir(folder_).mkpath(name));
    qputenv("ORVISTA_TEST_CONTROL_LOG", path("control.log").toUtf8());
    qputenv("ORVISTA_TEST_CONTROL_DEVICE", path("device").toUtf8());
    editor_ = std::make_unique<EditorProgram>(path("program").toStdString());
}

void EditorUpload::makesAProject() {
    testing::onModal("frmStartup", [this](QWidget* startup) {
        show(*startup, "1-start-up");
        Hands(*startup).click("optCreateNew");
        Hands(*startup).click("btnStartupOK");
    });
    testing::onModal("frmNewProject", [this](QWidget* dialog) {
        const Hands hands(*dialog);
        hands.type("txtProjName", "PLANT");
        hands.type("txtLocation", path("plant"));
        show(*dialog, "2-new-project");
        hands.click("btnOK");
    });
    editor_->window().show();
    QTRY_COMPARE(editor_->window().windowTitle(), "Orvista Message Editor - [PLANT*]");
    QVERIFY(testing::allModalsServed());
    hands().clickNode("trvSystem", "C1");
    hands().type("txtSystemIP", "127.0.0.1");
    show(editor_->window(), "3-main-window");
}

void EditorUpload::savesIt() {
    hands().press(QKeySequence("Ctrl+S"));
    QTRY_COMPARE(editor_->window().windowTitle(), "Orvista Message Editor - [PLANT]");
    QVERIFY(QFile::exists(path("plant\\PLANT.orx")));
    QVERIFY(QFile::copy(bitmap_, path("plant\\alarm.bmp")));
    const std::string history = testing::fileBytes(path("program\\history.cache").toStdString());
    QVERIFY(history.find(path("plant\\PLANT").toStdString()) != std::string::npos);
}

void EditorUpload::uploadsItThroughTheControl() {
    const testing::Registration registration({L"name", L"library"});
    testing::onModal("frmConnection", [this](QWidget* dialog) {
        show(*dialog, "4-connection");
        Hands(*dialog).click("btnOK");
    });
    QString message;
    testing::onModal("messageBox", [this, &message](QWidget* box) {
        message = qobject_cast<QMessageBox*>(box)->text();
        show(*box, "5-uploaded");
        QTest::keyClick(box, Qt::Key_Return);
    });
    auto& toolBar = hands().find<QToolBar>("ToolbarMain");
    QAction* const upload = toolBar.findChild<QAction*>("UPLOAD");
    QVERIFY(upload && upload->isEnabled());
    QTest::mouseClick(toolBar.widgetForAction(upload), Qt::LeftButton);
    QCOMPARE(message, "All files were successfully uploaded");
    QVERIFY(testing::allModalsServed());

    const auto sends = [this](const QString& name) {
        return ("call 10: text by reference \"" + path("plant\\" + name) + "\"").toStdString();
    };
    const std::vector<std::string> expected{"created",
                                            "initialized",
                                            "set 1: text \"127.0.0.1\"",
                                            "set 2: 16-bit 7000",
                                            "call 5",
                                            "call 8: text \"\"",
                                            sends("modbus.adr"),
                                            sends("ilmvar.def"),
                                            sends("stdmsg.ilm"),
                                            sends("altmsg.ilm"),
                                            sends("default.pls"),
                                            sends("alarm.bmp"),
                                            "call 7",
                                            "call 6",
                                            "released"};
    QCOMPARE(testing::recordedLines(path("control.log").toStdString()), expected);
}

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() != 3) {
        std::fputs("usage: orvista-editor-upload FOLDER BITMAP\n", stderr);
        return 2;
    }
    EditorUpload test(arguments.at(1), arguments.at(2));
    return QTest::qExec(&test, {arguments.first()});
}

#include "EditorUpload.moc"
