#include "check/ProjectCheck.h"

#include "display/LedRaster.h"

namespace orvista {

struct ProjectCheck::State {
    std::size_t messagesLookedAt = 0;
};

ProjectCheck::ProjectCheck() : state_(std::make_unique<State>()) {}
ProjectCheck::~ProjectCheck() = default;
ProjectCheck::ProjectCheck(ProjectCheck&&) noexcept = default;
ProjectCheck& ProjectCheck::operator=(ProjectCheck&&) noexcept = default;

Findings ProjectCheck::check(const Project&, const BitmapProvider&, int columns, Notes) {
    const LedRaster panel({columns});
    return {};
}

std::size_t ProjectCheck::messagesLookedAt() const {
    return state_->messagesLookedAt;
}

Findings checkProject(const Project& project, const BitmapProvider& bitmaps, int columns, Notes notes) {
    return ProjectCheck().check(project, bitmaps, columns, notes);
}

Findings checkMessage(std::string_view, std::string_view, const Project&, const BitmapProvider&,
                      int columns) {
    const LedRaster panel({columns});
    return {};
}

} // namespace orvista
