#include "items/MasterView.h"

#include "model/Text.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace orvista {

namespace {

bool isSameProject(const Project& one, const Project& other) {
    const auto rest = [](const Project& project) {
        return std::tie(project.SerialPort, project.IP, project.ProjPath, project.ProjName,
                        project.AnalogInput, project.DigitalInput, project.AlertMessage,
                        project.RegularMessage, project.RegVar, project.CoilVar, project.STDMSG,
                        project.ALTMSG);
    };
    return rest(one) == rest(other);
}

} // namespace

void MasterView::setDisplays(std::vector<FleetDisplay> displays) {
    isMaster_ = true;
    displays_ = std::make_shared<const std::vector<FleetDisplay>>(std::move(displays));
    choose(std::string(chosen_));
}

void MasterView::setPlain() {
    isMaster_ = false;
    displays_ = std::make_shared<const std::vector<FleetDisplay>>();
    master_.reset();
    choose({});
}

void MasterView::choose(const std::string& name) {
    chosen_ = name;
    const auto display = std::ranges::find(*displays_, name, &FleetDisplay::name);
    shownDisplay_.reset();
    if (!name.empty() && display != displays_->end())
        shownDisplay_ = static_cast<std::size_t>(display - displays_->begin());
    expansion_.reset();
}

const FleetDisplay* MasterView::display() const {
    return shownDisplay_ ? &(*displays_)[*shownDisplay_] : nullptr;
}

const FleetDisplay* MasterView::displayAt(const DisplayAddress& address) const {
    const auto display = std::ranges::find_if(*displays_, [&](const FleetDisplay& one) {
        return one.address.port == address.port && equalsIgnoringCase(one.address.host, address.host);
    });
    return display == displays_->end() ? nullptr : &*display;
}

std::shared_ptr<const Master> MasterView::master() const {
    if (!master_ || !isSameProject(master_->project(), project_)) {
        master_ = std::make_shared<const Master>(project_);
        expansion_.reset();
    }
    return master_;
}

const Expansion& MasterView::expansion() const {
    const auto master = this->master();
    if (!expansion_)
        expansion_ = display() ? master->expand(*display()) : Expansion{master->itself(), {}, 0};
    return *expansion_;
}

const Project& MasterView::shown() const {
    return isMaster_ ? expansion().project : project_;
}

std::string MasterView::filled(std::string_view script) const {
    if (!isMaster_)
        return std::string(script);
    return display() ? expandScript({}, script, *display()).first : scriptWithNames(script);
}

} // namespace orvista
