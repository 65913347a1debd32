#include "display/FieldValues.h"
#include "display/FieldFormats.h"

#include <gtest/gtest.h>

namespace orvista {
namespace {

std::string widest(int width, int precision) {
    return floatFieldText(widestFloat({width, precision}), {width, precision});
}

TEST(WidestFloat, IsTheLongestThatIsShown) {
    EXPECT_EQ(widest(7, 3), "-99.999");
    EXPECT_EQ(widest(7, 0), "-999999");
    EXPECT_EQ(widest(6, 3), "-9.999");
    EXPECT_EQ(widest(2, 0), "-9");
}

TEST(WidestFloat, HasNoSignWhereThereIsNoRoomForIt) {
    EXPECT_EQ(widest(5, 3), "9.999");
    EXPECT_EQ(widest(1, 0), "9");
}

TEST(WidestFloat, IsADigitLessWhereASingleWouldBeRoundedUp) {
    EXPECT_EQ(widest(10, 3), "-99999.992");
    EXPECT_EQ(widest(9, 0), "-99999992");
}

TEST(WidestFloat, IsNoLargerThanASingleCanBe) {
    EXPECT_EQ(widest(40, 0), "-340282346638528859811704183484516925440");
}

TEST(WidestFloat, FillsEveryFieldThatShowsANumber) {
    for (int width = 1; width <= 39; ++width)
        for (int precision = 0; precision <= 16; ++precision) {
            const std::string text = widest(width, precision);
            EXPECT_EQ(text.size(), static_cast<std::size_t>(width));
            EXPECT_EQ(text.front() == '*', floatFieldText(0, {width, precision}).front() == '*')
                << width << '.' << precision;
            EXPECT_NE(text.front(), ' ') << width << '.' << precision;
        }
}

/// Of "RUN" and "STOPPED", whose default is RUN, and a float 1.5.
struct Tried {
    explicit Tried(ValueChoice choice) {
        Project project;
        project.RegVar[2].defaultValue = "1.5";
        project.CoilVar[3] = {};
        project.CoilVar[3].onText = "RUN";
        project.CoilVar[3].offText = "STOPPED";
        project.CoilVar[3].defaultValue = "1";
        const FieldFormats formats = fieldFormats(project);
        const DisplayValues values = chosenValues(choice, project).at({2026, 11, 21, 8, 5, 9});
        number = floatFieldText(values.floats[2], formats.floats[2]);
        text = values.booleans[3] ? "RUN" : "STOPPED";
        clock = timeFieldText(values.clock) + " " + dateFieldText(values.clock);
    }
    std::string number;
    std::string text;
    std::string clock;
    std::string all() const { return number + " " + text + " " + clock; }
};

TEST(ChosenValues, AreThoseOfTheChoice) {
    EXPECT_EQ(Tried(ValueChoice::Defaults).all(), "  1.500 RUN 08:05:09 21.11.2026");
    EXPECT_EQ(Tried(ValueChoice::Smallest).all(), "  0.000 RUN 08:05:09 21.11.2026");
    EXPECT_EQ(Tried(ValueChoice::On).all(), "  1.500 RUN 08:05:09 21.11.2026");
    EXPECT_EQ(Tried(ValueChoice::Off).all(), "  1.500 STOPPED 08:05:09 21.11.2026");
    EXPECT_EQ(Tried(ValueChoice::Widest).number + Tried(ValueChoice::Widest).text, "-99.999STOPPED");
    EXPECT_EQ(Tried(ValueChoice::Stars).number + Tried(ValueChoice::Stars).text, "*******STOPPED");
}

TEST(ChosenValues, StandStillWhereTheClockIsAtItsWidest) {
    // "0" lights more columns than "1"; no other digit lights more.
    EXPECT_EQ(Tried(ValueChoice::Widest).clock, "00:00:00 02.02.2000");
    EXPECT_EQ(Tried(ValueChoice::Stars).clock, Tried(ValueChoice::Widest).clock);
}

TEST(ChosenValues, OfEquallyLongTextsTheOneThatIsOnIsTheWidest) {
    Project project;
    project.CoilVar[0].onText = project.CoilVar[0].offText = "a";
    EXPECT_TRUE(chosenValues(ValueChoice::Widest, project).values.booleans[0]);
    EXPECT_FALSE(chosenValues(ValueChoice::Smallest, project).values.booleans[0]);
}

TEST(OwnValues, TakeThePlaceOfOthers) {
    OwnValues own;
    own.floats[1] = -2.5F;
    own.booleans[0] = true;
    own.time = LocalTime{0, 0, 0, 23, 59, 58};
    const DisplayValues values =
        withOwn(chosenValues(ValueChoice::Defaults, Project()), own).at({2026, 11, 21, 8, 5, 9});
    EXPECT_EQ(values.floats[1], -2.5F);
    EXPECT_EQ(values.floats[0], 0.0F);
    EXPECT_TRUE(values.booleans[0]);
    EXPECT_EQ(values.clock, (LocalTime{2026, 11, 21, 23, 59, 58}));
}

} // namespace
} // namespace orvista
