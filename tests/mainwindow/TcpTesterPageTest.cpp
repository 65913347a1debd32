#include "mainwindow/TcpTesterPage.h"
#include "link/TesterActions.h"
#include "model/Numbers.h"
#include "tests/support/BoxInput.h"
#include "tests/support/EditorFixture.h"
#include "tests/support/ExpectedLocale.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>

using namespace orvista;
using namespace orvista::testing;

namespace {

template <std::size_t count>
QString ticked(const std::array<bool, count>& on) {
    QStringList numbers;
    for (std::size_t i = 0; i < count; ++i) {
        if (on[i])
            numbers << QString::number(i + 1);
    }
    return numbers.join(u',');
}

class RecordedActions final : public TesterActions {
public:
    void updateEmergencyMessages(const std::string& startAddress,
                                 const std::array<bool, emergencyMessageCount>& on) override {
        note("emergency", startAddress, ticked(on));
    }
    void updateRegularMessages(const std::string& startAddress,
                               const std::array<bool, regularMessageCount>& on) override {
        note("regular", startAddress, ticked(on));
    }
    void updateCoil(const std::string& address, bool on) override {
        note("coil", address, on ? QStringLiteral("on") : QStringLiteral("off"));
    }
    void updateRegister(const std::string& address, const std::string& value) override {
        note("register", address, QString::fromStdString(value));
    }

    QStringList calls;

private:
    void note(const char* what, const std::string& address, const QString& value) {
        calls << QString::fromLatin1(what) + u' ' + QString::fromStdString(address) + u' ' + value;
    }
};

class OverflowingActions final : public TesterActions {
public:
    void updateEmergencyMessages(const std::string&,
                                 const std::array<bool, emergencyMessageCount>&) override {
        throw Overflow();
    }
    void updateRegularMessages(const std::string&, const std::array<bool, regularMessageCount>&) override {
        throw Overflow();
    }
    void updateCoil(const std::string&, bool) override { throw Overflow(); }
    void updateRegister(const std::string&, const std::string&) override { throw Overflow(); }
};

constexpr const char* updateButtons[] = {"btnEmgMsgUpdate", "btnRegMsgUpdate", "cmdUpdateReg",
                                         "cmdUpdateCoil"};

} // namespace

class TcpTesterPageTest : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { QVERIFY(isExpectedLocaleInForce()); }
    void controlsAreAsGiven();
    void handsOverWhatIsTicked();
    void handsOverTypedAddressesAsTyped();
    void typedAddressesAreNeitherCompletedNorCollected();
    void overflowEndsInABox();
    void buttonsAreEnabledOneByOne();
    void aWheelOverAnUnfocusedListChangesNothing();
};

void TcpTesterPageTest::controlsAreAsGiven() {
    EditorFixture editor;
    editor.startWithNewProject();
    const std::pair<const char*, const char*> frames[] = {{"frameEmergency", "Emergency Message"},
                                                          {"frameFunction", "Regular Message"},
                                                          {"frameUpdateCoil", "Update Coil"},
                                                          {"frameUpdateReg", "Update Register"}};
    for (const auto& [name, caption] : frames)
        QCOMPARE(editor.find<QGroupBox>(name)->title(), QString::fromLatin1(caption));
    for (int i = 0; i < 20; ++i)
        QCOMPARE(editor.window->findChild<QCheckBox*>(QStringLiteral("chkEmergMsg(%1)").arg(i))->text(),
                 QString::number(i + 1));
    for (int i = 0; i < 40; ++i)
        QCOMPARE(editor.window->findChild<QCheckBox*>(QStringLiteral("chkRegMsg(%1)").arg(i))->text(),
                 QString::number(i + 1));
    for (const char* button : updateButtons)
        QCOMPARE(editor.find<QPushButton>(button)->text(), QStringLiteral("Update"));
    QCOMPARE(editor.find<QLabel>("Label1")->text(), QStringLiteral("IP :"));
    QCOMPARE(editor.find<QCheckBox>("chkUpdateCoil")->text(), QStringLiteral("Enable"));
    QCOMPARE(editor.text("txtFloat"), QStringLiteral("0"));
    const std::pair<const char*, const char*> labels[] = {
        {"txtEMsgAddr", "Start Address"}, {"txtRMsgAddr", "Start Address"}, {"cbDIAddr", "Address"},
        {"chkUpdateCoil", "Coil Value"},  {"cbAIAddr", "Address"},          {"txtFloat", "Register Value"}};
    for (const auto& [box, caption] : labels)
        QCOMPARE(editor.label(box), QString::fromLatin1(caption));
}

