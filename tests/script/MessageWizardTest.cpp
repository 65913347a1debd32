#include "script/forms/frmMessageEdit.h"

#include "tests/support/BoxInput.h"
#include "tests/support/ModalDriver.h"
#include "tests/support/TemporaryFolder.h"
#include "widgets/DeviceLineEdit.h"
#include "widgets/DropDownList.h"

#include <QAbstractItemView>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSettings>
#include <QTest>

namespace orvista {
namespace {

using testing::allModalsServed;
using testing::everyByte;
using testing::onModal;
using testing::TemporaryFolder;
using testing::turnWheelOver;
using testing::typeText;
using testing::writeBytes;

/// A shown wizard and the hands of its user.
class Wizard {
public:
    explicit Wizard(const QString& projectFolder = {}) : form(projectFolder) {
        form.show();
        form.activateWindow();
        opened = QTest::qWaitForWindowActive(&form);
    }

    template <typename Control>
    Control* control(const QString& name) const {
        auto* const found = form.findChild<Control*>(name);
        if (!found)
            qFatal("no control %s", qPrintable(name));
        return found;
    }
    DropDownList* list(const QString& name) const { return control<DropDownList>(name); }
    DeviceLineEdit* text() const { return control<DeviceLineEdit>("txtText"); }
    QString path() const { return control<QLineEdit>("txtPath")->text(); }
    QString note() const { return control<QLabel>("lblNote")->text(); }
    bool okEnabled() const { return control<QPushButton>("btnOK")->isEnabled(); }

    void click(const QString& button) const {
        QTest::mouseClick(control<QAbstractButton>(button), Qt::LeftButton);
    }
    void option(int index) const {
        auto* const button = control<QRadioButton>(QStringLiteral("OptMsgType(%1)").arg(index));
        QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(button->height() / 2, button->height() / 2));
    }
    void type(const QString& keys) const { QTest::keyClicks(text(), keys); }
    /// Walks down the list with the keyboard.
    void choose(const QString& name, const QString& entry) const {
        DropDownList* const box = list(name);
        QTest::keyClick(box, Qt::Key_Home);
        for (int steps = box->count(); steps > 0 && box->currentText() != entry; --steps)
            QTest::keyClick(box, Qt::Key_Down);
        QCOMPARE(box->currentText(), entry);
    }
    /// "1100" when the lists of the first two rows are enabled and no other; "?" when a row is divided.
    QString enabledRows() const {
        QString rows;
        for (int i = 0; i < 4; ++i) {
            const bool source = list(QStringLiteral("cbVar(%1)").arg(i))->isEnabled();
            const bool foreground = list(QStringLiteral("cbVarFgClr(%1)").arg(i))->isEnabled();
            const bool background = list(QStringLiteral("cbVarBgClr(%1)").arg(i))->isEnabled();
            rows += source == foreground && source == background ? (source ? u'1' : u'0') : u'?';
        }
        return rows;
    }
    /// Presses Browse and opens `file` in the dialog, or cancels it for an empty name.
    void browse(const QString& file) const {
        onModal("comdlg", [file](QWidget* dialog) {
            auto* const buttons = dialog->findChild<QDialogButtonBox*>();
            dialog->findChild<QLineEdit*>("fileNameEdit")->setText(file);
            const auto pressed = file.isEmpty() ? QDialogButtonBox::Cancel : QDialogButtonBox::Open;
            QTest::mouseClick(buttons->button(pressed), Qt::LeftButton);
            if (dialog->isVisible()) { // otherwise the test would hang
                dialog->close();
                QFAIL("the file dialog did not take its file");
            }
        });
        click("cmdBrowse");
        QVERIFY(allModalsServed());
    }

    frmMessageEdit form;
    bool opened = false;
};

QStringList entries(const QComboBox* list) {
    QStringList texts;
    for (int i = 0; i < list->count(); ++i)
        texts += list->itemText(i);
    return texts;
}

QString bitmapIn(const TemporaryFolder& folder, const char* name) {
    const std::string path = folder.file(name);
    writeBytes(path, "BM");
    return QString::fromStdString(path);
}

} // namespace

class MessageWizardTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() {
        // The file dialog keeps settings of its own.
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope,
                           QString::fromStdString(settings_.path()));
    }

    void bearsItsCaptions() {
        const Wizard wizard;
        QVERIFY(wizard.opened);
        QCOMPARE(wizard.form.objectName(), "frmMessageEdit");
        QCOMPARE(wizard.form.windowTitle(), "Message Wizard");
        QStringList frames;
        for (const auto* frame : wizard.form.findChildren<QGroupBox*>())
            frames += frame->title();
        QCOMPARE(frames, QStringList({"Text", "Bitmap", "Message Color Setting", "Variable setting",
                                      "Effects Setting"}));
        QStringList labels;
        for (const auto* label : wizard.form.findChildren<QLabel*>())
            if (label->objectName() != "lblNote")
                labels += label->text();
        labels.sort();
        QStringList expected{"Content :",
                             "Path :",
                             "Forground Color",
                             "Background Color",
                             "Font",
                             "Foreground Color",
                             "Background Color",
                             "1st variable",
                             "2nd variable",
                             "3rd variable",
                             "4th variable",
                             "Entering Effects",
                             "Leaving Effects",
                             "Special Effects",
                             "Delay (Sec.)",
                             "Speed",
                             "Speed"};
        expected.sort();
        QCOMPARE(labels, expected);
        QCOMPARE(wizard.control<QRadioButton>("OptMsgType(0)")->text(), "Text");
        QCOMPARE(wizard.control<QRadioButton>("OptMsgType(1)")->text(), "Bitmap");
        QCOMPARE(wizard.control<QPushButton>("cmdBrowse")->text(), "Browse");
        QCOMPARE(wizard.control<QPushButton>("btnOK")->text(), "OK");
        QCOMPARE(wizard.control<QPushButton>("btnCancel")->text(), "Cancel");
    }

    void listsAndDefaults() {
        const Wizard wizard;
        const auto check = [&wizard](const QString& name, const QStringList& expected, int chosen) {
            QCOMPARE(entries(wizard.list(name)), expected);
            QCOMPARE(wizard.list(name)->currentIndex(), chosen);
            QVERIFY(!wizard.list(name)->isEditable());
        };
        const QStringList colours{"RED", "GREEN", "ORANGE", "BLACK"};
        const QStringList effects{"NONE", "GO-LEFT", "GO-RIGHT", "GO-UP", "GO-DOWN", "FADE"};
        QStringList sources;
        for (int i = 1; i <= 32; ++i)
            sources += QStringLiteral("CoilVar%1").arg(i);
        for (int i = 1; i <= 64; ++i)
            sources += QStringLiteral("RegVar%1").arg(i);
        sources += {"DATE", "TIME"};
        check("cbFgClr", colours, 0);
        check("cbBgClr", colours, 3);
        for (int i = 0; i < 4; ++i) {
            check(QStringLiteral("cbVar(%1)").arg(i), sources, 0);
            check(QStringLiteral("cbVarFgClr(%1)").arg(i), colours, 0);
            check(QStringLiteral("cbVarBgClr(%1)").arg(i), colours, 3);
        }
        check("cbInEffect", effects, 1);
        check("cbOutEffect", effects, 1);
        check("cbSpEffect", {"STILL", "BLINK"}, 0);
        check("cbDelay", {" 1", " 2", " 3", " 4", " 5", " 6", " 7", " 8", " 9", " 10"}, 0);
        check("cbFont", {"5x7", "8x15"}, 1);
        check("cbIFSpeed", {"Low", "Medium", "High"}, 1);
        check("cbOFSpeed", {"Low", "Medium", "High"}, 1);
    }

    void opensBlankInTextMode() {
        const Wizard wizard;
        QVERIFY(wizard.control<QRadioButton>("OptMsgType(0)")->isChecked());
        QVERIFY(!wizard.control<QRadioButton>("OptMsgType(1)")->isChecked());
        QCOMPARE(wizard.text()->text(), QString());
        QCOMPARE(wizard.path(), QString());
        QVERIFY(wizard.text()->isEnabled());
        QVERIFY(wizard.text()->hasFocus());
        QVERIFY(!wizard.control<QPushButton>("cmdBrowse")->isEnabled());
        QVERIFY(!wizard.okEnabled());
        QCOMPARE(wizard.enabledRows(), "0000");
        QCOMPARE(wizard.form.PartialScript, std::string());
    }

    void rowsFollowThePlaceholders() {
        const Wizard wizard;
        wizard.type("%v");
        QCOMPARE(wizard.enabledRows(), "1000");
        wizard.type("%");
        QCOMPARE(wizard.enabledRows(), "1000");
        wizard.type("v");
        QCOMPARE(wizard.enabledRows(), "1100");
        QTest::keyClick(wizard.text(), Qt::Key_Backspace);
        QTest::keyClick(wizard.text(), Qt::Key_Backspace);
        QCOMPARE(wizard.enabledRows(), "1000");
        wizard.type("%3v%0v");
        QCOMPARE(wizard.enabledRows(), "1110");
        wizard.type(" %12v %v %v");
        QCOMPARE(wizard.enabledRows(), "1111");
        wizard.text()->clear();
        QCOMPARE(wizard.enabledRows(), "0000");
        wizard.type("%V 50% of");
        QCOMPARE(wizard.enabledRows(), "0000");
        wizard.type(" %32768v");
        QCOMPARE(wizard.enabledRows(), "0000");
    }

    void okFollowsTheText() {
        const Wizard wizard;
        wizard.type("1");
        QVERIFY(wizard.okEnabled());
        QTest::keyClick(wizard.text(), Qt::Key_Backspace);
        QVERIFY(!wizard.okEnabled());
        wizard.type(" ");
        QVERIFY(wizard.okEnabled());
        wizard.text()->clear();
        wizard.type("100%");
        QVERIFY(wizard.okEnabled());
    }

    void bitmapModeDisablesTheTextAndKeepsIt() {
        const Wizard wizard;
        wizard.type("%v and %v");
        wizard.option(1);
        QVERIFY(wizard.control<QRadioButton>("OptMsgType(1)")->isChecked());
        QVERIFY(!wizard.control<QRadioButton>("OptMsgType(0)")->isChecked());
        QCOMPARE(wizard.enabledRows(), "0000");
        QVERIFY(!wizard.text()->isEnabled());
        QVERIFY(wizard.control<QPushButton>("cmdBrowse")->isEnabled());
        QVERIFY(!wizard.okEnabled());
        for (const char* always : {"cbFgClr", "cbBgClr", "cbFont", "cbInEffect", "cbOutEffect", "cbSpEffect",
                                   "cbDelay", "cbIFSpeed", "cbOFSpeed"})
            QVERIFY2(wizard.list(always)->isEnabled(), always);
        wizard.option(0);
        QCOMPARE(wizard.text()->text(), "%v and %v");
        QCOMPARE(wizard.enabledRows(), "1100");
        QVERIFY(wizard.text()->isEnabled());
        QVERIFY(!wizard.control<QPushButton>("cmdBrowse")->isEnabled());
        QVERIFY(wizard.okEnabled());
    }

    void modesSwitchByKeyboard() {
        const Wizard wizard;
        wizard.type("%v");
        auto* const text = wizard.control<QRadioButton>("OptMsgType(0)");
        text->setFocus();
        QTest::keyClick(text, Qt::Key_Right);
        QVERIFY(wizard.control<QRadioButton>("OptMsgType(1)")->isChecked());
        QCOMPARE(wizard.enabledRows(), "0000");
        QTest::keyClick(wizard.control<QRadioButton>("OptMsgType(1)"), Qt::Key_Left);
        QVERIFY(text->isChecked());
        QCOMPARE(wizard.enabledRows(), "1000");
    }

    void workedExampleByKeyboard() {
        Wizard wizard;
        wizard.type("Temp: %4v C");
        wizard.choose("cbVar(0)", "RegVar1");
        wizard.choose("cbVarFgClr(0)", "GREEN");
        wizard.choose("cbDelay", " 3");
        wizard.choose("cbOutEffect", "GO-UP");
        wizard.choose("cbOFSpeed", "Low");
        wizard.click("btnOK");
        QVERIFY(!wizard.form.isVisible());
        QCOMPARE(wizard.form.PartialScript, std::string("CLEAR\r\n"
                                                        "TEXT 0 0 RED BLACK \"Temp:      C\"\r\n"
                                                        "DISPVAR 48 0 GREEN BLACK RegVar1\r\n"
                                                        "IN GO-LEFT 1 50\r\n"
                                                        "ACT STILL 3000\r\n"
                                                        "OUT GO-UP 1 100"));
    }

    void everyControlReachesItsPlaceInThePage() {
        Wizard wizard;
        wizard.type("%v%v%v%v");
        wizard.choose("cbFgClr", "GREEN");
        wizard.choose("cbBgClr", "ORANGE");
        wizard.choose("cbFont", "5x7");
        const QStringList sources{"CoilVar2", "RegVar3", "TIME", "DATE"};
        const QStringList colours{"GREEN", "ORANGE", "BLACK", "RED"};
        for (int i = 0; i < 4; ++i) {
            wizard.choose(QStringLiteral("cbVar(%1)").arg(i), sources[i]);
            wizard.choose(QStringLiteral("cbVarFgClr(%1)").arg(i), colours[i]);
            wizard.choose(QStringLiteral("cbVarBgClr(%1)").arg(i), colours[3 - i]);
        }
        wizard.choose("cbInEffect", "FADE");
        wizard.choose("cbIFSpeed", "High");
        wizard.choose("cbSpEffect", "BLINK");
        wizard.choose("cbDelay", " 10");
        wizard.choose("cbOutEffect", "NONE");
        wizard.choose("cbOFSpeed", "Low");
        QTest::keyClick(wizard.text(), Qt::Key_Return);
        QCOMPARE(wizard.form.PartialScript, std::string("CLEAR\r\n"
                                                        "TEXTS 0 5 GREEN ORANGE \"    \"\r\n"
                                                        "DISPVARS 0 5 GREEN RED CoilVar2\r\n"
                                                        "DISPVARS 6 5 ORANGE BLACK RegVar3\r\n"
                                                        "TIMES 12 5 BLACK ORANGE \r\n"
                                                        "DATES 18 5 RED GREEN \r\n"
                                                        "IN FADE 25\r\n"
                                                        "ACT BLINK 4 75\r\n"
                                                        "ACT STILL 500"));
    }

    void accentedTextIsWrittenInDeviceBytes() {
        Wizard wizard;
        wizard.text()->setText(QString::fromUtf8("F\xC3\xBCllstand \xE2\x82\xAC %v"));
        wizard.choose("cbInEffect", "NONE");
        wizard.choose("cbOutEffect", "NONE");
        wizard.click("btnOK");
        QCOMPARE(wizard.form.PartialScript,
                 std::string("CLEAR\r\nTEXT 0 0 RED BLACK \"F\xFCllstand \x80  \"\r\n"
                             "DISPVAR 96 0 RED BLACK CoilVar1\r\nACT STILL 1000"));
    }

    void everyByteOfTheTextReachesThePage() {
        Wizard wizard;
        wizard.text()->setBytes(everyByte());
        wizard.type("x");
        wizard.choose("cbInEffect", "NONE");
        wizard.choose("cbOutEffect", "NONE");
        wizard.click("btnOK");
        QCOMPARE(wizard.form.PartialScript,
                 "CLEAR\r\nTEXT 0 0 RED BLACK \"" + everyByte() + "x\"\r\nACT STILL 1000");
    }

    void cancelEscapeAndFrameLeaveNoScript() {
        const std::vector<std::function<void(QWidget*)>> ways{
            [](QWidget* form) {
                QTest::mouseClick(form->findChild<QPushButton*>("btnCancel"), Qt::LeftButton);
            },
            [](QWidget* form) { QTest::keyClick(form, Qt::Key_Escape); },
            [](QWidget* form) { form->close(); }};
        for (const auto& leave : ways) {
            frmMessageEdit wizard{QString()};
            onModal("frmMessageEdit", [&leave](QWidget* form) {
                QTest::keyClicks(form->findChild<DeviceLineEdit*>("txtText"), "%v");
                leave(form);
            });
            QCOMPARE(wizard.exec(), int(QDialog::Rejected));
            QVERIFY(allModalsServed());
            QVERIFY(!wizard.isVisible());
            QCOMPARE(wizard.PartialScript, std::string());
        }
    }

    void okEndsTheModalLoopAndOnlyHides() {
        frmMessageEdit wizard{QString()};
        onModal("frmMessageEdit", [](QWidget* form) {
            QTest::keyClicks(form->findChild<DeviceLineEdit*>("txtText"), "A");
            QTest::mouseClick(form->findChild<QPushButton*>("btnOK"), Qt::LeftButton);
        });
        QCOMPARE(wizard.exec(), int(QDialog::Accepted));
        QVERIFY(QString::fromStdString(wizard.PartialScript).startsWith("CLEAR\r\nTEXT 0 0 RED BLACK \"A\""));
    }

    void enterWithoutContentDoesNothing() {
        const Wizard wizard;
        QTest::keyClick(wizard.text(), Qt::Key_Return);
        QVERIFY(wizard.form.isVisible());
        QCOMPARE(wizard.form.PartialScript, std::string());
    }

    void browsedBitmapOfTheProject() {
        const TemporaryFolder project;
        const QString bitmap = bitmapIn(project, "pump logo.BMP");
        Wizard wizard(QString::fromStdString(project.path()));
        wizard.type("A %v typed before");
        wizard.option(1);
        QVERIFY(!wizard.okEnabled());
        wizard.browse(bitmap);
        QCOMPARE(wizard.path(), bitmap);
        QCOMPARE(wizard.note(), QString());
        QVERIFY(wizard.okEnabled());
        wizard.click("btnOK");
        QCOMPARE(
            wizard.form.PartialScript,
            std::string("CLEAR\r\nIMG 0 0 RED BLACK pump logo.BMP\r\nIN GO-LEFT 1 50\r\nACT STILL 1000\r\n"
                        "OUT GO-LEFT 1 50"));
    }

    void aTypedNumberReachesItsDelay_data() {
        QTest::addColumn<int>("from");
        QTest::addColumn<QString>("typed");
        QTest::newRow("3 from the first") << 0 << "3";
        QTest::newRow("1 where it stands") << 0 << "1";
        QTest::newRow("1 past the 10") << 8 << "1";
        QTest::newRow("10") << 0 << "10";
        QTest::newRow("9 from the last") << 9 << "9";
    }
    void aTypedNumberReachesItsDelay() {
        QFETCH(const int, from);
        QFETCH(const QString, typed);
        const Wizard wizard;
        DropDownList* const delay = wizard.list("cbDelay");
        delay->setCurrentIndex(from);
        const int interval = QApplication::keyboardInputInterval();
        QApplication::setKeyboardInputInterval(10'000); // the keys of one number, however slow the machine
        QTest::keyClicks(delay, typed);
        QApplication::setKeyboardInputInterval(interval);
        QCOMPARE(delay->currentText(), u' ' + typed);
    }

    void aTypedLetterReachesItsEntry() {
        const Wizard wizard;
        QTest::keyClicks(wizard.list("cbFgClr"), "o");
        QCOMPARE(wizard.list("cbFgClr")->currentText(), QStringLiteral("ORANGE"));
    }

    void browsingStartsInTheProjectFolderWithTheFilter() {
        const TemporaryFolder project;
        bitmapIn(project, "a.bmp");
        bitmapIn(project, "B.BMP");
        for (const char* other : {"notes.txt", "Bmp", "File(x.bmp)", "|", "a.bmp.txt"})
            bitmapIn(project, other);
        const Wizard wizard(QString::fromStdString(project.path()));
        wizard.option(1);
        onModal("comdlg", [&project](QWidget* shown) {
            auto* const dialog = qobject_cast<QFileDialog*>(shown);
            QVERIFY(dialog);
            QCOMPARE(QDir(dialog->directory()).canonicalPath(),
                     QDir(QString::fromStdString(project.path())).canonicalPath());
            QCOMPARE(dialog->nameFilters(), QStringList("Bmp File(*.bmp)"));
            QVERIFY(dialog->selectedFiles().isEmpty() || QFileInfo(dialog->selectedFiles().first()).isDir());
            auto* const files = dialog->findChild<QAbstractItemView*>("listView");
            const auto names = [files] {
                QStringList listed;
                for (int row = 0; row < files->model()->rowCount(files->rootIndex()); ++row)
                    listed += files->model()->index(row, 0, files->rootIndex()).data().toString();
                listed.sort();
                return listed;
            };
            QTRY_COMPARE(names(), QStringList({"B.BMP", "a.bmp"}));
            dialog->reject();
        });
        wizard.click("cmdBrowse");
        QVERIFY(allModalsServed());
    }

    void cancelledBrowseEmptiesThePathAndLeavesOkEnabled() {
        const TemporaryFolder project;
        Wizard wizard(QString::fromStdString(project.path()));
        wizard.option(1);
        wizard.browse(QString());
        QVERIFY(!wizard.okEnabled());
        wizard.browse(bitmapIn(project, "a.bmp"));
        wizard.browse(QString());
        QCOMPARE(wizard.path(), QString());
        QVERIFY(wizard.okEnabled());
        wizard.click("btnOK");
        QCOMPARE(wizard.form.PartialScript, std::string("CLEAR\r\n"));
    }

    void emptiedPathDisablesOkWhenBitmapIsClickedAgain() {
        const TemporaryFolder project;
        const Wizard wizard(QString::fromStdString(project.path()));
        wizard.option(1);
        wizard.browse(bitmapIn(project, "a.bmp"));
        wizard.browse(QString());
        wizard.option(1);
        QVERIFY(!wizard.okEnabled());
    }

    void pathSurvivesASwitchOfModes() {
        const TemporaryFolder project;
        const QString bitmap = bitmapIn(project, "a.bmp");
        const Wizard wizard(QString::fromStdString(project.path()));
        wizard.option(1);
        wizard.browse(bitmap);
        wizard.option(0);
        QCOMPARE(wizard.path(), bitmap);
        QVERIFY(!wizard.okEnabled());
        wizard.option(1);
        QCOMPARE(wizard.path(), bitmap);
        QVERIFY(wizard.okEnabled());
    }

    void bitmapOfAnotherFolderIsTakenWithANote() {
        const TemporaryFolder project;
        const TemporaryFolder elsewhere;
        const Wizard wizard(QString::fromStdString(project.path()));
        wizard.option(1);
        wizard.browse(bitmapIn(elsewhere, "a.bmp"));
        QVERIFY(wizard.note().contains("project folder"));
        QVERIFY(wizard.okEnabled());
        wizard.browse(bitmapIn(project, "a.bmp"));
        QCOMPARE(wizard.note(), QString());
        QDir(QString::fromStdString(project.path())).mkdir("sub");
        wizard.browse(bitmapIn(project, "sub/a.bmp"));
        QVERIFY(wizard.note().contains("project folder"));
        wizard.browse(QString());
        QCOMPARE(wizard.note(), QString());
    }

    void projectFolderIsKnownUnderEverySpelling() {
        const TemporaryFolder project;
        const QString folder = QString::fromStdString(project.path());
        QDir(folder).mkdir("sub");
        const Wizard wizard(folder + "/sub/../");
        wizard.option(1);
        wizard.browse(bitmapIn(project, "a.bmp"));
        QCOMPARE(wizard.note(), QString());
    }

    void unsavedProjectHasNoFolderForBitmaps() {
        const TemporaryFolder folder;
        const Wizard wizard;
        wizard.option(1);
        wizard.browse(bitmapIn(folder, "a.bmp"));
        QVERIFY(wizard.note().contains("project folder"));
    }

    void bitmapNameTheDisplayCannotSpellIsNotTaken() {
        const TemporaryFolder project;
        const QString good = bitmapIn(project, "a.bmp");
        const QString refused = bitmapIn(project, "\xD0\x96.bmp");
        const Wizard wizard(QString::fromStdString(project.path()));
        wizard.option(1);
        wizard.browse(refused);
        QCOMPARE(wizard.path(), QString());
        QVERIFY(!wizard.okEnabled());
        QVERIFY(wizard.note().startsWith("Not taken"));
        wizard.browse(good);
        QCOMPARE(wizard.note(), QString());
        wizard.browse(refused);
        QCOMPARE(wizard.path(), good);
        QVERIFY(wizard.note().startsWith("Not taken"));
    }

    void pathIsFilledByBrowsingOnly() {
        const Wizard wizard;
        wizard.option(1);
        auto* const path = wizard.control<QLineEdit>("txtPath");
        QVERIFY(path->isReadOnly());
        QTest::keyClicks(path, "a.bmp");
        QCOMPARE(path->text(), QString());
        QVERIFY(!wizard.okEnabled());
    }

    void textTakesOnlyCharactersOfTheDisplay() {
        const Wizard wizard;
        for (const char16_t typed : {u'a', u'\u0416', u'b'})
            typeText(*wizard.text(), QString(QChar(typed)));
        QCOMPARE(wizard.text()->text(), "ab");
    }

    void wheelOverUnfocusedListsChangesNothing() {
        const Wizard wizard;
        wizard.type("%v%v%v%v");
        QVERIFY(wizard.text()->hasFocus());
        const auto lists = wizard.form.findChildren<DropDownList*>();
        QCOMPARE(lists.size(), 21);
        for (DropDownList* const list : lists) {
            const int chosen = list->currentIndex();
            for (const int delta : {-120, 120}) {
                turnWheelOver(*list, delta);
                QCOMPARE(list->currentIndex(), chosen);
            }
        }
    }

    void tabWalksThroughTheFormInReadingOrder() {
        const Wizard wizard;
        wizard.type("%v");
        QStringList expected{"cbFgClr",       "cbBgClr",       "cbFont",     "cbVar(0)",
                             "cbVarFgClr(0)", "cbVarBgClr(0)", "cbInEffect", "cbIFSpeed",
                             "cbOutEffect",   "cbOFSpeed",     "cbSpEffect", "cbDelay"};
        expected.prepend("txtPath");
        QStringList walked;
        for (int steps = 0; steps < 40; ++steps) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            const QString name = QApplication::focusWidget()->objectName();
            if (name == "txtText")
                break;
            walked += name;
        }
        expected += {"btnOK", "btnCancel", "OptMsgType(0)"};
        QCOMPARE(walked, expected);
    }

    void labelsAreTiedToTheirControls() {
        const Wizard wizard;
        QStringList tied;
        for (const auto* label : wizard.form.findChildren<QLabel*>())
            if (label->buddy())
                tied += label->text() + "=" + label->buddy()->objectName();
        tied.sort();
        QStringList expected{"Content :=txtText",
                             "Path :=txtPath",
                             "Forground Color=cbFgClr",
                             "Background Color=cbBgClr",
                             "Font=cbFont",
                             "1st variable=cbVar(0)",
                             "2nd variable=cbVar(1)",
                             "3rd variable=cbVar(2)",
                             "4th variable=cbVar(3)",
                             "Entering Effects=cbInEffect",
                             "Leaving Effects=cbOutEffect",
                             "Special Effects=cbSpEffect",
                             "Delay (Sec.)=cbDelay",
                             "Speed=cbIFSpeed",
                             "Speed=cbOFSpeed"};
        expected.sort();
        QCOMPARE(tied, expected);
        for (const DropDownList* list : wizard.form.findChildren<DropDownList*>())
            QVERIFY2(!list->accessibleName().isEmpty(), qPrintable(list->objectName()));
    }

    /// A scan whose cost grew with the square of the text would hang the form at one paste.
    void pastedHostileTextIsScannedAtOnce() {
        const Wizard wizard;
        wizard.text()->setText(QString(100'000, u'%') + "v");
        QCOMPARE(wizard.enabledRows(), "0000");
        QVERIFY(wizard.okEnabled());
    }

private:
    const TemporaryFolder settings_;
};

} // namespace orvista

QTEST_MAIN(orvista::MessageWizardTest)
#include "MessageWizardTest.moc"
