#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// Tables of texts as spreadsheets exchange them: records of cells as RFC 4180 describes them.
namespace orvista {

/// Sheets and address lists are written with it in front, so that spreadsheets take them for UTF-8.
inline constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";

/// A record holds no more cells than this; no sheet of ours has as many columns.
inline constexpr std::size_t maximumCells = 1000;

enum class CsvFault {
    None,
    OpenQuote,      ///< the file ends within a quoted cell
    TextAfterQuote, ///< a closing quote is followed by neither a separator nor a line end
    TooManyCells    ///< cells after the first maximumCells were dropped
};

/// Takes a table apart, record by record. CR LF, LF and CR alone end a record outside quotes; cells are kept
/// as they stand, blanks and line ends within quotes included. An empty line is a record of one empty cell.
class CsvReader {
public:
    /// \param bytes must outlive the reader
    CsvReader(std::string_view bytes, char separator) : rest_(bytes), separator_(separator) {}

    /// False at the end. `cells` is reused, so that a long table costs no memory of its own.
    bool next(std::vector<std::string>& cells);
    /// Of the record read last, from 1: records are counted, not lines.
    std::size_t row() const { return row_; }
    /// What was wrong with the record read last; its cells are as far as they could be told.
    CsvFault fault() const { return fault_; }
    /// The cell (from 0) that is wrong, where fault() tells of a quote.
    std::size_t faultCell() const { return faultCell_; }

private:
    bool endsCell(char c) const { return c == separator_ || c == '\r' || c == '\n'; }
    void takeCell(std::string& cell);
    void takeQuoted(std::string& cell);
    /// True when a separator follows, which is taken; a line end is taken, too.
    bool takeSeparator();

    std::string_view rest_;
    char separator_;
    std::size_t row_ = 0;
    CsvFault fault_ = CsvFault::None;
    std::size_t faultCell_ = 0;
};

/// The separator of a table: the comma, semicolon or tab that comes first in its first record, outside
/// quotes; a comma where there is none.
char separatorOf(std::string_view bytes);

/// What keeps a spreadsheet from taking a text for a formula: one apostrophe in front of a cell that is not
/// a plain number and begins, after any apostrophes, with = + - @ or a tab.
std::string guarded(std::string_view cell);
/// The text that was guarded: without the apostrophe in front, where the rest says that one was put there.
std::string_view withoutGuard(std::string_view cell);

/// Digits with at most one point among them, after at most one sign: "-2.5".
bool isPlainNumber(std::string_view text);

/// Appends a record and its CR LF. Cells are guarded, and quoted where they hold a quote, a separator, or a
/// line end.
void appendRecord(std::string& bytes, std::span<const std::string> cells, char separator = ',');

} // namespace orvista
