#include "display/forms/DisplayPreview.h"
#include "model/SystemPath.h"

#include "display/CrossedFrame.h"
#include "display/RasterAt.h"
#include "display/SettledPage.h"
#include "display/forms/ShapeButton.h"
#include "tests/support/ModalDriver.h"
#include "tests/support/ScriptedPeople.h"
#include "tests/support/TemporaryFolder.h"
#include "widgets/DeviceTextEdit.h"
#include "widgets/PanelPicture.h"
#include "widgets/PanelView.h"
#include "widgets/ScriptPositions.h"

#include <QAction>
#include <QClipboard>
#include <QComboBox>
#include <QDialog>
#include <QFile>
#include <QFileDialog>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QSlider>
#include <QSpinBox>
#include <QTest>
#include <QTextBlock>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <optional>
#include <tuple>

using namespace orvista;
using namespace orvista::testing;

namespace {

const std::string pages = "CLEAR\r\n"
                          "TEXT 0 0 RED BLACK \"Level\"\r\n"
                          "IN GO-LEFT 1 10\r\n"
                          "ACT STILL 1000\r\n"
                          "CLEAR\r\n"
                          "TEXT 0 0 GREEN BLACK \"Emergency stop pump\"\r\n"
                          "ACT STILL 500";

/// A window with a script box and its preview, and the time in the test's hand.
struct Desk {
    Desk() {
        window.resize(800, 400);
        auto* const layout = new QVBoxLayout(&window);
        layout->addWidget(box = new DeviceTextEdit);
        layout->addWidget(preview = new DisplayPreview(project, *box, messages,
                                                       {[this] {
                                                            ++timesAsked;
                                                            return now;
                                                        },
                                                        [] { return LocalTime{2026, 11, 21, 8, 5, 9}; }}));
    }
    void show(const std::string& script) {
        box->setBytes(script);
        preview->restart();
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        box->setFocus();
    }
    template <typename Control>
    Control* find(const char* name) const {
        return preview->findChild<Control*>(QString::fromLatin1(name));
    }
    const LedRaster& shown() const { return find<PanelView>("panelPreview")->shown(); }
    QString read() const { return find<PanelView>("panelPreview")->accessibleDescription(); }
    QString label(const char* name) const { return find<QLabel>(name)->text(); }
    void click(const char* name) const { QTest::mouseClick(find<QWidget>(name), Qt::LeftButton); }
    bool isPlaying() const {
        return find<ShapeButton>("btnPreviewPlay")->shape() == ShapeButton::Shape::Pause;
    }
    int time() const { return find<QSlider>("sldPreviewTime")->value(); }
    void goToLine(int line) const {
        box->setTextCursor(QTextCursor(box->document()->findBlockByNumber(line - 1)));
    }

    /// What the device shows `time` milliseconds after the start of a script.
    LedRaster onDevice(const std::string& script, std::int64_t time, int columns = 128) const {
        Programme programme({columns}, fieldFormats(project));
        programme.add({}, script, NoBitmaps());
        DisplayValues values = defaultValues(project);
        values.clock = {2026, 11, 21, 8, 5, 9};
        return rasterAt(programme, values, time);
    }

    std::int64_t now = 1'000'000;
    int timesAsked = 0;
    Project project;
    ScriptedMessages messages;
    QWidget window;
    DeviceTextEdit* box = nullptr;
    DisplayPreview* preview = nullptr;
};

constexpr std::int64_t firstPageStands = 1280; ///< 128 moves of 10 ms
constexpr std::int64_t secondPageStarts = 2280;

} // namespace

