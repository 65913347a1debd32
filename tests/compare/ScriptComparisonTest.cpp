#include "compare/ScriptComparison.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <random>

namespace orvista {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Line = ComparedLine::Kind;

/// As a person would read it: " same", "-removed", "+added".
std::vector<std::string> told(std::string_view before, std::string_view after) {
    std::vector<std::string> lines;
    for (const ComparedLine& line : comparedLines(before, after)) {
        const char mark = line.kind == Line::Same ? ' ' : line.kind == Line::Removed ? '-' : '+';
        lines.push_back(mark + line.text);
    }
    return lines;
}

TEST(ScriptComparison, TakesAnEmptyScriptForClearAsWhichItIsWritten) {
    EXPECT_THAT(told("", "\r\n"), ElementsAre("-CLEAR"));
}

TEST(ScriptComparison, SetsRemovedLinesBeforeThoseInTheirPlace) {
    EXPECT_THAT(told("CLEAR\r\nA\r\nB\r\nEND", "CLEAR\r\nC\r\nD\r\nEND"),
                ElementsAre(" CLEAR", "-A", "-B", "+C", "+D", " END"));
    EXPECT_THAT(told("A\nB\nC", "A\nC"), ElementsAre(" A", "-B", " C"));
    EXPECT_THAT(told("A\nC", "A\nB\nC\nD"), ElementsAre(" A", "+B", " C", "+D"));
    EXPECT_THAT(told("X\nA\nY", "A"), ElementsAre("-X", " A", "-Y"));
}

TEST(ScriptComparison, NumbersLinesAsTheyStandInEachScript) {
    EXPECT_THAT(comparedLines("CLEAR\r\n\r\nA", "\nCLEAR\n B"),
                ElementsAre(ComparedLine{Line::Same, "CLEAR", 1, 2}, ComparedLine{Line::Removed, "A", 3, 0},
                            ComparedLine{Line::Added, "B", 0, 3}));
}

/// The lines that a script keeps, joined.
std::string side(const std::vector<ComparedLine>& lines, Line left) {
    std::string script;
    for (const ComparedLine& line : lines)
        script += line.kind == left ? "" : line.text + "\n";
    return script;
}

/// The longest common text, by the table that every textbook has.
std::size_t longestCommon(const std::string& one, const std::string& other) {
    std::vector<std::size_t> row(other.size() + 1, 0);
    for (const char letter : one) {
        std::size_t diagonal = 0;
        for (std::size_t i = 0; i < other.size(); ++i) {
            const std::size_t above = row[i + 1];
            row[i + 1] = letter == other[i] ? diagonal + 1 : std::max(above, row[i]);
            diagonal = above;
        }
    }
    return row.back();
}

TEST(ScriptComparison, KeepsAsManyLinesAsCanBeKept) {
    std::mt19937 random(11);
    const auto letters = [&random] {
        std::string text(std::uniform_int_distribution<std::size_t>(1, 24)(random), ' ');
        std::ranges::generate(text, [&random] {
            return static_cast<char>('A' + std::uniform_int_distribution<int>(0, 3)(random));
        });
        return text;
    };
    const auto script = [](const std::string& text) {
        std::string lines;
        for (const char letter : text)
            lines += std::string(1, letter) + "\n";
        return lines;
    };
    for (int run = 0; run < 1000; ++run) {
        const std::string one = letters();
        const std::string other = letters();
        const auto lines = comparedLines(script(one), script(other));
        ASSERT_EQ(side(lines, Line::Added), script(one));
        ASSERT_EQ(side(lines, Line::Removed), script(other));
        const auto same = std::ranges::count(lines, Line::Same, &ComparedLine::kind);
        ASSERT_EQ(static_cast<std::size_t>(same), longestCommon(one, other)) << one << " " << other;
    }
}

TEST(ScriptComparison, EndsWhereLongScriptsHaveNothingInCommon) {
    std::string one;
    std::string other;
    for (int i = 0; i < 50'000; ++i) {
        one += "a" + std::to_string(i) + "\n";
        other += "b" + std::to_string(i) + "\n";
    }
    const auto lines = comparedLines("CLEAR\n" + one + "STILL 5", "CLEAR\n" + other + "STILL 5");
    EXPECT_EQ(lines.size(), 100'002U);
    EXPECT_EQ(lines.front().kind, Line::Same);
    EXPECT_EQ(lines.back().kind, Line::Same);
}

} // namespace
} // namespace orvista
