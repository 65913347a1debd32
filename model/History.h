#pragma once

#include "model/PathRules.h"

#include <array>
#include <string>

namespace orvista::ConfigModule {

/// The last five projects that were opened or saved, in memory and in "history.cache" beside the program.
/// An entry is a folder, a separator and a project name without extension, in UTF-8; an empty text marks an
/// empty row.
class History {
public:
    static constexpr std::size_t rowCount = 5;
    using Rows = std::array<std::string, rowCount>;

    History(const PathRules& paths, const std::string& programFolder);

    /// Reads at most five lines, each trimmed; a missing or unreadable file leaves the rows as they are.
    void ReadHistory();
    /// Moves or adds the project to the top and writes the file; a failure to write is silent.
    void WriteHistory(const std::string& ProjPath, const std::string& ProjName);
    void clear() { rows_ = {}; }
    const Rows& rows() const { return rows_; }
    /// True when a row names a project: the program's own start leaves a row without a name.
    bool holdsProject() const;

private:
    const PathRules& paths_;
    std::string file_;
    Rows rows_;
};

} // namespace orvista::ConfigModule
