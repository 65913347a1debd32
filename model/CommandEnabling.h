#pragma once

namespace orvista {

/// What happens to the project, as far as commands are concerned.
enum class ProjectTransition {
    Reset,           ///< there is no project any more
    Modified,        ///< the modified mark was set
    Saved,           ///< the modified mark was cleared, also that of the unnamed project at start
    ProjectCommands, ///< there is a project to work on: it came from the device
    Opened,          ///< there is a project to work on, after New, Open and Save As
};

/// What a transition does to a command.
enum class Effect { Leaves, Enables, Disables };

/// What each transition does to a command, or to a control that is enabled as commands are. Whether a command
/// is enabled is the result of all transitions so far; it cannot be told from the project's present state:
/// the Upload entry, for one, stays enabled after the start-up dialog's New and does not after File > New.
struct EnablingRule {
    Effect reset = Effect::Leaves;
    Effect modified = Effect::Leaves;
    Effect saved = Effect::Leaves;
    Effect projectCommands = Effect::Leaves;
    Effect opened = Effect::Leaves;

    constexpr Effect of(ProjectTransition transition) const {
        switch (transition) {
        case ProjectTransition::Reset:
            return reset;
        case ProjectTransition::Modified:
            return modified;
        case ProjectTransition::Saved:
            return saved;
        case ProjectTransition::ProjectCommands:
            return projectCommands;
        case ProjectTransition::Opened:
            return opened;
        }
        return Effect::Leaves;
    }

    /// Whether what was `enabled` before the transition is enabled after it.
    constexpr bool enabledAfter(ProjectTransition transition, bool enabled) const {
        const Effect effect = of(transition);
        return effect == Effect::Leaves ? enabled : effect == Effect::Enables;
    }
};

/// The kinds of commands there are.
namespace EnablingRules {

inline constexpr EnablingRule always{};
inline constexpr EnablingRule save{
    .reset = Effect::Disables, .modified = Effect::Enables, .saved = Effect::Disables};
inline constexpr EnablingRule saveAs{
    .reset = Effect::Disables, .modified = Effect::Enables, .saved = Effect::Enables};
inline constexpr EnablingRule uploadEntry{.reset = Effect::Disables, .saved = Effect::Enables};
/// Unlike the menu's entry, the toolbar's Upload can be used as soon as there is a new project.
inline constexpr EnablingRule uploadButton{
    .reset = Effect::Disables, .saved = Effect::Enables, .opened = Effect::Enables};
/// The pages, the navigation tree and every command that works on the project.
inline constexpr EnablingRule projectWork{
    .reset = Effect::Disables, .projectCommands = Effect::Enables, .opened = Effect::Enables};

} // namespace EnablingRules

} // namespace orvista
