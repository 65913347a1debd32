#pragma once

#include "check/Finding.h"
#include "display/BitmapProvider.h"
#include "model/Project.h"

#include <cstddef>
#include <memory>
#include <string_view>

/// What will go wrong on the display, found before anything is sent.
namespace orvista {

/// Whether variables that are set up but shown by no message are named.
enum class Notes { LeftOut, Included };

/// Everything found in a project: address map, float and Boolean variables, regular and emergency messages,
/// each by number, and within a message by line and column.
/// \param columns of the panel, 1 to PanelSize::maximumColumns
/// \throws std::invalid_argument for another number of columns
Findings checkProject(const Project& project, const BitmapProvider& bitmaps, int columns,
                      Notes notes = Notes::LeftOut);

/// What is found in one script, as if it were that message.
Findings checkMessage(Item item, std::string_view script, const Project& project,
                      const BitmapProvider& bitmaps, int columns);

/// A check that is made again and again: only the items that have changed since the last time, and the
/// messages that show a variable or a bitmap that has, are looked at again. Always of the same folder's
/// bitmaps: images count as the same when the provider gives the same object.
class ProjectCheck {
public:
    ProjectCheck();
    ~ProjectCheck();
    ProjectCheck(ProjectCheck&&) noexcept;
    ProjectCheck& operator=(ProjectCheck&&) noexcept;

    /// As checkProject().
    Findings check(const Project& project, const BitmapProvider& bitmaps, int columns,
                   Notes notes = Notes::LeftOut);
    /// How many items the last check() looked at: of the address map, 96 variables and 60 messages.
    std::size_t itemsLookedAt() const;

private:
    friend Findings checkProject(const Project&, const BitmapProvider&, int, Notes);

    struct State;
    State& state();

    std::unique_ptr<State> state_; ///< null before the first check: an editor starts without one
};

} // namespace orvista
