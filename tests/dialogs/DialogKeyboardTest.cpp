#include "check/FolderCheck.h"
#include "check/forms/frmFixes.h"
#include "dialogs/frmBoolVarEdit.h"
#include "dialogs/frmFloatVarEdit.h"
#include "dialogs/frmLic.h"
#include "dialogs/frmLoadProject.h"
#include "dialogs/frmNewProject.h"
#include "dialogs/frmSelDir.h"
#include "dialogs/frmSelFile.h"
#include "dialogs/frmStartup.h"
#include "display/BitmapProvider.h"
#include "items/forms/frmReplace.h"
#include "link/forms/frmAccept.h"
#include "link/forms/frmConnection.h"
#include "link/forms/frmSeveralDisplays.h"
#include "mainwindow/frmRestore.h"
#include "script/forms/frmMessageEdit.h"
#include "sheets/forms/frmAddressList.h"
#include "sheets/forms/frmNames.h"
#include "sheets/forms/frmSheetErrors.h"
#include "sheets/forms/frmSheetImport.h"
#include "tests/support/NamedItem.h"
#include "tests/support/ScriptedPeople.h"
#include "tests/support/TemporaryFolder.h"

#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QTableView>
#include <QTest>

#include <functional>
#include <memory>

using namespace orvista;
using namespace orvista::testing;

namespace {

using Make = std::function<std::unique_ptr<QDialog>()>;

void press(QDialog& dialog, Qt::Key key) {
    QTest::keyClick(dialog.focusWidget() ? dialog.focusWidget() : &dialog, key);
}

bool removeNothing(std::size_t /*row*/) {
    return false;
}

QString nameOf(const QWidget& control) {
    return control.objectName() + u'/' + QString::fromLatin1(control.metaObject()->className());
}

QStringList namesOf(const QList<QWidget*>& controls) {
    QStringList names;
    for (const QWidget* const control : controls)
        names << nameOf(*control);
    return names;
}

/// The controls that Tab is to reach: of a group of options the chosen one, from which the arrows go on.
QList<QWidget*> reachable(const QDialog& dialog) {
    QList<QWidget*> controls;
    for (QWidget* const control : dialog.findChildren<QWidget*>()) {
        const auto* const option = qobject_cast<const QRadioButton*>(control);
        const bool takesTab =
            (control->focusPolicy() & Qt::TabFocus) != 0 && control->focusProxy() == nullptr;
        if (takesTab && control->isEnabled() && control->isVisible() && (!option || option->isChecked()))
            controls << control;
    }
    return controls;
}

void show(QDialog& dialog) {
    dialog.show();
    dialog.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
}

/// A dialog on the screen, all of whose buttons are enabled and do nothing but be listed when clicked.
struct Desk {
    explicit Desk(const Make& make) : dialog(make()) {
        for (QPushButton* const button : dialog->findChildren<QPushButton*>()) {
            QObject::disconnect(button, &QAbstractButton::clicked, nullptr, nullptr);
            button->setEnabled(true);
            QObject::connect(button, &QAbstractButton::clicked, dialog.get(),
                             [this, button] { clicks += button->objectName(); });
        }
        show(*dialog);
    }
    QPushButton& button(const QString& name) const { return *dialog->findChild<QPushButton*>(name); }

    std::unique_ptr<QDialog> dialog;
    QStringList clicks;
};

} // namespace

/// Every dialog can be used without a mouse: Tab reaches each of its controls, Enter presses the button that
/// has the focus, and the default one while none has, and Esc closes it.
class DialogKeyboardTest : public QObject {
    Q_OBJECT
private slots:
    void tabReachesEachControl_data() { addDialogs(); }
    void tabReachesEachControl() {
        QFETCH(const Make, make);
        const std::unique_ptr<QDialog> dialog = make();
        show(*dialog);
        QStringList missing = namesOf(reachable(*dialog));
        for (qsizetype left = missing.size() + 1; left > 0; --left) {
            missing.removeAll(nameOf(*QApplication::focusWidget()));
            press(*dialog, Qt::Key_Tab);
        }
        QCOMPARE(missing.join(u' '), QString());
    }

    void aListLeavesItsDialogOnTheScreen_data() { addDialogs(); }
    void aListLeavesItsDialogOnTheScreen() {
        QFETCH(const Make, make);
        const std::unique_ptr<QDialog> dialog = make();
        show(*dialog);
        if (!dialog->findChild<QTableView*>())
            return;
        const QSize room = dialog->screen()->availableSize();
        QCOMPARE(dialog->size().boundedTo(room), dialog->size());
    }