class DisplayPreviewTest : public QObject {
    Q_OBJECT
private slots:
    void standsStillOnTheCursorsPage();
    void followsEachKeystroke();
    void playsAtTrueTimesWhenAsked();
    void theTimeOfAModalDialogDoesNotCount();
    void turnsPages();
    void enterPressesItsButtons();
    void goesToTheTimeOfTheSlider();
    void anotherMessageStopsIt();
    void isDarkAndDisabledWithoutAMessage();
    void showsOtherWidths();
    void countsWhatDoesNotFit();
    void showsDefaultsAndTheClock();
    void showsTheValuesThatAreChosen();
    void asksForOwnValues();
    void showsWhatTheDisplayHoldsWhileItIsKnown();
    void marksAMissingBitmap();
    void marksABitmapThatCannotBeShown_data();
    void marksABitmapThatCannotBeShown();
    void showsTheBitmapsOfTheProjectFolder();
    void noticesBitmapsOnTheDisk_data();
    void noticesBitmapsOnTheDisk();
    void playLooksAtTheBitmaps();
    void doesNothingWhileHidden();
    void showsLongScriptsWhenTheKeysAreQuiet();
    void showsLongScriptsAsItShowsShortOnes();
    void leavesTheTextAloneAndTheFocusInTheBox();
    void copiesThePicture();
    void savesThePicture();
    void tellsWhenThePictureCannotBeSaved();
};

void DisplayPreviewTest::standsStillOnTheCursorsPage() {
    Desk desk;
    desk.show(pages);
    QCOMPARE(desk.shown(), desk.onDevice(pages, firstPageStands));
    QCOMPARE(desk.label("lblPreviewPage"), "1 of 2");
    QCOMPARE(desk.read(), "Level");
    QCOMPARE(desk.time(), firstPageStands);
    QCOMPARE(desk.find<QSlider>("sldPreviewTime")->maximum(), 2780);
    desk.goToLine(5);
    QCOMPARE(desk.shown(), desk.onDevice(pages, secondPageStarts));
    QCOMPARE(desk.label("lblPreviewPage"), "2 of 2");
    QCOMPARE(desk.read(), "Emergency stop pump");
    desk.goToLine(4);
    QCOMPARE(desk.label("lblPreviewPage"), "1 of 2");
}

void DisplayPreviewTest::followsEachKeystroke() {
    Desk desk;
    desk.show(pages);
    desk.goToLine(2);
    desk.box->moveCursor(QTextCursor::EndOfLine);
    desk.box->moveCursor(QTextCursor::Left);
    std::string script = pages;
    for (const char letter : {'s', '!'}) {
        QTest::keyClick(desk.box, letter);
        script.insert(script.find("\"\r\nIN"), 1, letter);
        QCOMPARE(desk.box->bytes(), script);
        QCOMPARE(desk.shown(), desk.onDevice(script, firstPageStands));
    }
    QCOMPARE(desk.read(), "Levels!");
    QTest::keySequence(desk.box, QKeySequence::Undo);
    QCOMPARE(desk.box->bytes(), pages);
    QCOMPARE(desk.read(), "Level");
}

void DisplayPreviewTest::playsAtTrueTimesWhenAsked() {
    Desk desk;
    desk.show(pages);
    desk.now += 5000;
    QCoreApplication::processEvents();
    QVERIFY(!desk.isPlaying());
    desk.click("btnPreviewPlay");
    QVERIFY(desk.isPlaying());
    QCOMPARE(desk.shown(), LedRaster({128}));
    for (const int time : {200, 1279, 1500, 2279, 2280, 2779}) {
        desk.now = 1'005'000 + time;
        QTRY_COMPARE(desk.shown(), desk.onDevice(pages, time));
    }
    QTRY_COMPARE(desk.label("lblPreviewPage"), "2 of 2");
    desk.now = 1'005'000 + 2780 + 300;
    QTRY_COMPARE(desk.shown(), desk.onDevice(pages, 300));
    desk.click("btnPreviewPlay");
    QVERIFY(!desk.isPlaying());
    QCOMPARE(desk.time(), 300);
    desk.now += 100;
    desk.click("btnPreviewPlay");
    desk.now += 10;
    QTRY_COMPARE(desk.shown(), desk.onDevice(pages, 310));
}

