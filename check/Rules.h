#pragma once

#include "check/Severity.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

/// What a check can find: one table of rules. Severities, `orvista help CODE`, the tool-tips of the findings,
/// the help's page of codes and the manual's section CODES are made of it.
///
/// A new rule is an enumerator here and a row at the same place of the table in Rules.cpp; a row that is
/// missing or misplaced does not compile. Then `cmake --build ... --target code-pages` writes page and manual
/// again, and the test of the rules tries both examples.
///
/// An example is a piece of a project as people write it down: the name of a place and a colon, and below it,
/// indented by two blanks, what is there.
///
///     STDMSG1:                  a message: the lines of its script
///       CLEAR
///       257 x TIME 0 0 RED BLACK     that many lines like this
///       (a blank)                    a line of one blank
///     RegVar1:                  a variable: default, width, precision, on, off and their texts
///       width 9
///     address map:              AnalogInput, DigitalInput, AlertMessage, RegularMessage and their addresses
///       AnalogInput 65500
///     project file:             the lines of the .orx; likewise the name of a device file, "stdmsg.ilm"
///       [STDMSG.ILM]
///       (a NUL byte)                 a line of one
///       (a mark)[CONFIG]             the byte-order mark of UTF-8 in front
///     displays.csv:             the list of displays whose master the project is
///       name,address,tank
///
/// All else is as in a new project. Its folder holds pump16x16.bmp and plan200x16.bmp, which are black
/// pictures of that size, and compressed.bmp.
namespace orvista {

enum class Code : std::uint8_t {
    NotAProject,
    ConflictMark,
    NotText,
    CutOff,
    MissingSection,
    DoubleSection,
    OpenBlock,
    DoubleItem,
    MovedItem,
    ExtraItems,
    MissingItems,
    StrayLine,
    Utf8Mark,
    UnknownCommand,
    BadArgument,
    VariableRange,
    PageFull,
    MissingBitmap,
    UnreadableBitmap,
    ReservedLine,
    LostMessage,
    PlaceUnknown,
    PlaceWidth,
    PlaceValue,
    AddressRange,
    AddressOverlap,
    RegularStart,
    TextCut,
    FieldCut,
    BitmapCut,
    FieldGap,
    FieldOverlap,
    Invisible,
    NeverSeen,
    BadDefault,
    BadFormat,
    NotInUse,
    Count ///< how many there are
};

/// Whether findings of a code can be mended by the program; see check/Fixing.h.
enum class Fixes : std::uint8_t {
    None,
    Offered, ///< what they change is sure to be meant
    OnDemand ///< they guess what was meant, or what is gone is gone: only where people ask for that code
};

/// All texts are ASCII.
struct Rule {
    Code code;
    std::string_view name; ///< "text-cut", as people see the code
    Severity severity;
    std::string_view title;       ///< one line, without a full stop
    std::string_view explanation; ///< sentences: what happens, why, and what to do
    std::string_view example;     ///< in which it is found
    std::string_view clean;       ///< just beside the example, and it is not found
    Fixes fixes = Fixes::None;
};

/// All of them, in the order of their codes.
std::span<const Rule> rules();
const Rule& ruleOf(Code code);
/// A sentence that says how the program mends it; empty where it does not.
std::string mendingText(const Rule& rule);
/// Null where no code has that name, in small letters.
const Rule* ruleNamed(std::string_view name);

} // namespace orvista
