#include "mainwindow/ProjectChanges.h"
#include "items/RecoveryFile.h"
#include "mainwindow/PanelDock.h"
#include "tests/support/EditorFixture.h"
#include "tests/support/ModalDriver.h"
#include "tests/support/NamedItem.h"
#include "widgets/DeviceTextEdit.h"

#include <QComboBox>
#include <QDialog>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTabWidget>

#include <array>
#include <functional>
#include <random>

using namespace orvista;
using namespace orvista::testing;

namespace {

constexpr auto shiftControl = Qt::ControlModifier | Qt::ShiftModifier;

/// The editor as it is when what stands beside the pages changes the project.
struct Changed : EditorFixture {
    Changed() { startWithNewProject(); }
    ProjectChanges& changes() const { return window->changes(); }
    /// Lets items hold these texts, as something beside the pages does.
    bool change(const QString& step,
                const std::vector<std::pair<const char*, std::vector<std::string>>>& wanted) const {
        std::vector<Change> made;
        for (const auto& [item, texts] : wanted)
            addChanges(made, project, named(item), texts);
        return changes().change(step, made);
    }
    QPlainTextEdit* script() const { return find<QPlainTextEdit>("txtMsg"); }
    bool applies() const { return find<QPushButton>("btnMsgApply")->isEnabled(); }
    QString caption(const char* entry) const { return find<QAction>(entry)->text(); }
    /// Types into that message's script at its start, without Apply.
    void typeInto(const char* key, const QString& text) const {
        showMessage(key);
        script()->setFocus();
        QTest::keyClicks(script(), text);
    }
    void apply(const char* key, const QString& text) const {
        typeInto(key, text);
        click("btnMsgApply");
    }
    /// Leaves no box with the focus, and with it no box that could take the keys.
    void goToTree() const {
        showPage("C4");
        find<QWidget>("trvMsg")->setFocus();
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::ControlModifier) const {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }
    void editShownVariable(const QString& dialog, const QString& box, const QString& text) const {
        onModal(dialog, [box, text](QWidget* editor) {
            editor->findChild<QLineEdit*>(box)->setText(text);
            QTest::mouseClick(editor->findChild<QPushButton*>(QStringLiteral("btnOK")), Qt::LeftButton);
        });
        click("btnEditVariable");
    }
    void setShownDefault(const QString& text) const {
        editShownVariable(QStringLiteral("frmFloatVarEdit"), QStringLiteral("txtVarDefValue"), text);
    }
    void typeAddresses() const {
        showPage("C2");
        type("txtNewAltAddr", QStringLiteral("500"));
        type("txtNewAIAddr", QStringLiteral("200"));
        type("txtNewDIAddr", QStringLiteral("0300"));
    }
    QStringList list(const char* name) const {
        QStringList entries;
        const auto* const box = find<QComboBox>(name);
        for (int i = 0; i < box->count(); ++i)
            entries << box->itemText(i);
        return entries;
    }
};

} // namespace

class ProjectChangesTest : public QObject {
    Q_OBJECT
private slots:
    void everyApplyThatChangesSomethingIsOneNamedStep();
    void anApplyWithoutChangesAddsNoStep();
    void restoreDefaultIsTheStepOfTheAddresses();
    void theAddressOfTheDeviceIsNone();
    void aChangeFromOutsideIsOneStepOfAllItsItems();
    void whatHoldsItsValueAlreadyIsPassedOver();
    void undoAndRedoShowTheShownItemAnewWithApplyDisabled();
    void undoLeavesOtherPagesAlone();
    void undoOfAddressesWritesCurrentBoxesAndTheTestPage();
    void undoMarksModifiedAlsoWhereItBringsBackWhatWasSaved();
    void undoTouchesNoOtherEnabling();
    void anEditThatIsNotAppliedStopsEveryChangeOfItsItem();
    void anEditThatIsNotAppliedStopsRedo();
    void theNoticeGoesWhenTheEditIsAppliedOrDiscarded();
    void newAddressesThatAreTypedStopAChangeOfTheAddresses();
    void anEditOfAnotherItemStopsNothing();
    void saveAndSaveAsLeaveTheSteps();
    void newAndOpenEmptyThem();
    void twoHundredStepsAreKept();
    void theOldestGoWhereStepsKeepMoreThanTheirShare();
    void aNewStepDropsWhatWasTakenBack();
    void everyStepLeadsBackToWhatWasThere();
    void textBoxesKeepUndoKeys();
    void keysAreTheBoxesAlsoWithNothingToUndo();
    void keysAreTheProjectsEverywhereElse();
    void theMenuIsTheProjectsAlsoFromABox();
    void entriesAreEnabledExactlyWhileThePagesAre();
    void nothingHappensUnderADialog();
    void theMenuShowsTheKeys();
};

