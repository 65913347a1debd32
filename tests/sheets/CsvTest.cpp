#include "sheets/Csv.h"
#include "model/Lines.h"
#include "sheets/Sheet.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

using namespace std::string_literals;

namespace orvista {
namespace {

using ::testing::ElementsAre;

using Records = std::vector<std::vector<std::string>>;

Records recordsOf(std::string_view bytes, char separator = ',') {
    CsvReader reader(bytes, separator);
    Records records;
    for (std::vector<std::string> cells; reader.next(cells);)
        records.push_back(cells);
    return records;
}

CsvFault firstFault(std::string_view bytes) {
    CsvReader reader(bytes, ',');
    for (std::vector<std::string> cells; reader.next(cells);)
        if (reader.fault() != CsvFault::None)
            return reader.fault();
    return CsvFault::None;
}

TEST(Csv, EndsRecordsAtEveryKindOfLineEnd) {
    EXPECT_EQ(recordsOf("a,b\r\nc\nd\re"), (Records{{"a", "b"}, {"c"}, {"d"}, {"e"}}));
    EXPECT_EQ(recordsOf("a\r\n\r\nb\r\n"), (Records{{"a"}, {""}, {"b"}}));
    EXPECT_EQ(recordsOf(""), Records{});
    EXPECT_EQ(recordsOf("\n"), Records{{""}});
}

TEST(Csv, KeepsCellsAsTheyStand) {
    EXPECT_EQ(recordsOf(" a ,\t,"), (Records{{" a ", "\t", ""}}));
    EXPECT_EQ(recordsOf("\"a,\"\"b\"\"\r\n c\",d"), (Records{{"a,\"b\"\r\n c", "d"}}));
    EXPECT_EQ(recordsOf("5\" pipe,\"\""), (Records{{"5\" pipe", ""}}));
    EXPECT_EQ(recordsOf("a\0b,c"s), (Records{{"a\0b"s, "c"}}));
}

TEST(Csv, CountsRecordsNotLines) {
    CsvReader reader("\"a\r\nb\"\r\n\r\nc\r\n", ',');
    std::vector<std::string> cells;
    reader.next(cells);
    EXPECT_EQ(reader.row(), 1U);
    reader.next(cells);
    reader.next(cells);
    EXPECT_EQ(cells, std::vector<std::string>{"c"});
    EXPECT_EQ(reader.row(), 3U);
    EXPECT_FALSE(reader.next(cells));
}

TEST(Csv, TellsWhatIsWrongWithARecord) {
    EXPECT_EQ(firstFault("a,\"b\r\nc,d\r\n"), CsvFault::OpenQuote);
    EXPECT_EQ(firstFault("\"a\"b,c\r\n"), CsvFault::TextAfterQuote);
    EXPECT_EQ(firstFault(std::string(maximumCells, ',')), CsvFault::TooManyCells);
    EXPECT_EQ(firstFault(std::string(maximumCells - 1, ',')), CsvFault::None);
    EXPECT_EQ(firstFault("\"a\"\"\",\"b\"\r\n"), CsvFault::None);
}

TEST(Csv, FindsTheSeparatorInTheHead) {
    EXPECT_EQ(separatorOf("message,script\r\na;b\r\n"), ',');
    EXPECT_EQ(separatorOf("message;script\r\na,b\r\n"), ';');
    EXPECT_EQ(separatorOf("message\tscript\n"), '\t');
    EXPECT_EQ(separatorOf("\"mes,sage\";script\n"), ';');
    EXPECT_EQ(separatorOf("message\r\na;b"), ',');
}

TEST(Csv, GuardsWhatASpreadsheetWouldCalculate) {
    for (const char* const cell :
         {"=1+1", "+49 30", "-x", "@a", "\tb", "'=1", "''@", "-", "1e5-", "-1e5", "--1"}) {
        if (std::string_view(cell) == "1e5-")
            EXPECT_EQ(guarded(cell), cell);
        else
            EXPECT_EQ(guarded(cell), "'"s + cell);
        EXPECT_EQ(withoutGuard(guarded(cell)), cell);
    }
    for (const char* const cell :
         {"", "-5", "+5", "-2.5", "-.5", "5", "'", "''", "'a", "a=1", " =1", "O'Hara"}) {
        EXPECT_EQ(guarded(cell), cell);
        EXPECT_EQ(withoutGuard(guarded(cell)), cell);
    }
    EXPECT_EQ(withoutGuard("=1"), "=1") << "typed by hand, without a guard";
    EXPECT_EQ(withoutGuard("'-5"), "-5");
}

TEST(Csv, QuotesOnlyWhereItMust) {
    std::string bytes;
    appendRecord(bytes, std::vector<std::string>{"a", " b ", "c,d", "e\"f", "g\nh", "i;j", "", "=k"});
    EXPECT_EQ(bytes, "a, b ,\"c,d\",\"e\"\"f\",\"g\nh\",i;j,,'=k\r\n");
    bytes.clear();
    appendRecord(bytes, std::vector<std::string>{"c,d", "i;j"}, ';');
    EXPECT_EQ(bytes, "c,d;\"i;j\"\r\n");
}

TEST(Sheet, ReadsColumnsInAnyOrderAndCase) {
    constexpr std::array<std::string_view, 3> columns{"name", "on", "off"};
    SheetErrors errors;
    SheetReader sheet("\xEF\xBB\xBFOFF;;Name\r\n;;\r\n\r\nzu;;CoilVar1\r\n", columns, errors);
    ASSERT_TRUE(sheet.next());
    EXPECT_EQ(sheet.row(), 4U);
    EXPECT_EQ(sheet.cell(0), "CoilVar1");
    EXPECT_EQ(sheet.cell(1), "");
    EXPECT_FALSE(sheet.has(1));
    EXPECT_EQ(sheet.cell(2), "zu");
    EXPECT_FALSE(sheet.next());
    EXPECT_TRUE(errors.none());
}

TEST(Sheet, ReadsUtf8AndElseWindows1252) {
    constexpr std::array<std::string_view, 1> columns{"name"};
    SheetErrors errors;
    SheetReader utf8("name\r\n\xC3\xA9\r\n", columns, errors);
    ASSERT_TRUE(utf8.next());
    EXPECT_EQ(utf8.cell(0), "\xC3\xA9");
    SheetReader windows("name\r\n\xE9\x80\x81\xE9\r\n", columns, errors);
    ASSERT_TRUE(windows.next());
    EXPECT_EQ(windows.cell(0), "\xC3\xA9\xE2\x82\xAC\xC2\x81\xC3\xA9");
    EXPECT_TRUE(errors.none());
}

std::vector<SheetError> recordErrors(std::string_view bytes) {
    static constexpr std::array<std::string_view, 2> columns{"name", "on"};
    SheetErrors errors;
    for (SheetReader sheet(bytes, columns, errors); sheet.next();) {
    }
    return errors.sorted();
}

TEST(Sheet, TellsOfFilesItCannotRead) {
    EXPECT_THAT(recordErrors(""), ElementsAre(SheetError{0, "", "is empty"}));
    EXPECT_THAT(recordErrors("\xFF\xFEn\0"s),
                ElementsAre(SheetError{0, "", "is UTF-16; save it as \"CSV UTF-8\""}));
    EXPECT_THAT(recordErrors("n\0a\0m\0e\0\r\0\n\0"s),
                ElementsAre(SheetError{0, "", "is UTF-16; save it as \"CSV UTF-8\""}));
    EXPECT_THAT(recordErrors("\0n\0a\0m\0e"s),
                ElementsAre(SheetError{0, "", "is UTF-16; save it as \"CSV UTF-8\""}));
    EXPECT_THAT(recordErrors("\xEF\xBB\xBFname\r\n\xE9"),
                ElementsAre(SheetError{0, "", "begins as UTF-8 and is not"}));
    const std::string longest = "name\r\n" + std::string(maximumSheetBytes - 6, 'x');
    EXPECT_THAT(recordErrors(longest), ::testing::IsEmpty());
    EXPECT_THAT(recordErrors(longest + 'x'), ElementsAre(SheetError{0, "", "is longer than 64 MB"}));
}

TEST(Sheet, RefusesNulBytesByRowAndColumn) {
    EXPECT_THAT(recordErrors("name,on\r\na,b\0\r\n\"\0\",c\r\nd,e\r\n"s),
                ElementsAre(SheetError{2, "on", "a NUL byte is not a character of the display"},
                            SheetError{3, "name", "a NUL byte is not a character of the display"}));
}

TEST(Sheet, OnlyWhatCanBeReadAgainIsWritten) {
    EXPECT_EQ(sheetSizeFault(std::string(maximumSheetBytes, 'x')), "");
    EXPECT_EQ(sheetSizeFault(std::string(maximumSheetBytes + 1, 'x')),
              "the table would be longer than the 64 MB that an import takes");
}

TEST(Sheet, TellsOfEveryBadRowAtOnce) {
    EXPECT_THAT(
        recordErrors("name,colour,name\r\na,b,c,d\r\n\"e\"f\r\ng\r\n\"h\r\n"),
        ElementsAre(SheetError{1, "", "unknown column \"colour\""},
                    SheetError{1, "name", "the column is there twice"},
                    SheetError{2, "", "cell 4 is under no column"},
                    SheetError{3, "name",
                               "text follows a closing quote; a quote within a quoted cell is written "
                               "twice"},
                    SheetError{5, "name", "a quote is opened and never closed"}));
}

TEST(Sheet, KeepsAThousandErrorsAndCountsTheRest) {
    std::string bytes = "name\r\n";
    for (int row = 0; row < 1'234; ++row)
        bytes += "\"a\"b\r\n";
    static constexpr std::array<std::string_view, 1> columns{"name"};
    SheetErrors errors;
    for (SheetReader sheet(bytes, columns, errors); sheet.next();) {
    }
    EXPECT_EQ(errors.sorted().size(), maximumSheetErrors);
    EXPECT_EQ(errors.notListed(), 234U);
}

TEST(Sheet, WritesErrorsForPeople) {
    EXPECT_EQ(errorText({3, "width", "is wrong"}), "row 3, width: is wrong");
    EXPECT_EQ(errorText({3, "", "is wrong"}), "row 3: is wrong");
    EXPECT_EQ(errorText({1, "width", "is twice"}), "row 1, width: is twice");
    EXPECT_EQ(errorText({0, "width", "is wrong"}), "width: is wrong");
    EXPECT_EQ(errorText({0, "", "is empty"}), "is empty");
}

TEST(Sheet, MakesEveryLineEndWhole) {
    EXPECT_EQ(withWholeLineEnds("a\nb\rc\r\n\r\n\rd"), "a\r\nb\r\nc\r\n\r\n\r\nd");
    EXPECT_FALSE(hasLoneLineEnd("a\r\n\r\nb"));
    EXPECT_TRUE(hasLoneLineEnd("a\r\nb\n"));
    EXPECT_TRUE(hasLoneLineEnd("a\r\r\n"));
    EXPECT_TRUE(hasLoneLineEnd("a\r"));
}

} // namespace
} // namespace orvista