    void escapeCloses_data() { addDialogs(); }
    void escapeCloses() {
        QFETCH(const Make, make);
        const std::unique_ptr<QDialog> dialog = make();
        show(*dialog);
        press(*dialog, Qt::Key_Escape);
        QVERIFY(!dialog->isVisible());
        QCOMPARE(dialog->result(), int(QDialog::Rejected));
    }

    void pressesTheFocusedButton_data() { addDialogs(); }
    void pressesTheFocusedButton() {
        QFETCH(const Make, make);
        QFETCH(const QStringList, buttons);
        Desk desk(make);
        for (const QString& name : buttons) {
            for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space}) {
                desk.clicks.clear();
                desk.button(name).setFocus();
                press(*desk.dialog, key);
                QCOMPARE(desk.clicks, QStringList(name));
            }
        }
        QCOMPARE(desk.dialog->findChildren<QPushButton*>().size(), buttons.size());
    }

    void pressesTheDefaultWhileNoButtonHasTheFocus_data() { addDialogs(); }
    void pressesTheDefaultWhileNoButtonHasTheFocus() {
        QFETCH(const Make, make);
        QFETCH(const QStringList, buttons);
        Desk desk(make);
        // Whatever had the focus before, leaving the buttons makes OK the default again.
        for (const QString& name : buttons) {
            desk.button(name).setFocus();
            desk.button(name).clearFocus();
            desk.clicks.clear();
            QTest::keyClick(desk.dialog.get(), Qt::Key_Return);
            QCOMPARE(desk.clicks, QStringList(buttons.front()));
        }
    }

    void cancelInTheWizardAddsNoPage() {
        frmMessageEdit wizard({});
        show(wizard);
        QTest::keyClicks(wizard.findChild<QLineEdit*>("txtText"), "Hello");
        wizard.findChild<QPushButton*>("btnCancel")->setFocus();
        press(wizard, Qt::Key_Return);
        QVERIFY(!wizard.isVisible());
        QVERIFY(wizard.PartialScript.empty());
    }

    void anOptionLeavesEnterToOk() {
        frmMessageEdit wizard({});
        show(wizard);
        QTest::keyClicks(wizard.findChild<QLineEdit*>("txtText"), "Hello");
        wizard.findChild<QRadioButton*>("OptMsgType(0)")->setFocus();
        press(wizard, Qt::Key_Return);
        QVERIFY(!wizard.isVisible());
        QVERIFY(!wizard.PartialScript.empty());
    }

    void cancelInTheNewProjectDialogCancels() {
        const std::unique_ptr<QDialog> dialog = newProject();
        show(*dialog);
        QTest::keyClicks(dialog->findChild<QLineEdit*>("txtProjName"), "Line3");
        dialog->findChild<QPushButton*>("btnCancel")->setFocus();
        press(*dialog, Qt::Key_Return);
        QVERIFY(!dialog->isVisible());
        QVERIFY(static_cast<frmNewProject&>(*dialog).IsCanceled);
    }