void ProjectChangesTest::everyApplyThatChangesSomethingIsOneNamedStep() {
    Changed editor;
    QCOMPARE(editor.caption("miEditUndo"), QStringLiteral("Undo"));
    QCOMPARE(editor.caption("miEditRedo"), QStringLiteral("Redo"));
    editor.apply("R12", QStringLiteral("x"));
    QCOMPARE(editor.caption("miEditUndo"), QStringLiteral("Undo Apply STDMSG12"));
    editor.apply("E2", QStringLiteral("y"));
    QCOMPARE(editor.caption("miEditUndo"), QStringLiteral("Undo Apply ALTMSG2"));
    editor.showVariable("F6");
    editor.setShownDefault(QStringLiteral("4.5"));
    editor.click("btnVarApply");
    QCOMPARE(editor.caption("miEditUndo"), QStringLiteral("Undo Apply RegVar6"));
    editor.typeAddresses();
    editor.click("btnModBusApply");
    QCOMPARE(editor.caption("miEditUndo"), QStringLiteral("Undo Addresses"));

    editor.trigger("miEditUndo");
    QCOMPARE(editor.caption("miEditRedo"), QStringLiteral("Redo Addresses"));
    QCOMPARE(editor.project.AlertMessage, 300);
    editor.trigger("miEditUndo");
    QCOMPARE(editor.project.RegVar[5].defaultValue, std::string("0.0"));
    editor.trigger("miEditUndo");
    QCOMPARE(editor.project.ALTMSG[1], std::string("CLEAR"));
    QCOMPARE(editor.project.STDMSG[11], std::string("xCLEAR"));
    editor.trigger("miEditUndo");
    QCOMPARE(editor.project.STDMSG[11], std::string("CLEAR"));
    QCOMPARE(editor.caption("miEditUndo"), QStringLiteral("Undo"));
    QCOMPARE(editor.caption("miEditRedo"), QStringLiteral("Redo Apply STDMSG12"));
    for (int i = 0; i < 4; ++i)
        editor.trigger("miEditRedo");
    QCOMPARE(editor.project.STDMSG[11], std::string("xCLEAR"));
    QCOMPARE(editor.project.ALTMSG[1], std::string("yCLEAR"));
    QCOMPARE(editor.project.RegVar[5].defaultValue, std::string("4.5"));
    QCOMPARE(editor.project.AlertMessage, 500);
    QCOMPARE(editor.caption("miEditRedo"), QStringLiteral("Redo"));
}

void ProjectChangesTest::anApplyWithoutChangesAddsNoStep() {
    Changed editor;
    editor.typeInto("R1", QStringLiteral("x"));
    QTest::keyClick(editor.script(), Qt::Key_Backspace);
    editor.click("btnMsgApply");
    editor.showVariable("B1");
    editor.editShownVariable(QStringLiteral("frmBoolVarEdit"), QStringLiteral("txtVarON"),
                             QStringLiteral("ON"));
    editor.click("btnVarApply");
    editor.showPage("C2");
    editor.click("btnRestoreDefault");
    QCOMPARE(editor.changes().steps().count(), 0);
}

void ProjectChangesTest::restoreDefaultIsTheStepOfTheAddresses() {
    Changed editor;
    editor.typeAddresses();
    editor.click("btnModBusApply");
    editor.click("btnRestoreDefault");
    QCOMPARE(editor.changes().steps().count(), 2);
    QCOMPARE(editor.caption("miEditUndo"), QStringLiteral("Undo Addresses"));
    editor.trigger("miEditUndo");
    QCOMPARE(editor.project.DigitalInput, 300);
}