void DisplayPreviewTest::theTimeOfAModalDialogDoesNotCount() {
    Desk desk;
    desk.show(pages);
    desk.click("btnPreviewPlay");
    desk.now += 400;
    QTRY_COMPARE(desk.shown(), desk.onDevice(pages, 400));
    QDialog dialog(&desk.window);
    dialog.setModal(true);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    desk.now += 700;
    const int asked = desk.timesAsked;
    QTRY_VERIFY(desk.timesAsked > asked + 1); // the preview has had its turn
    QCOMPARE(desk.shown(), desk.onDevice(pages, 400));
    dialog.hide();
    desk.now += 50;
    QTRY_COMPARE(desk.shown(), desk.onDevice(pages, 450));
}

void DisplayPreviewTest::turnsPages() {
    Desk desk;
    desk.show(pages);
    QVERIFY(!desk.find<QWidget>("btnPreviewBack")->isEnabled());
    desk.click("btnPreviewForward");
    QCOMPARE(desk.label("lblPreviewPage"), "2 of 2");
    QCOMPARE(desk.shown(), desk.onDevice(pages, secondPageStarts));
    QVERIFY(!desk.find<QWidget>("btnPreviewForward")->isEnabled());
    desk.click("btnPreviewBack");
    QCOMPARE(desk.label("lblPreviewPage"), "1 of 2");
    desk.click("btnPreviewPlay");
    desk.click("btnPreviewForward");
    QVERIFY(desk.isPlaying());
    QCOMPARE(desk.time(), secondPageStarts);
}

void DisplayPreviewTest::enterPressesItsButtons() {
    Desk desk;
    desk.show(pages);
    auto* const play = desk.find<QWidget>("btnPreviewPlay");
    play->setFocus(Qt::TabFocusReason);
    QTest::keyClick(play, Qt::Key_Return);
    QVERIFY(desk.isPlaying());
    QTest::keyClick(play, Qt::Key_Enter);
    QVERIFY(!desk.isPlaying());
    QTest::keyClick(play, Qt::Key_Space);
    QVERIFY(desk.isPlaying());
}

void DisplayPreviewTest::goesToTheTimeOfTheSlider() {
    Desk desk;
    desk.show(pages);
    desk.find<QSlider>("sldPreviewTime")->setValue(640);
    QCOMPARE(desk.shown(), desk.onDevice(pages, 640));
    QVERIFY(!desk.isPlaying());
    desk.goToLine(3);
    QCOMPARE(desk.shown(), desk.onDevice(pages, firstPageStands));
}

void DisplayPreviewTest::anotherMessageStopsIt() {
    Desk desk;
    desk.show(pages);
    desk.click("btnPreviewPlay");
    desk.now += 2400;
    QTRY_COMPARE(desk.label("lblPreviewPage"), "2 of 2");
    desk.box->setBytes("CLEAR\r\nTEXT 0 0 RED BLACK \"b\"\r\nACT STILL 10");
    desk.preview->restart();
    QVERIFY(!desk.isPlaying());
    QCOMPARE(desk.label("lblPreviewPage"), "1 of 1");
    QCOMPARE(desk.read(), "b");
}

void DisplayPreviewTest::isDarkAndDisabledWithoutAMessage() {
    Desk desk;
    desk.show(pages);
    desk.box->setEnabled(false);
    QCOMPARE(desk.shown(), LedRaster({128}));
    QCOMPARE(desk.read(), QString());
    QCOMPARE(desk.label("lblPreviewPage") + desk.label("lblPreviewFit"), QString());
    for (const char* name : {"btnPreviewPlay", "sldPreviewTime", "spnPreviewColumns"})
        QVERIFY2(!desk.find<QWidget>(name)->isEnabled(), name);
    QVERIFY(!desk.find<QAction>("miPreviewSavePicture")->isEnabled());
    desk.box->setEnabled(true);
    QVERIFY(desk.find<QAction>("miPreviewSavePicture")->isEnabled());
    QCOMPARE(desk.read(), "Level");
    QVERIFY(desk.find<QWidget>("btnPreviewPlay")->isEnabled());
}

