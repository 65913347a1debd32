#include "items/AcceptanceCopy.h"
#include "mainwindow/RecoveryFolder.h"
#include "mainwindow/TcpTesterPage.h"
#include "tests/mainwindow/AcceptingEditor.h"
#include "tests/support/FullDisk.h"
#include "widgets/PanelView.h"

#include <QApplication>
#include <QDoubleSpinBox>
#include <QMessageBox>
#include <QSet>
#include <QSpinBox>
#include <QTimer>

#include <sys/stat.h>
#include <unistd.h>

using namespace orvista;
using namespace orvista::testing;

namespace {

/// While it stands nobody can write to a folder, not even root.
class ReadOnlyFolder {
public:
    explicit ReadOnlyFolder(std::string path) : path_(std::move(path)) {
        ::chmod(path_.c_str(), 0555);
        constexpr uid_t nobody = 65534;
        if (isRoot_ && ::seteuid(nobody) != 0)
            throw std::runtime_error("root remains");
    }
    ~ReadOnlyFolder() {
        if (isRoot_ && ::seteuid(0) != 0)
            std::abort();
        ::chmod(path_.c_str(), 0755);
    }
    ReadOnlyFolder(const ReadOnlyFolder&) = delete;
    ReadOnlyFolder& operator=(const ReadOnlyFolder&) = delete;

private:
    std::string path_;
    bool isRoot_ = ::geteuid() == 0;
};

/// Says yes where a file that is there is to be replaced.
void replaceWhenAsked() {
    onModal(QStringLiteral("comdlg"), [](QWidget* dialog) {
        QTimer::singleShot(0, dialog, [dialog] {
            if (auto* const question = dialog->findChild<QMessageBox*>())
                question->button(QMessageBox::Yes)->click();
        });
        QMetaObject::invokeMethod(dialog, "accept");
    });
}

} // namespace

class AcceptanceFaultsTest : public QObject {
    Q_OBJECT
private slots:
    void cleanup() { QVERIFY(allModalsServed()); }
    void putsBackAfterEachFault_data();
    void putsBackAfterEachFault();
    void aDisplayThatIsSwitchedOffAndOn();
    void aClientThatWritesAllTheTime();
    void aFullDiskBeforeItBegins();
    void aFullDiskMeanwhile();
    void whatWasSaidIsNotLostWithoutAQuestion();
    void aReadOnlyFolder();
    void theResultReplacesNothingElse();
    void goesOnWhereItEnded();
    void anotherWindowThatBeginsMeanwhile();
    void longMessagesOnAWideDisplay();
    void theMonitorIsSilent();
    void itWaitsForTheTestPage();
};

void AcceptanceFaultsTest::putsBackAfterEachFault_data() {
    QTest::addColumn<int>("fault");
    for (const auto& [name, fault] :
         {std::pair("refuse", ModbusFault::Refuse), std::pair("close", ModbusFault::CloseAtOnce),
          std::pair("reset", ModbusFault::Reset), std::pair("no answer", ModbusFault::NoAnswer),
          std::pair("exception", ModbusFault::Exception), std::pair("garbage", ModbusFault::Garbage)})
        QTest::newRow(name) << static_cast<int>(fault);
}

