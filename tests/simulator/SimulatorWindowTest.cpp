#include "simulator/forms/SimulatorWindow.h"

#include "link/ModbusFrames.h"
#include "simulator/DeviceView.h"
#include "simulator/forms/FaultsMenu.h"
#include "simulator/forms/ItemsTable.h"
#include "simulator/forms/LogView.h"
#include "tests/simulator/DeviceFixture.h"

#include <QInputDialog>
#include <QLabel>
#include <QScreen>
#include <QScrollBar>
#include <QTcpSocket>
#include <QTest>
#include <QTimer>
#include <memory>

namespace orvista {

using testing::messageFile;
using testing::page;

class SimulatorWindowTest : public QObject {
    Q_OBJECT

private slots:
    void init() {
        root_ = std::make_unique<testing::TemporaryFolder>();
        testing::writeBytes(root_->file("stdmsg.ilm"),
                            messageFile("STDMSG", {page("TEXT 0 0 RED GREEN \"  \"")}));
        DeviceSettings settings;
        settings.modbusPort = 0;
        settings.transferPort = 0;
        settings.root = root_->path();
        device_ = std::make_unique<SimulatedDevice>(settings, Faults());
        QVERIFY(device_->startModbus());
        QVERIFY(device_->startTransfer());
        window_ = std::make_unique<SimulatorWindow>(*device_);
        device_->loadFiles();
        window_->show();
        QVERIFY(QTest::qWaitForWindowExposed(window_.get()));
    }
    void cleanup() {
        window_.reset();
        device_.reset();
    }

    void showsThePanel() {
        auto* panel = window_->findChild<DeviceView*>();
        QCOMPARE(panel->accessibleDescription(), "Dark: no message is on");
        setCoil(320, true);
        QTRY_COMPARE(panel->shown(), testing::block(16, 15, Led::Green));
        QCOMPARE(panel->accessibleName(), "LED panel");
        QCOMPARE(panel->accessibleDescription(), "Shows regular messages 1");
        setCoil(301, true);
        QCOMPARE(panel->accessibleDescription(), "Shows emergency messages 2");
        const QImage picture = panel->grab().toImage();
        QVERIFY(picture.width() > panel->minimumSizeHint().width() / 2);
    }

