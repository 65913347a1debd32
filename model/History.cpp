#include "model/History.h"

#include "model/Files.h"
#include "model/Lines.h"
#include "model/Text.h"

#include <algorithm>
#include <system_error>

namespace orvista::ConfigModule {

namespace {

constexpr std::string_view fileName = "history.cache";

/// A path may hold line ends where the file system allows them; the file cannot.
bool fitsOnLine(const std::string& entry) {
    return entry.find_first_of(lineEnd) == std::string::npos;
}

} // namespace

History::History(const PathRules& paths, const std::string& programFolder)
    : paths_(paths), file_(paths.join(programFolder, fileName)) {}

void History::ReadHistory() {
    try {
        FileSource source(file_);
        LineReader lines(source);
        Rows rows = rows_;
        std::string line;
        for (std::size_t i = 0; i < rows.size() && lines.next(line); ++i)
            rows[i] = trimBlanks(line);
        rows_ = rows;
    } catch (const std::system_error&) {
        // Without a readable list the program starts as it does the first time.
    }
}

void History::WriteHistory(const std::string& ProjPath, const std::string& ProjName) {
    Rows rows;
    rows[0] = paths_.join(ProjPath, ProjName);
    std::size_t count = 1;
    for (const std::string& old : rows_) {
        if (count < rows.size() && !equalsIgnoringCase(old, rows[0]))
            rows[count++] = old;
    }
    rows_ = rows;
    try {
        FileSink sink(file_);
        for (const std::string& row : rows_) {
            if (!row.empty() && fitsOnLine(row))
                sink.write(row + std::string(lineEnd));
        }
        sink.close();
    } catch (const std::system_error&) {
        // A program folder that cannot be written costs the list, not the work.
    }
}

bool History::holdsProject() const {
    return std::any_of(rows_.begin(), rows_.end(), [this](const std::string& row) {
        const auto parts = paths_.split(row);
        return parts && !parts->name.empty();
    });
}

} // namespace orvista::ConfigModule