void ProjectChangesTest::theAddressOfTheDeviceIsNone() {
    Changed editor;
    editor.type("txtSystemIP", QStringLiteral("127.0.0.9"));
    QCOMPARE(editor.changes().steps().count(), 0);
}

void ProjectChangesTest::aChangeFromOutsideIsOneStepOfAllItsItems() {
    Changed editor;
    editor.trigger("miFileSave");
    QVERIFY(editor.change("Paste", {{"STDMSG3", {"one"}},
                                    {"ALTMSG20", {"two"}},
                                    {"RegVar64", {"5", "4", "1"}},
                                    {"CoilVar1", {"1", "AUF", "ZU"}}}));
    QCOMPARE(editor.caption("miEditUndo"), QStringLiteral("Undo Paste"));
    QCOMPARE(editor.project.STDMSG[2], std::string("one"));
    QCOMPARE(editor.project.ALTMSG[19], std::string("two"));
    QCOMPARE(editor.project.RegVar[63], (FloatVariable{"RegVar64", "5", "4", "1"}));
    QCOMPARE(editor.project.CoilVar[0], (BooleanVariable{"CoilVar1", "1", "AUF", "ZU"}));
    QVERIFY(editor.project.modified);
    editor.trigger("miEditUndo");
    QCOMPARE(editor.project.STDMSG[2], std::string("CLEAR"));
    QCOMPARE(editor.project.ALTMSG[19], std::string("CLEAR"));
    QCOMPARE(editor.project.RegVar[63], (FloatVariable{"RegVar64", "0.0", "7", "3"}));
    QCOMPARE(editor.project.CoilVar[0], (BooleanVariable{"CoilVar1", "0", "ON", "OFF"}));
}

void ProjectChangesTest::whatHoldsItsValueAlreadyIsPassedOver() {
    Changed editor;
    editor.trigger("miFileSave");
    QVERIFY(editor.change("Clear", {{"STDMSG3", {"CLEAR"}}, {"STDMSG4", {"CLEAR"}}}));
    QCOMPARE(editor.changes().steps().count(), 0);
    QVERIFY(!editor.project.modified);
    // Nor does an edit of such an item stop the others.
    editor.typeInto("R3", QStringLiteral("x"));
    QVERIFY(editor.change("Paste", {{"STDMSG3", {"CLEAR"}}, {"STDMSG4", {"y"}}}));
    QCOMPARE(editor.script()->toPlainText(), QStringLiteral("xCLEAR"));
}

void ProjectChangesTest::undoAndRedoShowTheShownItemAnewWithApplyDisabled() {
    Changed editor;
    editor.apply("R3", QStringLiteral("x"));
    // An edit that was taken back by hand leaves Apply enabled.
    QTest::keyClicks(editor.script(), QStringLiteral("z"));
    QTest::keyClick(editor.script(), Qt::Key_Backspace);
    QVERIFY(editor.applies());
    editor.trigger("miEditUndo");
    QCOMPARE(editor.script()->toPlainText(), QStringLiteral("CLEAR"));
    QVERIFY(!editor.applies());
    editor.trigger("miEditRedo");
    QCOMPARE(editor.script()->toPlainText(), QStringLiteral("xCLEAR"));
    QVERIFY(!editor.applies());
    editor.showVariable("F6");
    QVERIFY(editor.change("Import", {{"RegVar6", {"8", "6", "2"}}}));
    QCOMPARE(editor.text("txtVarDefValue"), QStringLiteral("8"));
    QCOMPARE(editor.text("txtVarWidth"), QStringLiteral("6"));
    editor.trigger("miEditUndo");
    QCOMPARE(editor.text("txtVarDefValue"), QStringLiteral("0.0"));
    QVERIFY(!editor.find<QPushButton>("btnVarApply")->isEnabled());
}

