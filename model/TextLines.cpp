#include "model/TextLines.h"

namespace orvista {

namespace {

constexpr std::string_view conflictStart = "<<<<<<<";
constexpr std::string_view conflictMiddle = "=======";
constexpr std::string_view conflictEnd = ">>>>>>>";

/// Whether the line is the mark, or the mark, a blank and a name.
bool isMark(std::string_view line, std::string_view mark) {
    return line.starts_with(mark) && (line.size() == mark.size() || line[mark.size()] == ' ');
}

} // namespace

void TextLines::see(std::string_view line, std::size_t number, std::string_view section) {
    if (line.find('\0') != std::string_view::npos)
        remarks_.add({FileRemarkKind::NotText, {}, section, number});
    if (line.size() >= conflictStart.size())
        seeConflict(line, number, section);
}

void TextLines::seeConflict(std::string_view line, std::size_t number, std::string_view section) {
    if (conflict_ == Conflict::None && isMark(line, conflictStart)) {
        conflict_ = Conflict::Begun;
        conflictLine_ = number;
        conflictSection_ = section;
    } else if (conflict_ == Conflict::Begun && line == conflictMiddle) {
        conflict_ = Conflict::Parted;
    } else if (conflict_ == Conflict::Parted && isMark(line, conflictEnd)) {
        conflict_ = Conflict::None;
        remarks_.add({FileRemarkKind::ConflictMark, {}, conflictSection_, conflictLine_});
        if (section != conflictSection_)
            remarks_.add({FileRemarkKind::ConflictMark, {}, section, number});
    }
}

} // namespace orvista
