#pragma once

#include "items/AcceptanceFile.h"
#include "link/TransferCommands.h"
#include "link/forms/ModbusExchange.h"
#include "model/FolderCopy.h"
#include "simulator/SimulatedDevice.h"
#include "tests/support/EditorFixture.h"
#include "tests/support/ModalDriver.h"
#include "widgets/RowsTable.h"

#include <QDir>
#include <QFileDialog>
#include <QLabel>
#include <QPushButton>

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace orvista::testing {

inline const QString addressOfDisplay = QStringLiteral("127.0.0.1");

/// Hands out the files of a folder as those of the display.
class FilesFrom final : public TransferCommands {
public:
    void upload() override {}
    FetchedDisplay download() override { return {}; }
    FetchedDisplay fetch(const std::string& title, const std::string& folder) override {
        titles.push_back(title);
        copyFiles(source, folder);
        return {FetchedDisplay::End::Fetched, "127.0.0.1:7000", {}, "127.0.0.1"};
    }
    std::string source;
    std::vector<std::string> titles;
};

/// An editor with three messages beside a display that holds them, and a second client of that display.
struct AcceptingEditor : EditorFixture {
    /// \param before the start
    explicit AcceptingEditor(const std::function<void(AcceptingEditor&)>& before = [](AcceptingEditor&) {}) {
        recovery.folder = QString::fromStdString(copies.path());
        before(*this);
        startDisplay(0);
        modbusPort = device->modbus().port();
        startWithNewProject("Plant");
        type("txtSystemIP", addressOfDisplay);
        project.STDMSG[0] = "CLEAR\r\nTEXT 0 0 RED BLACK \"One\"\r\nACT STILL 2000";
        project.STDMSG[1] =
            "CLEAR\r\nDISPVAR 0 0 RED BLACK RegVar1\r\nDISPVARS 60 0 RED BLACK CoilVar1\r\nACT STILL 2000";
        project.ALTMSG[2] = "CLEAR\r\nTEXT 0 0 RED BLACK \"Fire\"\r\nACT STILL 2000";
        project.DigitalInput = 500;
        send();
        window->useTransfer(transfer);
        other.setDisplay("127.0.0.1", modbusPort);
    }
    ~AcceptingEditor() { window.reset(); }

    /// Saves the project; the display holds it from now on.
    void send() {
        trigger("miFileSave");
        transfer.source = project.ProjPath;
        QDir(QString::fromStdString(root.path())).removeRecursively();
        QDir().mkpath(QString::fromStdString(root.path()));
        copyFiles(transfer.source, root.path());
        device->loadFiles();
    }
    void startDisplay(quint16 port) {
        DeviceSettings settings;
        settings.modbusPort = port;
        settings.root = root.path();
        device.emplace(settings, Faults());
        QVERIFY(device->startModbus());
    }
    void fail(ModbusFault fault) {
        Faults faults;
        faults.modbus = fault;
        device->setFaults(faults);
    }
    bool isOn(Item item) const { return device->memory().coil(addressOf(project, item)); }
    /// The coils that are on, by name.
    QString on() const {
        QStringList names;
        for (const DisplayItem& item : displayItems(project))
            if (!item.isFloat() && isOn(item.item))
                names << QString::fromStdString(item.name());
        return names.join(u' ');
    }
    void otherSwitches(Item item, bool on) {
        other.ask(coilRequest(static_cast<std::uint16_t>(addressOf(project, item)), on));
        QTRY_VERIFY(!other.isAsking());
        QCOMPARE(isOn(item), on);
    }
    std::string resultPath() const { return projectFolder.file("Plant-accepted.json"); }
    void chooseResult() const {
        onModal(QStringLiteral("comdlg"), [this](QWidget* dialog) {
            auto* const files = qobject_cast<QFileDialog*>(dialog);
            QCOMPARE(QFileInfo(files->selectedFiles().value(0)).fileName(),
                     QStringLiteral("Plant-accepted.json"));
            files->selectFile(QString::fromStdString(resultPath()));
            QMetaObject::invokeMethod(files, "accept");
        });
    }
    Acceptance result() const { return readAcceptanceFile(resultPath()).acceptance.value(); }
    QStringList keptCopies() const {
        return QDir(recovery.folder).entryList({QStringLiteral("*.acceptance")});
    }

    TemporaryFolder copies;
    TemporaryFolder root;
    std::optional<SimulatedDevice> device;
    FilesFrom transfer;
    ModbusExchange other;
};

/// The dialog `frmAccept`, and who sits before it.
struct Person {
    explicit Person(QWidget* dialog) : dialog(dialog) {}
    template <typename Widget>
    Widget* find(const char* name) const {
        return dialog->findChild<Widget*>(QString::fromLatin1(name));
    }
    bool can(const char* button) const { return find<QPushButton>(button)->isEnabled(); }
    void press(const char* button) const {
        QTRY_VERIFY2(can(button), button);
        QTest::mouseClick(find<QPushButton>(button), Qt::LeftButton);
    }
    QString state() const { return find<QLabel>("lblAcceptState")->text(); }
    void awaitMessage(const AcceptingEditor& editor, const QString& names) const {
        QTRY_COMPARE(editor.on(), names);
        QTRY_VERIFY(can("btnAcceptGood"));
    }
    QStringList row(int row) const {
        QStringList cells;
        const auto* const model = find<RowsTable>("tblAccept")->model();
        for (int column = 0; column < model->columnCount(); ++column)
            cells << model->index(row, column).data().toString();
        return cells;
    }
    QWidget* dialog;
};

/// Opens the dialog and begins, then lets `act` go on.
inline void accept(AcceptingEditor& editor, const std::function<void(const Person&)>& act) {
    onModal(QStringLiteral("frmAccept"), [&editor, act](QWidget* dialog) {
        const Person person(dialog);
        editor.chooseResult();
        person.press("btnAcceptStart");
        act(person);
    });
    editor.trigger("miToolsAccept");
    QVERIFY(allModalsServed());
}

} // namespace orvista::testing