void DisplayPreviewTest::showsOtherWidths() {
    Desk desk;
    desk.show(pages);
    auto* const columns = desk.find<QSpinBox>("spnPreviewColumns");
    QCOMPARE(columns->value(), 128);
    for (const int count : {32, 512}) {
        columns->setValue(count);
        QCOMPARE(desk.preview->columns(), count);
        QCOMPARE(desk.shown(), desk.onDevice(pages, 10 * count, count));
    }
    columns->setValue(31);
    QCOMPARE(columns->value(), 32);
    columns->setValue(513);
    QCOMPARE(columns->value(), 512);
}

void DisplayPreviewTest::countsWhatDoesNotFit() {
    Desk desk;
    desk.show(pages);
    QCOMPARE(desk.label("lblPreviewFit"), QString());
    desk.goToLine(6);
    QCOMPARE(desk.label("lblPreviewFit"), "3 characters do not fit");
    desk.find<QSpinBox>("spnPreviewColumns")->setValue(144);
    QCOMPARE(desk.label("lblPreviewFit"), "1 character does not fit");
    desk.find<QSpinBox>("spnPreviewColumns")->setValue(152);
    QCOMPARE(desk.label("lblPreviewFit"), QString());
}

void DisplayPreviewTest::showsDefaultsAndTheClock() {
    Desk desk;
    desk.project.RegVar[0].defaultValue = "1.5";
    desk.project.CoilVar[1].defaultValue = "1";
    desk.project.CoilVar[1].onText = "RUN";
    const std::string script =
        "CLEAR\r\nDISPVAR 0 0 RED BLACK RegVar1\r\nDISPVARS 64 5 RED BLACK CoilVar2\r\n"
        "TIMES 90 0 RED BLACK \r\nDATES 90 8 RED BLACK \r\nACT STILL 1000";
    desk.show(script);
    QCOMPARE(desk.read(), "1.500 RUN 08:05:09 21.11.2026");
    QCOMPARE(desk.shown(), desk.onDevice(script, 0));
    desk.project.CoilVar[1].onText = "ON";
    desk.preview->hide();
    desk.preview->show();
    QCOMPARE(desk.read(), "1.500 ON 08:05:09 21.11.2026");
}

void DisplayPreviewTest::showsTheValuesThatAreChosen() {
    Desk desk;
    desk.project.CoilVar[1].onText = "RUN";
    desk.project.CoilVar[1].offText = "STOPPED";
    const std::string script =
        "CLEAR\r\nDISPVAR 0 0 RED BLACK RegVar1\r\nDISPVARS 64 5 RED BLACK CoilVar2\r\n"
        "TIMES 90 0 RED BLACK \r\nACT STILL 1000";
    desk.show(script);
    auto* const list = desk.find<QComboBox>("cboPreviewValues");
    const std::pair<const char*, const char*> choices[] = {{"Widest", "-99.999 STOPPED 00:00:00"},
                                                           {"Smallest", "0.000 RUN 08:05:09"},
                                                           {"On", "0.000 RUN 08:05:09"},
                                                           {"Off", "0.000 STOPPED 08:05:09"},
                                                           {"Defaults", "0.000 STOPPED 08:05:09"}};
    for (const auto& [choice, text] : choices) {
        list->setCurrentText(choice);
        QCOMPARE(desk.read(), text);
    }
    list->setCurrentText("Widest");
    desk.box->setBytes("CLEAR\r\nDISPVAR 0 0 RED BLACK RegVar2\r\nACT STILL 1000");
    desk.project.RegVar[1].width = "5";
    desk.preview->restart();
    QCOMPARE(desk.read(), "9.999");
}

