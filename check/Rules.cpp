#include "check/Rules.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace orvista {

namespace {

constexpr std::array table = {
    Rule{Code::NotAProject, "not-a-project", Severity::Error,
         "No line of the project file is the header of a section",
         "A project file has the sections [CONFIG], [MODBUS.ADR], [STDMSG.ILM], [ALTMSG.ILM] and "
         "[ILMVAR.DEF]. This file has none of them, so nothing was read of it; what is shown comes from the "
         "device files of its folder. Take the project from a copy.",
         R"(project file:
  CLEAR)",
         R"(project file:
  [CONFIG])"},
    Rule{Code::ConflictMark, "conflict-mark", Severity::Error, "A version control left a conflict",
         "The lines of seven <, = and > that a version control leaves stand around two versions of a text, "
         "and both were read. Keep one of them, and delete these lines.",
         R"(project file:
  [CONFIG]
  <<<<<<< HEAD
  IP   192.168.1.103
  =======
  IP   192.168.1.104
  >>>>>>> line4)",
         R"(project file:
  [CONFIG]
  IP   192.168.1.103)"},
    Rule{Code::NotText, "not-text", Severity::Error, "A line holds a NUL byte",
         "Projects are text, and no text holds a NUL byte. Files that a disk or a transfer has damaged do, "
         "and so does text in UTF-16. Take the file from a copy.",
         R"(project file:
  [CONFIG]
  (a NUL byte))",
         R"(project file:
  [CONFIG])"},
    Rule{
        Code::CutOff, "cut-off", Severity::Error, "The file ends too early",
        "The file ends inside a block, or before its last section is full, while all sections before it are: "
        "part of it is gone. Take it from a copy, or have orvista mend take the section from a device file.",
        R"(project file:
  [STDMSG.ILM]
  DEFMSG STDMSG1
  CLEAR)",
        R"(project file:
  [STDMSG.ILM]
  DEFMSG STDMSG1
  CLEAR
  ENDMSG
  [ALTMSG.ILM])"},
    Rule{Code::MissingSection, "missing-section", Severity::Error, "A section is not in the project file",
         "In place of a section that is missing, the device file of that name in the project's folder was "
         "read, which may be of another day. Look at what is shown; saving writes the section.",
         R"(project file:
  [CONFIG])",
         R"(project file:
  [MODBUS.ADR]
  [STDMSG.ILM]
  [ALTMSG.ILM]
  [ILMVAR.DEF])"},
    Rule{Code::DoubleSection, "double-section", Severity::Error,
         "A section stands in the project file more than once",
         "Only the last section of a name was read, those before it are lost. Leave one of them. [CONFIG] "
         "may stand there more than once.",
         R"(project file:
  [ALTMSG.ILM]
  [ALTMSG.ILM])",
         R"(project file:
  [ALTMSG.ILM])"},
    Rule{Code::OpenBlock, "open-block", Severity::Error, "A block stored nothing",
         "A message needs DEFMSG with a name, at least one line, and ENDMSG; a variable DEFVAR with a name, "
         "the type float or bit, and ENDVAR. A block that lacks one of these was read and is lost. Complete "
         "it or delete it.",
         R"(project file:
  [STDMSG.ILM]
  DEFMSG STDMSG1
  CLEAR
  DEFMSG STDMSG2
  CLEAR
  ENDMSG)",
         R"(project file:
  [STDMSG.ILM]
  DEFMSG STDMSG1
  CLEAR
  ENDMSG
  DEFMSG STDMSG2
  CLEAR
  ENDMSG)"},
    Rule{Code::DoubleItem, "double-item", Severity::Error, "A row was filled twice",
         "An ENDMSG that follows another one stores the text before it once more, so that every later "
         "message moves up a number. Two variables at one address fill one row, and the later one counts. "
         "Delete what is too much.",
         R"(project file:
  [STDMSG.ILM]
  DEFMSG STDMSG1
  CLEAR
  ENDMSG
  ENDMSG)",
         R"(project file:
  [STDMSG.ILM]
  DEFMSG STDMSG1
  CLEAR
  ENDMSG)"},
    Rule{Code::MovedItem, "moved-item", Severity::Error, "A block fills the row of another number",
         "Messages get their numbers by their order in the file, and variables by their addresses; names "
         "such as STDMSG2 are not looked at. Put the blocks into the order of their names, or correct the "
         "address. For a variable this is a warning.",
         R"(project file:
  [STDMSG.ILM]
  DEFMSG STDMSG2
  CLEAR
  ENDMSG)",
         R"(project file:
  [STDMSG.ILM]
  DEFMSG STDMSG1
  CLEAR
  ENDMSG)"},
    Rule{Code::ExtraItems, "extra-items", Severity::Error, "There are more blocks than rows",
         "There are 40 regular and 20 emergency messages, 64 float and 32 Boolean variables. What stands "
         "beyond them, or at an address where no variable lies, was not read, and saving leaves it out.",
         R"(project file:
  [ILMVAR.DEF]
  DEFVAR level
  type float
  address 228
  ENDVAR)",
         R"(project file:
  [ILMVAR.DEF]
  DEFVAR level
  type float
  address 226
  ENDVAR)"},
    Rule{Code::MissingItems, "missing-items", Severity::Warning, "Rows that no block filled",
         "Messages without a block are CLEAR, variables have their defaults. It is also found where the line "
         "with the display's IP or one of the addresses is missing, or no number stands there.",
         R"(project file:
  [CONFIG]
  SerialPort   COM1)",
         R"(project file:
  [CONFIG]
  IP   192.168.1.103)"},
    Rule{Code::StrayLine, "stray-line", Severity::Warning, "A line that nothing came of",
         "The line stands outside of the blocks, or holds no key that is known there, and was passed over. "
         "Saving leaves it out. Delete it, or correct what it was to be.",
         R"(project file:
  [MODBUS.ADR]
  AnalogInput    100
  RegularMessage 320)",
         R"(project file:
  [MODBUS.ADR]
  AnalogInput    100)"},
    Rule{Code::Utf8Mark, "utf8-mark", Severity::Warning, "The file begins with a mark of UTF-8",
         "An editor that saves such a mark often saves letters beyond ASCII as two bytes, and the display "
         "shows two characters. Save the file as Windows-1252, without a mark.",
         R"(project file:
  (a mark)[CONFIG])",
         R"(project file:
  [CONFIG])"},
    Rule{Code::UnknownCommand, "unknown-command", Severity::Error,
         "A line begins with no command of the display",
         "The display skips a line whose first word is none of its commands: CLEAR, TEXT, TEXTS, IMG, "
         "DISPVAR, DISPVARS, TIME, TIMES, DATE, DATES, IN, OUT and ACT, in capital or small letters. Words "
         "are separated by blanks; a tab separates nothing and is part of its word. Correct the word or "
         "delete the line.",
         R"(STDMSG1:
  CLEAR
  TXET 0 0 RED BLACK "Pump 1"
  ACT STILL 3000)",
         R"(STDMSG1:
  CLEAR
  TEXT 0 0 RED BLACK "Pump 1"
  ACT STILL 3000)",
         Fixes::OnDemand},
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
  ACT STILL 3000)",
         Fixes::OnDemand},
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
  ACT STILL 3000)",
         Fixes::OnDemand},
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
         "A line of a message would break the project's files",
         "In the project's files a message stands between DEFMSG and ENDMSG, and a line such as [STDMSG.ILM] "
         "begins a section. A line of a script that begins like one of these is taken for it when the "
         "project is opened again: messages are cut, are lost or get other numbers. To the display such a "
         "line is not a command. Change it or delete it.",
         R"(STDMSG1:
  CLEAR
  ENDMSG
  TEXT 0 0 RED BLACK "Pump 1"
  ACT STILL 3000)",
         R"(STDMSG1:
  CLEAR
  TEXT 0 0 RED BLACK "ENDMSG"
  ACT STILL 3000)",
         Fixes::OnDemand},
    Rule{Code::LostMessage, "lost-message", Severity::Error, "A message holds nothing but blanks",
         "A message of blanks and line ends alone is gone when the project is opened again, and each message "
         "after it gets the previous number. Write CLEAR.",
         R"(STDMSG1:
  (a blank))",
         R"(STDMSG1:
  CLEAR)",
         Fixes::Offered},
    Rule{Code::PlaceUnknown, "place-unknown", Severity::Error,
         "The list has no column for a place of a master",
         "The names of places are the heads of the list's further columns, in any case; name, address, port, "
         "project and columns are the list's own. Correct the name, or give the list that column.",
         R"(STDMSG1:
  CLEAR
  TEXT 0 0 RED BLACK "Line {line:4}"
  ACT STILL 3000
displays.csv:
  name,address,tank
  Line 3,192.168.1.103,North)",
         R"(STDMSG1:
  CLEAR
  TEXT 0 0 RED BLACK "Line {line:4}"
  ACT STILL 3000
