#include "sheets/StructuredText.h"

#include "model/Numbers.h"
#include "sheets/AsciiText.h"

namespace orvista {

namespace {

/// % stands for the prefix.
constexpr std::string_view realBitsFunction = R"(FUNCTION %RealBits : DWORD
(* The bits of a REAL. Each tool has a way of its own for this, such as a union or a copy of memory: take it in
   place of these lines, which reckon with standard functions only. *)
VAR_INPUT
    Value : REAL;
END_VAR
VAR
    Rest : REAL;
    Exponent : DINT;
    Bits : DWORD;
END_VAR
IF NOT (Value = Value) THEN
    Bits := DWORD#16#7FC00000;
ELSIF Value = 0.0 THEN
    Bits := DWORD#16#00000000;
ELSE
    Rest := ABS(Value);
    Exponent := 127;
    WHILE (Rest >= 2.0) AND (Exponent < 255) DO
        Rest := Rest / 2.0;
        Exponent := Exponent + 1;
    END_WHILE;
    WHILE (Rest < 1.0) AND (Exponent > 1) DO
        Rest := Rest * 2.0;
        Exponent := Exponent - 1;
    END_WHILE;
    IF Exponent = 255 THEN
        Rest := 0.0;
    ELSIF Rest < 1.0 THEN
        Exponent := 0;
    ELSE
        Rest := Rest - 1.0;
    END_IF;
    Bits := SHL(DINT_TO_DWORD(Exponent), 23) OR DINT_TO_DWORD(REAL_TO_DINT(Rest * 8388608.0));
    IF Value < 0.0 THEN
        Bits := Bits OR DWORD#16#80000000;
    END_IF;
END_IF;
%RealBits := Bits;
END_FUNCTION

)";

std::string replacedEach(std::string_view text, char placeholder, std::string_view by) {
    std::string replaced;
    for (const char character : text)
        if (character == placeholder)
            replaced.append(by);
        else
            replaced += character;
    return replaced;
}

/// A text that neither ends the comment around it nor begins one within.
std::string withoutMarks(std::string_view text) {
    std::string split;
    for (const char character : text) {
        if (!split.empty() &&
            ((split.back() == '*' && character == ')') || (split.back() == '(' && character == '*')))
            split += ' ';
        split += character;
    }
    return split;
}

class StructuredTextWriter {
public:
    StructuredTextWriter(const PlcVariables& variables, StructuredTextLetters letters)
        : variables_(variables), letters_(letters) {}

    std::string written(const Project& project, const AddressHead& head);

private:
    std::string comment(std::string_view utf8) const;
    std::string globalVariable(const PlcVariable& variable) const;
    std::string arrayType(const PlcBuffer& buffer) const;
    std::string globalVariables() const;
    std::string externalVariables() const;
    std::string assignment(const PlcVariable& variable) const;
    std::string program() const;
    std::string name(std::string_view own) const { return variables_.prefix + std::string(own); }

    const PlcVariables& variables_;
    StructuredTextLetters letters_;
};

std::string StructuredTextWriter::comment(std::string_view utf8) const {
    const std::string text =
        letters_ == StructuredTextLetters::Ascii ? asciiText(utf8) : withoutControls(utf8);
    return "(* " + withoutMarks(text) + " *)";
}

std::string StructuredTextWriter::globalVariable(const PlcVariable& variable) const {
    if (!variable.isAddressable)
        return "    " + comment(variable.name + ": " + variable.text) + "\n";
    std::string line = "    " + variable.name + " : " + std::string(variable.type);
    if (!variable.initial.empty())
        line.append(" := ").append(variable.initial);
    return line + "; " + comment(variable.text) + "\n";
}

std::string StructuredTextWriter::arrayType(const PlcBuffer& buffer) const {
    return "ARRAY [0.." + decimalText(buffer.count - 1) + "] OF " + std::string(buffer.type);
}

std::string StructuredTextWriter::globalVariables() const {
    std::string text = "VAR_GLOBAL\n";
    for (const PlcVariable& variable : variables_.items)
        text += globalVariable(variable);
    for (const PlcBuffer& buffer : variables_.buffers)
        text += "    " + buffer.name + " : " + arrayType(buffer) + "; " + comment(buffer.text) + "\n";
    return text + "END_VAR\n\n";
}

std::string StructuredTextWriter::externalVariables() const {
    std::string text = "VAR_EXTERNAL\n";
    for (const PlcVariable& variable : variables_.items)
        if (variable.isAddressable)
            text += "    " + variable.name + " : " + std::string(variable.type) + ";\n";
    for (const PlcBuffer& buffer : variables_.buffers)
        text += "    " + buffer.name + " : " + arrayType(buffer) + ";\n";
    return text + "END_VAR\n";
}

std::string StructuredTextWriter::assignment(const PlcVariable& variable) const {
    const auto element = [&](std::size_t index) {
        std::string text;
        for (const PlcBuffer& buffer : variables_.buffers)
            if (buffer.kind == variable.item.kind)
                text = buffer.name + "[" + decimalText(index) + "] := ";
        return text;
    };
    if (variable.item.kind != Kind::Float)
        return element(variable.item.index) + variable.name + ";\n";
    const std::size_t first = std::size_t{2} * variable.item.index;
    const std::string bits = name(plc::bits);
    return bits + " := " + name(plc::realBits) + "(" + variable.name + ");\n" + element(first) +
           "DWORD_TO_WORD(" + bits + ");\n" + element(first + 1) + "DWORD_TO_WORD(SHR(" + bits + ", 16));\n";
}

std::string StructuredTextWriter::program() const {
    std::string text = "PROGRAM " + name(plc::toDisplay) + "\n" + externalVariables() + "VAR\n    " +
                       name(plc::bits) + " : DWORD;\nEND_VAR\n";
    text += comment("Fills what a Modbus client sends. The first of two registers is the low word.") + "\n";
    // Of a program without any statement some tools complain.
    text += name(plc::bits) + " := DWORD#16#00000000;\n";
    for (const PlcVariable& variable : variables_.items)
        if (variable.isAddressable)
            text += assignment(variable);
    return text + "END_PROGRAM\n";
}

std::string StructuredTextWriter::written(const Project& project, const AddressHead& head) {
    std::string text = comment("Addresses of " + projectFileNameOf(project)) + "\n";
    if (!head.display.empty())
        text += comment("Display: " + head.display) + "\n";
    if (!head.fingerprint.empty())
        text += comment("Fingerprint of the project: " + head.fingerprint) + "\n";
    text += comment("As of " + head.time) + "\n\n";
    text += replacedEach(realBitsFunction, '%', variables_.prefix) + globalVariables() + program();
    return replacedEach(text, '\n', "\r\n");
}

} // namespace

std::string structuredText(const PlcVariables& variables, const Project& project, const AddressHead& head,
                           StructuredTextLetters letters) {
    return StructuredTextWriter(variables, letters).written(project, head);
}

} // namespace orvista
