#pragma once

#include "model/FileRemarks.h"

#include <cstddef>
#include <string_view>

namespace orvista {

/// Looks at the lines of a file, whatever they mean to its reader, for what no text of ours holds.
class TextLines {
public:
    explicit TextLines(FileRemarks& remarks) : remarks_(remarks) {}
    /// \param line without its end, but with its blanks
    /// \param number from 1
    /// \param section as in FileRemark
    void see(std::string_view line, std::size_t number, std::string_view section = {});

private:
    void seeConflict(std::string_view line, std::size_t number, std::string_view section);

    FileRemarks& remarks_;
    /// The lines of a conflict follow each other, with others between them.
    enum class Conflict { None, Begun, Parted } conflict_ = Conflict::None;
    std::size_t conflictLine_ = 0;
    std::string_view conflictSection_;
};

} // namespace orvista
