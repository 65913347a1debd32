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
enum class Enabling { Leaves, Enables, Disables };

/// What each transition does to a command, or to a control that is enabled as commands are. Whether a command
/// is enabled is the result of all transitions so far; it cannot be told from the project's present state:
/// the Upload entry, for one, stays enabled after the start-up dialog's New and does not after File > New.
struct EnablingRule {
    Enabling reset = Enabling::Leaves;
    Enabling modified = Enabling::Leaves;
    Enabling saved = Enabling::Leaves;
    Enabling projectCommands = Enabling::Leaves;
    Enabling opened = Enabling::Leaves;

    constexpr Enabling of(ProjectTransition transition) const {
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
        return Enabling::Leaves;
    }

    /// Whether what was `enabled` before the transition is enabled after it.
    constexpr bool enabledAfter(ProjectTransition transition, bool enabled) const {
        const Enabling effect = of(transition);
        return effect == Enabling::Leaves ? enabled : effect == Enabling::Enables;
    }
};

/// The kinds of commands there are.
namespace EnablingRules {

inline constexpr EnablingRule always{};
inline constexpr EnablingRule save{
    .reset = Enabling::Disables, .modified = Enabling::Enables, .saved = Enabling::Disables};
inline constexpr EnablingRule saveAs{
    .reset = Enabling::Disables, .modified = Enabling::Enables, .saved = Enabling::Enables};
inline constexpr EnablingRule uploadEntry{.reset = Enabling::Disables, .saved = Enabling::Enables};
/// Unlike the menu's entry, the toolbar's Upload can be used as soon as there is a new project.
inline constexpr EnablingRule uploadButton{
    .reset = Enabling::Disables, .saved = Enabling::Enables, .opened = Enabling::Enables};
/// The pages, the navigation tree and every command that works on the project.
inline constexpr EnablingRule projectWork{
    .reset = Enabling::Disables, .projectCommands = Enabling::Enables, .opened = Enabling::Enables};

} // namespace EnablingRules

} // namespace orvista
