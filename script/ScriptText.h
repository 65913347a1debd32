#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace orvista {

/// The lines of a script by number, from 1, where they begin and end. CR LF, LF and CR alone end a line.
class ScriptText {
public:
    /// \param script must outlive the object
    explicit ScriptText(std::string_view script);

    std::size_t count() const { return starts_.size() - 1; }
    /// Without its end. A mark at the start of the script is a part of its first line.
    std::string_view line(std::size_t number) const;
    /// How many bytes of the line are such a mark.
    std::size_t skipped(std::size_t number) const;
    /// The script's byte at which the line begins, from 0; for the line after the last, the script's size.
    std::size_t start(std::size_t number) const { return starts_.at(number - 1); }

private:
    std::string_view script_;
    std::vector<std::size_t> starts_;
};

} // namespace orvista
