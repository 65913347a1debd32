#include "display/forms/BeforeAfterPictures.h"

#include "display/SettledPage.h"
#include "display/forms/MarkedBitmaps.h"
#include "items/MasterView.h"
#include "tests/support/ListedDisplay.h"
#include "widgets/PanelView.h"

#include <QTest>

using namespace orvista;
using orvista::testing::listedDisplay;

namespace {

/// The pictures as a window of their own, for a panel of 64 columns.
struct Shown {
    Shown() { pictures.show(); }
    PanelView& panel(const char* name) const {
        return *pictures.findChild<PanelView*>(QString::fromLatin1(name));
    }
    const LedRaster& before() const { return panel("panelBefore").shown(); }
    const LedRaster& after() const { return panel("panelAfter").shown(); }
    LedRaster page(const std::string& script) const {
        Programme programme({64}, fieldFormats(project));
        programme.add({}, script, MarkedBitmaps(NoBitmaps()));
        return settledPage(programme, 0, values);
    }

    Project project;
    DisplayValues values = defaultValues(project);
    MasterView master{project};
    BeforeAfterPictures pictures{{QStringLiteral("Old"), QStringLiteral("New")}, [this] {
                                     return PreviewSetting{64, values, &master};
                                 }};
};

std::string pageOf(const std::string& text) {
    return "CLEAR\r\nTEXT 0 0 RED BLACK \"" + text + "\"\r\nACT STILL 1000";
}

const std::string valuePage = "CLEAR\r\nDISPVAR 0 0 RED BLACK RegVar1\r\nACT STILL 1000";

} // namespace

class BeforeAfterPicturesTest : public QObject {
    Q_OBJECT
private slots:
    void showThePageThatDiffers();
    void showTheValuesOfThePreview();
    void areReadOutByTheirTexts();
    void fillThePlacesOfAMaster();
    void areDarkWithoutAPage();
    void keepTheirPlaceWhileNothingIsShown();
};

void BeforeAfterPicturesTest::showThePageThatDiffers() {
    Shown shown;
    const std::string first = pageOf("one") + "\r\n";
    shown.pictures.showChange(shown.project, first + pageOf("old"), first + pageOf("new"));
    QVERIFY(shown.before() == shown.page(pageOf("old")));
    QVERIFY(shown.after() == shown.page(pageOf("new")));
}

void BeforeAfterPicturesTest::showTheValuesOfThePreview() {
    Shown shown;
    shown.pictures.showChange(shown.project, "", valuePage);
    const LedRaster usual = shown.after();
    shown.values.floats.at(0) = -99.5F;
    shown.pictures.showChange(shown.project, "", valuePage);
    QVERIFY(shown.after() == shown.page(valuePage));
    QVERIFY(shown.after() != usual);
}

void BeforeAfterPicturesTest::areReadOutByTheirTexts() {
    Shown shown;
    shown.pictures.showChange(shown.project, pageOf("old"), pageOf("new"));
    QCOMPARE(shown.panel("panelBefore").accessibleName(), QStringLiteral("Picture: Old"));
    QCOMPARE(shown.panel("panelBefore").accessibleDescription(), QStringLiteral("old"));
    QCOMPARE(shown.panel("panelAfter").accessibleDescription(), QStringLiteral("new"));
}

void BeforeAfterPicturesTest::fillThePlacesOfAMaster() {
    Shown shown;
    const auto texts = [&shown] {
        shown.pictures.showChange(shown.project, pageOf("{line:4}a"), pageOf("{line:4}b"));
        return QStringList{shown.panel("panelBefore").accessibleDescription(),
                           shown.panel("panelAfter").accessibleDescription()};
    };
    QCOMPARE(texts(), (QStringList{"{line:4}a", "{line:4}b"}));
    shown.master.setDisplays({listedDisplay("Line 17", "h", {{"line", "17"}})});
    QCOMPARE(texts(), (QStringList{"linea", "lineb"}));
    shown.master.choose("Line 17");
    QCOMPARE(texts(), (QStringList{"17 a", "17 b"}));
    shown.pictures.showChange(shown.project, "", "IMG 0 0 RED BLACK {logo}.bmp\r\nACT STILL 1");
    QVERIFY(shown.after() != LedRaster({64})); // a frame
}

void BeforeAfterPicturesTest::areDarkWithoutAPage() {
    Shown shown;
    shown.pictures.showChange(shown.project, "NONSENSE", pageOf("new"));
    QVERIFY(shown.before() == LedRaster({64}));
}

void BeforeAfterPicturesTest::keepTheirPlaceWhileNothingIsShown() {
    Shown shown;
    const QSize place = shown.pictures.sizeHint();
    shown.pictures.showChange(shown.project, pageOf("old"), pageOf("new"));
    QVERIFY(shown.panel("panelBefore").isVisible());
    QCOMPARE(shown.pictures.sizeHint(), place);
    shown.pictures.showNothing();
    QVERIFY(!shown.panel("panelBefore").isVisible());
    QCOMPARE(shown.pictures.sizeHint(), place);
}

QTEST_MAIN(BeforeAfterPicturesTest)
#include "BeforeAfterPicturesTest.moc"