void DisplayPreviewTest::asksForOwnValues() {
    Desk desk;
    desk.show("CLEAR\r\nDISPVAR 0 0 RED BLACK RegVar1\r\nDISPVARS 64 5 RED BLACK CoilVar2\r\n"
              "TIMES 90 0 RED BLACK \r\nDATES 90 8 RED BLACK \r\nACT STILL 1000");
    auto* const list = desk.find<QComboBox>("cboPreviewValues");
    const auto choose = [&](auto&& act) {
        onModal(QStringLiteral("frmValues"), act);
        list->setFocus();
        QTest::keyClick(list, Qt::Key_End);
        QVERIFY(allModalsServed());
    };
    const auto type = [](QWidget* form, const char* name, const char* text) {
        form->findChild<QLineEdit*>(QString::fromLatin1(name))->setText(text);
    };
    const auto press = [](QWidget* form, const char* name) {
        QTest::mouseClick(form->findChild<QPushButton*>(QString::fromLatin1(name)), Qt::LeftButton);
    };
    list->setCurrentText("On");
    choose([&](QWidget* form) { press(form, "btnCancel"); });
    QCOMPARE(list->currentText(), "On");
    choose([&](QWidget* form) {
        const auto* const ok = form->findChild<QPushButton*>("btnOK");
        for (const auto& [box, wrong, right] : {std::tuple{"txtValueRegVar1", "1,5", "-99.9"},
                                                {"txtValueTIME", "25:00:00", "23:59:58"},
                                                {"txtValueDATE", "30.2.2026", "24.12.2026"}}) {
            type(form, box, wrong);
            QVERIFY2(!ok->isEnabled(), box);
            type(form, box, right);
            QVERIFY2(ok->isEnabled(), box);
        }
        form->findChild<QComboBox*>("cboValueCoilVar2")->setCurrentIndex(1);
        press(form, "btnOK");
    });
    QCOMPARE(desk.read(), "-99.900 ON 23:59:58 24.12.2026");
    // What another message does not show is kept, and others are at their defaults.
    desk.box->setBytes(
        "CLEAR\r\nDISPVAR 0 0 RED BLACK RegVar2\r\nDISPVAR 64 0 RED BLACK RegVar1\r\nACT STILL 1000");
    desk.preview->restart();
    QCOMPARE(desk.read(), "0.000 -99.900");
    onModal(QStringLiteral("frmValues"), [&](QWidget* form) {
        QCOMPARE(form->findChild<QLineEdit*>("txtValueRegVar1")->text(), "-99.9");
        type(form, "txtValueRegVar1", "");
        press(form, "btnOK");
    });
    emit list->activated(list->currentIndex());
    QVERIFY(allModalsServed());
    QCOMPARE(desk.read(), "0.000 0.000");
}

void DisplayPreviewTest::showsWhatTheDisplayHoldsWhileItIsKnown() {
    Desk desk;
    desk.show("CLEAR\r\nDISPVAR 0 0 RED BLACK RegVar1\r\nTIMES 90 0 RED BLACK \r\nACT STILL 1000");
    auto* const list = desk.find<QComboBox>("cboPreviewValues");
    const auto canBeChosen = [&] {
        return (list->model()->flags(list->model()->index(5, 0)) & Qt::ItemIsEnabled) != 0;
    };
    QCOMPARE(list->itemText(5), "As the Display Has It");
    QVERIFY(!canBeChosen());
    DisplayValues held;
    held.floats[0] = 12.5F;
    desk.preview->setHeldValues(held);
    QVERIFY(canBeChosen());
    QCOMPARE(desk.read(), "0.000 08:05:09");
    list->setCurrentIndex(5);
    QCOMPARE(desk.read(), "12.500 08:05:09");
    held.floats[0] = -1;
    desk.preview->setHeldValues(held);
    QCOMPARE(desk.read(), "-1.000 08:05:09");
    desk.preview->setHeldValues(std::nullopt);
    QCOMPARE(list->currentText(), "Defaults");
    QCOMPARE(desk.read(), "0.000 08:05:09");
    QVERIFY(!canBeChosen());
}

void DisplayPreviewTest::marksAMissingBitmap() {
    const TemporaryFolder folder;
    Desk desk;
    desk.project.ProjPath = folder.path();
    desk.show("CLEAR\r\nIMG 3 0 RED BLACK gone.bmp\r\nACT STILL 1000");
    const LedImage frame = crossedFrame("gone.bmp");
    LedRaster expected({128});
    for (int y = 0; y < frame.height; ++y)
        for (int x = 0; x < frame.width; ++x)
            expected.set(x + 3, y, frame.leds[static_cast<std::size_t>(y * frame.width + x)]);
    QCOMPARE(desk.shown(), expected);
    QCOMPARE(desk.read(), "gone.bmp");
}

