#include "mainwindow/TcpTesterPage.h"
#include "tests/support/EditorFixture.h"
#include "tests/support/ModalDriver.h"

#include <QLabel>
#include <QPushButton>

using namespace orvista;
using namespace orvista::testing;

namespace {

/// Where Tab goes from a control, up to and with the last control named.
QStringList tabOrder(const EditorFixture& editor, const char* first, std::size_t count) {
    editor.find<QWidget>(first)->setFocus();
    QStringList names{QString::fromLatin1(first)};
    for (std::size_t i = 1; i < count; ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        names << QApplication::focusWidget()->objectName();
    }
    return names;
}

} // namespace

/// Every page can be used without a mouse.
class KeyboardTest : public QObject {
    Q_OBJECT
private slots:
    void tabFollowsTheLayout_data();
    void tabFollowsTheLayout();
    void applyIsReachedOnceItIsEnabled();
    void enterPressesEveryFocusedButton();
    void theKeyboardGoesOnAfterApply_data();
    void theKeyboardGoesOnAfterApply();
    void everyControlHasAnAccessibleName();
    void accessibleNamesTellEqualBoxesApart();
};

void KeyboardTest::tabFollowsTheLayout_data() {
    QTest::addColumn<QByteArray>("page");
    QTest::addColumn<QByteArray>("item");
    QTest::addColumn<QStringList>("order");
    QTest::newRow("system") << QByteArray("C1") << QByteArray()
                            << QStringList{"trvSystem",   "tabbar",  "txtSystemName", "optEthernet",
                                           "txtSystemIP", "txtPort", "Text1"};
    QTest::newRow("modbus") << QByteArray("C2") << QByteArray()
                            << QStringList{"txtAltAddr",    "txtNewAltAddr", "txtStdAddr",
                                           "txtNewStdAddr", "txtAIAddr",     "txtNewAIAddr",
                                           "txtDIAddr",     "txtNewDIAddr",  "btnRestoreDefault"};
    QTest::newRow("variables") << QByteArray("C3") << QByteArray("F2")
                               << QStringList{"trvVar",         "txtVarName",     "txtVarAddr", "txtVarType",
                                              "txtVarDefValue", "txtVarWidth",    "txtVarPrec", "txtVarOnStr",
                                              "txtVarOffStr",   "btnEditVariable"};
    QTest::newRow("messages") << QByteArray("C4") << QByteArray("R2")
                              << QStringList{"trvMsg", "txtMsgName", "txtMsgSno", "txtMsg", "btnEditMessage"};
    QStringList tester{"txtIP"};
    for (int i = 0; i < 20; ++i)
        tester << QStringLiteral("chkEmergMsg(%1)").arg(i);
    tester << "txtEMsgAddr"
           << "btnEmgMsgUpdate";
    for (int i = 0; i < 40; ++i)
        tester << QStringLiteral("chkRegMsg(%1)").arg(i);
    tester << "txtRMsgAddr"
           << "btnRegMsgUpdate"
           << "cbDIAddr"
           << "chkUpdateCoil"
           << "cmdUpdateCoil"
           << "cbAIAddr"
           << "txtFloat"
           << "cmdUpdateReg";
    QTest::newRow("tester") << QByteArray("C5") << QByteArray() << tester;
}

void KeyboardTest::tabFollowsTheLayout() {
    QFETCH(const QByteArray, page);
    QFETCH(const QByteArray, item);
    QFETCH(const QStringList, order);
    EditorFixture editor;
    editor.startWithNewProject();
    editor.showPage(page.constData());
    if (!item.isEmpty())
        editor.clickNode(page == "C3" ? "trvVar" : "trvMsg", item.constData());
    QStringList reached =
        tabOrder(editor, order.front().toLatin1().constData(), static_cast<std::size_t>(order.size()));
    reached.replaceInStrings(QStringLiteral("qt_tabwidget_tabbar"), QStringLiteral("tabbar"));
    QCOMPARE(reached, order);
}

