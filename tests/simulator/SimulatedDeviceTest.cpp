#include "simulator/SimulatedDevice.h"

#include "display/FieldValues.h"
#include "display/MessagePlayer.h"
#include "items/HeldValues.h"
#include "link/ModbusFrames.h"
#include "link/ModbusReader.h"
#include "tests/simulator/DeviceFixture.h"
#include "tests/support/LedText.h"

#include <QSignalSpy>
#include <QTcpSocket>
#include <QTest>
#include <bit>
#include <memory>
#include <optional>
#include <random>

namespace orvista {

using testing::block;
using testing::ledText;
using testing::messageFile;
using testing::page;
using testing::rasterOf;
using testing::writeBytes;

class SimulatedDeviceTest : public QObject {
    Q_OBJECT

private slots:
    void init() {
        root_ = std::make_unique<testing::TemporaryFolder>();
        // A two-character text of blanks is a rectangle of its background, 16 dots wide and 15 high.
        write("stdmsg.ilm",
              messageFile("STDMSG",
                          {page("TEXT 0 0 RED GREEN \"  \""), page("TEXT 0 0 RED ORANGE \"    \""),
                           page("DISPVAR 0 0 GREEN BLACK RegVar1"), page("DISPVARS 0 5 RED BLACK CoilVar1"),
                           page("TIME 0 0 RED BLACK "), page("IMG 0 0 RED BLACK caf\xE9.bmp"),
                           "CLEAR\nSPARKLE 1\nTEXT 0 0 RED RED \" \"\nACT STILL 1000"}));
        write("altmsg.ilm", messageFile("ALTMSG", {page("TEXT 0 0 RED RED \" \"")}));
    }
    void cleanup() { device_.reset(); }

    void isDarkWithoutFilesAndWithoutMessages() {
        root_ = std::make_unique<testing::TemporaryFolder>();
        start();
        setCoil(320, true);
        QVERIFY(shows(block(0, 0, Led::Off)));
    }

    void showsTheMessageWhoseCoilIsOn() {
        start();
        QVERIFY(shows(block(0, 0, Led::Off)));
        setCoil(320, true);
        QVERIFY(shows(block(16, 15, Led::Green)));
        setCoil(320, false);
        QVERIFY(shows(block(0, 0, Led::Off)));
    }

    void showsMessagesOneAfterTheOtherAndOverAgain() {
        start();
        setCoil(321, true);
        setCoil(320, true);
        QVERIFY(shows(block(16, 15, Led::Green), 0));
        QVERIFY(shows(block(16, 15, Led::Green), 999));
        QVERIFY(shows(block(32, 15, Led::Orange), 1000));
        QVERIFY(shows(block(16, 15, Led::Green), 2000));
    }

    void letsEmergenciesOverrideTheRest() {
        start();
        setCoil(320, true);
        setCoil(300, true);
        QVERIFY(shows(block(8, 15, Led::Red), 0));
        QVERIFY(shows(block(8, 15, Led::Red), 1500));
        setCoil(300, false);
        QVERIFY(shows(block(16, 15, Led::Green)));
    }

    void followsThePlayList() {
        write("default.pls", "DISPMSG STDMSG2\r\nDISPMSG STDMSG1\r\n");
        start();
        setCoil(320, true);
        setCoil(321, true);
        setCoil(322, true);
        QVERIFY(shows(block(32, 15, Led::Orange), 0));
        QVERIFY(shows(block(16, 15, Led::Green), 1000));
        QVERIFY(shows(block(32, 15, Led::Orange), 2000));
    }

    void usesTheAddressesOfTheFiles() {
        write("modbus.adr", "AnalogInput    200\r\nDigitalInput   50\r\nAlertMessage   500\r\n");
        start();
        setCoil(300, true);
        setCoil(320, true);
        QVERIFY(shows(block(0, 0, Led::Off)));
        setCoil(520, true);
        QVERIFY(shows(block(16, 15, Led::Green)));
        setCoil(500, true);
        QVERIFY(shows(block(8, 15, Led::Red)));
    }

    void takesFloatsLowWordFirst() {
        start();
        setCoil(322, true);
        QVERIFY(shows(rasterOf(page("TEXT 0 0 GREEN BLACK \"  0.000\""))));
        // 123.456 is 0x42F6E979: its low word goes to the lower register.
        send(QByteArray::fromHex("01020000000BFF1000640002 04E97942F6"));
        QVERIFY(shows(rasterOf(page("TEXT 0 0 GREEN BLACK \"123.456\""))));
        send(QByteArray::fromHex("01020000000BFF1000640002 0400003F80"));
        QVERIFY(shows(rasterOf(page("TEXT 0 0 GREEN BLACK \"  1.000\""))));
    }

