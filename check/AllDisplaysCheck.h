#pragma once

#include "check/MasterCheck.h"
#include "items/Master.h"

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace orvista {

/// Checks a master for all its displays, one at a time, so that a window may do other things in between.
/// What is found of several displays is told once.
class AllDisplaysCheck {
public:
    using Displays = std::shared_ptr<const std::vector<FleetDisplay>>;

    /// \param bitmaps must outlive the object
    /// \param columns of displays whose list says none
    AllDisplaysCheck(std::shared_ptr<const Master> master, Displays displays, const BitmapProvider& bitmaps,
                     int columns, Notes notes);

    std::size_t count() const { return displays_->size(); }
    /// How many of them are checked.
    std::size_t checkedCount() const { return checked_; }
    bool isDone() const { return checked_ == displays_->size(); }
    /// Checks one more.
    void goOn();

    /// What was found so far: the same of several displays, which is the same sentence at the same place,
    /// is one finding.
    Findings findings() const;
    /// The displays with that finding: "Line 3", "Line 3 and 16 more"; empty for one that is not theirs.
    std::string displaysText(const Finding& finding) const;

private:
    /// Whose it is.
    struct Displayed {
        std::size_t first = 0;
        std::size_t last = 0;
        std::size_t count = 1;
    };
    struct Before {
        bool operator()(const Finding& one, const Finding& other) const;
    };

    std::shared_ptr<const Master> master_;
    Displays displays_;
    int columns_;
    Notes notes_;
    MasterCheck check_;
    std::size_t checked_ = 0;
    std::map<Finding, Displayed, Before> found_; ///< by their places
    FindingCounts notKept_;                      ///< beyond maximumFindings, for each display
};

} // namespace orvista
