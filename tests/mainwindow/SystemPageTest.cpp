#include "tests/support/BoxInput.h"
#include "tests/support/EditorFixture.h"
#include "widgets/DeviceLineEdit.h"

#include <QGroupBox>
#include <QLabel>
#include <QRadioButton>

using namespace orvista;
using namespace orvista::testing;

class SystemPageTest : public QObject {
    Q_OBJECT
private slots:
    void controlsHaveTheirTexts();
    void boxesBeginInOneColumn();
    void theFirstKeystrokeMarksTheProjectModified();
    void theTestPageFollowsTheAddress();
    void everyWriteOfTheAddressMarksTheProject();
    void shownBoxesTakeNoInput();
    void shownBoxesFollowThePalette();
    void theOnlyCommunicationTypeStaysSelected();
    void everyByteOfAnAddressSurvives();
    void charactersTheDeviceDoesNotHaveAreRefused();
};

void SystemPageTest::controlsHaveTheirTexts() {
    EditorFixture editor;
    editor.startWithNewProject("Plant2");
    QCOMPARE(editor.text("txtSystemName"), QStringLiteral("Plant2"));
    QCOMPARE(editor.text("txtSystemIP"), QString::fromStdString(Project().IP));
    QCOMPARE(editor.text("txtPort"), QStringLiteral("502"));
    QCOMPARE(editor.text("Text1"), QStringLiteral("Ulvo LX-400D"));
    QCOMPARE(editor.find<QLabel>("lblSystemCfgName")->text(), QStringLiteral("Project Name"));
    QCOMPARE(editor.find<QGroupBox>("frameCommunication")->title(), QStringLiteral("Communication Type"));
    QCOMPARE(editor.find<QGroupBox>("frameDeviceConfig")->title(), QStringLiteral("Device Setting"));
    QCOMPARE(editor.find<QRadioButton>("optEthernet")->text(), QStringLiteral("TCP/IP"));
}

void SystemPageTest::boxesBeginInOneColumn() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.showPage("C1");
    const auto left = [&editor](const char* box) {
        return editor.find<QWidget>(box)->mapTo(editor.window.get(), QPoint()).x();
    };
    QCOMPARE(left("txtSystemIP"), left("Text1"));
    QCOMPARE(left("txtPort"), left("Text1"));
}

void SystemPageTest::theFirstKeystrokeMarksTheProjectModified() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.trigger("SAVE");
    editor.showPage("C1");
    auto* const box = editor.find<QLineEdit>("txtSystemIP");
    const std::string before = editor.project.IP;
    QTest::keyClick(box, Qt::Key_End);
    QVERIFY(!editor.project.modified);
    QTest::keyClick(box, '7');
    QVERIFY(editor.project.modified);
    QCOMPARE(editor.project.IP, before + "7");
}

void SystemPageTest::theTestPageFollowsTheAddress() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.showPage("C1");
    editor.type("txtSystemIP", QStringLiteral(" any text, 127.0.0.1"));
    QCOMPARE(editor.project.IP, std::string(" any text, 127.0.0.1"));
    QCOMPARE(editor.text("txtIP"), QStringLiteral(" any text, 127.0.0.1"));
}

void SystemPageTest::everyWriteOfTheAddressMarksTheProject() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.trigger("SAVE");
    editor.window->RefreshViews(); // writes the address that the box holds already
    QVERIFY(editor.project.modified);
}

void SystemPageTest::shownBoxesTakeNoInput() {
    EditorFixture editor;
    editor.startWithNewProject();
    for (const char* name : {"txtSystemName", "txtPort", "Text1", "txtIP", "txtMsgName", "txtMsgSno"})
        QVERIFY2(editor.find<QLineEdit>(name)->isReadOnly(), name);
}

void SystemPageTest::shownBoxesFollowThePalette() {
    const QPalette before = QApplication::palette();
    EditorFixture editor;
    editor.startWithNewProject();
    QPalette dark(Qt::darkGray);
    dark.setColor(QPalette::Base, Qt::black);
    QApplication::setPalette(dark);
    const auto* const shown = editor.find<QLineEdit>("txtPort");
    QTRY_COMPARE(shown->palette().base(), dark.window());
    QCOMPARE(editor.find<QLineEdit>("txtSystemIP")->palette().base(), dark.base());
    QApplication::setPalette(before);
    QTRY_COMPARE(shown->palette().base(), before.window());
}

void SystemPageTest::theOnlyCommunicationTypeStaysSelected() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.showPage("C1");
    editor.click("optEthernet");
    QVERIFY(editor.find<QRadioButton>("optEthernet")->isChecked());
    QVERIFY(editor.find<QLineEdit>("txtSystemIP")->isEnabled());
}

void SystemPageTest::everyByteOfAnAddressSurvives() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.project.IP = everyByte();
    editor.window->RefreshViews();
    QCOMPARE(editor.project.IP, everyByte());
    editor.showPage("C1");
    auto* const box = editor.find<DeviceLineEdit>("txtSystemIP");
    QTest::keyClick(box, Qt::Key_End);
    QTest::keyClick(box, 'x');
    QCOMPARE(editor.project.IP, everyByte() + "x");
}

void SystemPageTest::charactersTheDeviceDoesNotHaveAreRefused() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.showPage("C1");
    editor.type("txtSystemIP", QStringLiteral("h"));
    auto* const box = editor.find<QLineEdit>("txtSystemIP");
    box->insert(QStringLiteral("\u4e2d"));
    QCOMPARE(box->text(), QStringLiteral("h"));
    box->insert(QStringLiteral("\u00e9"));
    QCOMPARE(editor.project.IP, std::string("h\xE9"));
}

QTEST_MAIN(SystemPageTest)
#include "SystemPageTest.moc"
