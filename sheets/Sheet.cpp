#include "sheets/Sheet.h"

#include "items/ProjectNotes.h"
#include "model/Fields.h"
#include "model/Files.h"
#include "model/Lines.h"
#include "model/Numbers.h"
#include "model/Quotation.h"
#include "model/Text.h"
#include "model/Utf8.h"
#include "model/Windows1252.h"

#include <algorithm>
#include <array>

namespace orvista {

namespace {

std::string_view withoutMark(std::string_view bytes) {
    if (bytes.starts_with(utf8Mark))
        bytes.remove_prefix(utf8Mark.size());
    return bytes;
}

/// By its mark, or by the letters that a head begins with.
bool isUtf16(std::string_view bytes) {
    if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF"))
        return true;
    if (bytes.size() < 4)
        return false;
    const auto isNul = [bytes](std::size_t i) { return bytes[i] == '\0'; };
    return isNul(0) == isNul(2) && isNul(1) == isNul(3) && isNul(0) != isNul(1);
}

std::string faultText(CsvFault fault) {
    switch (fault) {
    case CsvFault::OpenQuote:
        return "a quote is opened and never closed";
    case CsvFault::TextAfterQuote:
        return "text follows a closing quote; a quote within a quoted cell is written twice";
    case CsvFault::TooManyCells:
        return "there are more than " + decimalText(maximumCells) + " cells";
    case CsvFault::None:
        break;
    }
    return {};
}

bool hasHeadColumn(std::string_view bytes, std::span<const std::string_view> columns) {
    SheetErrors others;
    const SheetReader sheet(bytes, columns, others);
    for (std::size_t column = 0; sheet.hasHead() && column < columns.size(); ++column)
        if (sheet.has(column))
            return true;
    return false;
}

bool hasNotesAlone(std::string_view bytes) {
    std::vector<std::string_view> noted;
    for (const NoteField& field : noteFields)
        noted.push_back(field.name);
    std::vector<std::string_view> fields;
    for (const Kind kind : {Kind::Float, Kind::Boolean})
        for (const Field& field : fieldsOf(kind))
            fields.push_back(field.name);
    return hasHeadColumn(bytes, noted) && !hasHeadColumn(bytes, fields);
}

} // namespace

std::string sheetSizeFault(std::string_view csv) {
    return csv.size() <= maximumSheetBytes
               ? std::string()
               : "the table would be longer than the " + decimalText(maximumSheetMegabytes) +
                     " MB that an import takes";
}

std::string sheetBytes(const std::string& path) {
    FileSource source(path);
    return sheetBytes(source);
}

std::string sheetBytes(ByteSource& source) {
    return bytesUpTo(source, maximumSheetBytes + 1);
}

std::optional<SheetSubject> sheetSubject(std::string_view bytes) {
    if (hasHeadColumn(bytes, std::array<std::string_view, 1>{"message"}))
        return SheetSubject::Messages;
    if (!hasHeadColumn(bytes, std::array<std::string_view, 1>{"name"}))
        return std::nullopt;
    return hasNotesAlone(bytes) ? SheetSubject::Names : SheetSubject::Variables;
}

std::string errorText(const SheetError& error) {
    std::string text;
    if (error.row > 0)
        text.append("row ").append(decimalText(error.row));
    if (!error.column.empty())
        text.append(text.empty() ? "" : ", ").append(error.column);
    return text.append(text.empty() ? "" : ": ").append(error.text);
}

void SheetErrors::add(std::size_t row, std::string_view column, std::string text) {
    if (errors_.size() < maximumSheetErrors)
        errors_.push_back({row, std::string(column), std::move(text)});
    else
        ++beyond_;
}

std::vector<SheetError> SheetErrors::sorted() const {
    std::vector<SheetError> errors = errors_;
    std::ranges::stable_sort(errors, {}, &SheetError::row);
    return errors;
}

SheetReader::SheetReader(std::string_view bytes, std::span<const std::string_view> columns,
                         SheetErrors& errors, FurtherColumns further)
    : columns_(columns),
      errors_(errors),
      isUtf8_(isUtf8(bytes)),
      reader_(withoutMark(bytes), separatorOf(withoutMark(bytes))),
      places_(columns.size()),
      cells_(columns.size()),
      further_(further) {
    failed_ = !isReadable(bytes);
    if (!failed_)
        readHead();
}

bool SheetReader::isReadable(std::string_view bytes) {
    const auto fail = [this](std::string text) {
        errors_.add(0, {}, std::move(text));
        return false;
    };
    if (bytes.size() > maximumSheetBytes)
        return fail("is longer than " + decimalText(maximumSheetMegabytes) + " MB");
    if (isUtf16(bytes))
        return fail("is UTF-16; save it as \"CSV UTF-8\"");
    if (bytes.starts_with(utf8Mark) && !isUtf8_)
        return fail("begins as UTF-8 and is not");
    return true;
}

void SheetReader::readHead() {
    if (!reader_.next(record_)) {
        errors_.add(0, {}, "is empty");
        failed_ = true;
        return;
    }
    failed_ = reportFault();
    for (std::size_t i = 0; i < record_.size(); ++i) {
        const std::string name = text(trimBlanksAndTabs(record_[i]));
        named_.push_back(!name.empty());
        if (name.empty()) // a spreadsheet's empty column
            continue;
        takeHead(i, name);
    }
}

void SheetReader::takeHead(std::size_t place, const std::string& name) {
    const auto isName = [&name](std::string_view head) { return equalsIgnoringCase(head, name); };
    constexpr const char* twice = "the column is there twice";
    if (const auto known = std::ranges::find_if(columns_, isName); known != columns_.end()) {
        auto& knownPlace = places_[static_cast<std::size_t>(known - columns_.begin())];
        if (knownPlace)
            errors_.add(1, *known, twice);
        else
            knownPlace = place;
    } else if (further_ == FurtherColumns::Refused) {
        errors_.add(1, {}, "unknown column " + quotation(name));
    } else if (std::ranges::any_of(furtherHeads_, isName)) {
        errors_.add(1, name, twice);
    } else {
        furtherHeads_.push_back(name);
        furtherPlaces_.push_back(place);
    }
}

bool SheetReader::needs(std::size_t column) {
    if (!has(column))
        errors_.add(1, columns_[column], "missing column");
    return has(column);
}

bool SheetReader::next() {
    while (!failed_ && reader_.next(record_)) {
        const bool hasText = std::ranges::any_of(record_, [](const auto& cell) { return !cell.empty(); });
        if (!reportFault() && hasText && takeCells())
            return true;
    }
    return false;
}

/// True when the record just read cannot be used.
bool SheetReader::reportFault() {
    if (reader_.fault() == CsvFault::None)
        return false;
    errors_.add(reader_.row(), faultColumn(), faultText(reader_.fault()));
    return true;
}

/// Empty where the cell is under no column.
std::string_view SheetReader::faultColumn() const {
    if (reader_.fault() == CsvFault::TooManyCells)
        return {};
    const auto place = std::ranges::find(places_, std::optional(reader_.faultCell()));
    return place == places_.end() ? std::string_view()
                                  : columns_[static_cast<std::size_t>(place - places_.begin())];
}

bool SheetReader::takeCells() {
    for (std::size_t i = 0; i < record_.size(); ++i) {
        if (record_[i].empty() || (i < named_.size() && named_[i]))
            continue;
        errors_.add(row(), {}, "cell " + decimalText(i + 1) + " is under no column");
        return false;
    }
    for (std::size_t column = 0; column < columns_.size(); ++column) {
        const auto place = places_[column];
        cells_[column] = place ? textAt(*place) : "";
        if (cells_[column].find('\0') != std::string::npos)
            fail(column, "a NUL byte is not a character of the display");
    }
    return true;
}

std::vector<std::string> SheetReader::furtherCells() const {
    std::vector<std::string> cells;
    cells.reserve(furtherPlaces_.size());
    for (const std::size_t place : furtherPlaces_)
        cells.push_back(textAt(place));
    return cells;
}

std::string SheetReader::textAt(std::size_t place) const {
    return place < record_.size() ? text(withoutGuard(record_[place])) : std::string();
}

std::string SheetReader::text(std::string_view cell) const {
    return isUtf8_ ? std::string(cell) : utf8FromWindows1252(cell);
}

void SheetReader::fail(std::size_t column, std::string text) {
    errors_.add(row(), columns_[column], std::move(text));
}

std::optional<std::string> deviceText(SheetReader& sheet, std::size_t column) {
    auto bytes = windows1252FromUtf8(sheet.cell(column));
    if (!bytes)
        sheet.fail(column,
                   quotation(foreignCharacter(sheet.cell(column))) + " is not a character of the display");
    return bytes;
}

} // namespace orvista