void DisplayPreviewTest::marksABitmapThatCannotBeShown_data() {
    using Spoil = std::function<void(const std::filesystem::path&)>;
    QTest::addColumn<Spoil>("spoil");
    QTest::newRow("removed") << Spoil([](const auto& file) { std::filesystem::remove(file); });
    QTest::newRow("cut") << Spoil([](const auto& file) { std::filesystem::resize_file(file, 60); });
    QTest::newRow("empty") << Spoil([](const auto& file) { std::filesystem::resize_file(file, 0); });
    QTest::newRow("64 MB") << Spoil([](const auto& file) { std::filesystem::resize_file(file, 64 << 20); });
    QTest::newRow("a folder") << Spoil([](const auto& file) {
        std::filesystem::remove(file);
        std::filesystem::create_directory(file);
    });
    QTest::newRow("zero wide") << Spoil([](const auto& file) {
        std::fstream bytes(file, std::ios::in | std::ios::out | std::ios::binary);
        bytes.seekp(18);
        bytes.write("\0\0\0\0", 4);
    });
}

void DisplayPreviewTest::marksABitmapThatCannotBeShown() {
    QFETCH(const std::function<void(const std::filesystem::path&)>, spoil);
    const TemporaryFolder folder;
    const std::string file = folder.file("alarm.bmp");
    QImage picture(16, 8, QImage::Format_RGB32);
    picture.fill(Qt::red);
    QVERIFY(picture.save(QString::fromStdString(file), "BMP"));
    Desk desk;
    desk.project.ProjPath = folder.path();
    desk.show("CLEAR\r\nIMG 0 0 RED BLACK alarm.bmp\r\nACT STILL 1000");
    LedRaster whole({128});
    whole.fill(0, 0, 16, 8, Led::Red);
    QCOMPARE(desk.shown(), whole);
    spoil(systemPath(file));
    QTest::keyClick(desk.box, Qt::Key_Return);
    const LedImage frame = crossedFrame("alarm.bmp");
    LedRaster marked({128});
    for (int y = 0; y < frame.height; ++y)
        for (int x = 0; x < frame.width; ++x)
            marked.set(x, y, frame.leds[static_cast<std::size_t>(y * frame.width + x)]);
    QCOMPARE(desk.shown(), marked);
}

void DisplayPreviewTest::showsTheBitmapsOfTheProjectFolder() {
    const TemporaryFolder folder;
    QImage picture(4, 2, QImage::Format_RGB32);
    picture.fill(Qt::red);
    QVERIFY(picture.save(QString::fromStdString(folder.file("ALARM.BMP")), "BMP"));
    Desk desk;
    desk.project.ProjPath = folder.path();
    desk.show("CLEAR\r\nIMG 0 0 RED BLACK alarm.bmp\r\nACT STILL 1000");
    LedRaster expected({128});
    expected.fill(0, 0, 4, 2, Led::Red);
    QCOMPARE(desk.shown(), expected);
}

void DisplayPreviewTest::noticesBitmapsOnTheDisk_data() {
    QTest::addColumn<bool>("isThere");
    QTest::newRow("comes") << false;
    QTest::newRow("changes or goes") << true;
}

void DisplayPreviewTest::noticesBitmapsOnTheDisk() {
    QFETCH(const bool, isThere);
    const TemporaryFolder folder;
    const QString file = QString::fromStdString(folder.file("later.bmp"));
    const auto store = [&](int width) {
        QImage picture(width, 2, QImage::Format_RGB32);
        picture.fill(Qt::red);
        QVERIFY(picture.save(file, "BMP"));
    };
    if (isThere)
        store(9);
    Desk desk;
    desk.project.ProjPath = folder.path();
    desk.show("CLEAR\r\nIMG 0 0 RED BLACK later.bmp\r\nACT STILL 1000");
    QVERIFY(QTest::qWaitForWindowActive(&desk.window));
    QSignalSpy changes(desk.preview, &DisplayPreview::bitmapsChanged);
    QCOMPARE(desk.label("lblPreviewFit"), isThere ? "" : "later.bmp is missing");
    store(200);
    QTRY_COMPARE(desk.label("lblPreviewFit"), "the bitmap is 72 dots too wide");
    QCOMPARE(changes.size(), 1);
    QVERIFY(QFile::remove(file));
    QTRY_COMPARE(desk.label("lblPreviewFit"), "later.bmp is missing");
    QCOMPARE(changes.size(), 2);
}

