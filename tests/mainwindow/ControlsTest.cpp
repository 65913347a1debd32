#include "mainwindow/ItemTree.h"
#include "tests/support/EditorFixture.h"
#include "widgets/DeviceLineEdit.h"
#include "widgets/DeviceTextEdit.h"
#include "widgets/DropDownList.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QListWidget>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QStatusBar>
#include <QTabWidget>
#include <QToolBar>

#include <map>

using namespace orvista;
using namespace orvista::testing;

namespace {

const QMetaObject* const box = &QLineEdit::staticMetaObject;
const QMetaObject* const deviceBox = &DeviceLineEdit::staticMetaObject;
const QMetaObject* const button = &QPushButton::staticMetaObject;
const QMetaObject* const list = &DropDownList::staticMetaObject;
const QMetaObject* const tick = &QCheckBox::staticMetaObject;
const QMetaObject* const tree = &ItemTree::staticMetaObject;
const QMetaObject* const frame = &QGroupBox::staticMetaObject;

using Controls = std::map<QString, const QMetaObject*>;

const Controls window{{"trvSystem", tree},
                      {"fraSystemInfo", frame},
                      {"fraDetails", frame},
                      {"tabDetails", &QTabWidget::staticMetaObject},
                      {"ToolbarMain", &QToolBar::staticMetaObject},
                      {"StatusBarMain", &QStatusBar::staticMetaObject}};

const Controls systemPage{{"lblSystemCfgName", &QLabel::staticMetaObject},
                          {"txtSystemName", box},
                          {"frameCommunication", frame},
                          {"optEthernet", &QRadioButton::staticMetaObject},
                          {"txtSystemIP", deviceBox},
                          {"txtPort", box},
                          {"frameDeviceConfig", frame},
                          {"Text1", box}};

const Controls modbusPage{{"txtStdAddr", box},          {"txtNewStdAddr", box}, {"txtAltAddr", box},
                          {"txtNewAltAddr", box},       {"txtAIAddr", box},     {"txtNewAIAddr", box},
                          {"txtDIAddr", box},           {"txtNewDIAddr", box},  {"btnModBusApply", button},
                          {"btnRestoreDefault", button}};

const Controls variablePage{{"trvVar", tree},
                            {"txtVarName", deviceBox},
                            {"txtVarAddr", deviceBox},
                            {"txtVarType", deviceBox},
                            {"txtVarDefValue", deviceBox},
                            {"txtVarWidth", deviceBox},
                            {"txtVarPrec", deviceBox},
                            {"txtVarOnStr", deviceBox},
                            {"txtVarOffStr", deviceBox},
                            {"btnEditVariable", button},
                            {"btnVarApply", button}};

const Controls messagePage{{"trvMsg", tree},
                           {"txtMsgName", deviceBox},
                           {"txtMsgSno", deviceBox},
                           {"txtMsg", &DeviceTextEdit::staticMetaObject},
                           {"btnEditMessage", button},
                           {"btnMsgApply", button},
                           {"List1", &QListWidget::staticMetaObject},
                           {"bmpList", &QListWidget::staticMetaObject}};

Controls testPage() {
    Controls controls{{"Label1", &QLabel::staticMetaObject},
                      {"txtIP", box},
                      {"frameEmergency", frame},
                      {"txtEMsgAddr", box},
                      {"btnEmgMsgUpdate", button},
                      {"frameFunction", frame},
                      {"txtRMsgAddr", box},
                      {"btnRegMsgUpdate", button},
                      {"frameUpdateCoil", frame},
                      {"cbDIAddr", list},
                      {"chkUpdateCoil", tick},
                      {"cmdUpdateCoil", button},
                      {"frameUpdateReg", frame},
                      {"cbAIAddr", list},
                      {"txtFloat", box},
                      {"cmdUpdateReg", button}};
    for (int i = 0; i < 20; ++i)
        controls[QStringLiteral("chkEmergMsg(%1)").arg(i)] = tick;
    for (int i = 0; i < 40; ++i)
        controls[QStringLiteral("chkRegMsg(%1)").arg(i)] = tick;
    return controls;
}

/// Handlers, tests and assistive programs know every control by its name.
void expectControls(const QObject& parent, const Controls& expected) {
    for (const auto& [name, kind] : expected) {
        const auto found = parent.findChildren<QObject*>(name);
        QVERIFY2(found.size() == 1, qPrintable(name));
        QVERIFY2(kind->cast(found.front()), qPrintable(name));
    }
}

} // namespace

/// Every control has the name it is known by, once in its page, and is of its kind.
class ControlsTest : public QObject {
    Q_OBJECT
private slots:
    void theWindowHasItsControls();
    void thePagesHaveTheirControls();
    void noControlIsWithoutAName();
};

void ControlsTest::theWindowHasItsControls() {
    EditorFixture editor;
    expectControls(editor.load(), window);
}

void ControlsTest::thePagesHaveTheirControls() {
    EditorFixture editor;
    editor.load();
    const auto* const tabs = editor.find<QTabWidget>("tabDetails");
    int page = 0;
    for (const Controls& controls : {systemPage, modbusPage, variablePage, messagePage, testPage()})
        expectControls(*tabs->widget(page++), controls);
    QCOMPARE(page, tabs->count());
}

void ControlsTest::noControlIsWithoutAName() {
    EditorFixture editor;
    editor.load();
    for (const QWidget* control : editor.find<QTabWidget>("tabDetails")->findChildren<QWidget*>()) {
        const bool takesInput = qobject_cast<const QAbstractButton*>(control) ||
                                qobject_cast<const QLineEdit*>(control) ||
                                qobject_cast<const QComboBox*>(control);
        // Parts of Qt's own controls, such as the box inside a list, bear Qt's names or none.
        const bool own = qobject_cast<const QWidget*>(control->parent())->layout();
        QVERIFY2(!takesInput || !own || !control->objectName().isEmpty(), control->metaObject()->className());
    }
}

QTEST_MAIN(ControlsTest)
#include "ControlsTest.moc"
