#include "check/RemarkTexts.h"

#include "model/Item.h"
#include "model/Numbers.h"
#include "model/Quotation.h"
#include "model/Text.h"
#include "script/Styles.h"

#include <string_view>

namespace orvista {

namespace {

/// What a word of a command is called, and what may stand there.
struct Expected {
    std::string_view name;
    std::string possible;
};

Expected expected(ScriptArgument argument) {
    switch (argument) {
    case ScriptArgument::X:
        return {"an x position", "how many dots it is from the left edge"};
    case ScriptArgument::Y:
        return {"a y position", "how many dots it is from the top"};
    case ScriptArgument::Foreground:
        return {"a foreground colour", choiceOf(colourStyles)};
    case ScriptArgument::Background:
        return {"a background colour", choiceOf(colourStyles)};
    case ScriptArgument::Text:
        return {"a text between double quotes", "the text, with a double quote before and after it"};
    case ScriptArgument::FileName:
        return {"the name of a bitmap", "the name of a .bmp file of the project's folder"};
    case ScriptArgument::Variable:
        return {"a variable", namesOf(Kind::Float) + " or " + namesOf(Kind::Boolean)};
    case ScriptArgument::Effect:
        return {"an effect", choiceOf(effectStyles)};
    case ScriptArgument::Act:
        return {"a special effect", choiceOf(actStyles)};
    case ScriptArgument::Pixels:
        return {"a number of dots to move by", "a whole number from 1"};
    case ScriptArgument::Speed:
        return {"a speed", "the milliseconds from one move to the next, such as 50"};
    case ScriptArgument::Hold:
        return {"a time", "how many milliseconds the page stands still, such as 3000"};
    case ScriptArgument::BlinkCount:
        return {"a number of blinks", "a whole number, such as 4"};
    case ScriptArgument::BlinkTime:
        return {"a time", "the milliseconds that the page is dark and lit again, such as 75"};
    }
    return {};
}

/// What a moving effect lacks when one of its two numbers is not there; empty for every other line.
std::string lackingNumbers(const ScriptRemark& remark) {
    if (!remark.word.empty() ||
        (remark.argument != ScriptArgument::Pixels && remark.argument != ScriptArgument::Speed))
        return {};
    ScriptWords words(remark.text);
    const std::string command = upperAscii(words.word());
    const std::string effect = upperAscii(words.word());
    if (effect.empty() || effect == styleOf(Effect::Fade).shown)
        return {};
    const std::string start = command + " " + effect;
    return start + " needs two numbers, dots and milliseconds: write " + start + " 1 50.";
}

std::string wrongArgumentText(const ScriptRemark& remark, const Expected& expected) {
    if (const std::string text = lackingNumbers(remark); !text.empty())
        return "The display skips this line, because " + text;
    const std::string problem = remark.word.empty()
                                    ? std::string(expected.name) + " is missing"
                                    : deviceQuotation(remark.word) + " is not " + std::string(expected.name);
    return "The display skips this line, because " + problem + ": write " + expected.possible + ".";
}

} // namespace

Code codeOf(RemarkReason reason) {
    switch (reason) {
    case RemarkReason::UnknownCommand:
        return Code::UnknownCommand;
    case RemarkReason::BadArgument:
        return Code::BadArgument;
    case RemarkReason::VariableRange:
        return Code::VariableRange;
    case RemarkReason::PageFull:
        return Code::PageFull;
    }
    return Code::UnknownCommand;
}

std::string remarkText(const ScriptRemark& remark) {
    switch (remark.reason) {
    case RemarkReason::UnknownCommand:
        return "The display will skip this line: " + deviceQuotation(remark.word) +
               " is not a command. Correct or delete it.";
    case RemarkReason::BadArgument:
        return wrongArgumentText(remark, expected(remark.argument.value()));
    case RemarkReason::VariableRange:
        return "The display skips this line, because there is no variable " + deviceQuotation(remark.word) +
               ": write " + expected(ScriptArgument::Variable).possible + ".";
    case RemarkReason::PageFull:
        return "The display skips this line, because the page draws " + decimalText(maximumElementsOfAPage) +
               " things already: begin another page with CLEAR.";
    }
    return {};
}

} // namespace orvista
