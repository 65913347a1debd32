#include "display/RasterAt.h"
#include "display/SettledPage.h"
#include "script/forms/frmMessageEdit.h"
#include "tests/support/ModalDriver.h"
#include "widgets/PanelView.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

using namespace orvista;
using namespace orvista::testing;

namespace {

constexpr LocalTime now{2026, 11, 21, 8, 5, 9};

struct PreviewedWizard {
    explicit PreviewedWizard(int columns = 128) : columns(columns), wizard(QString()) {
        DisplayValues values = defaultValues(project);
        values.clock = now;
        wizard.showPreview(project, columns, values);
        wizard.show();
        QVERIFY(QTest::qWaitForWindowExposed(&wizard));
    }
    void type(const QString& text) {
        auto* const box = wizard.findChild<QLineEdit*>("txtText");
        box->clear();
        QTest::keyClicks(box, text);
    }
    void pick(const char* list, const char* item) {
        wizard.findChild<QComboBox*>(QString::fromLatin1(list))->setCurrentText(QString::fromLatin1(item));
    }
    const PanelView& panel() const { return *wizard.findChild<PanelView*>("wizardPreview"); }
    QString fit() const { return wizard.findChild<QLabel*>("lblWizardFit")->text(); }
    bool canAccept() const { return wizard.findChild<QPushButton*>("btnOK")->isEnabled(); }

    /// What OK makes, when its entering effect is over.
    LedRaster made() {
        QTest::mouseClick(wizard.findChild<QPushButton*>("btnOK"), Qt::LeftButton);
        Programme programme({columns}, fieldFormats(project));
        programme.add({}, wizard.PartialScript, NoBitmaps());
        DisplayValues values = defaultValues(project);
        values.clock = now;
        return settledPage(programme, 0, values);
    }

    int columns;
    Project project;
    frmMessageEdit wizard;
};

} // namespace

class WizardPreviewTest : public QObject {
    Q_OBJECT
private slots:
    void startsBlank();
    void showsThePageThatOkMakes_data();
    void showsThePageThatOkMakes();
    void followsEveryControl();
    void tellsWhatDoesNotFit();
    void tellsPlacesThatAreTooShort();
    void changesNoControl();
};

void WizardPreviewTest::startsBlank() {
    const PreviewedWizard previewed;
    QCOMPARE(previewed.panel().shown(), LedRaster({128}));
    QCOMPARE(previewed.fit(), QString());
    QVERIFY(!previewed.canAccept());
    QVERIFY(previewed.wizard.PartialScript.empty());
}

void WizardPreviewTest::showsThePageThatOkMakes_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("columns");
    QTest::newRow("text") << "Pump 3" << 128;
    QTest::newRow("fields") << "T %7v %8v" << 128;
    QTest::newRow("narrow panel") << "Pump 3" << 32;
}

void WizardPreviewTest::showsThePageThatOkMakes() {
    QFETCH(const QString, text);
    QFETCH(const int, columns);
    PreviewedWizard previewed(columns);
    previewed.type(text);
    previewed.pick("cbVar(0)", "RegVar3");
    previewed.pick("cbVar(1)", "TIME");
    const LedRaster shown = previewed.panel().shown();
    QVERIFY(shown != LedRaster({columns}));
    QCOMPARE(previewed.made(), shown);
}

void WizardPreviewTest::followsEveryControl() {
    PreviewedWizard previewed;
    previewed.type("Pump %3v");
    LedRaster before = previewed.panel().shown();
    const std::pair<const char*, const char*> picks[] = {
        {"cbFgClr", "GREEN"}, {"cbBgClr", "ORANGE"},       {"cbFont", "5x7"},
        {"cbVar(0)", "DATE"}, {"cbVarFgClr(0)", "ORANGE"}, {"cbVarBgClr(0)", "GREEN"}};
    for (const auto& [list, item] : picks) {
        previewed.pick(list, item);
        QVERIFY2(previewed.panel().shown() != before, list);
        before = previewed.panel().shown();
    }
    QCOMPARE(previewed.panel().accessibleDescription(), "Pump 21.11.2026");
    auto* const bitmap = previewed.wizard.findChild<QRadioButton*>("OptMsgType(1)");
    QTest::mouseClick(bitmap, Qt::LeftButton, {}, {5, bitmap->height() / 2});
    QCOMPARE(previewed.panel().shown(), LedRaster({128}));
    QCOMPARE(previewed.fit(), QString());
}

void WizardPreviewTest::tellsWhatDoesNotFit() {
    PreviewedWizard previewed;
    previewed.type("Emergency stop pump station");
    QCOMPARE(previewed.fit(), "passes whole, 10 characters at a time beyond the edge");
    previewed.pick("cbOutEffect", "NONE");
    QCOMPARE(previewed.fit(), "10 characters do not fit");
    previewed.type("Emergency stop pu");
    QCOMPARE(previewed.fit(), "1 character does not fit");
    previewed.type("Emergency stop p");
    QCOMPARE(previewed.fit(), QString());
}

void WizardPreviewTest::tellsPlacesThatAreTooShort() {
    PreviewedWizard previewed;
    previewed.project.RegVar[11].width = "7";
    previewed.type("%5v");
    previewed.pick("cbVar(0)", "RegVar12");
    QCOMPARE(previewed.fit(), "RegVar12 is 7 wide, its place 5: write %7v");
    previewed.type("%7v");
    QCOMPARE(previewed.fit(), QString());
    previewed.type("%9v");
    QCOMPARE(previewed.fit(), QString());
    previewed.type("%7v%v");
    previewed.pick("cbVar(1)", "TIME");
    QCOMPARE(previewed.fit(), "TIME is 8 wide, its place 1: write %8v");
}

void WizardPreviewTest::changesNoControl() {
    frmMessageEdit plain{QString()};
    const PreviewedWizard previewed;
    const auto controls = [](const frmMessageEdit& wizard) {
        QStringList states;
        for (const auto* const control : wizard.findChildren<QWidget*>())
            if (!control->objectName().isEmpty() && control->focusPolicy() != Qt::NoFocus)
                states << control->objectName() + (control->isEnabled() ? "+" : "-");
        return states;
    };
    QCOMPARE(controls(previewed.wizard), controls(plain));
    QVERIFY(previewed.wizard.findChild<QLineEdit*>("txtText")->hasFocus());
}

QTEST_MAIN(WizardPreviewTest)
#include "WizardPreviewTest.moc"
