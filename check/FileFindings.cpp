#include "check/FileFindings.h"

#include "model/DeviceFiles.h"
#include "model/Numbers.h"
#include "model/Quotation.h"
#include "model/Text.h"

#include <algorithm>
#include <optional>
#include <string_view>

namespace orvista {

namespace {

using Met = FileRemarkKind;

/// The rows of a section.
struct SectionRows {
    std::size_t count;
    std::string_view name;
    std::string_view unfilled; ///< what a row is that no block filled
};

SectionRows rowsOfSection(const FileRemark& remark) {
    if (remark.section == stdMsgFile.sectionName)
        return {regularMessageCount, "regular messages", "they are CLEAR"};
    if (remark.section == altMsgFile.sectionName)
        return {emergencyMessageCount, "emergency messages", "they are CLEAR"};
    return {floatVariableCount + booleanVariableCount, "variables", "they have their defaults"};
}

bool isOfVariables(const FileRemark& remark) {
    return remark.section == ilmVarFile.sectionName;
}

std::string sectionHeader(const FileRemark& remark) {
    return "[" + upperAscii(remark.section) + "]";
}

std::string andMore(const FileRemark& remark) {
    return remark.count > 1 ? " and " + decimalText(remark.count - 1) + " more" : std::string();
}

/// "STDMSG41 and 3 more"; a block without a name is called so.
std::string nameAndMore(const FileRemark& remark) {
    return (remark.name.empty() ? "a block without a name" : printable(remark.name)) + andMore(remark);
}

std::string_view wasOrWere(const FileRemark& remark) {
    return remark.count > 1 ? " were" : " was";
}

/// "12 of 40 regular messages were read"
std::string readRows(const FileRemark& remark) {
    const SectionRows rows = rowsOfSection(remark);
    return decimalText(rows.count - remark.count) + " of " + decimalText(rows.count) + " " +
           std::string(rows.name) + " were read";
}

/// What became of the part of the file, without what to do about it and in small letters.
std::string briefly(const FileRemark& remark) {
    switch (remark.kind) {
    case Met::NotAProject:
        return "no line of it is the header of a section";
    case Met::ConflictMark:
        return "line " + decimalText(remark.line) + " begins a conflict of a version control";
    case Met::NotText:
        return "line " + decimalText(remark.line) + " holds a NUL byte";
    case Met::CutOff:
        return remark.count > 0 ? readRows(remark) : "it ends inside a block";
    case Met::MissingSection:
        return sectionHeader(remark) + " is missing";
    case Met::DoubleSection:
        return sectionHeader(remark) + " stands there more than once";
    case Met::OpenBlock:
        return nameAndMore(remark) + std::string(wasOrWere(remark)) + " not read";
    case Met::DoubleItem:
        return remark.row +
               std::string(isOfVariables(remark) ? " was read twice" : " repeats what stands before it");
    case Met::MovedMessage:
    case Met::MovedVariable:
        return printable(remark.name) + " was read as " + remark.row;
    case Met::ExtraItems:
        return "there are more blocks than rows";
    case Met::MissingItems:
    case Met::StrayLine:
    case Met::Utf8Mark:
        break; // loses nothing
    }
    return {};
}

/// As a sentence begins; a name at its start stays as the file has it.
std::string capitalized(const FileRemark& remark, std::string text) {
    const bool beginsWithName = !remark.name.empty() && text.starts_with(printable(remark.name));
    if (!beginsWithName && !text.empty() && text.front() >= 'a' && text.front() <= 'z')
        text.front() = static_cast<char>(text.front() - 'a' + 'A');
    return text;
}

std::string movedText(const FileRemark& remark) {
    const std::string others =
        remark.count > 1 ? " (" + decimalText(remark.count - 1) + " more have another number, too)" : "";
    return capitalized(remark, briefly(remark)) + others +
           (isOfVariables(remark)
                ? ", because a variable is known by its address: correct its name or its address."
                : ", because messages are numbered by their order: put the blocks into the order of their "
                  "names.");
}

std::string missingItemsText(const FileRemark& remark) {
    if (remark.section == settingsSection)
        return "The line with the display's IP is missing, so that the address of a new project stands "
               "there: "
               "set it on the System page.";
    if (remark.section == modbusAdrFile.sectionName)
        return "No address was read for " + nameAndMore(remark) + ": look at the page Modbus Setting.";
    const SectionRows rows = rowsOfSection(remark);
    return decimalText(remark.count) + " of " + decimalText(rows.count) + " " + std::string(rows.name) +
           " stand in no block, " + remark.name + " first: " + std::string(rows.unfilled) + ".";
}

std::string doubleItemText(const FileRemark& remark) {
    if (isOfVariables(remark))
        return remark.row +
               " is filled by two blocks, and the later one counts: delete one of them, or correct "
               "its address.";
    return "An ENDMSG stored the text of " + nameAndMore(remark) + " once more, as " + remark.row +
           ", so that later messages move up a number: delete the ENDMSG and what stands before it.";
}

std::string extraItemsText(const FileRemark& remark) {
    return capitalized(remark, nameAndMore(remark)) + std::string(wasOrWere(remark)) + " not read, because " +
           (isOfVariables(remark) ? "no variable lies at the address: correct it, "
                                  : "there are no more rows: delete what is not used, ") +
           "or saving leaves " + (remark.count > 1 ? "them" : "it") + " out.";
}

/// With what to do about it.
std::string remarkText(const FileRemark& remark) {
    const std::string happened = capitalized(remark, briefly(remark));
    switch (remark.kind) {
    case Met::NotAProject:
        return "No line of this file is the header of a section, so the device files of its folder were read "
               "in "
               "its place: take the project from a copy.";
    case Met::ConflictMark:
        return "A version control left a conflict here, and both sides were read: keep one of them, and "
               "delete "
               "the lines of <, = and >.";
    case Met::NotText:
        return "This line" + andMore(remark) + (remark.count > 1 ? " hold" : " holds") +
               " a NUL byte, which is not text: take the file from a copy.";
    case Met::CutOff:
        return "The file ends inside " + sectionHeader(remark) + ": " + briefly(remark) +
               ". Take it from a copy, or the section from a device file (orvista mend).";
    case Met::MissingSection:
        return happened + ", so " + "the folder's " + lowerAscii(remark.section) +
               " was read in its place: look at what is shown, saving writes it.";
    case Met::DoubleSection:
        return happened + ", and only the last one was read: leave one of them.";
    case Met::OpenBlock:
        return happened + ", because " +
               (isOfVariables(remark) ? "it lacks ENDVAR, a name, or the type float or bit"
                                      : "it lacks ENDMSG, a name, or a line") +
               ": complete the block or delete it.";
    case Met::DoubleItem:
        return doubleItemText(remark);
    case Met::MovedMessage:
    case Met::MovedVariable:
        return movedText(remark);
    case Met::ExtraItems:
        return extraItemsText(remark);
    case Met::MissingItems:
        return missingItemsText(remark);
    case Met::StrayLine:
        return "This line" + andMore(remark) + std::string(wasOrWere(remark)) +
               " passed over, because nothing is known by such a line here: delete it, or correct it.";
    case Met::Utf8Mark:
        return "The file begins with a mark of UTF-8: letters beyond ASCII may be read as two each. Save it "
               "as "
               "Windows-1252, without a mark.";
    }
    return {};
}

Place placeOfRemark(const FileRemark& remark) {
    Place place;
    place.file = remark.file.empty() ? projectFileName : remark.file;
    place.line = remark.line;
    return place;
}

/// A variable lies where its address says, whatever its block is called.
bool isMild(const FileRemark& remark) {
    return remark.kind == Met::MovedVariable;
}

Severity severityOf(const FileRemark& remark) {
    return isMild(remark) ? Severity::Warning : ruleOf(codeOf(remark.kind)).severity;
}

/// "STDMSG41 and 3 more", of all sections; empty where there are none.
std::string extraItems(const FileRemarks& remarks) {
    std::optional<FileRemark> all;
    for (const FileRemark& remark : remarks.list()) {
        if (remark.kind != Met::ExtraItems)
            continue;
        if (all)
            all->count += remark.count;
        else
            all = remark;
    }
    return all ? nameAndMore(*all) : std::string();
}

/// The kinds stand in the order of their weight.
const FileRemark& gravest(const FileRemarks& remarks) {
    return *std::ranges::min_element(remarks.list(), {}, &FileRemark::kind);
}

} // namespace

Code codeOf(FileRemarkKind kind) {
    switch (kind) {
    case Met::NotAProject:
        return Code::NotAProject;
    case Met::ConflictMark:
        return Code::ConflictMark;
    case Met::NotText:
        return Code::NotText;
    case Met::CutOff:
        return Code::CutOff;
    case Met::MissingSection:
        return Code::MissingSection;
    case Met::DoubleSection:
        return Code::DoubleSection;
    case Met::OpenBlock:
        return Code::OpenBlock;
    case Met::DoubleItem:
        return Code::DoubleItem;
    case Met::MovedMessage:
    case Met::MovedVariable:
        return Code::MovedItem;
    case Met::ExtraItems:
        return Code::ExtraItems;
    case Met::MissingItems:
        return Code::MissingItems;
    case Met::StrayLine:
        return Code::StrayLine;
    case Met::Utf8Mark:
        return Code::Utf8Mark;
    }
    return Code::NotAProject;
}

bool isError(const FileRemark& remark) {
    return severityOf(remark) == Severity::Error;
}

Findings fileFindings(const FileRemarks& remarks) {
    Findings findings;
    for (const FileRemark& remark : remarks.list()) {
        findings.list.push_back(
            {placeOfRemark(remark), codeOf(remark.kind), remarkText(remark), isMild(remark)});
        findings.counts.add(severityOf(remark), 1);
    }
    return findings;
}

std::string errorText(const FileRemark& remark) {
    return briefly(remark);
}

bool isNotWhole(const FileRemarks& remarks) {
    return std::ranges::any_of(remarks.list(), isError);
}

bool isToRefuse(const FileRemarks& remarks) {
    return std::ranges::any_of(remarks.list(), [](const FileRemark& remark) {
        return isError(remark) && remark.kind != Met::ExtraItems && remark.kind != Met::MovedMessage;
    });
}

std::string gravestText(const FileRemarks& remarks) {
    return briefly(gravest(remarks));
}

std::string lossText(const std::string& projectFile, const FileRemarks& remarks) {
    const std::string file = gravest(remarks).file.empty() ? projectFile : std::string(gravest(remarks).file);
    return file + " is not whole: " + gravestText(remarks);
}

std::string notWholeText(const std::string& projectFile, const FileRemarks& remarks) {
    const std::string leftOut = extraItems(remarks);
    const std::string saving = leftOut.empty() ? "makes it whole as it is shown" : "leaves out " + leftOut;
    return lossText(projectFile, remarks) + ". Saving " + saving + ".";
}

} // namespace orvista
