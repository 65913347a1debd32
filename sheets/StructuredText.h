#pragma once

#include "sheets/PlcVariables.h"

#include <string>

/// An address list as a program for a PLC: IEC 61131-3 Structured Text.
namespace orvista {

/// Of comments: tools of today take both, older ones the first only.
enum class StructuredTextLetters { Ascii, Utf8 };

/// A function that tells the bits of a REAL, the global variables, and the program that fills the buffers
/// from them. \returns lines that end in CR LF; nothing but its comments is beyond ASCII
std::string structuredText(const PlcVariables& variables, const Project& project, const AddressHead& head,
                           StructuredTextLetters letters = StructuredTextLetters::Ascii);

} // namespace orvista
