#include "tools/tour/ProjectTour.h"

#include "tests/support/ModalDriver.h"

#include <QTest>

namespace orvista::tour {

namespace {

struct PageVisit {
    const char* node;
    const char* picture;
    const char* line;
};

constexpr PageVisit visits[] = {
    {"C1", "system", "The System page, where the device's address is set."},
    {"C2", "modbus-setting", "The Modbus Setting page with the four start addresses."},
    {"C3", "variable-list", "The Variable List page with 64 float and 32 Boolean variables."},
    {"C4", "message-list", "The Message List page with 40 regular and 20 emergency messages."},
    {"C5", "tcp-tester", "The TCP Tester page, which switches messages on and off."},
};

} // namespace

void ProjectTour::createsAProject() {
    stage_.inDialog("frmStartup", [this](const Hands& startup) {
        stage_.show(startup.window(), "start-up", "The program starts and asks what to work on.");
        startup.click("optCreateNew");
        startup.click("btnStartupOK");
    });
    stage_.inDialog("frmNewProject", [this](const Hands& dialog) {
        stage_.inDialog("frmSelDir", [this](const Hands& chooser) {
            stage_.show(chooser.window(), "choose-directory", "A folder can be picked from a list.");
            chooser.click("btnCancel");
        });
        dialog.click("btnBrowse");
        dialog.type("txtProjName", "PLANT");
        dialog.type("txtLocation", stage_.projectFolder("plant"));
        stage_.show(dialog.window(), "new-project", "A new project gets a name and a folder.");
        dialog.click("btnOK");
    });
    stage_.startEditor();
    QTRY_COMPARE(stage_.window().windowTitle(), "Orvista Message Editor - [PLANT*]");
    QVERIFY(testing::allModalsServed());
}

void ProjectTour::walksTheFivePages() {
    const Hands hands = stage_.hands();
    for (const PageVisit& visit : visits) {
        hands.clickNode("trvSystem", visit.node);
        if (QLatin1String(visit.node) == QLatin1String("C1"))
            hands.type("txtSystemIP", "127.0.0.1");
        if (QLatin1String(visit.node) == QLatin1String("C3"))
            hands.clickNode("trvVar", "F1");
        if (QLatin1String(visit.node) == QLatin1String("C4"))
            hands.clickNode("trvMsg", "R1");
        stage_.show(visit.picture, visit.line);
    }
    QCOMPARE(hands.text("txtIP"), "127.0.0.1");
}

void ProjectTour::savesIt() {
    stage_.hands().press(QStringLiteral("Ctrl+S"));
    QTRY_COMPARE(stage_.window().windowTitle(), "Orvista Message Editor - [PLANT]");
    stage_.keep(stage_.projectFolder("plant"), "created");
    stage_.show("saved", "Ctrl+S saved it: the caption lost its star.");
}

void ProjectTour::findsItAgainAfterARestart() {
    stage_.inDialog("frmStartup", [](const Hands& startup) {
        startup.click("optLoadExist");
        startup.click("btnStartupOK");
    });
    stage_.inDialog("frmLoadProject", [this](const Hands& dialog) {
        dialog.clickNode("ListView1", "PLANT");
        stage_.show(dialog.window(), "recent-projects", "After a restart it is in the list of projects.");
        dialog.click("btnOK");
    });
    stage_.startEditor();
    QTRY_COMPARE(stage_.window().windowTitle(), "Orvista Message Editor - [PLANT]");
    QVERIFY(testing::allModalsServed());
    QCOMPARE(stage_.hands().text("txtSystemIP"), "127.0.0.1");
    stage_.show("reopened", "The project is open again, with the address that was typed.");
}

void ProjectTour::savesItUnderAnotherName() {
    stage_.inDialog("comdlg", [this](const Hands& dialog) {
        dialog.type("fileNameEdit", "PLANT2");
        stage_.show(dialog.window(), "save-as", "Save as asks for another file.");
        dialog.acceptFile();
    });
    stage_.hands().press(QStringLiteral("Ctrl+Shift+S"));
    QTRY_COMPARE(stage_.window().windowTitle(), "Orvista Message Editor - [PLANT2]");
    QCOMPARE(stage_.hands().text("txtSystemName"), "PLANT2");
    stage_.keep(stage_.projectFolder("plant"), "saved-as");
    stage_.show("saved-as", "The project goes on under its new name.");
}

} // namespace orvista::tour
