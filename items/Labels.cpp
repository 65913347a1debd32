#include "items/Labels.h"

#include "model/Item.h"
#include "model/Numbers.h"
#include "model/Text.h"

#include <algorithm>
#include <array>

namespace orvista {

namespace {

/// Keywords of the second and third edition, standard functions and function blocks, and the operators of the
/// instruction list; sorted.
constexpr auto reservedWords = std::to_array<std::string_view>({
    "ABS",
    "ABSTRACT",
    "ACOS",
    "ACTION",
    "ADD",
    "ADD_DT_TIME",
    "ADD_TIME",
    "ADD_TOD_TIME",
    "AND",
    "ANDN",
    "ANY",
    "ANY_BIT",
    "ANY_CHAR",
    "ANY_CHARS",
    "ANY_DATE",
    "ANY_DERIVED",
    "ANY_DURATION",
    "ANY_ELEMENTARY",
    "ANY_INT",
    "ANY_MAGNITUDE",
    "ANY_NUM",
    "ANY_REAL",
    "ANY_SIGNED",
    "ANY_STRING",
    "ANY_UNSIGNED",
    "ARRAY",
    "ASIN",
    "AT",
    "ATAN",
    "ATAN2",
    "BOOL",
    "BY",
    "BYTE",
    "CAL",
    "CALC",
    "CALCN",
    "CASE",
    "CHAR",
    "CLASS",
    "CONCAT",
    "CONCAT_DATE_TOD",
    "CONFIGURATION",
    "CONSTANT",
    "CONTINUE",
    "COS",
    "CTD",
    "CTU",
    "CTUD",
    "D",
    "DATE",
    "DATE_AND_TIME",
    "DELETE",
    "DINT",
    "DIV",
    "DIVTIME",
    "DO",
    "DS",
    "DT",
    "DWORD",
    "ELSE",
    "ELSIF",
    "EN",
    "END_ACTION",
    "END_CASE",
    "END_CLASS",
    "END_CONFIGURATION",
    "END_FOR",
    "END_FUNCTION",
    "END_FUNCTION_BLOCK",
    "END_IF",
    "END_INTERFACE",
    "END_METHOD",
    "END_NAMESPACE",
    "END_PROGRAM",
    "END_REPEAT",
    "END_RESOURCE",
    "END_STEP",
    "END_STRUCT",
    "END_TRANSITION",
    "END_TYPE",
    "END_VAR",
    "END_WHILE",
    "ENO",
    "EQ",
    "EXIT",
    "EXP",
    "EXPT",
    "EXTENDS",
    "FALSE",
    "FINAL",
    "FIND",
    "FOR",
    "FROM",
    "FUNCTION",
    "FUNCTION_BLOCK",
    "F_EDGE",
    "F_TRIG",
    "GE",
    "GT",
    "IF",
    "IMPLEMENTS",
    "INITIAL_STEP",
    "INSERT",
    "INT",
    "INTERFACE",
    "INTERNAL",
    "INTERVAL",
    "JMP",
    "JMPC",
    "JMPCN",
    "L",
    "LD",
    "LDATE",
    "LDATE_AND_TIME",
    "LDN",
    "LDT",
    "LE",
    "LEFT",
    "LEN",
    "LIMIT",
    "LINT",
    "LN",
    "LOG",
    "LREAL",
    "LT",
    "LTIME",
    "LTIME_OF_DAY",
    "LTOD",
    "LWORD",
    "MAX",
    "METHOD",
    "MID",
    "MIN",
    "MOD",
    "MOVE",
    "MUL",
    "MULTIME",
    "MUX",
    "N",
    "NAMESPACE",
    "NE",
    "NON_RETAIN",
    "NOT",
    "NULL",
    "OF",
    "ON",
    "OR",
    "ORN",
    "OVERLAP",
    "OVERRIDE",
    "P",
    "PRIORITY",
    "PRIVATE",
    "PROGRAM",
    "PROTECTED",
    "PUBLIC",
    "R",
    "READ_ONLY",
    "READ_WRITE",
    "REAL",
    "REF",
    "REF_TO",
    "REPEAT",
    "REPLACE",
    "RESOURCE",
    "RET",
    "RETAIN",
    "RETC",
    "RETCN",
    "RETURN",
    "RIGHT",
    "ROL",
    "ROR",
    "RS",
    "R_EDGE",
    "R_TRIG",
    "S",
    "SD",
    "SEL",
    "SHL",
    "SHR",
    "SIN",
    "SINGLE",
    "SINT",
    "SL",
    "SQRT",
    "SR",
    "ST",
    "STEP",
    "STN",
    "STRING",
    "STRUCT",
    "SUB",
    "SUPER",
    "T",
    "TAN",
    "TASK",
    "THEN",
    "THIS",
    "TIME",
    "TIME_OF_DAY",
    "TO",
    "TOD",
    "TOF",
    "TON",
    "TP",
    "TRANSITION",
    "TRUE",
    "TRUNC",
    "TYPE",
    "UDINT",
    "UINT",
    "ULINT",
    "UNTIL",
    "USING",
    "USINT",
    "VAR",
    "VAR_ACCESS",
    "VAR_CONFIG",
    "VAR_EXTERNAL",
    "VAR_GLOBAL",
    "VAR_INPUT",
    "VAR_IN_OUT",
    "VAR_OUTPUT",
    "VAR_TEMP",
    "WCHAR",
    "WHILE",
    "WITH",
    "WORD",
    "WSTRING",
    "XOR",
    "XORN",
});
static_assert(std::ranges::is_sorted(reservedWords));

bool isLetter(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

bool isLabelCharacter(char character) {
    return isLetter(character) || (character >= '0' && character <= '9') || character == '_';
}

} // namespace

bool isReservedWord(std::string_view word) {
    if (word.empty())
        return false;
    const char first = upperAscii(word.substr(0, 1)).front();
    const auto firstOf = [](std::string_view one) { return one.front(); };
    for (const auto* one = std::ranges::lower_bound(reservedWords, first, {}, firstOf);
         one != reservedWords.end() && one->front() == first; ++one)
        if (equalsIgnoringCase(*one, word))
            return true;
    return false;
}

std::string labelFault(std::string_view label) {
    if (label.empty())
        return {};
    if (!std::ranges::all_of(label, &isLabelCharacter))
        return "holds something else than letters A to Z, digits and _";
    if (!isLetter(label.front()) && label.front() != '_')
        return "begins with no letter or _";
    if (label.find("__") != std::string_view::npos)
        return "has two _ together";
    if (label.back() == '_')
        return "ends in _";
    if (label.size() > longestLabel)
        return "is longer than " + decimalText(longestLabel) + " characters";
    if (isReservedWord(label))
        return "is a word that IEC 61131-3 keeps for itself";
    if (const auto item = itemWritten(label))
        return "is the name of " + nameOf(*item);
    return {};
}

} // namespace orvista