void KeyboardTest::applyIsReachedOnceItIsEnabled() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.showPage("C2");
    for (const char* box : {"txtNewAltAddr", "txtNewAIAddr", "txtNewDIAddr"})
        editor.type(box, QStringLiteral("500"));
    QCOMPARE(tabOrder(editor, "txtNewDIAddr", 3),
             (QStringList{"txtNewDIAddr", "btnModBusApply", "btnRestoreDefault"}));
    editor.showVariable("B2");
    onModal(QStringLiteral("frmBoolVarEdit"),
            [](QWidget* dialog) { QTest::keyClick(dialog, Qt::Key_Return); });
    auto* const edit = editor.find<QWidget>("btnEditVariable");
    edit->setFocus();
    QTest::keyClick(edit, Qt::Key_Space);
    QVERIFY(allModalsServed());
    editor.window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(editor.window.get()));
    QCOMPARE(tabOrder(editor, "btnEditVariable", 2), (QStringList{"btnEditVariable", "btnVarApply"}));
    editor.showMessage("E2");
    QTest::keyClicks(editor.find<QWidget>("txtMsg"), QStringLiteral("x"));
    QCOMPARE(tabOrder(editor, "btnEditMessage", 2), (QStringList{"btnEditMessage", "btnMsgApply"}));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    QCOMPARE(editor.project.ALTMSG[1], std::string("xCLEAR"));
}

void KeyboardTest::enterPressesEveryFocusedButton() {
    EditorFixture editor;
    editor.startWithNewProject();
    const QStringList pages{"C2", "C3", "C4", "C5"};
    QStringList pressed;
    QStringList expected;
    for (const QString& page : pages) {
        editor.showPage(page.toLatin1().constData());
        for (auto* const button : editor.window->findChildren<QPushButton*>()) {
            if (!button->isVisible())
                continue;
            QObject::disconnect(button, &QAbstractButton::clicked, nullptr, nullptr);
            connect(button, &QAbstractButton::clicked, this, [&] { pressed += button->objectName(); });
            button->setEnabled(true);
            for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space}) {
                button->setFocus();
                QTest::keyClick(QApplication::focusWidget(), key);
                expected += button->objectName();
            }
        }
    }
    QCOMPARE(pressed, expected);
    QCOMPARE(expected.size(), 3 * 10);
}

void KeyboardTest::theKeyboardGoesOnAfterApply_data() {
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("Enter") << Qt::Key_Return;
    QTest::newRow("Space") << Qt::Key_Space;
}

void KeyboardTest::theKeyboardGoesOnAfterApply() {
    QFETCH(const Qt::Key, key);
    EditorFixture editor;
    editor.startWithNewProject();
    const auto focusAfter = [&](const char* apply) {
        auto* const button = editor.find<QPushButton>(apply);
        button->setEnabled(true);
        button->setFocus();
        QTest::keyClick(button, key);
        return QApplication::focusWidget()->objectName();
    };
    editor.showMessage("E2");
    QCOMPARE(focusAfter("btnMsgApply"), QStringLiteral("txtMsg"));
    editor.showVariable("F3");
    QCOMPARE(focusAfter("btnVarApply"), QStringLiteral("btnEditVariable"));
    editor.showPage("C2");
    for (const char* box : {"txtNewAltAddr", "txtNewAIAddr", "txtNewDIAddr"})
        editor.type(box, QStringLiteral("500"));
    QCOMPARE(focusAfter("btnModBusApply"), QStringLiteral("txtNewAltAddr"));
    QCOMPARE(editor.project.AlertMessage, 500);
}

void KeyboardTest::everyControlHasAnAccessibleName() {
    EditorFixture editor;
    editor.startWithNewProject();
    for (const QWidget* widget : editor.window->findChildren<QWidget*>()) {
        const QString name = widget->objectName();
        const bool isControl = name.startsWith("txt") || name.startsWith("cb") || name.startsWith("chk") ||
                               name.startsWith("trv") || name == "Text1";
        if (isControl)
            QVERIFY2(!widget->accessibleName().isEmpty(), qPrintable(name));
    }
}

void KeyboardTest::accessibleNamesTellEqualBoxesApart() {
    EditorFixture editor;
    editor.startWithNewProject();
    const auto nameOf = [&](const char* control) { return editor.find<QWidget>(control)->accessibleName(); };
    QCOMPARE(nameOf("txtNewAltAddr"), QStringLiteral("Emergency messages, new address"));
    QCOMPARE(nameOf("txtAltAddr"), QStringLiteral("Emergency messages, current address"));
    QCOMPARE(nameOf("txtNewDIAddr"), QStringLiteral("Boolean variables, new address"));
    for (const QWidget* page : std::initializer_list<const QWidget*>{
             editor.find<QWidget>("btnModBusApply")->parentWidget(), &editor.window->testerPage()}) {
        QStringList names;
        for (const QWidget* widget : page->findChildren<QWidget*>()) {
            if (widget->focusPolicy() != Qt::NoFocus && !widget->accessibleName().isEmpty())
                names << widget->accessibleName();
        }
        QVERIFY(names.size() >= 8);
        QCOMPARE(names.removeDuplicates(), 0);
    }
}

QTEST_MAIN(KeyboardTest)
#include "KeyboardTest.moc"
