#pragma once

#include "model/Item.h"
#include "model/Project.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The copy of unsaved work that is kept aside while a project is edited: bytes that hold a whole project and
/// the texts of the pages that were not applied, in a form of our own.
///
/// Checked texts after the line "orvista-recovery 1" (the number is the form's version), each as its length
/// in decimal, a colon and its bytes: folder, name, serial port, IP; the starts AnalogInput, DigitalInput,
/// AlertMessage and RegularMessage in decimal; default, width and precision of the float variables; default,
/// on and off of the Boolean ones; the scripts of the regular and the emergency messages, thus all items in
/// the order of allItems() and fieldsOf(), which the form's version stands for; how many items were not
/// applied, and of each its name, how many texts, and the texts.
namespace orvista {

/// What a page shows of an item and the project does not have.
struct NotAppliedTexts {
    Item item;
    std::vector<std::string> texts; ///< of the page's boxes, in their order; device bytes
    bool operator==(const NotAppliedTexts&) const = default;
};

/// More items or texts of one than the pages have are not read.
inline constexpr std::size_t maximumNotAppliedItems = 8;
inline constexpr std::size_t maximumNotAppliedTexts = 8;

struct UnsavedWork {
    Project project; ///< its modified mark is not kept
    std::vector<NotAppliedTexts> notApplied;
};

std::string recoveryBytes(const Project& project, const std::vector<NotAppliedTexts>& notApplied);

/// Nothing when the bytes are not whole, or of another version.
std::optional<UnsavedWork> readRecovery(std::string_view bytes);

/// The bytes begin as a later version of the program writes them.
bool isRecoveryOfNewerVersion(std::string_view bytes);

/// The texts with the two lines in front of them.
std::string recoveryFrame(std::string_view texts);

} // namespace orvista