    void standsBesideAnotherWindowWhereThereIsRoom() {
        window_->resize(1, 1);
        const QRect room = window_->screen()->availableGeometry();
        const QSize own = window_->size();
        const QSize left = room.size() - own;
        const QPoint corner = room.topLeft();
        const auto placeBeside = [this, &room](const QRect& other) {
            window_->move(room.center());
            window_->standBeside(other);
            return window_->pos();
        };
        QVERIFY(left.width() > 0 && left.height() > 0);
        QCOMPARE(placeBeside({corner, QSize(left.width(), 100)}), corner + QPoint(left.width(), 0));
        QCOMPARE(placeBeside({corner + QPoint(own.width(), 20), QSize(left.width(), 100)}),
                 corner + QPoint(0, 20));
        QCOMPARE(placeBeside({corner, QSize(room.width(), left.height())}),
                 corner + QPoint(0, left.height()));
        QCOMPARE(placeBeside({corner + QPoint(0, own.height()), QSize(room.width(), left.height())}), corner);
        // No room, and no such screen.
        QCOMPARE(placeBeside(room), room.center());
        QCOMPARE(placeBeside(room.translated(10'000, 0)), room.center());
    }

    void isSmallerBesideAnotherWindowThatLeavesLessRoom() {
        window_->resize(1, 1);
        const QSize least = window_->size();
        const QRect room = window_->screen()->availableGeometry();
        const QSize usual = least + QSize(100, 100);
        QVERIFY(room.width() > usual.width() && room.height() > usual.height());
        const auto besideOneThatLeaves = [&](int width) {
            window_->resize(usual);
            window_->move(room.topLeft());
            window_->standBeside({room.topLeft(), room.size() - QSize(width, 20)});
            return QRect(window_->pos(), window_->size());
        };
        const int narrow = least.width() + 40;
        QCOMPARE(besideOneThatLeaves(narrow),
                 QRect(room.left() + room.width() - narrow, room.top(), narrow, usual.height()));
        // Else as little in front of it as can be.
        QCOMPARE(besideOneThatLeaves(least.width() - 1),
                 QRect(QPoint(room.left() + room.width() - least.width(), room.top()), least));
        window_->standBeside({room.topLeft() + QPoint(least.width() - 1, 0), room.bottomRight()});
        QCOMPARE(window_->pos(), room.topLeft());
        QVERIFY(window_->testAttribute(Qt::WA_ShowWithoutActivating));
        // The frame of a window at the edge may lie beyond it.
        window_->standBeside({room.topLeft() - QPoint(8, 8), room.size() - QSize(usual.width() - 8, 20)});
        QCOMPARE(window_->pos(), QPoint(room.left() + room.width() - usual.width(), room.top()));
    }

    void drawsEveryLightInItsColour() {
        LedRaster raster({4});
        raster.set(0, 0, Led::Red);
        raster.set(1, 0, Led::Green);
        raster.set(2, 0, Led::Orange);
        const PanelPicture picture({4}, 10);
        const QImage image = picture.image(raster);
        const auto centre = [&](int x, int y) {
            return image.pixelColor(picture.rim() + x * 10 + 5, picture.rim() + y * 10 + 5);
        };
        QVERIFY(centre(0, 0).red() > 2 * centre(3, 0).red());
        QVERIFY(centre(0, 0).red() > centre(0, 0).green() + 60);
        QVERIFY(centre(1, 0).green() > centre(1, 0).red() + 30);
        QVERIFY(centre(2, 0).red() > 240 && centre(2, 0).green() > 180 && centre(2, 0).blue() < 200);
        QVERIFY(centre(3, 15).value() < 80);
    }

    void drawsLensesOfAnySize() {
        for (const int cell : {1, 2, 3, 7, 40}) {
            const PanelPicture picture({16}, cell);
            LedRaster raster({16});
            raster.fill(0, 0, 16, 16, Led::Green);
            const QImage image = picture.image(raster);
            QCOMPARE(image.width(), 16 * cell + 2 * picture.rim());
            QVERIFY(image.pixelColor(image.rect().center()).green() > 60);
        }
    }

    void listsWhatIsOn() {
        auto* items = window_->findChild<ItemsTable*>();
        QCOMPARE(items->topLevelItemCount(), 0);
        setCoil(320, true);
        setCoil(301, true);
        setCoil(100, true);
        setCoil(9999, true);
        send(registerPairRequest(102, -2.5F));
        const QStringList expected{"Coil 100|CoilVar1|on", "Coil 301|ALTMSG2|on", "Coil 320|STDMSG1|on",
                                   "Coil 9999||on", "Register 102|RegVar2|-2.5"};
        QStringList listed;
        for (int row = 0; row < items->topLevelItemCount(); ++row) {
            const QTreeWidgetItem* item = items->topLevelItem(row);
            listed << item->text(0) + "|" + item->text(1) + "|" + item->text(2);
        }
        QCOMPARE(listed, expected);
    }

    void logsAndSavesTheLog() {
        setCoil(320, true);
        const LogModel& log = window_->log();
        QVERIFY(log.rowCount() >= 2);
        const int row = log.rowCount() - 1;
        const auto cell = [&](int column) {
            return log.data(log.index(row, column), Qt::DisplayRole).toString();
        };
        QCOMPARE(cell(LogModel::Words), "Write Single Coil 320: on");
        QCOMPARE(cell(LogModel::Bytes), "01 02 00 00 00 06 FF 05 01 40 FF 00");
        QVERIFY(cell(LogModel::Sender).startsWith("127.0.0.1:"));
        QString error;
        QVERIFY(window_->saveLog(QString::fromStdString(root_->file("log.txt")), error));
        const std::string text = testing::fileBytes(root_->file("log.txt"));
        QVERIFY(text.find("Write Single Coil 320: on  [01 02 00 00 00 06 FF 05 01 40 FF 00]\n") !=
                std::string::npos);
        QVERIFY(!window_->saveLog("/nonexistent/log.txt", error));
        QVERIFY(!error.isEmpty());
    }

    void keepsTheLogWithinBounds() {
        LogModel log;
        for (int count = 0; count < 10'003; ++count)
            log.append({QDateTime::currentDateTime(), {}, {}, QString::number(count)});
        QCOMPARE(log.rowCount(), 10'000);
        QCOMPARE(log.data(log.index(0, LogModel::Words), Qt::DisplayRole).toString(), "3");
        log.clear();
        QCOMPARE(log.rowCount(), 0);
        QVERIFY(log.text().isEmpty());
    }

    void followsTheLogUnlessTheUserLooksBack() {
        auto* view = window_->findChild<LogView*>();
        QScrollBar* bar = view->verticalScrollBar();
        for (int count = 0; count < 200; ++count)
            device_->loadFiles();
        QTRY_VERIFY(bar->maximum() > 0);
        QTRY_COMPARE(bar->value(), bar->maximum());
        bar->setValue(0);
        for (int count = 0; count < 10; ++count)
            device_->loadFiles();
        QTRY_VERIFY(bar->maximum() > 10);
        QCOMPARE(bar->value(), 0);
    }

    void offersEveryFault() {
        const auto trigger = [this](const char* name) {
            auto* action = window_->findChild<QAction*>(name);
            QVERIFY2(action != nullptr, name);
            action->trigger();
            QVERIFY2(action->isChecked(), name);
        };
        const QList<std::pair<const char*, ModbusFault>> faults{{"faultRefuse", ModbusFault::Refuse},
                                                                {"faultClose", ModbusFault::CloseAtOnce},
                                                                {"faultReset", ModbusFault::Reset},
                                                                {"faultNoAnswer", ModbusFault::NoAnswer},
                                                                {"faultException", ModbusFault::Exception},
                                                                {"faultGarbage", ModbusFault::Garbage},
                                                                {"faultNone", ModbusFault::None}};
        for (const auto& [name, fault] : faults) {
            trigger(name);
            QCOMPARE(device_->faults().modbus, fault);
        }
        auto* hangUp = window_->findChild<QAction*>("faultFileHangUp");
        QVERIFY(!hangUp->isEnabled());
        Faults failing;
        failing.failingFile = 2;
        device_->setFaults(failing);
        auto* menu = window_->findChild<FaultsMenu*>();
        emit menu->aboutToShow();
        QVERIFY(hangUp->isEnabled());
        QVERIFY(window_->findChild<QAction*>("faultFile")->text().contains('2'));
        trigger("faultFileHangUp");
        QCOMPARE(device_->faults().transfer, TransferFault::HangUp);
        setCoil(320, true);
    }

    void asksForTheNumbersOfFaults() {
        const auto typeInto = [this](const char* action, int present, int number, int key) {
            QTimer::singleShot(0, this, [=] {
                auto* question = qobject_cast<QInputDialog*>(QApplication::activeModalWidget());
                QVERIFY(question);
                const int offered = question->intValue();
                question->setIntValue(number);
                QTest::keyClick(question, static_cast<Qt::Key>(key));
                QCOMPARE(offered, present);
            });
            window_->findChild<QAction*>(action)->trigger();
        };
        typeInto("faultExceptionCode", 4, 2, Qt::Key_Return);
        typeInto("faultDelay", 0, 250, Qt::Key_Return);
        typeInto("faultFile", 0, 3, Qt::Key_Return);
        const auto hasAnswers = [this] {
            const Faults& faults = device_->faults();
            return faults.exceptionCode == 2 && faults.answerDelay == 250 && faults.failingFile == 3;
        };
        QVERIFY(hasAnswers());
        QVERIFY(window_->findChild<QAction*>("faultDelay")->text().contains("250 ms"));
        typeInto("faultExceptionCode", 2, 11, Qt::Key_Escape);
        typeInto("faultDelay", 250, 9, Qt::Key_Escape);
        typeInto("faultFile", 3, 9, Qt::Key_Escape);
        QVERIFY(hasAnswers());
    }

    void tellsItsPorts() {
        const QString services = window_->findChild<QLabel*>("services")->text();
        QVERIFY(
            services.contains(QStringLiteral("Modbus/TCP on 127.0.0.1:%1").arg(device_->modbus().port())));
        QVERIFY(services.contains(
            QStringLiteral("File transfer on 127.0.0.1:%1").arg(device_->transfer().port())));
        QVERIFY(!window_->findChild<QLabel*>("portNotice"));
    }

    void tellsInFullWhyAServiceIsNotThere() {
        DeviceSettings settings;
        settings.modbusPort = 0;
        settings.transferPort = device_->transfer().port();
        settings.root = root_->path();
        SimulatedDevice second(settings, Faults());
        QVERIFY(second.startModbus());
        QVERIFY(!second.startTransfer());
        SimulatorWindow window(second);
        const auto* const notice = window.findChild<QLabel*>("portNotice");
        QCOMPARE(notice->text(),
                 QStringLiteral("File transfer not available on 127.0.0.1:%1: another program has this port. "
                                "Close it, perhaps a simulated display that was started before, and start "
                                "this one again")
                     .arg(settings.transferPort));
        QVERIFY(notice->wordWrap());
        QCOMPARE(window.findChild<QLabel*>("services")->text(),
                 QStringLiteral("Modbus/TCP on 127.0.0.1:%1").arg(second.modbus().port()));
    }

    void namesEveryPartForThoseWhoDoNotSeeIt() {
        for (const char* name : {"panel", "items", "log"})
            QVERIFY2(!window_->findChild<QWidget*>(name)->accessibleName().isEmpty(), name);
    }

private:
    void send(const Frame& frame) {
        QTcpSocket client;
        client.connectToHost(QHostAddress::LocalHost, device_->modbus().port());
        client.write(reinterpret_cast<const char*>(frame.data()), static_cast<qint64>(frame.size()));
        QTRY_VERIFY(client.bytesAvailable() > 0);
    }
    void setCoil(std::uint16_t address, bool on) { send(coilRequest(address, on)); }

    std::unique_ptr<testing::TemporaryFolder> root_;
    std::unique_ptr<SimulatedDevice> device_;
    std::unique_ptr<SimulatorWindow> window_;
};

} // namespace orvista

QTEST_MAIN(orvista::SimulatorWindowTest)
#include "SimulatorWindowTest.moc"