displays.csv:
  name,address,line
  Line 3,192.168.1.103,3)"},
    Rule{
        Code::PlaceWidth, "place-width", Severity::Error, "A value is empty or too wide for its place",
        "A place such as {tank:8} has room for 8 characters, and no value may be empty; one of blanks "
        "shows nothing. Shorten the value, or make the place wider where the message has room. The name of a "
        "bitmap, and an ON or OFF text without a width, may have 200 characters.",
        R"(STDMSG1:
  CLEAR
  TEXT 0 0 RED BLACK "Tank {tank:4}"
  ACT STILL 3000
displays.csv:
  name,address,tank
  Line 3,192.168.1.103,North)",
        R"(STDMSG1:
  CLEAR
  TEXT 0 0 RED BLACK "Tank {tank:5}"
  ACT STILL 3000
displays.csv:
  name,address,tank
  Line 3,192.168.1.103,North)"},
    Rule{Code::PlaceValue, "place-value", Severity::Error,
         "A value holds a character that a place cannot take",
         "The display has the characters of Windows-1252, but no control characters. A quote would end the "
         "text around the place, and a line end its line. Write the value with other characters.",
         R"(STDMSG1:
  CLEAR
  TEXT 0 0 RED BLACK "Tank {tank:9}"
  ACT STILL 3000
displays.csv:
  name,address,tank
  Line 3,192.168.1.103,North "B")",
         R"(STDMSG1:
  CLEAR
  TEXT 0 0 RED BLACK "Tank {tank:9}"
  ACT STILL 3000