void DisplayPreviewTest::playLooksAtTheBitmaps() {
    const TemporaryFolder folder;
    Desk desk;
    desk.project.ProjPath = folder.path();
    desk.show("CLEAR\r\nIMG 0 0 RED BLACK later.bmp\r\nACT STILL 1000");
    QSignalSpy changes(desk.preview, &DisplayPreview::bitmapsChanged);
    QImage picture(4, 2, QImage::Format_RGB32);
    QVERIFY(picture.save(QString::fromStdString(folder.file("later.bmp")), "BMP"));
    desk.preview->lookAtBitmaps();
    QCOMPARE(changes.size(), 1);
    QVERIFY(QFile::remove(QString::fromStdString(folder.file("later.bmp"))));
    desk.click("btnPreviewPlay");
    QCOMPARE(changes.size(), 2);
    QVERIFY(desk.isPlaying());
}

void DisplayPreviewTest::doesNothingWhileHidden() {
    Desk desk;
    desk.show(pages);
    desk.click("btnPreviewPlay");
    desk.preview->hide();
    const LedRaster before = desk.shown();
    desk.now += 800;
    desk.box->setBytes("CLEAR");
    QCOMPARE(desk.shown(), before);
    for (const auto* const timer : desk.preview->findChildren<QTimer*>())
        QVERIFY(!timer->isActive());
    desk.preview->show();
    QCOMPARE(desk.shown(), LedRaster({128}));
    QVERIFY(!desk.isPlaying());
}

void DisplayPreviewTest::showsLongScriptsWhenTheKeysAreQuiet() {
    Desk desk;
    std::string script = pages + "\r\n";
    while (script.size() <= 2 * std::size_t{DisplayPreview::longScript})
        script += "CLEAR\r\nTEXT 0 0 RED BLACK \"page\"\r\nACT STILL 100\r\n";
    desk.show(script);
    desk.goToLine(2);
    desk.box->moveCursor(QTextCursor::EndOfLine);
    desk.box->moveCursor(QTextCursor::Left);
    QTest::keyClick(desk.box, 's');
    QCOMPARE(desk.read(), "Level");
    QTRY_COMPARE(desk.read(), "Levels");
}

void DisplayPreviewTest::showsLongScriptsAsItShowsShortOnes() {
    Desk desk;
    const auto page = [](const std::string& text) {
        return "CLEAR\r\nTEXT 0 0 RED BLACK \"" + text +
               "\"\r\nACT STILL 100\r\nTEXTS 64 5 GREEN BLACK \"more\"\r\nOUT FADE 50\r\n";
    };
    std::string script;
    for (int i = 0; i < 8; ++i)
        script += page("page " + std::to_string(i));
    desk.show(script + page(std::string(DisplayPreview::longScript, 'x')) + page("last"));
    const auto timers = desk.preview->findChildren<QTimer*>();
    const auto isQuiet = [&] {
        return std::none_of(timers.begin(), timers.end(),
                            [](const QTimer* timer) { return timer->isActive(); });
    };
    struct Edit {
        int line; ///< from 1; after the last one the last
        const char* typed;
        int taken; ///< characters before the cursor, which stands at the end of the line
    };
    // Within a page; a page parted by either command; pages joined; lines between pages; after the last one.
    for (const Edit edit : {Edit{12, "x", 2}, Edit{13, "\rCLEAR", 0}, Edit{14, "\rTIME 0 0 RED BLACK ", 0},
                            Edit{11, "", 5}, Edit{11, "x", 0}, Edit{27, "\rOUT FADE 9", 0}, Edit{28, "", 10},
                            Edit{1, "", 5}, Edit{1000, "\r\rTIME 0 0 RED BLACK ", 0}}) {
        desk.goToLine(std::min(edit.line, desk.box->blockCount()));
        desk.box->moveCursor(QTextCursor::EndOfLine);
        for (int i = 0; i < edit.taken; ++i)
            QTest::keyClick(desk.box, Qt::Key_Backspace);
        for (const char* key = edit.typed; *key != '\0'; ++key)
            *key == '\r' ? QTest::keyClick(desk.box, Qt::Key_Return) : QTest::keyClick(desk.box, *key);
        QTRY_VERIFY(isQuiet());

        Programme programme({128}, fieldFormats(desk.project));
        programme.add({}, desk.box->bytes(), NoBitmaps());
        const int cursor = desk.box->textCursor().position();
        const std::size_t shown =
            pageOfLine(programme, ScriptPositions(*desk.box->document()).lineAt(cursor));
        DisplayValues values = defaultValues(desk.project);
        values.clock = {2026, 11, 21, 8, 5, 9};
        QCOMPARE(desk.label("lblPreviewPage"),
                 QStringLiteral("%1 of %2").arg(shown + 1).arg(programme.pageCount()));
        QCOMPARE(desk.shown(), settledPage(programme, shown, values));
    }
}

