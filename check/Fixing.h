#pragma once

#include "check/Finding.h"
#include "check/Fix.h"
#include "check/MessageCheck.h"
#include "display/BitmapProvider.h"
#include "display/FieldFormats.h"
#include "display/LedRaster.h"
#include "model/Change.h"
#include "model/Project.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

/// Findings that the program can mend itself.
namespace orvista {

class PartFixing;

/// A project that is mended finding by finding. What a fix is good for is tried: it holds when its finding is
/// gone, there is no more of any code in the finding's item, and no other item's findings change. Notes do
/// not count.
class Fixing {
public:
    /// \param project of which a copy is mended
    /// \param bitmaps of its folder; must outlive the object
    /// \param columns of the panel, 1 to PanelSize::maximumColumns
    /// \param kept items that no fix changes
    /// \throws std::invalid_argument for another number of columns
    Fixing(const Project& project, const BitmapProvider& bitmaps, int columns, std::vector<Item> kept = {});
    ~Fixing();

    /// As it is by now.
    const Project& project() const { return project_; }
    /// As far as they are listed.
    const std::vector<Finding>& findingsOf(Item item) { return foundIn(item).list; }
    /// All of a code.
    std::size_t countOf(Item item, Code code) { return foundIn(item).byCode[static_cast<std::size_t>(code)]; }

    /// Those that hold, best first.
    /// \param finding of the project as it is by now
    std::vector<Fix> fixesOf(const Finding& finding);

    /// What has mended a finding.
    struct Done {
        Fix fix;
        std::vector<Change> changes;
    };
    /// Makes the first fix that holds.
    /// \param mayBe which fixes come into question
    /// \returns nothing where there is none
    std::optional<Done> mend(const Finding& finding, const std::function<bool(const Fix&)>& mayBe);
    /// Makes changes of the project as it is by now, whatever they are good for.
    void take(const std::vector<Change>& changes);

private:
    friend class PartFixing;

    /// What is found in items.
    using Found = std::map<Item, CheckedMessage>;

    const Findings& foundIn(Item item) { return checkedOf(item).findings; }
    CheckedMessage& checkedOf(Item item);
    CheckedMessage checked(Item item) const;
    std::vector<Item> concernedBy(const std::vector<Change>& changes, Item item);
    bool mayBeMade(const Fix& fix) const;
    std::vector<Fix> proposedFor(const Finding& finding) const;
    bool isMended(const Finding& finding, std::optional<std::size_t> line, const Findings& after);
    /// \returns what is found after the changes, which are made; nothing, and they are not, where the fix
    ///     does not hold
    std::optional<Found> tried(const Finding& finding, const Fix& fix, const std::vector<Change>& changes);
    void make(const std::vector<Change>& changes, bool backwards);
    std::optional<Done> mendInWhole(const Finding& finding, const std::function<bool(const Fix&)>& mayBe);
    void forgetParts(const std::vector<Change>& changes);
    /// Lets a message be another one.
    void take(Item message, std::string_view script, std::optional<CheckedMessage> checked = {});

    Project project_;
    const BitmapProvider& bitmaps_;
    int columns_;
    PanelSize panel_;
    std::vector<Item> kept_;
    FieldFormats formats_;
    Found found_; ///< as far as it was asked for
    bool goesByParts_ = true;
    std::unique_ptr<PartFixing> parts_; ///< once it was needed, while variables are shown as they were then
};

} // namespace orvista