displays.csv:
  name,address,tank
  Line 3,192.168.1.103,North 'B')"},
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
         "Characters that lie beyond the edge of the panel, wholly or in part, cannot be read, unless the "
         "page moves across the panel as it enters or leaves, so that each of them is seen. Shorten or move "
         "the text, or let the page leave that way. The panel has as many columns as the check is made for.",
         R"(STDMSG1:
  CLEAR
  TEXT 0 0 RED BLACK "Emergency stop pump"
  ACT STILL 3000)",
         R"(STDMSG1:
  CLEAR
  TEXT 0 0 RED BLACK "Emergency stop pump"
  ACT STILL 3000
  OUT GO-LEFT 1 50)",
         Fixes::Offered},
    Rule{Code::FieldCut, "field-cut", Severity::Warning, "A value does not fit on the panel",
         "A float is as wide as its width says, a Boolean as the longer of its two texts, a time 8 "
         "characters and a date 10. What lies beyond the edge of the panel cannot be read, unless the page "
         "moves across the panel as it enters or leaves. Move the value or make it narrower.",
         R"(STDMSG1:
  CLEAR
  DISPVAR 80 0 RED BLACK RegVar1
  ACT STILL 3000)",
         R"(STDMSG1:
  CLEAR
  DISPVAR 72 0 RED BLACK RegVar1
  ACT STILL 3000)",
         Fixes::Offered},
    Rule{Code::BitmapCut, "bitmap-cut", Severity::Warning, "A bitmap does not fit on the panel",
         "A part of the bitmap lies beyond the edge of the panel and is not seen, unless the page moves "
         "across the panel as it enters or leaves. Move the bitmap or make it smaller, or let the page leave "
         "that way.",
         R"(STDMSG1:
  CLEAR
  IMG 0 0 RED BLACK plan200x16.bmp
  ACT STILL 3000)",
         R"(STDMSG1:
  CLEAR
  IMG 0 0 RED BLACK plan200x16.bmp
  ACT STILL 3000
  OUT GO-LEFT 1 50)",
         Fixes::Offered},
    Rule{Code::FieldGap, "field-gap", Severity::Warning, "A value covers characters of a text",
         "A value fills all of its width with its background colour and covers the characters that are "
         "already there. Leave as many blanks in the text as the value is wide: 7 for a float of width 7.",
         R"(STDMSG1:
  CLEAR
  TEXT 0 0 RED BLACK "Level   m"
  DISPVAR 48 0 RED BLACK RegVar1
  ACT STILL 3000)",
         R"(STDMSG1:
  CLEAR
  TEXT 0 0 RED BLACK "Level        m"
  DISPVAR 48 0 RED BLACK RegVar1
  ACT STILL 3000)",
         Fixes::Offered},
    Rule{Code::FieldOverlap, "field-overlap", Severity::Warning, "Something covers a value",
         "What is drawn later replaces the dots that were drawn before. Where a text, a bitmap or another "
         "value meets a value that is already there, part of that value cannot be read. Begin it where the "
         "value ends.",
         R"(STDMSG1:
  CLEAR
  DISPVAR 0 0 RED BLACK RegVar1
  DISPVAR 48 0 RED BLACK CoilVar1
  ACT STILL 3000)",
         R"(STDMSG1:
  CLEAR
  DISPVAR 0 0 RED BLACK RegVar1
  DISPVAR 56 0 RED BLACK CoilVar1
  ACT STILL 3000)",
         Fixes::Offered},
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
         "The display shows the default of a variable until a value is written to it. The default of a float "
         "is a number that fits into its width and precision, that of a Boolean is 0 or 1. Anything else "
         "counts as the number that it begins with, or as 0; a number that does not fit is shown as stars.",
         R"(RegVar1:
  default 12,5)",
         R"(RegVar1:
  default 12.5)",
         Fixes::OnDemand},
    Rule{Code::BadFormat, "bad-format", Severity::Warning,
         "The display does not support a width or precision",
         "Widths go from 2 to 8 and precisions from 0 to 3; a width of 2 needs precision 0, and a width of 8 "
         "one from 1 to 3. The display may show the value with another width or precision. Choose those that "
         "it supports.",
         R"(RegVar1:
  width 9)",
         R"(RegVar1:
  width 8)",
         Fixes::Offered},
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

std::string mendingText(const Rule& rule) {
    switch (rule.fixes) {
    case Fixes::None:
        return {};
    case Fixes::Offered:
        return "The list of findings and orvista fix know how to mend it.";
    case Fixes::OnDemand:
        return "The list of findings and orvista fix --only " + std::string(rule.name) +
               " know how to mend it.";
    }
    return {};
}

const Rule* ruleNamed(std::string_view name) {
    const auto* const rule = std::ranges::find(table, name, &Rule::name);
    return rule == table.end() ? nullptr : rule;
}

} // namespace orvista