void TcpTesterPageTest::handsOverWhatIsTicked() {
    EditorFixture editor;
    RecordedActions actions;
    editor.startWithNewProject().testerPage().useActions(actions);
    editor.showPage("C5");
    editor.click("chkEmergMsg(0)");
    editor.click("chkEmergMsg(19)");
    editor.click("btnEmgMsgUpdate");
    editor.click("chkRegMsg(2)");
    editor.click("chkRegMsg(39)");
    editor.click("btnRegMsgUpdate");
    editor.click("cmdUpdateCoil");
    editor.click("chkUpdateCoil");
    editor.click("cmdUpdateCoil");
    editor.type("txtFloat", QStringLiteral("-2.5"));
    editor.click("cmdUpdateReg");
    QCOMPARE(actions.calls, (QStringList{"emergency 300 1,20", "regular 320 3,40", "coil 100 off",
                                         "coil 100 on", "register 100 -2.5"}));
}

void TcpTesterPageTest::handsOverTypedAddressesAsTyped() {
    EditorFixture editor;
    RecordedActions actions;
    editor.startWithNewProject().testerPage().useActions(actions);
    editor.showPage("C5");
    editor.type("txtEMsgAddr", QStringLiteral("&H10"));
    editor.click("btnEmgMsgUpdate");
    auto* const coils = editor.find<QComboBox>("cbDIAddr");
    coils->lineEdit()->selectAll();
    QTest::keyClicks(coils, QStringLiteral("1"));
    editor.click("cmdUpdateCoil");
    QCOMPARE(actions.calls, (QStringList{"emergency &H10 ", "coil 1 off"}));
}

void TcpTesterPageTest::typedAddressesAreNeitherCompletedNorCollected() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.showPage("C5");
    for (const char* name : {"cbDIAddr", "cbAIAddr"}) {
        auto* const list = editor.find<QComboBox>(name);
        const int before = list->count();
        list->setFocus();
        list->lineEdit()->selectAll();
        QTest::keyClicks(list, QStringLiteral("1"));
        QTest::keyClick(list, Qt::Key_Return);
        QTest::keyClick(list, Qt::Key_Tab);
        QCOMPARE(list->currentText(), QStringLiteral("1"));
        QCOMPARE(list->count(), before);
    }
}

void TcpTesterPageTest::overflowEndsInABox() {
    EditorFixture editor;
    OverflowingActions actions;
    editor.startWithNewProject().testerPage().useActions(actions);
    editor.showPage("C5");
    for (const char* button : updateButtons)
        editor.click(button);
    QCOMPARE(editor.messages.shown.size(), std::size_t{4});
    for (const auto& box : editor.messages.shown)
        QCOMPARE(box.text, std::string("Overflow"));
}

void TcpTesterPageTest::buttonsAreEnabledOneByOne() {
    EditorFixture editor;
    editor.startWithNewProject();
    const UpdateButton inOrder[] = {UpdateButton::btnEmgMsgUpdate, UpdateButton::btnRegMsgUpdate,
                                    UpdateButton::cmdUpdateReg, UpdateButton::cmdUpdateCoil};
    for (int i = 0; i < 4; ++i) {
        editor.window->testerPage().setEnabled(inOrder[i], false);
        for (int j = 0; j < 4; ++j)
            QCOMPARE(editor.find<QPushButton>(updateButtons[j])->isEnabled(), j > i);
    }
    editor.window->testerPage().setEnabled(UpdateButton::cmdUpdateReg, true);
    QVERIFY(editor.find<QPushButton>("cmdUpdateReg")->isEnabled());
    QVERIFY(!editor.find<QPushButton>("cmdUpdateCoil")->isEnabled());
}

void TcpTesterPageTest::aWheelOverAnUnfocusedListChangesNothing() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.showPage("C5");
    auto* const list = editor.find<QComboBox>("cbDIAddr");
    editor.find<QLineEdit>("txtFloat")->setFocus();
    turnWheelOver(*list, -120);
    QCOMPARE(list->currentIndex(), 0);
    list->setFocus();
    turnWheelOver(*list, -120);
    QCOMPARE(list->currentIndex(), 1);
}

QTEST_MAIN(TcpTesterPageTest)
#include "TcpTesterPageTest.moc"
