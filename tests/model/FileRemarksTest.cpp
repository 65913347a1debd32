#include "model/FileRemarks.h"

#include "model/DeviceFiles.h"
#include "model/ProjectFile.h"
#include "model/SystemPath.h"
#include "tests/support/ExpectedFiles.h"
#include "tests/support/ScriptedPeople.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <ostream>

namespace orvista {

void PrintTo(const FileRemark& remark, std::ostream* out) {
    *out << "kind " << static_cast<int>(remark.kind) << " file '" << remark.file << "' section '"
         << remark.section << "' line " << remark.line << " count " << remark.count << " name '"
         << remark.name << "' row '" << remark.row << "'";
}

namespace {

using namespace orvista::testing;
using Met = FileRemarkKind;

constexpr std::string_view adr = "Modbus.adr";
constexpr std::string_view std_ = "StdMsg.ilm";
constexpr std::string_view alt = "AltMsg.ilm";
constexpr std::string_view var = "ilmVar.def";

/// Line numbers of the project file that is whole.
constexpr std::size_t firstMessage = 9;     // behind [STDMSG.ILM]
constexpr std::size_t alertHeader = 129;    // 40 blocks of three lines later
constexpr std::size_t variableHeader = 190; // 20 more
constexpr std::size_t allLines = 190 + 64 * 7 + 32 * 8;

/// Where line `number` of the text begins.
std::size_t at(const std::string& text, std::size_t number) {
    std::size_t position = 0;
    while (--number > 0)
        position = text.find('\n', position) + 1;
    return position;
}

std::string without(std::string text, std::size_t first, std::size_t count = 1) {
    const std::size_t begin = at(text, first);
    return text.erase(begin, at(text, first + count) - begin);
}

std::string with(std::string text, std::size_t number, const std::string& line) {
    return text.insert(at(text, number), line + "\r\n");
}

std::string whole() {
    return expectedProjectFile("127.0.0.1");
}

struct Case {
    const char* name;
    std::string file;
    std::vector<FileRemark> met;
};

void PrintTo(const Case& one, std::ostream* out) {
    *out << one.name;
}

class FileRemarksOf : public ::testing::TestWithParam<Case> {
protected:
    std::vector<FileRemark> metIn(const std::string& bytes) {
        writeBytes(folder.file("P.orx"), bytes);
        Project project;
        FileRemarks remarks;
        DocMgrModule::readProjectWithoutWriting(folder.file("P.orx"), project, context, &remarks);
        return remarks.list();
    }
    /// The files of the folder, which are read where a section is missing, are whole.
    void writeDeviceFiles() {
        writeBytes(folder.file("modbus.adr"), expectedAddressMap);
        writeBytes(folder.file("stdmsg.ilm"), expectedMessages("STDMSG", 40));
        writeBytes(folder.file("altmsg.ilm"), expectedMessages("ALTMSG", 20));
        writeBytes(folder.file("ilmvar.def"), expectedFloats() + expectedBooleans(""));
    }

