#pragma once

#include "model/CommandEnabling.h"

#include <vector>

namespace orvista::testing {

/// What a window was told of the project, and what it makes of commands.
class RecordedTransitions {
public:
    void add(ProjectTransition transition) { transitions_.push_back(transition); }
    ProjectTransition last() const { return transitions_.back(); }

    /// Whether a command of that rule is enabled now.
    bool enabled(const EnablingRule& rule) const {
        bool enabled = true;
        for (const ProjectTransition transition : transitions_)
            enabled = rule.enabledAfter(transition, enabled);
        return enabled;
    }

private:
    std::vector<ProjectTransition> transitions_;
};

} // namespace orvista::testing