void ProjectChangesTest::undoLeavesOtherPagesAlone() {
    Changed editor;
    editor.apply("R3", QStringLiteral("x"));
    editor.showPage("C2");
    editor.type("txtNewAltAddr", QStringLiteral("7"));
    editor.showVariable("F6");
    editor.setShownDefault(QStringLiteral("4.5"));
    editor.showPage("C5");
    editor.find<QComboBox>("cbAIAddr")->setCurrentIndex(9);
    editor.typeInto("R4", QStringLiteral("y"));
    editor.trigger("miEditUndo");
    QCOMPARE(editor.project.STDMSG[2], std::string("CLEAR"));
    QCOMPARE(editor.script()->toPlainText(), QStringLiteral("yCLEAR"));
    QVERIFY(editor.applies());
    QCOMPARE(editor.text("txtNewAltAddr"), QStringLiteral("7"));
    QCOMPARE(editor.text("txtNewStdAddr"), QStringLiteral("27"));
    QCOMPARE(editor.text("txtVarDefValue"), QStringLiteral("4.5"));
    QCOMPARE(editor.find<QComboBox>("cbAIAddr")->currentIndex(), 9);
    QCOMPARE(editor.notice(), QString());
}

void ProjectChangesTest::undoOfAddressesWritesCurrentBoxesAndTheTestPage() {
    Changed editor;
    editor.typeAddresses();
    editor.click("btnModBusApply");
    QCOMPARE(editor.text("txtDIAddr"), QStringLiteral("0300"));
    editor.trigger("miEditUndo");
    QCOMPARE(editor.text("txtAltAddr"), QStringLiteral("300"));
    QCOMPARE(editor.text("txtStdAddr"), QStringLiteral("320"));
    QCOMPARE(editor.text("txtAIAddr"), QStringLiteral("100"));
    QCOMPARE(editor.text("txtDIAddr"), QStringLiteral("100"));
    QCOMPARE(editor.text("txtEMsgAddr"), QStringLiteral("300"));
    QCOMPARE(editor.text("txtRMsgAddr"), QStringLiteral("320"));
    QCOMPARE(editor.list("cbAIAddr").last(), QStringLiteral("226"));
    QCOMPARE(editor.list("cbDIAddr").last(), QStringLiteral("131"));
    editor.trigger("miEditRedo");
    QCOMPARE(editor.text("txtStdAddr"), QStringLiteral("520"));
    QCOMPARE(editor.text("txtDIAddr"), QStringLiteral("300"));
    QCOMPARE(editor.text("txtEMsgAddr"), QStringLiteral("500"));
    QCOMPARE(editor.list("cbAIAddr").first(), QStringLiteral("200"));
    QCOMPARE(editor.list("cbDIAddr").first(), QStringLiteral("300"));
}

void ProjectChangesTest::undoMarksModifiedAlsoWhereItBringsBackWhatWasSaved() {
    Changed editor;
    editor.trigger("miFileSave");
    editor.apply("R3", QStringLiteral("x"));
    editor.trigger("miEditUndo");
    QVERIFY(editor.project.modified);
    editor.trigger("miFileSave");
    editor.trigger("miEditRedo");
    QCOMPARE(editor.title(), QStringLiteral("Orvista Message Editor - [Line3*]"));
    QVERIFY(editor.enabled("miFileSave"));
}

void ProjectChangesTest::undoTouchesNoOtherEnabling() {
    Changed editor;
    editor.apply("R3", QStringLiteral("x"));
    editor.showMessage("REGULAR");
    QVERIFY(!editor.enabled("miLinkUpload"));
    editor.trigger("miEditUndo");
    QVERIFY(!editor.enabled("miLinkUpload"));
    QVERIFY(!editor.script()->isEnabled());
    QVERIFY(!editor.find<QPushButton>("btnEditMessage")->isEnabled());
    QVERIFY(!editor.find<QPushButton>("btnModBusApply")->isEnabled());
}

