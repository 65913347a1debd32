#include "items/forms/MessagesPanel.h"
#include "items/forms/VariablesPanel.h"
#include "tests/support/NamedItem.h"

#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>

using namespace orvista;

namespace {

/// Both panels by themselves, on a project whose message 3 shows a text and a variable.
struct Shown {
    Shown() {
        project.STDMSG[2] = "CLEAR\r\nTEXT 0 0 GREEN BLACK \"Pump\"\r\nDISPVAR 40 0 RED BLACK RegVar3\r\n"
                            "ACT STILL 1000";
        for (ItemPanel* const panel :
             {static_cast<ItemPanel*>(&messages), static_cast<ItemPanel*>(&variables)}) {
            panel->show();
            QVERIFY(QTest::qWaitForWindowExposed(panel));
        }
    }
    ~Shown() { // the focus leaves the table while the panel is whole
        messages.hide();
        variables.hide();
    }
    ItemSources sources() {
        return {project, digests, check, [this] { return notApplied; }};
    }
    static QString cell(ItemPanel& panel, int row, int column) {
        return panel.table().model()->index(row, column).data().toString();
    }
    static QString lastCell(ItemPanel& panel, int row) {
        return cell(panel, row, panel.table().model()->columnCount() - 1);
    }

    Project project;
    MessageDigests digests;
    FolderCheck check;
    std::vector<Item> notApplied;
    MessagesPanel messages{sources(), 128, [] { return LocalTime{2026, 1, 31, 14, 5, 9}; }};
    VariablesPanel variables{sources()};
};

constexpr int textColumn = 6;
constexpr int usedByColumn = 6;

} // namespace

class ItemPanelTest : public QObject {
    Q_OBJECT
private slots:
    void listsEveryItem();
    void followsTheProject();
    void marksWhatIsNotApplied();
    void enterOnARowNamesItsPlace();
    void namesTheSelectedItems();
    void doesNothingWhileItIsHidden();
};

void ItemPanelTest::listsEveryItem() {
    Shown shown;
    QCOMPARE(shown.messages.table().model()->rowCount(), 60);
    QCOMPARE(Shown::cell(shown.messages, 2, 0), QStringLiteral("STDMSG3"));
    QVERIFY(Shown::cell(shown.messages, 2, textColumn).startsWith(QStringLiteral("Pump")));
    QCOMPARE(shown.variables.table().model()->rowCount(), 96);
    QCOMPARE(Shown::cell(shown.variables, 2, 0), QStringLiteral("RegVar3"));
    QCOMPARE(Shown::cell(shown.variables, 2, usedByColumn), QStringLiteral("STDMSG3"));
}

void ItemPanelTest::followsTheProject() {
    Shown shown;
    shown.project.STDMSG[2] = "CLEAR\r\nTEXT 0 0 GREEN BLACK \"Level\"\r\nACT STILL 1000";
    shown.messages.follow();
    shown.variables.follow();
    QCOMPARE(Shown::cell(shown.messages, 2, textColumn), QStringLiteral("Level"));
    QCOMPARE(Shown::cell(shown.variables, 2, usedByColumn), QString());
    QVERIFY(shown.messages.digests().of(named("STDMSG3"))->text == "Level");
}

void ItemPanelTest::marksWhatIsNotApplied() {
    Shown shown;
    shown.notApplied = {named("STDMSG3"), named("RegVar3")};
    for (ItemPanel* const panel :
         {static_cast<ItemPanel*>(&shown.messages), static_cast<ItemPanel*>(&shown.variables)}) {
        panel->markNotApplied();
        QVERIFY(Shown::lastCell(*panel, 2).endsWith(QStringLiteral(" (not applied)")));
        QVERIFY(!Shown::lastCell(*panel, 3).endsWith(QStringLiteral(" (not applied)")));
    }
}

void ItemPanelTest::enterOnARowNamesItsPlace() {
    Shown shown;
    QSignalSpy chosen(&shown.variables, &ProjectPanel::placeChosen);
    RowsTable& table = shown.variables.table();
    table.setFocus();
    table.selectRow(95);
    QTest::keyClick(&table, Qt::Key_Return);
    QCOMPARE(chosen.size(), 1);
    QCOMPARE(chosen.front().front().value<Place>(), (Place{named("CoilVar32"), 0}));
}

void ItemPanelTest::namesTheSelectedItems() {
    Shown shown;
    QVERIFY(shown.messages.selectedItems().empty());
    QVERIFY(shown.messages.itemsFromSelected().empty());
    shown.messages.table().selectRow(58);
    QCOMPARE(shown.messages.selectedItems(), itemsNamed({"ALTMSG19"}));
    QCOMPARE(shown.messages.itemsFromSelected(), itemsNamed({"ALTMSG19", "ALTMSG20"}));
}

void ItemPanelTest::doesNothingWhileItIsHidden() {
    Shown shown;
    shown.messages.hide();
    shown.project.STDMSG[2] = {};
    shown.notApplied = {named("STDMSG3")};
    shown.messages.follow();
    shown.messages.markNotApplied();
    QVERIFY(Shown::cell(shown.messages, 2, textColumn).startsWith(QStringLiteral("Pump")));
    QVERIFY(!Shown::lastCell(shown.messages, 2).endsWith(QStringLiteral(" (not applied)")));
    shown.messages.show();
    QCOMPARE(Shown::cell(shown.messages, 2, textColumn), QString());
    QVERIFY(Shown::lastCell(shown.messages, 2).endsWith(QStringLiteral(" (not applied)")));
}

QTEST_MAIN(ItemPanelTest)
#include "ItemPanelTest.moc"
