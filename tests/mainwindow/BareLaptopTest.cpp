#include "link/TransferControls.h"
#include "link/forms/DeviceTransfer.h"
#include "model/ProjectFile.h"
#include "tests/support/CountedMouse.h"
#include "tests/support/EditorFixture.h"
#include "tests/support/FreeTransferPort.h"
#include "tests/support/ModalDriver.h"
#include "tests/support/SimulatorProcess.h"
#include "widgets/DeviceTextEdit.h"
#include "widgets/PanelView.h"

#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QToolBar>

#include <optional>

using namespace orvista;
using namespace orvista::testing;

namespace {

constexpr const char* wrongScript = "CLEAR\r\nTEXT 0 0 RED BLACK \"Lewel\"\r\nACT STILL 2000";

/// The files of a project with a wrong message, as a display holds them.
void fillDisplay(const TemporaryFolder& root) {
    Project project;
    project.STDMSG[2] = wrongScript;
    ScriptedMessages messages;
    QCOMPARE(DocMgrModule::SaveProject(root.path(), "Held", project, {PathRules::native(), messages}),
             DocMgrModule::SaveOutcome::Saved);
}

/// An editor without a project, and a mouse whose clicks are counted.
struct BareLaptop : EditorFixture {
    explicit BareLaptop(quint16 port) : transferPort(port) {
        start();
        transfer.emplace(project, window->lifecycle(), chooser, messages, *window, &makeTransferControl);
        window->useTransfer(*transfer);
    }
    ~BareLaptop() { window.reset(); }

    /// Answers the connection dialog that comes next; address and port are typed.
    void connectWhenAsked() {
        onModal(QStringLiteral("frmConnection"), [this](QWidget* dialog) {
            for (const auto& [name, text] : {std::pair("txtIP", QStringLiteral("127.0.0.1")),
                                             std::pair("txtPort", QString::number(transferPort))}) {
                auto* const box = dialog->findChild<QLineEdit*>(QString::fromLatin1(name));
                box->selectAll();
                QTest::keyClicks(box, text);
            }
            mouse.click(dialog->findChild<QPushButton*>(QStringLiteral("btnOK")));
        });
    }
    void clickTool(const char* name) {
        auto* const bar = window->findChild<QToolBar*>();
        mouse.click(bar->widgetForAction(find<QAction>(name)));
    }

    /// What is to be read in the preview.
    QString seen() const {
        const auto* const panel = find<PanelView>("panelPreview");
        return panel->isVisible() ? panel->accessibleDescription() : QString();
    }

    quint16 transferPort;
    std::optional<DeviceTransfer> transfer;
    CountedMouse mouse{*this};
};

} // namespace

class BareLaptopTest : public QObject {
    Q_OBJECT
private slots:
    void aTechnicianMendsAWrongMessageInTwelveClicks();
};

void BareLaptopTest::aTechnicianMendsAWrongMessageInTwelveClicks() {
    const TemporaryFolder root;
    fillDisplay(root);
    const quint16 port = freeTransferPort();
    const SimulatorProcess display(
        {"--root", QString::fromStdString(root.path()), "--transfer-port", QString::number(port)});
    BareLaptop editor(port);
    // What the display holds becomes a project.
    editor.chooser.newProjects.push_back(editor.projectNamed("Plant"));
    ++editor.mouse.clicks; // OK, in the dialog that asks for the project's name
    editor.connectWhenAsked();
    editor.clickTool("DOWNLOAD");
    QVERIFY(allModalsServed());
    // Found by its text, and seen as the display shows it.
    editor.window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(editor.window.get()));
    QTest::keyClick(editor.window.get(), Qt::Key_F, Qt::ControlModifier);
    auto* const filter = editor.find<QLineEdit>("txtMessagesFilter");
    QCOMPARE(editor.window->focusWidget(), filter);
    QTest::keyClicks(filter, QStringLiteral("Lewel"));
    QTest::keyClick(filter, Qt::Key_Return); // into the list
    QTest::keyClick(editor.find<QTableView>("tblMessages"), Qt::Key_Return);
    QTRY_COMPARE(editor.text("txtMsgName"), QStringLiteral("STDMSG3"));
    QTRY_COMPARE(editor.seen(), QStringLiteral("Lewel"));
    // Mended.
    auto* const script = editor.find<DeviceTextEdit>("txtMsg");
    QTRY_COMPARE(editor.window->focusWidget(), script);
    QTest::keyClick(script, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(script, QStringLiteral("TEXT 0 0 RED BLACK \"Level\""));
    QTest::keyClick(script, Qt::Key_Return);
    QTest::keyClicks(script, QStringLiteral("ACT STILL 2000"));
    QTRY_COMPARE(editor.seen(), QStringLiteral("Level"));
    editor.mouse.click("btnMsgApply");
    editor.clickTool("SAVE");
    QVERIFY(!editor.project.modified);
    // Sent.
    editor.connectWhenAsked();
    editor.clickTool("UPLOAD");
    QVERIFY(allModalsServed());
    QCOMPARE(editor.messages.shown.back().text, std::string("All files were successfully uploaded"));
    ++editor.mouse.clicks; // its box
    // Verified.
    editor.connectWhenAsked();
    editor.mouse.choose("mnuTools", "miToolsVerify");
    QVERIFY(allModalsServed());
    QVERIFY(editor.find<QLabel>("lblComparison")->text().contains(QStringLiteral("holds every byte")));
    QVERIFY(fileBytes(root.file("stdmsg.ilm")).find("\"Level\"") != std::string::npos);
    QVERIFY2(editor.mouse.clicks <= 12, qPrintable(QString::number(editor.mouse.clicks)));
}

QTEST_MAIN(BareLaptopTest)
#include "BareLaptopTest.moc"