void ProjectChangesTest::anEditThatIsNotAppliedStopsEveryChangeOfItsItem() {
    Changed editor;
    editor.apply("R3", QStringLiteral("x"));
    editor.typeInto("R3", QStringLiteral("y"));
    const QString first = QStringLiteral("Not done: apply or discard the edit of STDMSG3 first.");
    editor.trigger("miEditUndo");
    QCOMPARE(editor.notice(), first);
    QCOMPARE(editor.project.STDMSG[2], std::string("xCLEAR"));
    QCOMPARE(editor.script()->toPlainText(), QStringLiteral("yxCLEAR"));
    QCOMPARE(editor.caption("miEditUndo"), QStringLiteral("Undo Apply STDMSG3"));
    editor.find<PanelDock>("dockPanels")->showNotice({});
    // Where one item of several is concerned, none is changed.
    QVERIFY(!editor.change("Paste", {{"STDMSG2", {"one"}}, {"STDMSG3", {"two"}}}));
    QCOMPARE(editor.notice(), first);
    QCOMPARE(editor.project.STDMSG[1], std::string("CLEAR"));
    QVERIFY(!editor.changes().mayChange(itemsNamed({"STDMSG3"})));
    QVERIFY(editor.changes().mayChange(itemsNamed({"STDMSG2", "RegVar1"})));
    QVERIFY(editor.script()->hasFocus());
}

void ProjectChangesTest::anEditThatIsNotAppliedStopsRedo() {
    Changed editor;
    editor.apply("R3", QStringLiteral("x"));
    editor.trigger("miEditUndo");
    editor.typeInto("R3", QStringLiteral("y"));
    editor.trigger("miEditRedo");
    QCOMPARE(editor.notice(), QStringLiteral("Not done: apply or discard the edit of STDMSG3 first."));
    QCOMPARE(editor.project.STDMSG[2], std::string("CLEAR"));
    QCOMPARE(editor.script()->toPlainText(), QStringLiteral("yCLEAR"));
    QVERIFY(editor.applies());
    QCOMPARE(editor.caption("miEditRedo"), QStringLiteral("Redo Apply STDMSG3"));
}

void ProjectChangesTest::theNoticeGoesWhenTheEditIsAppliedOrDiscarded() {
    Changed editor;
    editor.apply("R3", QStringLiteral("x"));
    editor.typeInto("R3", QStringLiteral("y"));
    editor.trigger("miEditUndo");
    QVERIFY(!editor.notice().isEmpty());
    editor.click("btnMsgApply");
    QCOMPARE(editor.notice(), QString());
    QVERIFY(!editor.find<PanelDock>("dockPanels")->isVisible());
    editor.typeInto("R3", QStringLiteral("z"));
    editor.trigger("miEditUndo");
    QVERIFY(!editor.notice().isEmpty());
    editor.showMessage("R4");
    QCOMPARE(editor.notice(), QString());
    editor.trigger("miEditUndo");
    QCOMPARE(editor.project.STDMSG[2], std::string("xCLEAR"));
}

void ProjectChangesTest::newAddressesThatAreTypedStopAChangeOfTheAddresses() {
    Changed editor;
    editor.typeAddresses();
    editor.click("btnModBusApply");
    editor.type("txtNewDIAddr", QStringLiteral("9"));
    editor.trigger("miEditUndo");
    QCOMPARE(editor.notice(),
             QStringLiteral("Not done: apply or discard the edit of the address map first."));
    QCOMPARE(editor.project.AlertMessage, 500);
    QCOMPARE(editor.text("txtNewDIAddr"), QStringLiteral("9"));
}

void ProjectChangesTest::anEditOfAnotherItemStopsNothing() {
    Changed editor;
    editor.apply("R3", QStringLiteral("x"));
    editor.typeInto("R4", QStringLiteral("y"));
    editor.trigger("miEditUndo");
    QCOMPARE(editor.project.STDMSG[2], std::string("CLEAR"));
    QCOMPARE(editor.notice(), QString());
}

void ProjectChangesTest::saveAndSaveAsLeaveTheSteps() {
    Changed editor;
    editor.apply("R3", QStringLiteral("x"));
    editor.trigger("miFileSave");
    editor.chooser.saveAsPaths.push_back(editor.projectFolder.file("Line4.orx"));
    editor.trigger("miFileSaveAs");
    QCOMPARE(editor.caption("miEditUndo"), QStringLiteral("Undo Apply STDMSG3"));
    editor.trigger("miEditUndo");
    QCOMPARE(editor.project.STDMSG[2], std::string("CLEAR"));
}