void AcceptanceFaultsTest::putsBackAfterEachFault() {
    QFETCH(const int, fault);
    AcceptingEditor editor;
    editor.otherSwitches({Kind::Regular, 8}, true);
    accept(editor, [&](const Person& person) {
        person.awaitMessage(editor, QStringLiteral("STDMSG1"));
        editor.fail(static_cast<ModbusFault>(fault));
        QTRY_VERIFY_WITH_TIMEOUT(person.state().startsWith(QStringLiteral("Ended: ")), 15'000);
        editor.fail(ModbusFault::None);
        QTRY_VERIFY_WITH_TIMEOUT(
            person.state().endsWith(QStringLiteral("Everything else is as it was before.")), 15'000);
        QCOMPARE(editor.on(), QStringLiteral("STDMSG9"));
        person.press("btnCancel");
    });
    QVERIFY(editor.keptCopies().isEmpty());
}

void AcceptanceFaultsTest::aDisplayThatIsSwitchedOffAndOn() {
    AcceptingEditor editor;
    accept(editor, [&](const Person& person) {
        person.awaitMessage(editor, QStringLiteral("STDMSG1"));
        const quint16 port = editor.device->modbus().port();
        editor.device.reset();
        QTRY_VERIFY(person.state().startsWith(QStringLiteral("Ended: ")));
        editor.startDisplay(port);
        editor.otherSwitches({Kind::Emergency, 4}, true);
        QTRY_VERIFY_WITH_TIMEOUT(
            person.state().endsWith(QStringLiteral("Everything else is as it was before.")), 15'000);
        QCOMPARE(editor.on(), QStringLiteral("ALTMSG5"));
        person.press("btnCancel");
    });
}

void AcceptanceFaultsTest::aClientThatWritesAllTheTime() {
    AcceptingEditor editor;
    const std::array items{Item(Kind::Regular, 19), Item(Kind::Boolean, 3), Item(Kind::Regular, 39)};
    int writes = 0;
    bool flips = false; // every third write; else all stay on
    QTimer often;
    connect(&often, &QTimer::timeout, &often, [&] {
        const Item item = items[static_cast<std::size_t>(writes) % items.size()];
        if (editor.other.isAsking())
            return;
        const bool on = !flips || writes / 3 % 2 == 0;
        editor.other.ask(coilRequest(static_cast<std::uint16_t>(addressOf(editor.project, item)), on));
        ++writes;
    });
    accept(editor, [&](const Person& person) {
        const QString named =
            QStringLiteral("Changed by others, and left to them: CoilVar4, STDMSG20, STDMSG40.");
        person.awaitMessage(editor, QStringLiteral("STDMSG1"));
        often.start(1);
        QTRY_VERIFY(person.state().contains(named));
        flips = true;
        for (const Item message :
             {Item(Kind::Regular, 0), Item(Kind::Regular, 1), Item(Kind::Emergency, 2)}) {
            QTRY_VERIFY(editor.isOn(message) && person.can("btnAcceptGood"));
            person.press("btnAcceptGood");
        }
        QTRY_VERIFY(person.state().endsWith(QStringLiteral("Everything else is as it was before.")));
        QVERIFY(person.state().contains(named));
        flips = false;
        const int reached = writes;
        QTRY_VERIFY(writes >= reached + 6 && !editor.other.isAsking());
        often.stop();
        person.press("btnCancel");
    });
    QCOMPARE(editor.on(), QStringLiteral("STDMSG20 STDMSG40 CoilVar4"));
}

void AcceptanceFaultsTest::aFullDiskBeforeItBegins() {
    AcceptingEditor editor;
    onModal(QStringLiteral("frmAccept"), [&editor](QWidget* dialog) {
        const Person person(dialog);
        {
            const FullDisk disk(10);
            editor.chooseResult();
            person.press("btnAcceptStart");
            QCOMPARE(editor.messages.shown.size(), std::size_t{1});
            QVERIFY(editor.messages.shown[0].text.find(
                        "Plant-accepted.json cannot be written: File too large") != std::string::npos);
        }
        QCOMPARE(editor.on(), QString());
        QVERIFY(!QFile::exists(QString::fromStdString(editor.resultPath())));
        editor.chooseResult();
        person.press("btnAcceptStart");
        person.awaitMessage(editor, QStringLiteral("STDMSG1"));
        QTest::keyClick(dialog, Qt::Key_Escape);
    });
    editor.trigger("miToolsAccept");
}

void AcceptanceFaultsTest::aFullDiskMeanwhile() {
    AcceptingEditor editor;
    accept(editor, [&](const Person& person) {
        person.awaitMessage(editor, QStringLiteral("STDMSG1"));
        {
            const FullDisk disk(10);
            person.press("btnAcceptGood");
            QTRY_VERIFY(person.state().contains(
                QStringLiteral("Ended: what is there now cannot be kept, so that nothing is switched.")));
            QTRY_VERIFY(person.state().contains(QStringLiteral("Everything else is as it was before.")));
            QVERIFY(person.state().contains(QStringLiteral("cannot be written: File too large")));
            QCOMPARE(editor.on(), QString());
            QVERIFY(editor.result().messages.empty()); // whole, as it was
        }
        person.press("btnCancel");
    });
    QCOMPARE(editor.result().messages.size(), std::size_t{1});
    QVERIFY(editor.keptCopies().isEmpty());
}

void AcceptanceFaultsTest::whatWasSaidIsNotLostWithoutAQuestion() {
    AcceptingEditor editor;
    editor.messages.answers = {Answer::No, Answer::Yes};
    accept(editor, [&](const Person& person) {
        person.awaitMessage(editor, QStringLiteral("STDMSG1"));
        const FullDisk disk(10);
        person.press("btnAcceptGood");
        QTRY_VERIFY(person.can("btnAcceptStart"));
        person.press("btnCancel");
        QVERIFY(person.dialog->isVisible());
        person.press("btnCancel");
        QVERIFY(!person.dialog->isVisible());
    });
    QCOMPARE(editor.messages.asked.size(), std::size_t{2});
    QVERIFY(editor.messages.asked[0].ends_with(
        "cannot be written: File too large. Close, and lose what was said?"));
}

void AcceptanceFaultsTest::aReadOnlyFolder() {
    AcceptingEditor editor;
    onModal(QStringLiteral("frmAccept"), [&editor](QWidget* dialog) {
        const Person person(dialog);
        const ReadOnlyFolder folder(editor.projectFolder.path());
        editor.chooseResult();
        person.press("btnAcceptStart");
        QCOMPARE(editor.messages.shown.size(), std::size_t{1});
        QVERIFY(editor.messages.shown[0].text.find(
                    "Plant-accepted.json cannot be written: Permission denied") != std::string::npos);
        dialog->close();
    });
    editor.trigger("miToolsAccept");
    QCOMPARE(editor.on(), QString());
}

void AcceptanceFaultsTest::theResultReplacesNothingElse() {
    AcceptingEditor editor;
    onModal(QStringLiteral("frmAccept"), [&editor](QWidget* dialog) {
        const Person person(dialog);
        for (const char* const name : {"Plant.txt", "Plant.notes.json"}) {
            onModal(QStringLiteral("comdlg"), [&editor, name](QWidget* chooser) {
                qobject_cast<QFileDialog*>(chooser)->selectFile(
                    QString::fromStdString(editor.projectFolder.file(name)));
                QMetaObject::invokeMethod(chooser, "accept");
            });
            person.press("btnAcceptStart");
            QVERIFY(!QFile::exists(QString::fromStdString(editor.projectFolder.file(name))));
        }
        dialog->close();
    });
    editor.trigger("miToolsAccept");
    QCOMPARE(editor.messages.shown.size(), std::size_t{2});
    QCOMPARE(editor.messages.shown[0].text,
             editor.projectFolder.file("Plant.txt") + " does not end in .json");
    QCOMPARE(editor.messages.shown[1].text,
             editor.projectFolder.file("Plant.notes.json") + " holds the project's names");
}

void AcceptanceFaultsTest::goesOnWhereItEnded() {
    AcceptingEditor editor;
    accept(editor, [&](const Person& person) {
        person.awaitMessage(editor, QStringLiteral("STDMSG1"));
        person.press("btnAcceptBad");
        person.awaitMessage(editor, QStringLiteral("STDMSG2"));
        person.press("btnAcceptStop");
        QTRY_VERIFY(person.can("btnAcceptStart"));
        replaceWhenAsked();
        person.press("btnAcceptStart");
        person.awaitMessage(editor, QStringLiteral("STDMSG2"));
        QCOMPARE(editor.result().messages.size(), std::size_t{1});
        person.press("btnAcceptGood");
        person.awaitMessage(editor, QStringLiteral("ALTMSG3"));
        QCOMPARE(editor.result().messages.size(), std::size_t{2});
        QTest::keyClick(person.dialog, Qt::Key_Escape);
    });
}

void AcceptanceFaultsTest::anotherWindowThatBeginsMeanwhile() {
    AcceptingEditor editor;
    RecoveryFolder another(editor.recovery.folder, RecoveryFolder::acceptances);
    onModal(QStringLiteral("frmAccept"), [&](QWidget* dialog) {
        const Person person(dialog);
        QVERIFY(another.write(acceptanceCopy({"127.0.0.1", {}, {}})));
        editor.chooseResult();
        person.press("btnAcceptStart");
        QVERIFY(person.can("btnAcceptStart"));
        dialog->close();
    });
    editor.trigger("miToolsAccept");
    QCOMPARE(editor.messages.shown.size(), std::size_t{1});
    QCOMPARE(editor.messages.shown[0].text,
             std::string("Another window of the program is at an acceptance at 127.0.0.1."));
    QCOMPARE(editor.on(), QString());
    QCOMPARE(editor.keptCopies().size(), 1); // that of the other
    QVERIFY(!QFile::exists(QString::fromStdString(editor.resultPath())));
}

void AcceptanceFaultsTest::longMessagesOnAWideDisplay() {
    AcceptingEditor editor;
    const std::string line = "TEXT 0 0 RED BLACK \"x\"\r\n";
    const std::string page = "CLEAR\r\n" + line + "ACT STILL 10\r\n";
    for (const Item message : allMessages()) {
        std::string& script = scriptOf(editor.project, message);
        const std::string& part = messagePosition(message) % 2 == 0 ? page : line;
        for (script = page; script.size() + part.size() <= std::size_t{1} << 16;)
            script += part;
    }
    editor.window->lifecycle().SetModified(true);
    editor.send();
    editor.find<QSpinBox>("spnPreviewColumns")->setValue(512);
    accept(editor, [&](const Person& person) {
        person.awaitMessage(editor, QStringLiteral("STDMSG1"));
        QCOMPARE(person.find<PanelView>("acceptPanel")->shown().columns(), 512);
        for (const char* const next : {"STDMSG2", "STDMSG3"}) {
            person.press("btnAcceptGood");
            person.awaitMessage(editor, QLatin1String(next));
        }
        QTest::keyClick(person.dialog, Qt::Key_Escape);
    });
    QCOMPARE(editor.result().messages.size(), std::size_t{2});
    QCOMPARE(editor.on(), QString());
}

void AcceptanceFaultsTest::theMonitorIsSilent() {
    AcceptingEditor editor;
    editor.trigger("miViewMonitor");
    editor.find<QDoubleSpinBox>("spnMonitorSeconds")->setValue(0.5);
    int requests = 0;
    QSet<QString> askers;
    connect(&*editor.device, &SimulatedDevice::logged, this, [&](const RequestRecord& record) {
        ++requests;
        askers.insert(record.peer);
    });
    editor.click("btnMonitorStart");
    QTRY_VERIFY(requests >= 10);
    accept(editor, [&](const Person& person) {
        person.awaitMessage(editor, QStringLiteral("STDMSG1"));
        askers.clear();
        requests = 0;
        QTRY_VERIFY(requests >= 6); // it looks twice; the monitor would have four times
        QCOMPARE(requests % 3, 0);  // each look reads three tables of coils, and nobody else asked
        QCOMPARE(askers.size(), requests / 3);
        QTest::keyClick(person.dialog, Qt::Key_Escape);
    });
    requests = 0;
    QTRY_VERIFY(requests >= 10); // it goes on
}

void AcceptanceFaultsTest::itWaitsForTheTestPage() {
    AcceptingEditor editor;
    editor.showPage("C1");
    auto* const tester = editor.window->findChild<TcpTesterPage*>();
    tester->setEnabled(UpdateButton::cmdUpdateCoil, false); // as while a request is under way
    QVERIFY(tester->isSending());
    editor.trigger("miToolsAccept");
    QCOMPARE(editor.notice(), QStringLiteral("The test page is sending. Try again in a moment."));
    QVERIFY(editor.transfer.titles.empty());
    tester->setEnabled(UpdateButton::cmdUpdateCoil, true);
    onModal(QStringLiteral("frmAccept"), [tester](QWidget* dialog) {
        QVERIFY(QApplication::activeModalWidget() == dialog); // so that the page cannot be pressed
        QVERIFY(!tester->isSending());
        dialog->close();
    });
    editor.trigger("miToolsAccept");
    QCOMPARE(editor.transfer.titles.size(), std::size_t{1});
}

QTEST_MAIN(AcceptanceFaultsTest)
#include "AcceptanceFaultsTest.moc"