private:
    std::unique_ptr<QDialog> newProject() { return std::make_unique<frmNewProject>(environment_, messages_); }

    static void add(const char* name, const QStringList& buttons, const Make& make) {
        QTest::newRow(name) << make << buttons;
    }

    /// The dialogs with their push buttons, the default one first.
    void addDialogs() {
        QTest::addColumn<Make>("make");
        QTest::addColumn<QStringList>("buttons");
        const QStringList okCancel{"btnOK", "btnCancel"};
        add("wizard", {"btnOK", "btnCancel", "cmdBrowse"},
            [] { return std::make_unique<frmMessageEdit>(QString()); });
        add("Boolean variable", okCancel, [this] { return std::make_unique<frmBoolVarEdit>(project_); });
        add("float variable", okCancel, [this] { return std::make_unique<frmFloatVarEdit>(project_); });
        add("new project", {"btnOK", "btnCancel", "btnBrowse"}, [this] { return newProject(); });
        add("open project", {"btnOK", "btnCancel", "btnBrowse"},
            [this] { return std::make_unique<frmLoadProject>(history_, environment_); });
        add("folder chooser", okCancel,
            [this] { return std::make_unique<frmSelDir>(environment_.paths, folder_.path()); });
        add("file chooser", okCancel,
            [this] { return std::make_unique<frmSelFile>(environment_.paths, folder_.path()); });
        add("connection", okCancel, [] { return std::make_unique<frmConnection>("192.168.1.20"); });
        add("start-up", {"btnStartupOK"}, [] { return std::make_unique<frmStartup>(true); });
        add("About box", {"cmdOK"}, [] { return std::make_unique<frmLic>(); });
        addNewerDialogs();
    }

    void addNewerDialogs() {
        const QStringList okCancel{"btnOK", "btnCancel"};
        add("replace", {"btnOK", "btnCancel", "btnReplaceTickAll", "btnReplaceTickNone"},
            [this] { return std::make_unique<frmReplace>(project_, std::vector<Item>(), setting()); });
        add("fixes", {"btnOK", "btnCancel", "btnFixesTickAll", "btnFixesTickNone"}, [this] {
            project_.STDMSG[0] = "TEXT 0 0 RED BLACK \"Emergency stop pump\"";
            Fixing fixing(project_, noBitmaps_, 128);
            auto mended = mendAll(fixing, {}, [](std::size_t) { return true; });
            return std::make_unique<frmFixes>(frmFixes::Subject{project_, noBitmaps_, 128, setting()},
                                              std::move(mended), std::vector<Item>());
        });
        const QStringList openCancelRemove{"btnOK", "btnCancel", "btnRemove"};
        add("restore", openCancelRemove, [] {
            const frmRestore::Row row{QDateTime::currentDateTime(), "Line3", "1 message"};
            return std::make_unique<frmRestore>(std::vector{row}, removeNothing);
        });
        add("nothing to restore", openCancelRemove,
            [] { return std::make_unique<frmRestore>(std::vector<frmRestore::Row>(), removeNothing); });
        add("import", okCancel, [this] {
            const Change change = changed("STDMSG1", "script", "CLEAR", "CLEAR\r\nACT STILL 1");
            SheetImport sheet;
            sheet.changes = {change};
            sheet.notes.add(2, {}, "var1 is empty: CoilVar1 is taken");
            return std::make_unique<frmSheetImport>("messages.csv", sheet, project_, setting());
        });
        add("errors of an import", {"btnClose"}, [] {
            SheetErrors errors;
            errors.add(2, "script", "is wrong");
            return std::make_unique<frmSheetErrors>("messages.csv", errors);
        });
        add("names", okCancel + QStringList{"btnMasterList"}, [this] {
            return std::make_unique<frmNames>(frmNames::Work{project_, {}, {}, {}, {}, {}});
        });
        add("address list", okCancel, [] { return std::make_unique<frmAddressList>(); });
        addDisplayDialogs();
    }

    void addDisplayDialogs() {
        add("acceptance",
            {"btnAcceptStart", "btnAcceptGood", "btnAcceptBad", "btnAcceptSkip", "btnAcceptBack",
             "btnAcceptWidest", "btnAcceptStop", "btnCancel"},
            [this] {
                project_.STDMSG[0] = "TEXT 0 0 RED BLACK \"Level\"";
                return std::make_unique<frmAccept>(
                    frmAccept::Work{{project_, noNotes(), folderCheck_, 128, [] { return LocalTime(); }},
                                    "127.0.0.1",
                                    1,
                                    "0123456789ab",
                                    messages_,
                                    [] { return std::string(); },
                                    [](const CutOffAcceptance& /*cutOff*/) { return true; }});
            });
        add("several displays",
            {"btnLoad", "btnPaste", "btnStart", "btnCompare", "btnStop", "btnAgain", "btnReport",
             "btnCancel"},
            [this] {
                return std::make_unique<frmSeveralDisplays>(
                    frmSeveralDisplays::Work{project_, "Line3.orx", "orvista", messages_});
            });
    }

    PreviewSettingSource setting() const {
        return [this] { return PreviewSetting{128, defaultValues(project_)}; };
    }

    TemporaryFolder folder_;
    DocMgrModule::ProgramEnvironment environment_{folder_.path(), PathRules::native()};
    ConfigModule::History history_{environment_.paths, environment_.programFolder};
    ScriptedMessages messages_;
    Project project_;
    NoBitmaps noBitmaps_;
    FolderCheck folderCheck_;
};

QTEST_MAIN(DialogKeyboardTest)
#include "DialogKeyboardTest.moc"
