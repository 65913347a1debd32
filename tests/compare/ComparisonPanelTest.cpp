#include "compare/forms/ComparisonPanel.h"

#include "tests/compare/HeldCases.h"
#include "tests/support/NamedItem.h"
#include "widgets/PanelView.h"
#include "widgets/RowsTable.h"

#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

using namespace orvista;

namespace {

/// The panel by itself, comparing two projects whose message 3 differs in its second line.
struct Shown {
    Shown() {
        project.STDMSG[2] = "CLEAR\r\nACT STILL 500";
        project.modified = true; // and so nothing is read from a folder
        Project theirs;
        theirs.STDMSG[2] = "CLEAR\r\nACT STILL 900";
        panel.show();
        QVERIFY(QTest::qWaitForWindowExposed(&panel));
        panel.compareWith({QStringLiteral("10.0.0.9"), DisplayContents::ofProject(theirs), nullptr},
                          ComparisonPanel::Question::WhatDiffers);
    }
    ~Shown() { panel.hide(); } // the focus leaves the table while the panel is whole
    RowsTable& table() const { return *panel.findChild<RowsTable*>(QStringLiteral("tblComparison")); }
    QPushButton& take() const { return *panel.findChild<QPushButton*>(QStringLiteral("btnTakeTheirs")); }
    QString summary() const { return panel.findChild<QLabel*>(QStringLiteral("lblComparison"))->text(); }
    int count() const { return table().model()->rowCount(); }
    QStringList cells() const {
        QStringList texts;
        for (int column = 0; column < table().model()->columnCount(); ++column)
            texts << table().model()->index(0, column).data().toString();
        return texts;
    }

    Project project;
    std::vector<Item> notApplied;
    ComparisonPanel panel{project, [this] { return notApplied; },
                          [this] {
                              return PreviewSetting{128, defaultValues(project)};
                          }};
};

QString fingerprintOf(const Project& project) {
    return QString::fromStdString(fingerprint(DisplayContents::ofProject(project)));
}

} // namespace

class ComparisonPanelTest : public QObject {
    Q_OBJECT
private slots:
    void listsWhatDiffers();
    void followsTheProject();
    void marksWhatIsNotApplied();
    void enterOnARowNamesItsPlace();
    void theSelectedRowIsWanted();
    void theCurrentRowsPageIsShownFromBothSides();
    void picturesKeepTheirPlaceWhileARowNeedsIt();
    void eachKindOfDifferenceIsAnsweredAsElsewhere();
    void withoutAProjectNothingIsCompared();
};

void ComparisonPanelTest::listsWhatDiffers() {
    const Shown shown;
    QCOMPARE(shown.count(), 1);
    QCOMPARE(shown.cells(), (QStringList{"STDMSG3", "", "2", "ACT STILL 500", "ACT STILL 900"}));
    Project theirs;
    theirs.STDMSG[2] = "CLEAR\r\nACT STILL 900";
    QCOMPARE(shown.summary(), "1 difference between this project and 10.0.0.9 (fingerprints " +
                                  fingerprintOf(shown.project) + " and " + fingerprintOf(theirs) + ")");
}

void ComparisonPanelTest::followsTheProject() {
    Shown shown;
    shown.project.STDMSG[2] = "CLEAR\r\nACT STILL 900";
    shown.panel.hide();
    shown.panel.follow();
    QCOMPARE(shown.count(), 1);
    shown.panel.show();
    QCOMPARE(shown.count(), 0);
    QCOMPARE(shown.summary(), "No differences between this project and 10.0.0.9 (fingerprint " +
                                  fingerprintOf(shown.project) + ")");
    shown.project.STDMSG[0] = "CLEAR\r\nACT STILL 5";
    shown.project.RegVar[0].width = "3";
    shown.panel.follow();
    QVERIFY(shown.summary().startsWith(QStringLiteral("2 differences between this project and 10.0.0.9 (")));
}

void ComparisonPanelTest::marksWhatIsNotApplied() {
    Shown shown;
    shown.notApplied = {named("STDMSG3")};
    shown.panel.markNotApplied();
    QCOMPARE(shown.cells().last(), QStringLiteral("ACT STILL 900 (not applied)"));
}

void ComparisonPanelTest::enterOnARowNamesItsPlace() {
    Shown shown;
    QSignalSpy chosen(&shown.panel, &ProjectPanel::placeChosen);
    shown.table().setFocus();
    shown.table().setCurrentIndex(shown.table().model()->index(0, 0));
    QTest::keyClick(&shown.table(), Qt::Key_Return);
    QCOMPARE(chosen.size(), 1);
    QCOMPARE(chosen.front().front().value<Place>(), (Place{named("STDMSG3"), 2}));
}

