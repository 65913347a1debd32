#include "tools/tour/FilesTour.h"

#include "tests/support/ModalDriver.h"
#include "widgets/DeviceTextEdit.h"

#include <QDropEvent>
#include <QFile>
#include <QLabel>
#include <QMimeData>
#include <QTest>
#include <QUrl>
#include <QWindow>

namespace orvista::tour {

namespace {

const char* const otherScript = "TEXT 0 0 RED BLACK \"Changed again\"";

/// Gives the first message of the file another script, as a second editor would.
void changeFile(const QString& path) {
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadWrite));
    QByteArray bytes = file.readAll();
    bytes.replace("DEFMSG STDMSG1\r\n", QByteArray("DEFMSG STDMSG1\r\n") + otherScript + "\r\n");
    QVERIFY(file.seek(0) && file.write(bytes) == bytes.size());
}

} // namespace

void FilesTour::noticesThatTheFileWasChanged() {
    stage_.startEditor(station());
    QTRY_COMPARE(stage_.window().windowTitle(), "Orvista Message Editor - [STATION]");
    const Hands hands = stage_.hands();
    hands.clickNode("trvSystem", "C4");
    hands.clickNode("trvMsg", "R1");
    boxHeight_ = hands.find<DeviceTextEdit>("txtMsg").height();
    {
        QWidget otherProgram;
        otherProgram.show();
        otherProgram.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&otherProgram));
        changeFile(station());
    }
    stage_.window().activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&stage_.window()));
    QTRY_VERIFY(hands.find<QLabel>("lblReload").isVisible());
    stage_.show("changed-on-disk", "Back in the window: somebody has changed the project's file.");
}

void FilesTour::readsItAgain() {
    const Hands hands = stage_.hands();
    hands.type("txtMsg", "CLEAR");
    stage_.inDialog("ReloadQuestion", [this](const Hands& box) {
        stage_.show(box.window(), "reload-question",
                    "What was typed meanwhile is only thrown away on demand.");
        QTRY_VERIFY(box.window().isActiveWindow());
        QTest::keyClick(&box.window(), Qt::Key_Y, Qt::AltModifier);
        QTRY_VERIFY(!box.window().isVisible());
    });
    hands.click("btnReload");
    QVERIFY(testing::allModalsServed());
    QTRY_VERIFY(!hands.find<QLabel>("lblReload").isVisible());
    const auto& box = hands.find<DeviceTextEdit>("txtMsg");
    QVERIFY(box.toPlainText().startsWith(otherScript));
    QTRY_COMPARE(box.height(), boxHeight_); // the dock gives its room back little by little
    QCOMPARE(stage_.window().windowTitle(), "Orvista Message Editor - [STATION]");
    stage_.show("reloaded", "Reload opens it as it is now.");
}

void FilesTour::opensADroppedProject() {
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(stage_.projectFolder("plant") + "/PLANT2.orx")});
    auto& box = stage_.hands().find<QWidget>("txtMsg");
    const QPoint at = box.mapTo(&stage_.window(), box.rect().center());
    QDragEnterEvent enter(at, Qt::CopyAction, &data, Qt::LeftButton, {});
    QDropEvent drop(at, Qt::CopyAction, &data, Qt::LeftButton, {});
    for (QEvent* const event : {static_cast<QEvent*>(&enter), static_cast<QEvent*>(&drop)})
        QCoreApplication::sendEvent(stage_.window().windowHandle(), event);
    QTRY_COMPARE(stage_.window().windowTitle(), "Orvista Message Editor - [PLANT2]");
    stage_.show("dropped", "A project that is dropped anywhere on the window is opened.");
}

} // namespace orvista::tour