    TemporaryFolder folder;
    PathRules rules = PathRules::native();
    ScriptedMessages messages;
    DocMgrModule::FileContext context{rules, messages};
};

TEST_P(FileRemarksOf, TellsWhatTheReadersDid) {
    writeDeviceFiles();
    EXPECT_EQ(metIn(GetParam().file), GetParam().met);
    EXPECT_TRUE(messages.shown.empty());
}

/// A whole project file whose first messages are these lines; with as many lines as before.
std::string startingWith(const std::string& messages, std::size_t replacedBlocks) {
    std::string text = without(whole(), firstMessage, replacedBlocks * 3);
    return text.insert(at(text, firstMessage), messages);
}

std::string replaced(std::string text, const std::string& part, const std::string& other) {
    return text.replace(text.find(part), part.size(), other);
}

const std::string threeMessages = "[CONFIG]\r\nIP 127.0.0.1\r\n[MODBUS.ADR]\r\n" + expectedAddressMap +
                                  "[STDMSG.ILM]\r\n" + expectedMessages("STDMSG", 3) +
                                  "[ALTMSG.ILM]\r\n[ILMVAR.DEF]\r\n";

std::vector<FileRemark> missingSections() {
    return {{Met::MissingSection, {}, adr},
            {Met::MissingSection, {}, var},
            {Met::MissingSection, {}, std_},
            {Met::MissingSection, {}, alt}};
}

std::vector<FileRemark> joined(std::vector<FileRemark> list, const std::vector<FileRemark>& more) {
    list.insert(list.end(), more.begin(), more.end());
    return list;
}

const std::vector<Case> cases{
    {"whole", whole(), {}},
    {"empty", "",
     joined(joined({{Met::NotAProject, {}, {}}}, missingSections()),
            {{Met::MissingItems, {}, "CONFIG", 0, 1, "IP"}})},
    {"missing section", without(whole(), alertHeader, 61), {{Met::MissingSection, {}, alt}}},
    {"message without end",
     without(whole(), firstMessage + 2),
     {{Met::MissingItems, {}, std_, 8, 1, "STDMSG40"},
      {Met::OpenBlock, {}, std_, 9, 1, "STDMSG1"},
      {Met::MovedMessage, {}, std_, 11, 39, "STDMSG2", "STDMSG1"}}},
    {"message without name",
     startingWith("DEFMSG\r\nCLEAR\r\nENDMSG\r\n", 1),
     {{Met::MissingItems, {}, std_, 8, 1, "STDMSG40"},
      {Met::OpenBlock, {}, std_, 9, 1, ""},
      {Met::MovedMessage, {}, std_, 12, 39, "STDMSG2", "STDMSG1"}}},
    {"messages without a line",
     startingWith("DEFMSG STDMSG1\r\nENDMSG\r\nDEFMSG STDMSG2\r\n \r\nENDMSG\r\n", 2),
     {{Met::MissingItems, {}, std_, 8, 2, "STDMSG39"},
      {Met::OpenBlock, {}, std_, 9, 2, "STDMSG1"},
      {Met::MovedMessage, {}, std_, 14, 38, "STDMSG3", "STDMSG1"}}},
    {"second end",
     with(whole(), firstMessage + 3, "ENDMSG"),
     {{Met::DoubleItem, {}, std_, 12, 1, "STDMSG1", "STDMSG2"},
      {Met::MovedMessage, {}, std_, 13, 38, "STDMSG2", "STDMSG3"},
      {Met::ExtraItems, {}, std_, 127, 1, "STDMSG40"}}},
    {"end behind a line of its own",
     with(with(whole(), firstMessage + 3, "ENDMSG"), firstMessage + 3, "MORE"),
     {{Met::StrayLine, {}, std_, 12},
      {Met::DoubleItem, {}, std_, 13, 1, "STDMSG1", "STDMSG2"},
      {Met::MovedMessage, {}, std_, 14, 38, "STDMSG2", "STDMSG3"},
      {Met::ExtraItems, {}, std_, 128, 1, "STDMSG40"}}},
    {"names in another order",
     startingWith("DEFMSG altmsg1\r\nCLEAR\r\nENDMSG\r\nDEFMSG start\r\nCLEAR\r\nENDMSG\r\n"
                  "DEFMSG stdmsg03\r\nCLEAR\r\nENDMSG\r\nDEFMSG STDMSG99\r\nCLEAR\r\nENDMSG\r\n",
                  4),
     {{Met::MovedMessage, {}, std_, 9, 2, "altmsg1", "STDMSG1"}}},
    {"four messages too many",
     with(whole(), alertHeader,
          "DEFMSG STDMSG41\r\nCLEAR\r\nENDMSG\r\nDEFMSG STDMSG42\r\nENDMSG\r\nDEFMSG\r\nDEFMSG "
          "STDMSG44\r\nENDMSG"),
     {{Met::ExtraItems, {}, std_, 129, 4, "STDMSG41"}}},
    {"lines behind the last message",
     with(with(whole(), alertHeader, "ENDMSG"), alertHeader, "MORE"),
     {{Met::StrayLine, {}, std_, 129}}},
    {"lines before the first message",
     with(whole(), firstMessage, "; by hand\r\nENDMSG"),
     {{Met::StrayLine, {}, std_, 9}}},
    {"section twice",
     with(whole(), firstMessage - 1, "[stdmsg.ilm]\r\nDEFMSG\r\n[config]\r\n[CONFIG]"),
     {{Met::DoubleSection, {}, std_, 12}}},
    {"cut inside a block",
     whole().substr(0, whole().size() - 8),
     {{Met::OpenBlock, {}, var, allLines - 7, 1, "CoilVar32"},
      {Met::CutOff, {}, var, allLines - 1, 1, "CoilVar32"}}},
    {"cut between blocks",
     without(whole(), allLines - 15, 16),
     {{Met::CutOff, {}, var, allLines - 16, 2, "CoilVar31"}}},
    {"cut within a section",
     without(whole(), firstMessage + 36, allLines - firstMessage - 35),
     {{Met::MissingSection, {}, var},
      {Met::MissingSection, {}, alt},
      {Met::CutOff, {}, std_, 44, 28, "STDMSG13"}}},
    {"three messages by hand",
     threeMessages,
     {{Met::MissingItems, {}, std_, 7, 37, "STDMSG4"},
      {Met::MissingItems, {}, alt, 17, 20, "ALTMSG1"},
      {Met::MissingItems, {}, var, 18, 96, "RegVar1"}}},
    {"conflict",
     with(whole(), 3, "<<<<<<< HEAD\r\nIP   127.0.0.2\r\n=======\r\nIP   127.0.0.3\r\n>>>>>>> other"),
     {{Met::ConflictMark, {}, "CONFIG", 3}, {Met::StrayLine, {}, "CONFIG", 3, 3}}},
    {"no conflict", with(whole(), 10, "<<<<<<<HEAD\r\n<<<<<<<\r\n======= \r\n>>>>>>>"), {}},
    {"conflict within a message",
     with(whole(), 10, "<<<<<<<\r\n=======\r\nCLEAR\r\n=======\r\n>>>>>>>"),
     {{Met::ConflictMark, {}, std_, 10}}},
    {"NUL",
     with(with(whole(), 2, std::string("IP \0", 4)), 11, std::string("\0\r\n\0", 4)),
     {{Met::NotText, {}, "CONFIG", 2}, {Met::NotText, {}, std_, 11, 2}}},
    {"no settings", without(whole(), 1, 3), {{Met::MissingItems, {}, "CONFIG", 0, 1, "IP"}}},
    {"no address", without(whole(), 3), {{Met::MissingItems, {}, "CONFIG", 1, 1, "IP"}}},
    {"addresses missing or no numbers",
     replaced(without(whole(), 7), "AnalogInput    100", "AnalogInput    x"),
     {{Met::MissingItems, {}, adr, 4, 2, "AnalogInput"},
      {Met::MissingItems, {}, var, 189, 50, "RegVar1"},
      {Met::MovedVariable, {}, var, 190, 14, "RegVar1", "RegVar51"},
      {Met::ExtraItems, {}, var, 190 + 14 * 7, 50, "RegVar15"}}},
    {"stray lines",
     with(with(with(whole(), 5, "Regular 1"), 3, "IQ 1"), 1, "x"),
     {{Met::StrayLine, {}, {}, 1}, {Met::StrayLine, {}, "CONFIG", 4}, {Met::StrayLine, {}, adr, 7}}},
    {"mark", "\xEF\xBB\xBF" + whole(), {{Met::Utf8Mark, {}, {}, 1}}},
};

INSTANTIATE_TEST_SUITE_P(ProjectFile, FileRemarksOf, ::testing::ValuesIn(cases));

/// The first block of the variables, with another one in its place.
std::string withVariable(const std::string& block) {
    const std::string text = without(whole(), variableHeader + 1, 7);
    return std::string(text).insert(at(text, variableHeader + 1), block);
}

/// The last section alone is not full, so the file counts as cut off.
FileRemark cutOff(std::size_t lines) {
    return {Met::CutOff, {}, var, lines, 1, "RegVar1"};
}

const std::vector<Case> variableCases{
    {"without an end",
     without(whole(), variableHeader + 7),
     {{Met::OpenBlock, {}, var, 191, 1, "RegVar1"}, cutOff(allLines - 1)}},
    {"without a name",
     withVariable("DEFVAR\r\ntype float\r\naddress 100\r\nENDVAR\r\n"),
     {{Met::OpenBlock, {}, var, 191}, {Met::StrayLine, {}, var, 192, 2}, cutOff(allLines - 3)}},
    {"without a line",
     withVariable("DEFVAR RegVar1\r\nENDVAR\r\n"),
     {{Met::OpenBlock, {}, var, 191, 1, "RegVar1"}, cutOff(allLines - 5)}},
    {"of no type",
     withVariable("DEFVAR RegVar1\r\ntype word\r\naddress 100\r\nENDVAR\r\n"),
     {{Met::OpenBlock, {}, var, 191, 1, "RegVar1"}, cutOff(allLines - 3)}},
    {"row filled twice",
     withVariable("DEFVAR RegVar1\r\ntype float\r\naddress 102\r\nENDVAR\r\n"),
     {{Met::MovedVariable, {}, var, 191, 1, "RegVar1", "RegVar2"},
      {Met::DoubleItem, {}, var, 195, 1, "RegVar2", "RegVar2"},
      cutOff(allLines - 3)}},
    {"at no row's address",
     withVariable("DEFVAR RegVar1\r\ntype float\r\naddress 99999999999\r\nENDVAR\r\n"),
     {{Met::ExtraItems, {}, var, 191, 1, "RegVar1"}, cutOff(allLines - 3)}},
    {"of a name of its own, with keys that set nothing",
     withVariable("DEFVAR level\r\nTYPE FLOAT\r\naddress 100\r\ndefault\r\nON x\r\nunit bar\r\n"
                  "ENDVAR\r\nENDVAR\r\n"),
     {{Met::StrayLine, {}, var, 196}}},
    {"field behind its block",
     withVariable("DEFVAR RegVar1\r\ntype float\r\naddress 100\r\nENDVAR\r\nprecision 2\r\n"),
     {{Met::StrayLine, {}, var, 195}}},
};

INSTANTIATE_TEST_SUITE_P(Variables, FileRemarksOf, ::testing::ValuesIn(variableCases));

class FileRemarksOfAFolder : public FileRemarksOf {
protected:
    std::vector<FileRemark> metInFolder() {
        Project project;
        FileRemarks remarks;
        ConfigModule::readDeviceFiles(folder.path(), project, context, modbusAdrFile.name, &remarks);
        return remarks.list();
    }
};

TEST_F(FileRemarksOfAFolder, AreAboutTheDeviceFiles) {
    writeDeviceFiles();
    EXPECT_TRUE(metInFolder().empty());
    writeBytes(folder.file("modbus.adr"), "DigitalInput 100\r\nAlertMessage 300\r\n");
    writeBytes(folder.file("stdmsg.ilm"), expectedMessages("STDMSG", 3) + "\r\n");
    writeBytes(folder.file("altmsg.ilm"), expectedMessages("ALTMSG", 12) + "DEFMSG ALTMSG13\r\nCLEAR");
    writeBytes(folder.file("ilmvar.def"),
               std::string("x\0\r\n", 4) + expectedFloats() + expectedBooleans(""));
    EXPECT_EQ(metInFolder(), (std::vector<FileRemark>{
                                 {Met::MissingItems, "modbus.adr", adr, 0, 1, "AnalogInput"},
                                 {Met::MissingItems, "stdmsg.ilm", std_, 0, 37, "STDMSG4"},
                                 {Met::NotText, "ilmvar.def", var, 1},
                                 {Met::StrayLine, "ilmvar.def", var, 1},
                                 {Met::OpenBlock, "altmsg.ilm", alt, 37, 1, "ALTMSG13"},
                                 {Met::CutOff, "altmsg.ilm", alt, 38, 8, "ALTMSG13"},
                             }));
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(FileRemarksOfAFolder, OfAFileThatIsNotThereItsMessageIsEnough) {
    writeDeviceFiles();
    std::filesystem::remove(systemPath(folder.file("stdmsg.ilm")));
    EXPECT_TRUE(metInFolder().empty());
    EXPECT_EQ(messages.shown.size(), 1U);
}

TEST_F(FileRemarksOfAFolder, TheFileReadInPlaceOfASectionIsJudgedUnderItsOwnName) {
    writeDeviceFiles();
    writeBytes(folder.file("altmsg.ilm"), expectedMessages("ALTMSG", 20) + "x\r\n");
    EXPECT_EQ(
        metIn(without(whole(), alertHeader, 61)),
        (std::vector<FileRemark>{{Met::MissingSection, {}, alt}, {Met::StrayLine, "altmsg.ilm", alt, 61}}));
}

TEST_F(FileRemarksOfAFolder, AnAddressThatDoesNotFitIsMissing) {
    EXPECT_EQ(metIn(replaced(whole(), "DigitalInput   100", "DigitalInput   9999999999")),
              (std::vector<FileRemark>{{Met::MissingItems, {}, adr, 4, 2, "DigitalInput"}}));
    EXPECT_EQ(messages.shown.size(), 1U) << "the reader stops there, as before";
}

TEST_F(FileRemarksOfAFolder, AreKnownBeforeOpeningReplacesADeviceFile) {
    writeDeviceFiles();
    const std::string former = expectedMessages("STDMSG", 40, 7, "TEXT 1");
    writeBytes(folder.file("stdmsg.ilm"), former);
    writeBytes(folder.file("P.orx"), threeMessages);
    std::size_t remarks = 0;
    Project project;
    EXPECT_TRUE(DocMgrModule::ReadProject(folder.file("P.orx"), project, context,
                                          [&](const std::string& of, const FileRemarks& met) {
                                              EXPECT_EQ(of, folder.path());
                                              EXPECT_EQ(fileBytes(folder.file("stdmsg.ilm")), former);
                                              remarks = met.list().size();
                                          }));
    EXPECT_EQ(remarks, 3U);
    EXPECT_EQ(fileBytes(folder.file("stdmsg.ilm")), expectedMessages("STDMSG", 3));
}

} // namespace
} // namespace orvista