void DisplayPreviewTest::leavesTheTextAloneAndTheFocusInTheBox() {
    Desk desk;
    desk.show(pages);
    int changes = 0;
    connect(desk.box, &QPlainTextEdit::textChanged, [&changes] { ++changes; });
    for (const char* name : {"btnPreviewPlay", "btnPreviewPlay", "btnPreviewForward", "btnPreviewBack",
                             "sldPreviewTime", "panelPreview"}) {
        desk.click(name);
        QVERIFY2(desk.box->hasFocus(), name);
    }
    QCOMPARE(changes, 0);
    QVERIFY(!desk.box->document()->isUndoAvailable());
    QCOMPARE(desk.box->bytes(), pages);
}

void DisplayPreviewTest::copiesThePicture() {
    Desk desk;
    auto* const copy = desk.find<QAction>("miPreviewCopyPicture");
    desk.show(pages);
    QVERIFY(copy->isEnabled());
    QGuiApplication::clipboard()->clear();
    copy->trigger();
    const auto* const panel = desk.find<PanelView>("panelPreview");
    QCOMPARE(QGuiApplication::clipboard()->image(),
             PanelPicture({panel->shown().columns()}, 8).image(panel->shown()));
    desk.box->setEnabled(false);
    QVERIFY(!copy->isEnabled());
}

void DisplayPreviewTest::savesThePicture() {
    const TemporaryFolder folder;
    Desk desk;
    desk.show(pages);
    const QString file = QString::fromStdString(folder.file("panel.png"));
    onModal(QStringLiteral("comdlg"), [&](QWidget* dialog) {
        auto* const files = qobject_cast<QFileDialog*>(dialog);
        files->selectFile(file);
        QMetaObject::invokeMethod(files, "accept");
    });
    desk.find<QAction>("miPreviewSavePicture")->trigger();
    QVERIFY(allModalsServed());
    const QImage saved(file);
    QCOMPARE(saved.height(), 19 * 8);
    QVERIFY(desk.messages.shown.empty());
}

void DisplayPreviewTest::tellsWhenThePictureCannotBeSaved() {
    const TemporaryFolder folder;
    Desk desk;
    desk.show(pages);
    const std::string file = folder.file("panel.png");
    onModal(QStringLiteral("comdlg"), [&](QWidget* dialog) {
        auto* const files = qobject_cast<QFileDialog*>(dialog);
        files->selectFile(QString::fromStdString(file));
        std::filesystem::create_directory(systemPath(file));
        static_cast<QDialog*>(files)->done(QDialog::Accepted);
    });
    desk.find<QAction>("miPreviewSavePicture")->trigger();
    QVERIFY(allModalsServed());
    QCOMPARE(desk.messages.shown.size(), std::size_t{1});
    QCOMPARE(desk.messages.shown[0].text, "unable to save " + file);
}

QTEST_MAIN(DisplayPreviewTest)
#include "DisplayPreviewTest.moc"