void ProjectChangesTest::newAndOpenEmptyThem() {
    Changed editor;
    editor.apply("R3", QStringLiteral("x"));
    editor.trigger("miFileSave");
    editor.openProject("Line3");
    QCOMPARE(editor.changes().steps().count(), 0);
    QCOMPARE(editor.caption("miEditUndo"), QStringLiteral("Undo"));
    editor.apply("R3", QStringLiteral("x"));
    editor.trigger("miEditUndo");
    editor.messages.answers.push_back(Answer::No);
    editor.trigger("miFileNew");
    QCOMPARE(editor.changes().steps().count(), 0);
    QCOMPARE(editor.caption("miEditRedo"), QStringLiteral("Redo"));
}

void ProjectChangesTest::twoHundredStepsAreKept() {
    Changed editor;
    for (int i = 1; i <= 205; ++i)
        editor.change("Paste", {{"STDMSG1", {std::to_string(i)}}});
    QCOMPARE(editor.changes().steps().count(), 200);
    for (int i = 0; i < 205; ++i)
        editor.changes().undo();
    QCOMPARE(editor.project.STDMSG[0], std::string("5"));
}

void ProjectChangesTest::theOldestGoWhereStepsKeepMoreThanTheirShare() {
    Changed editor;
    const auto script = [](char letter) { return std::string(std::size_t{9} << 20, letter); };
    for (const char letter : {'a', 'b', 'c', 'd', 'e'})
        editor.change(QString(QLatin1Char(letter)), {{"STDMSG1", {script(letter)}}});
    // The first keeps one such script, each further one two.
    QCOMPARE(editor.changes().steps().count(), 3);
    QCOMPARE(editor.caption("miEditUndo"), QStringLiteral("Undo e"));
    for (int i = 0; i < 4; ++i)
        editor.changes().undo();
    QVERIFY(editor.project.STDMSG[0] == script('b'));
    QCOMPARE(editor.caption("miEditRedo"), QStringLiteral("Redo c"));
    for (int i = 0; i < 4; ++i)
        editor.changes().redo();
    QVERIFY(editor.project.STDMSG[0] == script('e'));
    // One that alone keeps more cannot be taken back.
    editor.change("f", {{"STDMSG1", {std::string(std::size_t{65} << 20, 'f')}}});
    QCOMPARE(editor.changes().steps().count(), 0);
    QCOMPARE(editor.caption("miEditUndo"), QStringLiteral("Undo"));
}

void ProjectChangesTest::aNewStepDropsWhatWasTakenBack() {
    Changed editor;
    editor.apply("R3", QStringLiteral("x"));
    editor.trigger("miEditUndo");
    editor.apply("R4", QStringLiteral("y"));
    QCOMPARE(editor.caption("miEditRedo"), QStringLiteral("Redo"));
    editor.trigger("miEditRedo");
    QCOMPARE(editor.project.STDMSG[2], std::string("CLEAR"));
}

