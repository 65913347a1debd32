#include "compare/DifferenceRows.h"
#include "tests/support/NamedItem.h"

#include <gmock/gmock.h>

#include <random>

namespace orvista {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::vector<DifferenceRow> rowsOf(const Project& before, const Project& after) {
    return differenceRows(compareItems(before, after));
}

std::size_t changedLines(const Project& before, const Project& after) {
    std::size_t count = 0;
    for (const DifferenceRow& row : rowsOf(before, after))
        count += (row.lineBefore > 0 ? 1U : 0U) + (row.lineAfter > 0 ? 1U : 0U);
    return count;
}

/// The project once these rows are taken over.
Project taken(Project before, const Project& after, const std::vector<DifferenceRow>& rows) {
    applyChanges(before, takenOver(before, after, rows));
    return before;
}

TEST(DifferenceRows, SetLinesBesideThoseInTheirPlace) {
    Project before;
    Project after;
    before.STDMSG[2] = "CLEAR\r\nA\r\nB\r\nSTILL\r\n\r\nX";
    after.STDMSG[2] = "CLEAR\r\nC\r\nSTILL\r\nX\r\nY";
    after.RegVar[0].width = "8";
    EXPECT_THAT(rowsOf(before, after),
                ElementsAre(DifferenceRow{named("RegVar1"), fieldOf("RegVar1", "width"), 0, 0, "7", "8"},
                            DifferenceRow{named("STDMSG3"), nullptr, 2, 2, "A", "C"},
                            DifferenceRow{named("STDMSG3"), nullptr, 3, 0, "B", ""},
                            DifferenceRow{named("STDMSG3"), nullptr, 0, 5, "", "Y"}));
}

TEST(DifferenceRows, AreTakenOneByOne) {
    Project before;
    Project after;
    before.STDMSG[2] = "CLEAR\r\nA\r\nSTILL\r\nB";
    after.STDMSG[2] = "CLEAR\r\nC\r\nSTILL\r\nD\r\nE\r\n";
    const auto rows = rowsOf(before, after);
    ASSERT_EQ(rows.size(), 3U);
    EXPECT_EQ(taken(before, after, {rows[0]}).STDMSG[2], "CLEAR\r\nC\r\nSTILL\r\nB");
    EXPECT_EQ(taken(before, after, {rows[1]}).STDMSG[2], "CLEAR\r\nA\r\nSTILL\r\nD");
    EXPECT_EQ(taken(before, after, {rows[2]}).STDMSG[2], "CLEAR\r\nA\r\nSTILL\r\nB\r\nE");
    EXPECT_EQ(taken(before, after, {rows[0], rows[2]}).STDMSG[2], "CLEAR\r\nC\r\nSTILL\r\nB\r\nE");
    // All of them: the script as it is there.
    EXPECT_EQ(taken(before, after, rows).STDMSG[2], after.STDMSG[2]);
}

TEST(DifferenceRows, TakeSingleSettingsAndAddresses) {
    Project before;
    Project after;
    after.AnalogInput = 7;
    after.AlertMessage = 500;
    after.RegularMessage = 520;
    after.RegVar[3] = {"RegVar4", "1.5", "8", "1"};
    after.CoilVar[0] = {"CoilVar1", "1", "Auf", "Zu"};
    const auto rows = rowsOf(before, after);
    ASSERT_EQ(rows.size(), 8U);
    Project expected;
    expected.AlertMessage = 500;
    expected.RegularMessage = 520; // as it follows from what is read
    expected.RegVar[3].width = "8";
    expected.CoilVar[0].offText = "Zu";
    const Project merged = taken(before, after, {rows[1], rows[3], rows[7]});
    EXPECT_THAT(compareItems(expected, merged), IsEmpty());
    EXPECT_EQ(merged.RegularMessage, 520);
    EXPECT_THAT(
        takenOver(before, after, std::vector{rows[2], rows[3]}),
        ElementsAre(changed("RegVar4", "default", "0.0", "1.5"), changed("RegVar4", "width", "7", "8")));
    EXPECT_THAT(takenOver(before, after, {}), IsEmpty());
}

TEST(DifferenceRows, TakenOverNoLongerDiffer) {
    std::mt19937 random(5);
    const auto script = [&random] {
        std::string lines = "CLEAR";
        for (int i = std::uniform_int_distribution<int>(0, 9)(random); i > 0; --i)
            lines += std::string("\r\n") +
                     static_cast<char>('A' + std::uniform_int_distribution<int>(0, 3)(random));
        return lines;
    };
    for (int run = 0; run < 500; ++run) {
        Project before;
        Project after;
        before.ALTMSG[0] = script();
        after.ALTMSG[0] = script();
        // Each time the first row, until none is left.
        for (std::size_t left = changedLines(before, after); left > 0;) {
            before = taken(before, after, {rowsOf(before, after).front()});
            const std::size_t now = changedLines(before, after);
            ASSERT_LT(now, left) << before.ALTMSG[0] << "\n" << after.ALTMSG[0];
            left = now;
        }
        ASSERT_EQ(before.ALTMSG[0], after.ALTMSG[0]);
    }
}

} // namespace
} // namespace orvista
