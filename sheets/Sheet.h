#pragma once

#include "model/Bytes.h"
#include "sheets/Csv.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// Reading tables that people have edited: columns by the names of the head line, all errors at once.
namespace orvista {

/// Longer tables are neither read nor written.
inline constexpr std::size_t maximumSheetMegabytes = 64;
inline constexpr std::size_t maximumSheetBytes = maximumSheetMegabytes << 20;
/// How many errors are kept; the rest are counted.
inline constexpr std::size_t maximumSheetErrors = 1000;

/// What is wrong with a cell.
struct SheetError {
    std::size_t row;    ///< record, the head is 1; 0 where it is about the file as a whole
    std::string column; ///< name of the column; empty where it is about the row
    std::string text;   ///< UTF-8
    bool operator==(const SheetError&) const = default;
};

/// "row 3, foreground: ..."; errors are told in this form.
std::string errorText(const SheetError& error);

class SheetErrors {
public:
    void add(std::size_t row, std::string_view column, std::string text);
    bool none() const { return errors_.empty(); }
    /// Of all, also of those beyond maximumSheetErrors.
    std::size_t count() const { return errors_.size() + beyond_; }
    /// By row; errors of a row in the order in which they were found.
    std::vector<SheetError> sorted() const;
    /// How many there are beyond maximumSheetErrors.
    std::size_t notListed() const { return beyond_; }

private:
    std::vector<SheetError> errors_;
    std::size_t beyond_ = 0;
};

/// What columns that are not known mean to a sheet.
enum class FurtherColumns { Refused, Taken };

/// The rows of a sheet, its cells by column. Rows without any text are passed over; a NUL byte in a cell is
/// an error.
class SheetReader {
public:
    /// Reads the head line. What is wrong with the file or its head is added to `errors`; without hasHead()
    /// there are no rows. Bytes are UTF-8 with or without its mark, else Windows-1252.
    /// \param columns names of the columns known; they may come in any order and may be missing
    SheetReader(std::string_view bytes, std::span<const std::string_view> columns, SheetErrors& errors,
                FurtherColumns further = FurtherColumns::Refused);

    /// False at the end. A row that cannot be split into cells is added to the errors and passed over.
    bool next();
    /// Of the row read last; the head is 1.
    std::size_t row() const { return reader_.row(); }
    /// Whether there is a header that can be split into columns.
    bool hasHead() const { return !failed_; }
    /// Whether the head names the column of that index.
    bool has(std::size_t column) const { return places_[column].has_value(); }
    /// The same; where it does not, that is added to the errors.
    bool needs(std::size_t column);
    /// UTF-8, its guard taken off; empty where the column is missing.
    const std::string& cell(std::size_t column) const { return cells_[column]; }
    /// The heads of the columns that are not known, where they are taken: each once in any case, UTF-8.
    const std::vector<std::string>& furtherHeads() const { return furtherHeads_; }
    /// Their cells in the row read last, as cell().
    std::vector<std::string> furtherCells() const;
    /// Adds an error about a cell of the row read last.
    void fail(std::size_t column, std::string text);

private:
    bool isReadable(std::string_view bytes);
    void readHead();
    void takeHead(std::size_t place, const std::string& name);
    std::string text(std::string_view cell) const;
    std::string textAt(std::size_t place) const;
    bool reportFault();
    std::string_view faultColumn() const;
    bool takeCells();

    std::span<const std::string_view> columns_;
    SheetErrors& errors_;
    bool isUtf8_ = true;
    CsvReader reader_;
    std::vector<std::optional<std::size_t>> places_; ///< of each known column in the file
    std::vector<std::string> record_;
    std::vector<std::string> cells_;
    std::vector<bool> named_; ///< of each cell of the head, whether it names a column
    FurtherColumns further_;
    std::vector<std::string> furtherHeads_;
    std::vector<std::size_t> furtherPlaces_; ///< in the file
    bool failed_ = false;
};

/// Why a table that is to be written could not be read again, UTF-8; empty where it can.
std::string sheetSizeFault(std::string_view csv);

/// All bytes, up to one more than a sheet may have: the readers tell of longer ones.
/// \throws ReadFailure
std::string sheetBytes(ByteSource& source);
/// The same of a file.
/// \param path UTF-8
/// \throws OpenFailure, ReadFailure
std::string sheetBytes(const std::string& path);

/// What a sheet is about.
enum class SheetSubject { Messages, Variables, Names };
/// By the columns of its head; nothing where they are those of none. Names have a column of notes and none of
/// the variables' fields.
std::optional<SheetSubject> sheetSubject(std::string_view bytes);

/// A cell in device bytes. Where it holds a character that the device does not have, the error names it and
/// there is nothing.
std::optional<std::string> deviceText(SheetReader& sheet, std::size_t column);

} // namespace orvista