/// Random work on the pages and beside them, and random ways back and forth through its steps.
void ProjectChangesTest::everyStepLeadsBackToWhatWasThere() {
    Changed editor;
    std::mt19937 chance(20261121); // always the same work
    const auto upTo = [&chance](unsigned count) { return chance() % count; };
    const auto script = [&upTo] { return std::string(upTo(4), static_cast<char>('a' + upTo(3))) + "\r\n"; };
    const auto contents = [&editor] { return recoveryBytes(editor.project, {}); };
    const std::array<std::function<void()>, 5> works{
        [&] { editor.apply(upTo(2) == 0 ? "R1" : "E2", QString(QLatin1Char('a')).repeated(1 + upTo(2))); },
        [&] {
            editor.showMessage("R1");
            editor.script()->selectAll();
            QTest::keyClick(editor.script(), Qt::Key_Delete); // stored as CLEAR
            editor.script()->insertPlainText(QStringLiteral("b"));
            editor.script()->clear();
            editor.click("btnMsgApply");
        },
        [&] {
            editor.change("Paste", {{"STDMSG1", {script()}}, {"ALTMSG2", {script()}}, {"STDMSG40", {"x"}}});
        },
        [&] {
            editor.change("Import", {{"CoilVar3", {"0", script(), "OFF"}},
                                     {"RegVar64", {"1.5", "7", "3"}},
                                     {"address map", {"0", "1", std::to_string(upTo(3)), "3"}}});
        },
        [&] {
            editor.showPage("C2");
            editor.click("btnRestoreDefault");
        }};
    std::vector<std::string> states{contents()};
    std::size_t at = 0;
    const auto step = [&](bool back) {
        editor.trigger(back ? "miEditUndo" : "miEditRedo");
        at = back ? std::max<std::size_t>(at, 1) - 1 : std::min(at + 1, states.size() - 1);
        QVERIFY(!editor.applies());
        const auto shown = messageNamed(editor.text("txtMsgName").toStdString());
        QVERIFY(!shown || editor.find<DeviceTextEdit>("txtMsg")->bytes() == scriptOf(editor.project, *shown));
    };
    for (int turn = 0; turn < 300; ++turn) {
        const unsigned choice = upTo(2 * works.size());
        if (choice < works.size()) {
            works.at(choice)();
            if (contents() != states[at]) {
                states.resize(++at);
                states.push_back(contents());
            }
        } else {
            step(choice % 2 == 0);
        }
        QVERIFY(contents() == states[at]);
        QCOMPARE(editor.changes().steps().index(), static_cast<int>(at));
        QCOMPARE(editor.changes().steps().count(), static_cast<int>(states.size() - 1));
    }
    while (at > 0)
        step(true);
    QVERIFY(contents() == states.front());
}

void ProjectChangesTest::textBoxesKeepUndoKeys() {
    Changed editor;
    editor.apply("R3", QStringLiteral("x"));
    for (const auto& [key, modifiers] : {std::pair(Qt::Key_Y, Qt::KeyboardModifiers(Qt::ControlModifier)),
                                         std::pair(Qt::Key_Z, shiftControl)}) {
        QTest::keyClicks(editor.script(), QStringLiteral("y"));
        QCOMPARE(editor.script()->toPlainText(), QStringLiteral("xyCLEAR"));
        editor.press(Qt::Key_Z);
        const QString undone = editor.script()->toPlainText();
        QVERIFY(undone != QStringLiteral("xyCLEAR"));
        editor.press(key, modifiers);
        QCOMPARE(editor.script()->toPlainText(), QStringLiteral("xyCLEAR"));
        QTest::keyClick(editor.script(), Qt::Key_Backspace);
    }
    QCOMPARE(editor.caption("miEditUndo"), QStringLiteral("Undo Apply STDMSG3"));
    QCOMPARE(editor.project.STDMSG[2], std::string("xCLEAR"));
    // A box of one line.
    editor.showPage("C2");
    editor.type("txtNewAIAddr", QStringLiteral("5"));
    editor.press(Qt::Key_Z);
    QCOMPARE(editor.text("txtNewAIAddr"), QString());
    editor.press(Qt::Key_Y);
    QCOMPARE(editor.text("txtNewAIAddr"), QStringLiteral("5"));
    // A list that takes any text.
    editor.showPage("C5");
    auto* const list = editor.find<QComboBox>("cbAIAddr");
    list->setFocus();
    QTest::keyClicks(list, QStringLiteral("7"));
    QVERIFY(list->currentText() != QStringLiteral("100"));
    editor.press(Qt::Key_Z);
    QCOMPARE(list->currentText(), QStringLiteral("100"));
}

