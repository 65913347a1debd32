#pragma once

#include "items/Master.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvista {

/// How the open project is looked at: as it is, or, where it is a master, with the values of one of its
/// displays in its places. What it tells is of the project as it is by then.
class MasterView {
public:
    /// No master as yet. \param project must outlive the object
    explicit MasterView(const Project& project) : project_(project) {}

    /// The project is a master with these displays, of which the same one is shown as before.
    void setDisplays(std::vector<FleetDisplay> displays);
    /// The project is no master.
    void setPlain();
    bool isMaster() const { return isMaster_; }
    const std::vector<FleetDisplay>& displays() const { return *displays_; }
    /// The same, to be kept while the list goes on to change.
    std::shared_ptr<const std::vector<FleetDisplay>> sharedDisplays() const { return displays_; }

    /// Shows the values of the display of that name; of none for an empty one. Where the list does not have
    /// it (any more) no values are shown until it does.
    void choose(const std::string& name);
    /// The display whose values are shown; null while places show their names.
    const FleetDisplay* display() const;

    /// The display at that address and port, of which a list has one; null for none.
    const FleetDisplay* displayAt(const DisplayAddress& address) const;

    const Project& project() const { return project_; }
    /// What is shown of the project: of a master its places filled, of every other one itself. Valid until
    /// something changes.
    const Project& shown() const;
    /// The same of a script alone, which may not be the project's yet.
    std::string filled(std::string_view script) const;
    /// What keeps places from being filled with the shown display's values.
    const Expansion& expansion() const;
    /// Of a master: another one each time the project has changed.
    std::shared_ptr<const Master> master() const;

private:
    const Project& project_;
    bool isMaster_ = false;
    std::shared_ptr<const std::vector<FleetDisplay>> displays_ =
        std::make_shared<const std::vector<FleetDisplay>>();
    std::string chosen_;
    std::optional<std::size_t> shownDisplay_;

    // Made when they are asked for, and again when the project has changed.
    mutable std::shared_ptr<const Master> master_;
    mutable std::optional<Expansion> expansion_;
};

} // namespace orvista
