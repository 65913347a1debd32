#include "check/Rules.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

namespace orvista {

namespace {

constexpr std::array table = {
    Rule{Code::UnknownCommand, "unknown-command", Severity::Error,
         "A line begins with no command of the display",
         "The display skips a line whose first word is none of its commands: CLEAR, TEXT, TEXTS, IMG, "
         "DISPVAR, "
         "DISPVARS, TIME, TIMES, DATE, DATES, IN, OUT and ACT, in capital or small letters. Blanks part the "
         "words; a tab does not, it belongs to the word that it stands in. Correct the word or delete the "
         "line.",
         R"(STDMSG1:
  CLEAR
  TXET 0 0 RED BLACK "Pump 1"
  ACT STILL 3000)",
         R"(STDMSG1:
  CLEAR
  TEXT 0 0 RED BLACK "Pump 1"
  ACT STILL 3000)"},
    Rule{Code::BadArgument, "bad-argument", Severity::Error, "A command lacks a word, or has a wrong one",
         "The display skips a line in which a position, colour, text, name, effect or number is missing, or "
         "is "
         "not what the command needs there. Colours are RED, GREEN, ORANGE and BLACK, a text stands between "
         "double quotes, numbers are whole. The finding names the first such word and what to write instead.",
         R"(STDMSG1:
  CLEAR
  TEXT 0 0 PINK BLACK "Pump 1"
  ACT STILL 3000)",
         R"(STDMSG1:
  CLEAR
  TEXT 0 0 RED BLACK "Pump 1"
  ACT STILL 3000)"},
    Rule{Code::VariableRange, "variable-range", Severity::Error,
         "A variable has a number that does not exist",
         "The display has the variables RegVar1 to RegVar64 and CoilVar1 to CoilVar32. It skips a line that "
         "shows one of another number.",
         R"(STDMSG1:
  CLEAR
  DISPVAR 0 0 RED BLACK RegVar65
  ACT STILL 3000)",
         R"(STDMSG1:
  CLEAR
  DISPVAR 0 0 RED BLACK RegVar64
  ACT STILL 3000)"},
    Rule{Code::PageFull, "page-full", Severity::Error, "A page draws more than 256 things",
         "The display draws the first 256 texts, bitmaps and values of a page and skips the rest. Begin "
         "another "
         "page with CLEAR.",
         R"(STDMSG1:
  CLEAR
  257 x TEXT 0 0 RED BLACK "Pump 1"
  ACT STILL 3000)",
         R"(STDMSG1:
  CLEAR
  256 x TEXT 0 0 RED BLACK "Pump 1"
  ACT STILL 3000)"},
    Rule{Code::MissingBitmap, "missing-bitmap", Severity::Error, "A bitmap is not in the project's folder",
         "The display draws nothing where the project's folder has no file of the name that IMG gives, or "
         "where "
         "that name does not end in .bmp: no other files are sent to the display. Capital and small letters "
         "of "
         "the name are the same. Put the file into the folder or correct the name.",
         R"(STDMSG1:
  CLEAR
  IMG 0 0 RED BLACK pump.bmp
  ACT STILL 3000)",
         R"(STDMSG1:
  CLEAR
  IMG 0 0 RED BLACK pump16x16.bmp
  ACT STILL 3000)"},
    Rule{
        Code::UnreadableBitmap, "unreadable-bitmap", Severity::Error, "A bitmap cannot be shown",
        "The display draws uncompressed BMP files of 1, 4, 8, 24 or 32 bits a dot, of at most 1024 x 64 dots "
        "and 512 KB. It draws nothing for any other. Save the picture again in that form.",
        R"(STDMSG1:
  CLEAR
  IMG 0 0 RED BLACK compressed.bmp
  ACT STILL 3000)",
        R"(STDMSG1:
  CLEAR
  IMG 0 0 RED BLACK pump16x16.bmp
  ACT STILL 3000)"},
    Rule{Code::ReservedLine, "reserved-line", Severity::Error,
         "A line of a message is one that the project's files need",
         "In the project's files a message stands between DEFMSG and ENDMSG, and lines such as [STDMSG.ILM] "
         "begin "
         "a section. A line of a script that begins so is taken for one of these when the project is opened "
         "again: messages are cut, are lost or get other numbers. To the display such a line is no command. "
         "Change it or delete it.",
         R"(STDMSG1:
  CLEAR
  ENDMSG
  TEXT 0 0 RED BLACK "Pump 1"
  ACT STILL 3000)",
         R"(STDMSG1:
  CLEAR
  TEXT 0 0 RED BLACK "ENDMSG"
  ACT STILL 3000)"},
    Rule{
        Code::LostMessage, "lost-message", Severity::Error, "A message holds nothing but blanks",
        "A message of blanks and line ends alone is gone when the project is opened again, and every message "
        "after it gets the number before its own. Write CLEAR.",
        R"(STDMSG1:
  (a blank))",
        R"(STDMSG1:
  CLEAR)"},
    Rule{
        Code::AddressRange, "address-range", Severity::Error, "A block of addresses goes beyond 0 to 65535",
        "Modbus addresses go from 0 to 65535. The float variables take 128 registers from their start on, "
        "the "
        "Boolean variables 32 coils, the emergency messages 20, and the regular messages the 40 after those. "
        "What lies outside cannot be reached. Choose a start from which the whole block fits.",
        R"(address map:
  AnalogInput 65409)",
        R"(address map:
  AnalogInput 65408)"},
    Rule{Code::AddressOverlap, "address-overlap", Severity::Error, "Two blocks share coils",
         "Boolean variables, emergency messages and regular messages are coils. Where two blocks share one, "
         "writing the variable switches the message, too, or one message the other. Float variables are "
         "registers, whose addresses are their own. Move one of the two blocks.",
         R"(address map:
  DigitalInput 100
  AlertMessage 120
  RegularMessage 140)",
         R"(address map:
  DigitalInput 100
  AlertMessage 132
  RegularMessage 152)"},
    Rule{Code::RegularStart, "regular-start", Severity::Error,
         "The regular messages do not follow the emergency messages",
         "No file keeps where the regular messages begin: on the display it is always 20 after the start of "
         "the "
         "emergency messages. Set their start to that.",
         R"(address map:
  AlertMessage 300
  RegularMessage 400)",
         R"(address map:
  AlertMessage 300
  RegularMessage 320)"},
    Rule{Code::TextCut, "text-cut", Severity::Warning, "A text does not fit on the panel",
         "Characters beyond the edge of the panel, be it by a part, cannot be read, unless the page passes "
         "over "
         "the panel as it comes or goes, so that each of them is seen. Shorten or move the text, or let the "
         "page "
         "leave that way. The panel has as many columns as the check is made for.",
         R"(STDMSG1:
  CLEAR
  TEXT 0 0 RED BLACK "Emergency stop pump"
  ACT STILL 3000)",
         R"(STDMSG1:
  CLEAR
  TEXT 0 0 RED BLACK "Emergency stop pump"
  ACT STILL 3000
  OUT GO-LEFT 1 50)"},
    Rule{Code::FieldCut, "field-cut", Severity::Warning, "A value does not fit on the panel",
         "A float is as wide as its width says, a Boolean as the longer of its two texts, a time 8 "
         "characters and "
         "a date 10. What of that lies beyond the edge of the panel cannot be read, unless the page passes "
         "over "
         "the panel as it comes or goes. Move the value or make it narrower.",
         R"(STDMSG1:
  CLEAR
  DISPVAR 80 0 RED BLACK RegVar1
  ACT STILL 3000)",
         R"(STDMSG1:
  CLEAR
  DISPVAR 72 0 RED BLACK RegVar1
  ACT STILL 3000)"},
    Rule{Code::BitmapCut, "bitmap-cut", Severity::Warning, "A bitmap does not fit on the panel",
         "A part of the bitmap lies beyond the edge of the panel and is not seen, unless the page passes "
         "over the "
         "panel as it comes or goes. Move the bitmap or make it smaller, or let the page leave that way.",
         R"(STDMSG1:
  CLEAR
  IMG 0 0 RED BLACK plan200x16.bmp
  ACT STILL 3000)",
         R"(STDMSG1:
  CLEAR
  IMG 0 0 RED BLACK plan200x16.bmp
  ACT STILL 3000
  OUT GO-LEFT 1 50)"},
    Rule{Code::FieldGap, "field-gap", Severity::Warning, "A value covers characters of a text",
         "A value fills all of its width with its background colour. Characters that stand there already are "
         "gone. Leave as many blanks in the text as the value is wide: 7 for a float of width 7.",
         R"(STDMSG1:
  CLEAR
  TEXT 0 0 RED BLACK "Level   m"
  DISPVAR 48 0 RED BLACK RegVar1
  ACT STILL 3000)",
         R"(STDMSG1:
  CLEAR
  TEXT 0 0 RED BLACK "Level        m"
  DISPVAR 48 0 RED BLACK RegVar1
  ACT STILL 3000)"},
    Rule{Code::FieldOverlap, "field-overlap", Severity::Warning, "Something covers a value",
         "What is drawn later takes the dots of what was drawn before. Where a text, a bitmap or another "
         "value "
         "meets a value that is there already, a part of that cannot be read. Begin it where the value ends.",
         R"(STDMSG1:
  CLEAR
  DISPVAR 0 0 RED BLACK RegVar1
  DISPVAR 48 0 RED BLACK CoilVar1
  ACT STILL 3000)",
         R"(STDMSG1:
  CLEAR
  DISPVAR 0 0 RED BLACK RegVar1
  DISPVAR 56 0 RED BLACK CoilVar1
  ACT STILL 3000)"},
    Rule{Code::Invisible, "invisible", Severity::Warning, "Foreground and background are the same colour",
         "A text, a value or a picture of greys whose two colours are the same fills its place and shows "
         "nothing. "
         "Choose two colours. Coloured bitmaps bring their own.",
         R"(STDMSG1:
  CLEAR
  TEXT 0 0 RED RED "Pump 1"
  ACT STILL 3000)",
         R"(STDMSG1:
  CLEAR
  TEXT 0 0 RED BLACK "Pump 1"
  ACT STILL 3000)"},
    Rule{
        Code::NeverSeen, "never-seen", Severity::Warning, "A page lasts no time",
        "A page is seen for as long as its effects take. Where that is 0 milliseconds the display goes on at "
        "once. Give the page a time.",
        R"(STDMSG1:
  CLEAR
  TEXT 0 0 RED BLACK "Pump 1"
  ACT STILL 0)",
        R"(STDMSG1:
  CLEAR
  TEXT 0 0 RED BLACK "Pump 1"
  ACT STILL 3000)"},
    Rule{Code::BadDefault, "bad-default", Severity::Warning,
         "A default value cannot be shown as it is written",
         "The display shows the default of a variable until a value is written to it. That of a float is a "
         "number "
         "that fits into width and precision, that of a Boolean 0 or 1. For anything else the display begins "
         "with what it makes of it, or with stars.",
         R"(RegVar1:
  default 12,5)",
         R"(RegVar1:
  default 12.5)"},
    Rule{Code::BadFormat, "bad-format", Severity::Warning,
         "The display does not support a width or precision",
         "Widths go from 2 to 8 and precisions from 0 to 3; a width of 2 needs precision 0, and a width of 8 "
         "one "
         "from 1 on. The display may show the value in another form. Choose a width and a precision that it "
         "has.",
         R"(RegVar1:
  width 9)",
         R"(RegVar1:
  width 8)"},
    Rule{Code::NotInUse, "not-in-use", Severity::Note, "A variable is set up, but no message shows it",
         "The settings of the variable are no longer those of a new project, but no message shows it. Show "
         "it with "
         "DISPVAR, or ignore the note. Notes are listed only when they are asked for.",
         R"(RegVar1:
  default 1.5)",
         R"(RegVar1:
  default 1.5
STDMSG1:
  CLEAR
  DISPVAR 0 0 RED BLACK RegVar1
  ACT STILL 3000)"},
};

constexpr bool isInOrder() {
    for (std::size_t i = 0; i < table.size(); ++i)
        if (table[i].code != static_cast<Code>(i))
            return false;
    return table.size() == static_cast<std::size_t>(Code::Count);
}
static_assert(isInOrder(), "each code has its row, in the order of the codes");

} // namespace

std::span<const Rule> rules() {
    return table;
}

const Rule& ruleOf(Code code) {
    return table.at(static_cast<std::size_t>(code));
}

const Rule* ruleNamed(std::string_view name) {
    const auto* const rule = std::ranges::find(table, name, &Rule::name);
    return rule == table.end() ? nullptr : rule;
}

} // namespace orvista