void ProjectChangesTest::keysAreTheBoxesAlsoWithNothingToUndo() {
    Changed editor;
    editor.apply("R3", QStringLiteral("x"));
    editor.trigger("miEditUndo");
    editor.trigger("miEditRedo");
    editor.script()->setFocus();
    QVERIFY(!editor.script()->document()->isUndoAvailable());
    for (const Qt::Key key : {Qt::Key_Z, Qt::Key_Y})
        editor.press(key);
    editor.press(Qt::Key_Z, shiftControl);
    QCOMPARE(editor.project.STDMSG[2], std::string("xCLEAR"));
    editor.find<QSpinBox>("spnPreviewColumns")->setFocus();
    editor.press(Qt::Key_Z);
    QCOMPARE(editor.project.STDMSG[2], std::string("xCLEAR"));
    editor.showPage("C2");
    editor.find<QLineEdit>("txtNewAltAddr")->setFocus();
    editor.press(Qt::Key_Z);
    QCOMPARE(editor.project.STDMSG[2], std::string("xCLEAR"));
}

void ProjectChangesTest::keysAreTheProjectsEverywhereElse() {
    Changed editor;
    editor.apply("R3", QStringLiteral("x"));
    editor.goToTree();
    editor.press(Qt::Key_Z);
    QCOMPARE(editor.project.STDMSG[2], std::string("CLEAR"));
    editor.press(Qt::Key_Y);
    QCOMPARE(editor.project.STDMSG[2], std::string("xCLEAR"));
    editor.press(Qt::Key_Z);
    editor.press(Qt::Key_Z, shiftControl);
    QCOMPARE(editor.project.STDMSG[2], std::string("xCLEAR"));
    // A box that is only shown.
    editor.find<QLineEdit>("txtMsgName")->setFocus();
    editor.press(Qt::Key_Z);
    QCOMPARE(editor.project.STDMSG[2], std::string("CLEAR"));
    editor.press(Qt::Key_Y);
    QCOMPARE(editor.project.STDMSG[2], std::string("xCLEAR"));
    QCOMPARE(editor.text("txtMsgName"), QStringLiteral("STDMSG3"));
}

void ProjectChangesTest::theMenuIsTheProjectsAlsoFromABox() {
    Changed editor;
    editor.apply("R3", QStringLiteral("x"));
    editor.showPage("C2");
    editor.find<QLineEdit>("txtNewAltAddr")->setFocus();
    editor.trigger("miEditUndo");
    QCOMPARE(editor.project.STDMSG[2], std::string("CLEAR"));
    QVERIFY(editor.find<QLineEdit>("txtNewAltAddr")->hasFocus());
}

void ProjectChangesTest::entriesAreEnabledExactlyWhileThePagesAre() {
    Changed editor;
    QVERIFY(editor.enabled("miEditUndo"));
    QVERIFY(editor.enabled("miEditRedo"));
    editor.trigger("miEditUndo"); // with nothing to undo
    editor.trigger("miEditRedo");
    editor.window->lifecycle().InitProject();
    QVERIFY(!editor.find<QTabWidget>("tabDetails")->isEnabled());
    QVERIFY(!editor.enabled("miEditUndo"));
    QVERIFY(!editor.enabled("miEditRedo"));
}

void ProjectChangesTest::nothingHappensUnderADialog() {
    Changed editor;
    editor.apply("R3", QStringLiteral("x"));
    QDialog dialog(editor.window.get());
    dialog.setModal(true);
    dialog.show();
    editor.trigger("miEditUndo");
    QCOMPARE(editor.project.STDMSG[2], std::string("xCLEAR"));
    dialog.hide();
    editor.trigger("miEditUndo");
    QCOMPARE(editor.project.STDMSG[2], std::string("CLEAR"));
}

void ProjectChangesTest::theMenuShowsTheKeys() {
    Changed editor;
    const auto entries = editor.find<QMenu>("mnuEdit")->actions();
    QCOMPARE(entries.at(0)->objectName(), QStringLiteral("miEditUndo"));
    QCOMPARE(entries.at(1)->objectName(), QStringLiteral("miEditRedo"));
    QCOMPARE(entries.at(0)->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_Z));
    QCOMPARE(entries.at(1)->shortcuts(),
             (QList<QKeySequence>{Qt::CTRL | Qt::Key_Y, Qt::CTRL | Qt::SHIFT | Qt::Key_Z}));
}

QTEST_MAIN(ProjectChangesTest)
#include "ProjectChangesTest.moc"
