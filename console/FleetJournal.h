#pragma once

#include "console/FleetTask.h"

#include <string>

namespace orvista::console {

/// A file that gets a line of JSON for each display that is over, whatever became of it. It is opened for
/// each line, so that others may write to it, too, or put it aside.
class FleetJournal {
public:
    /// \param path UTF-8; empty for no journal
    explicit FleetJournal(std::string path) : path_(std::move(path)) {}

    void append(const FleetTask& task, const FleetResult& result);
    /// Why a line could not be appended, the first one; empty where all were.
    const std::string& fault() const { return fault_; }

private:
    std::string path_;
    std::string fault_;
    bool isCut_ = false; ///< the last line has no end
};

} // namespace orvista::console