    void showsTheTextsOfBooleans() {
        write("ilmvar.def", "DEFVAR CoilVar1\r\n type bit\r\n address 100\r\n default 1\r\n ON \"RUN\"\r\n"
                            " OFF \"STOP\"\r\nENDVAR\r\n");
        start();
        setCoil(323, true);
        QVERIFY(shows(rasterOf(page("TEXTS 0 5 RED BLACK \"RUN \""))));
        setCoil(100, false);
        QVERIFY(shows(rasterOf(page("TEXTS 0 5 RED BLACK \"STOP\""))));
    }

    void startsVariablesFromTheirDefaultsWithEveryUpload() {
        write("ilmvar.def", "DEFVAR RegVar1\r\n type float\r\n address 100\r\n default 2.5\r\n width 5\r\n"
                            " precision 1\r\nENDVAR\r\n");
        start();
        setCoil(322, true);
        const LedRaster defaults = rasterOf(page("TEXT 0 0 GREEN BLACK \"  2.5\""));
        QVERIFY(shows(defaults));
        send(QByteArray::fromHex("01020000000BFF10006400020400003F80"));
        QVERIFY(shows(rasterOf(page("TEXT 0 0 GREEN BLACK \"  1.0\""))));
        device_->loadFiles();
        QVERIFY(shows(defaults));
    }

    void keepsItsOwnTime() {
        DeviceSettings settings = settingsHere();
        settings.clock = QDateTime({2026, 1, 31}, {14, 5, 9});
        start(settings);
        setCoil(324, true);
        QVERIFY(shows(rasterOf(page("TEXT 0 0 RED BLACK \"14:05:09\""))));
    }

    void findsBitmapsByTheBytesOfTheirNamesInAnyCase_data() {
        QTest::addColumn<QString>("name");
        QTest::newRow("as written") << "café.bmp";
        QTest::newRow("ASCII letters in capitals") << "CAFé.BMP";
    }
    void findsBitmapsByTheBytesOfTheirNamesInAnyCase() {
        QFETCH(QString, name);
        const std::string red("\0\0\xFF", 3);
        const std::string green("\0\xFF\0", 3);
        const std::string black(3, '\0');
        write(name.toStdString(), testing::oneRowBitmap({red, green, black, red}));
        start();
        setCoil(325, true);
        LedRaster expected({128});
        expected.set(0, 0, Led::Red);
        expected.set(1, 0, Led::Green);
        expected.set(3, 0, Led::Red);
        QVERIFY(shows(expected));
    }

    void notesLinesThatItDoesNotKnow() {
        start();
        QStringList words;
        connect(device_.get(), &SimulatedDevice::logged, this,
                [&words](const RequestRecord& record) { words << record.words; });
        setCoil(326, true);
        QVERIFY(shows(block(8, 15, Led::Red)));
        QVERIFY2(words.contains("STDMSG7, line 2 does nothing: SPARKLE 1"), qPrintable(words.join('\n')));
    }

    void notesLinesOfThePlayListThatItDoesNotKnow() {
        start();
        write("default.pls", "DISPMSG STDMSG7\r\nDISPMSG %1 caf\xE9\r\n");
        QStringList words;
        connect(device_.get(), &SimulatedDevice::logged, this,
                [&words](const RequestRecord& record) { words << record.words; });
        device_->loadFiles();
        QVERIFY2(words.contains("default.pls, line 2 does nothing: DISPMSG %1 café"),
                 qPrintable(words.join('\n')));
    }