void ComparisonPanelTest::theSelectedRowIsWanted() {
    Shown shown;
    QSignalSpy wanted(&shown.panel, &ComparisonPanel::takeWanted);
    QVERIFY(!shown.take().isEnabled());
    shown.table().selectRow(0);
    QVERIFY(shown.take().isEnabled());
    shown.take().click();
    QCOMPARE(wanted.size(), 1);
}

void ComparisonPanelTest::theCurrentRowsPageIsShownFromBothSides() {
    Shown shown;
    const auto text = [&shown](const char* panel) {
        return shown.panel.findChild<PanelView*>(QString::fromLatin1(panel))->accessibleDescription();
    };
    auto& pictures = *shown.panel.findChild<QWidget*>(QStringLiteral("beforeAfterPictures"));
    const auto* const picture = shown.panel.findChild<PanelView*>(QStringLiteral("panelAfter"));
    Project theirs;
    const std::string first = "CLEAR\r\nTEXT 0 0 RED BLACK \"first\"\r\nACT STILL 500\r\nCLEAR\r\n";
    shown.project.STDMSG[2] = first + "TEXT 0 0 RED BLACK \"ours\"\r\nACT STILL 500";
    theirs.STDMSG[2] =
        first + "TEXT 0 0 RED BLACK \"theirs\"\r\nTEXT 0 8 RED BLACK \"more\"\r\nACT STILL 500";
    shown.panel.compareWith({QStringLiteral("10.0.0.9"), DisplayContents::ofProject(theirs), nullptr},
                            ComparisonPanel::Question::WhatDiffers);
    QCOMPARE(shown.count(), 2);
    QVERIFY(!picture->isVisible());
    for (const int row : {0, 1}) { // the second one is a line that only they have
        shown.table().setCurrentIndex(shown.table().model()->index(row, 0));
        QVERIFY(picture->isVisible());
        QCOMPARE(text("panelBefore"), QStringLiteral("ours"));
        QCOMPARE(text("panelAfter"), QStringLiteral("theirs more"));
    }
    shown.panel.clear();
    QVERIFY(!pictures.isVisible());
}

void ComparisonPanelTest::picturesKeepTheirPlaceWhileARowNeedsIt() {
    Shown shown;
    const auto& pictures = *shown.panel.findChild<QWidget*>(QStringLiteral("beforeAfterPictures"));
    const auto compare = [&shown](const char* script) {
        Project theirs;
        theirs.STDMSG[2] = script;
        theirs.RegVar[0].width = "5";
        shown.panel.compareWith({QStringLiteral("10.0.0.9"), DisplayContents::ofProject(theirs), nullptr},
                                ComparisonPanel::Question::WhatDiffers);
        QCOMPARE(shown.cells().front(), QStringLiteral("RegVar1"));
        shown.table().selectRow(0);
    };
    compare("CLEAR\r\nACT STILL 900");
    QVERIFY(pictures.isVisible());
    QVERIFY(!shown.panel.findChild<PanelView*>(QStringLiteral("panelAfter"))->isVisible());
    compare("CLEAR\r\nACT STILL 500");
    QVERIFY(!pictures.isVisible());
}

void ComparisonPanelTest::eachKindOfDifferenceIsAnsweredAsElsewhere() {
    for (const testing::Case& row : testing::heldCases()) {
        const testing::TwoFolders folders;
        row.change(folders);
        Project project;
        project.ProjPath = folders.ours.path();
        ComparisonPanel panel(
            project, [] { return std::vector<Item>(); },
            [&] {
                return PreviewSetting{128, defaultValues(project)};
            });
        const auto answer = [&](ComparisonPanel::Question question) {
            panel.compareWith({"D", DisplayContents::ofFolder(folders.theirs.path()), nullptr}, question);
            return panel.findChild<QLabel*>(QStringLiteral("lblComparison"))->text();
        };
        const QString differs = answer(ComparisonPanel::Question::WhatDiffers);
        QVERIFY2(differs.startsWith(QStringLiteral("No differences")) == row.isEqual, row.what);
        QVERIFY2(differs.contains(QStringLiteral("(fingerprint ")) == row.isEqual, row.what);
        const bool holdsAll = row.state == HeldState::Same || row.state == HeldState::Extra;
        const QString verified = answer(ComparisonPanel::Question::HoldsAll);
        QVERIFY2(verified.startsWith(QStringLiteral("D holds every byte")) == holdsAll, row.what);
        QVERIFY2(verified.startsWith(QStringLiteral("D holds the same")) == (row.state == HeldState::Equal),
                 row.what);
    }
}

void ComparisonPanelTest::withoutAProjectNothingIsCompared() {
    Shown shown;
    shown.panel.setEnabled(false);
    QCOMPARE(shown.count(), 0);
    shown.panel.setEnabled(true);
    shown.panel.follow();
    QCOMPARE(shown.count(), 0);
    QCOMPARE(shown.summary(), QStringLiteral("Nothing to compare yet. Use Tools > Compare."));
}

QTEST_MAIN(ComparisonPanelTest)
#include "ComparisonPanelTest.moc"
