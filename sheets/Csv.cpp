#include "sheets/Csv.h"

#include "model/Lines.h"
#include "model/Text.h"

#include <algorithm>

namespace orvista {

namespace {

constexpr char quote = '"';
constexpr char apostrophe = '\'';
constexpr std::string_view separators = ",;\t";

/// Spreadsheets take a cell that begins with one of these for a formula.
constexpr std::string_view formulaBeginnings = "=+-@\t";

bool looksLikeFormula(std::string_view cell) {
    const auto first = cell.find_first_not_of(apostrophe);
    return first != std::string_view::npos && formulaBeginnings.find(cell[first]) != std::string_view::npos;
}

void appendCell(std::string& bytes, std::string_view cell, char separator) {
    if (cell.find_first_of("\"\r\n") == std::string_view::npos &&
        cell.find(separator) == std::string_view::npos) {
        bytes.append(cell);
        return;
    }
    bytes.push_back(quote);
    for (const char character : cell) {
        if (character == quote)
            bytes.push_back(quote);
        bytes.push_back(character);
    }
    bytes.push_back(quote);
}

} // namespace

bool CsvReader::next(std::vector<std::string>& cells) {
    fault_ = CsvFault::None;
    if (rest_.empty()) {
        cells.clear();
        return false;
    }
    ++row_;
    std::size_t count = 0;
    std::string dropped;
    do {
        const bool fits = count < maximumCells;
        if (fits && count == cells.size())
            cells.emplace_back();
        const CsvFault before = fault_;
        takeCell(fits ? cells[count] : dropped);
        if (fault_ != before)
            faultCell_ = count;
        if (fits)
            ++count;
        else if (fault_ == CsvFault::None)
            fault_ = CsvFault::TooManyCells;
    } while (takeSeparator());
    cells.resize(count);
    return true;
}

void CsvReader::takeCell(std::string& cell) {
    cell.clear();
    if (rest_.starts_with(quote))
        takeQuoted(cell);
    const auto end = std::ranges::find_if(rest_, [this](char c) { return endsCell(c); });
    const auto size = static_cast<std::size_t>(end - rest_.begin());
    cell.append(rest_, 0, size);
    rest_.remove_prefix(size);
}

void CsvReader::takeQuoted(std::string& cell) {
    rest_.remove_prefix(1);
    for (;;) {
        const auto end = std::min(rest_.find(quote), rest_.size());
        cell.append(rest_, 0, end);
        if (end == rest_.size()) {
            rest_ = {};
            fault_ = CsvFault::OpenQuote;
            return;
        }
        rest_.remove_prefix(end + 1);
        if (!rest_.starts_with(quote))
            break;
        cell.push_back(quote);
        rest_.remove_prefix(1);
    }
    if (!rest_.empty() && !endsCell(rest_.front()) && fault_ == CsvFault::None)
        fault_ = CsvFault::TextAfterQuote;
}

bool CsvReader::takeSeparator() {
    if (rest_.starts_with(separator_)) {
        rest_.remove_prefix(1);
        return true;
    }
    if (!rest_.empty())
        rest_.remove_prefix(rest_.starts_with(lineEnd) ? lineEnd.size() : 1);
    return false;
}

char separatorOf(std::string_view bytes) {
    bool quoted = false;
    for (const char character : bytes) {
        if (character == quote)
            quoted = !quoted;
        else if (!quoted && separators.find(character) != std::string_view::npos)
            return character;
        else if (!quoted && lineEnd.find(character) != std::string_view::npos)
            break;
    }
    return separators.front();
}

std::string guarded(std::string_view cell) {
    std::string text(cell);
    if (looksLikeFormula(cell) && !isPlainNumber(cell))
        text.insert(text.begin(), apostrophe);
    return text;
}

std::string_view withoutGuard(std::string_view cell) {
    if (cell.starts_with(apostrophe) && looksLikeFormula(cell))
        cell.remove_prefix(1);
    return cell;
}

bool isPlainNumber(std::string_view text) {
    if (text.starts_with('-') || text.starts_with('+'))
        text.remove_prefix(1);
    const auto point = std::min(text.find('.'), text.size());
    std::string digits(text.substr(0, point));
    if (point < text.size())
        digits.append(text.substr(point + 1));
    return GenenalModule::IsAllDigits(digits);
}

void appendRecord(std::string& bytes, std::span<const std::string> cells, char separator) {
    for (std::size_t i = 0; i < cells.size(); ++i) {
        if (i > 0)
            bytes.push_back(separator);
        appendCell(bytes, guarded(cells[i]), separator);
    }
    bytes.append(lineEnd);
}

} // namespace orvista