    void listsItsFilesOnceForAllBitmapsThatAreMissing() {
        for (int file = 0; file < 1000; ++file)
            write("file" + std::to_string(file), {});
        std::string script;
        for (int image = 0; image < 10'000; ++image)
            script += "IMG 0 0 RED GREEN " + std::to_string(image) + ".bmp\nCLEAR\n";
        write("stdmsg.ilm", messageFile("STDMSG", {script}));
        start();
        QStringList words;
        connect(device_.get(), &SimulatedDevice::logged, this,
                [&words](const RequestRecord& record) { words << record.words; });
        // Listed for each of them, they would take minutes, and the answer waits no longer than seconds.
        setCoil(320, true);
        QVERIFY(words.contains("STDMSG1: bitmap 9999.bmp was not found"));
    }

    /// A preview with the values that were read of the device: any bits in a float, any moment of the round.
    void showsWhatAPreviewWithItsValuesShows() {
        const std::string script = "CLEAR\nDISPVAR 0 0 RED BLACK RegVar1\nDISPVARS 60 0 GREEN RED RegVar64\n"
                                   "DISPVARS 60 8 ORANGE BLACK CoilVar32\nTIMES 0 8 RED BLACK \n"
                                   "IN GO-LEFT 3 20\nACT STILL 1000\nOUT FADE 20";
        write("stdmsg.ilm", messageFile("STDMSG", {script}));
        DeviceSettings settings = settingsHere();
        settings.clock = QDateTime(QDate(2026, 11, 21), QTime(8, 5, 9));
        start(settings);
        setCoil(320, true);
        const Project& project = device_->project();
        Programme programme({128}, fieldFormats(project));
        programme.add({}, project.STDMSG[0], NoBitmaps());
        MessagePlayer preview(programme);
        preview.play(0);
        preview.pause();
        std::mt19937 random(1);
        for (int state = 0; state < 100; ++state) {
            for (const std::uint16_t address : {100, 226}) {
                const auto any = static_cast<std::uint32_t>(random());
                const std::uint32_t plain = 0x40000000U + any % 0x7000000U;
                sendFrame(registerPairRequest(address, std::bit_cast<float>(state % 2 == 0 ? any : plain)));
            }
            setCoil(131, random() % 2 == 0);
            const auto moment = static_cast<qint64>(random() % static_cast<unsigned>(programme.duration()));
            preview.seek(moment);
            const FieldValues held{heldValues(readItems()), std::nullopt, std::nullopt};
            QVERIFY(shows(preview.raster(held.at({2026, 11, 21, 8, 5, 9})), moment));
        }
    }

    void takesPanelsOfAnyWidth() {
        for (const int columns : {1, 7, 64, 4096}) {
            DeviceSettings settings = settingsHere();
            settings.columns = columns;
            start(settings);
            setCoil(320, true);
            QVERIFY(shows(block(16, 15, Led::Green, columns)));
        }
    }

    void switchesEverythingOff() {
        start();
        setCoil(320, true);
        setCoil(300, true);
        device_->switchEverythingOff();
        QVERIFY(shows(block(0, 0, Led::Off)));
        QVERIFY(!device_->memory().coil(300));
    }

    void survivesFilesOfNoise() {
        std::string noise(300'000, ' ');
        unsigned state = 1;
        for (char& byte : noise)
            byte = static_cast<char>((state = state * 1664525U + 1013904223U) >> 24U);
        for (const char* name :
             {"modbus.adr", "ilmvar.def", "stdmsg.ilm", "altmsg.ilm", "default.pls", "a.bmp"})
            write(name, noise);
        start();
        setCoil(320, true);
        QCOMPARE(device_->rasterAt(123).rows(), 16);
    }

private:
    void write(const std::string& name, const std::string& bytes) { writeBytes(root_->file(name), bytes); }

    DeviceSettings settingsHere() const {
        DeviceSettings settings;
        settings.modbusPort = 0;
        settings.transferPort = 0;
        settings.root = root_->path();
        return settings;
    }

    void start() { start(settingsHere()); }
    void start(const DeviceSettings& settings) {
        device_ = std::make_unique<SimulatedDevice>(settings, Faults());
        QVERIFY(device_->startModbus());
        device_->loadFiles();
    }

    void send(const QByteArray& request) {
        QTcpSocket client;
        client.connectToHost(QHostAddress::LocalHost, device_->modbus().port());
        client.write(request);
        // The answer follows the performing.
        QTRY_VERIFY(client.bytesAvailable() > 0);
    }

    void sendFrame(const Frame& frame) {
        send(QByteArray(reinterpret_cast<const char*>(frame.data()), static_cast<qsizetype>(frame.size())));
    }

    void setCoil(std::uint16_t address, bool on) { sendFrame(coilRequest(address, on)); }

    /// As they are read over the network: words by address.
    std::vector<DisplayItem> readItems() const {
        std::vector<DisplayItem> items = displayItems(device_->project());
        for (DisplayItem& item : items)
            for (std::size_t word = 0; word < item.words().size(); ++word) {
                const std::size_t address = static_cast<std::size_t>(item.address) + word;
                item.raw[word] = item.isFloat() ? device_->memory().registers[address]
                                                : std::uint16_t{device_->memory().coils[address]};
            }
        return items;
    }

    bool shows(const LedRaster& expected, qint64 moment = 0) const {
        const LedRaster shown = device_->rasterAt(moment);
        if (shown == expected)
            return true;
        qInfo("%s", ledText(shown).c_str());
        return false;
    }

    std::unique_ptr<testing::TemporaryFolder> root_;
    std::unique_ptr<SimulatedDevice> device_;
};

} // namespace orvista

QTEST_GUILESS_MAIN(orvista::SimulatedDeviceTest)
#include "SimulatedDeviceTest.moc"
