#include "compare/HeldSentences.h"
#include "model/Fields.h"
#include "model/Numbers.h"
#include "model/ProjectFile.h"
#include "tests/compare/HeldCases.h"
#include "tests/support/ExampleProject.h"
#include "tests/support/ScriptedPeople.h"

#include <gmock/gmock.h>

#include <functional>
#include <stdexcept>
#include <system_error>

namespace orvista {
namespace {

using testing::Case;
using ::testing::ElementsAre;
using testing::fileBytes;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using testing::ScriptedMessages;
using ::testing::StartsWith;
using testing::TemporaryFolder;
using testing::TwoFolders;
using testing::writeBytes;

HeldState stateOf(const std::vector<HeldAnswer>& answers, const std::string& name) {
    for (const HeldAnswer& answer : answers)
        if (answer.name == name)
            return answer.state;
    throw std::logic_error("no answer about " + name);
}

/// How the answer about a single file begins.
std::string sentenceAbout(const std::string& file, HeldState state) {
    switch (state) {
    case HeldState::Same:
    case HeldState::Extra:
        return "D holds every byte that an upload sends";
    case HeldState::Equal:
        return "D holds the same, written differently: " + file;
    case HeldState::Different:
        return "D does not hold what an upload sends: " + file;
    case HeldState::Missing:
        break;
    }
    return "D does not hold what an upload sends: " + file + " is not there";
}

class OneDifference : public ::testing::TestWithParam<Case> {};

TEST_P(OneDifference, IsAnsweredAlikeByAll) {
    const TwoFolders folders;
    GetParam().change(folders);
    const ContentsComparison comparison = folders.compared();
    const auto& [what, change, name, state, isEqual] = GetParam();
    const std::string file = name;
    EXPECT_EQ(stateOf(file.ends_with(".bmp") ? comparison.bitmaps : comparison.files, file), state);
    EXPECT_EQ(comparison.isEqual(), isEqual);
    EXPECT_EQ(folders.haveOneFingerprint(), isEqual);
    EXPECT_EQ(comparison.sendingChangesNothing(), isEqual || state == HeldState::Extra);
    EXPECT_EQ(comparison.holdsEveryByte(), state == HeldState::Same || state == HeldState::Extra);
    EXPECT_THAT(verifiedText("D", comparison), StartsWith(sentenceAbout(file, state)));
    const bool isListed = !comparison.items.empty() || !comparison.unexplainedFiles().empty();
    EXPECT_EQ(isListed, !isEqual && !file.ends_with(".bmp"));
}

FetchedFiles filesOf(const TemporaryFolder& folder) {
    FetchedFiles files;
    for (const auto& entry : std::filesystem::directory_iterator(systemPath(folder.path()))) {
        const std::string name = utf8Path(entry.path().filename());
        const auto sink = files.add(name);
        sink->write(fileBytes(folder.file(name)));
        sink->close();
    }
    return files;
}

/// Of each answer all that it says.
std::vector<std::string> toldOf(const ContentsComparison& comparison) {
    std::vector<std::string> told{verifiedText("D", comparison)};
    for (const auto* const answers : {&comparison.files, &comparison.bitmaps})
        for (const HeldAnswer& answer : *answers)
            told.push_back(answer.name + " " + std::to_string(static_cast<int>(answer.state)) + " " +
                           std::to_string(answer.counts) + " " +
                           std::to_string(answer.sizeBefore.value_or(0)) + " " +
                           std::to_string(answer.sizeAfter.value_or(0)) + " " +
                           std::to_string(answer.firstOffset.value_or(0)));
    return told;
}

TEST_P(OneDifference, IsTheSameWhereTheFilesDoNotLieInAFolder) {
    const TwoFolders folders;
    GetParam().change(folders);
    const DisplayContents ours = DisplayContents::ofFolder(folders.ours.path());
    FetchedFiles files = filesOf(folders.theirs);
    const DisplayContents theirs = DisplayContents::ofFetched(files, ours);
    EXPECT_FALSE(files.folder());
    EXPECT_EQ(fingerprint(theirs), fingerprint(DisplayContents::ofFolder(folders.theirs.path())));
    const ContentsComparison comparison = compareContents(ours, theirs);
    EXPECT_EQ(toldOf(comparison), toldOf(folders.compared()));
    EXPECT_EQ(comparison.items.size(), folders.compared().items.size());
    files.toFolder();
    EXPECT_EQ(toldOf(compareContents(ours, DisplayContents::ofFetched(files, ours))), toldOf(comparison));
}

INSTANTIATE_TEST_SUITE_P(Table, OneDifference, ::testing::ValuesIn(testing::heldCases()));

/// Another text that the field takes.
std::string otherText(Item item, const Field& field, const std::string& text) {
    switch (field.rule) {
    case Field::Rule::Script:
        return "CLEAR\r\nSTILL 7";
    case Field::Rule::Line:
        return text + "x";
    case Field::Rule::Number:
        return text == "7.5" ? "8.5" : "7.5";
    case Field::Rule::Whole:
        return item.kind == Kind::AddressMap ? decimalText(std::stoi(text) + 1) : text == "3" ? "4" : "3";
    case Field::Rule::Switch:
        break;
    }
    return text == "0" ? "1" : "0";
}

std::string fileOf(Item item, const Field& field) {
    switch (item.kind) {
    case Kind::AddressMap:
        return field.name == "AlertMessage" ? "modbus.adr (address map)"
                                            : "modbus.adr (address map); ilmvar.def (address map)";
    case Kind::Regular:
        return "stdmsg.ilm (" + nameOf(item) + ")";
    case Kind::Emergency:
        return "altmsg.ilm (" + nameOf(item) + ")";
    case Kind::Float:
    case Kind::Boolean:
        break;
    }
    return "ilmvar.def (" + nameOf(item) + ")";
}

TEST(DisplayContents, EachFieldOfEachItemIsAnsweredAlikeByAll) {
    const Project project = testing::exampleProject();
    const DisplayContents sent = DisplayContents::ofProject(project);
    const std::string known = fingerprint(sent);
    for (const Item item : allItems())
        for (const Field& field : fieldsOf(item.kind)) {
            SCOPED_TRACE(nameOf(item).append(" ").append(field.name));
            Project other = project;
            ASSERT_TRUE(setText(other, item, field, otherText(item, field, textOf(project, item, field))));
            const DisplayContents held = DisplayContents::ofProject(other);
            const ContentsComparison comparison = compareContents(sent, held);
            ASSERT_EQ(comparison.isEqual(), !field.isRead);
            ASSERT_EQ(fingerprint(held) == known, !field.isRead);
            ASSERT_EQ(comparison.sendingChangesNothing(), !field.isRead);
            ASSERT_EQ(verifiedText("D", comparison),
                      field.isRead ? "D does not hold what an upload sends: " + fileOf(item, field)
                                   : "D holds every byte that an upload sends");
            ASSERT_THAT(comparison.unexplainedFiles(), IsEmpty());
            ASSERT_EQ(comparison.items.size(), field.isRead ? 1U : 0U);
        }
}

TEST(DisplayContents, SentencesNameWhatALineHasRoomFor) {
    const TwoFolders folders;
    for (const char* const name : {"1.bmp", "2.bmp", "3.bmp", "4.bmp", "5.bmp", "6.bmp"})
        writeBytes(folders.ours.file(name), "BM");
    EXPECT_EQ(verifiedText("D", folders.compared()),
              "D does not hold what an upload sends: 1.bmp is not there; 2.bmp is not there; "
              "3.bmp is not there; 4.bmp is not there; 5.bmp is not there and 1 more");
    EXPECT_EQ(notThereText({"a"}), "a is not there");
    EXPECT_EQ(notThereText({"a", "b\n"}), "a, b? are not there");
}

TEST(DisplayContents, AFileIsNamedWhereNoItemOfItsOwnSaysWhatDiffers) {
    const TwoFolders folders;
    folders.replace("stdmsg.ilm", "CLEAR\r\n", "CLEAR\r\nACT STILL 7\r\n");
    EXPECT_THAT(folders.compared().unexplainedFiles(), IsEmpty());
    folders.replace("altmsg.ilm", "DEFMSG ALTMSG1\r\n", "stray\r\nDEFMSG ALTMSG1\r\n");
    const auto unexplained = folders.compared().unexplainedFiles();
    ASSERT_EQ(unexplained.size(), 1U);
    EXPECT_EQ(unexplained.front().name, "altmsg.ilm");
}

TEST(DisplayContents, OfAnUploadAreTheFolderUnlessTheProjectIsModified) {
    const TwoFolders folders;
    Project project = DisplayContents::ofFolder(folders.ours.path()).project();
    project.ProjPath = folders.theirs.path();
    folders.replace("default.pls", "STDMSG1\r\n", "STDMSG2\r\n");
    const auto playList = [&project] {
        return DisplayContents::ofUpload(project).files().back().bytes.value().substr(0, 17);
    };
    EXPECT_EQ(playList(), "DISPMSG STDMSG2\r\n");
    project.modified = true;
    EXPECT_EQ(playList(), "DISPMSG STDMSG1\r\n");
    std::filesystem::remove(folders.theirs.file("default.pls"));
    EXPECT_EQ(playList(), "DISPMSG STDMSG1\r\n");
    project.modified = false;
    EXPECT_THROW(DisplayContents::ofUpload(project), std::system_error);
}

TEST(DisplayContents, KeepTheLinesOfAProjectWhoseFilesSayTheSame) {
    Project project = testing::exampleProject();
    project.STDMSG[0] = "\r\nCLEAR\r\n\r\nSTILL 7";
    project.STDMSG[1] = "CLEAR\r\nENDMSG\r\nSTILL 7";
    const DisplayContents contents = DisplayContents::ofProject(project);
    EXPECT_EQ(contents.project().STDMSG[0], project.STDMSG[0]);
    EXPECT_EQ(contents.project().STDMSG[1], "CLEAR\r\n");
}

TEST(DisplayContents, OfAProjectAreWhatSavingWrites) {
    const TwoFolders folders;
    const DisplayContents files = DisplayContents::ofFolder(folders.ours.path());
    Project project = files.project();
    project.ProjPath = folders.ours.path();
    const DisplayContents saved = DisplayContents::ofProject(project);
    const ContentsComparison comparison = compareContents(files, saved);
    EXPECT_TRUE(comparison.isEqual());
    EXPECT_EQ(fingerprint(files), fingerprint(saved));
    EXPECT_EQ(stateOf(comparison.files, "modbus.adr"), HeldState::Same);
    EXPECT_EQ(stateOf(comparison.files, "default.pls"), HeldState::Same);
}

TEST(DisplayContents, OfAFolderWithoutFilesHoldNoProject) {
    const TemporaryFolder folder;
    EXPECT_FALSE(DisplayContents::ofFolder(folder.path()).holdsProject());
    for (const DeviceFile* const file : deviceFiles)
        writeBytes(folder.file(std::string(file->name)), "nothing that a reader takes\r\n");
    EXPECT_FALSE(DisplayContents::ofFolder(folder.path()).holdsProject());
    writeBytes(folder.file("altmsg.ilm"), "DEFMSG ALTMSG1\r\nCLEAR\r\nENDMSG\r\n");
    EXPECT_TRUE(DisplayContents::ofFolder(folder.path()).holdsProject());
}

TEST(DisplayContents, NamesThatDifferInCaseOnlyArePairedAsTheyAre) {
    const TwoFolders folders;
    for (const TemporaryFolder* const folder : {&folders.ours, &folders.theirs})
        writeBytes(folder->file("PUMP.bmp"), "BM");
    if (fileBytes(folders.ours.file("pump.bmp")) == "BM")
        GTEST_SKIP() << "this file system does not tell cases apart";
    EXPECT_TRUE(folders.compared().isEqual());
    EXPECT_TRUE(folders.haveOneFingerprint());
    std::filesystem::rename(folders.theirs.file("PUMP.bmp"), folders.theirs.file("Pump.bmp"));
    EXPECT_FALSE(folders.compared().isEqual());
    EXPECT_FALSE(folders.haveOneFingerprint());
}

/// How often a changed byte made no difference, and how often one.
struct Agreements {
    std::size_t equal = 0;
    std::size_t different = 0;
};

/// Changes bytes of a file of theirs, one at a time. Both answers about what is read then must be the same.
void holdTogether(const TwoFolders& folders, const std::string& name, const DisplayContents& ours,
                  const std::function<DisplayContents()>& theirs, Agreements& agreements) {
    const std::string known = fingerprint(ours);
    const std::string bytes = fileBytes(folders.theirs.file(name));
    // Blocks are alike: a step that shares no factor with their length reaches each place of one.
    const std::size_t step = bytes.size() > 2000 ? 37 : bytes.size() > 500 ? 3 : 1;
    for (std::size_t at = 0; at < bytes.size(); at += step) {
        std::string changed = bytes;
        changed[at] = static_cast<char>(at % 3 == 0 ? ' ' : changed[at] ^ 0x20);
        writeBytes(folders.theirs.file(name), changed);
        const DisplayContents held = theirs();
        const bool isEqual = compareContents(ours, held).isEqual();
        ASSERT_EQ(fingerprint(held) == known, isEqual) << name << " at " << at;
        (isEqual ? agreements.equal : agreements.different) += 1;
    }
    writeBytes(folders.theirs.file(name), bytes);
}

// Whatever byte changes, and to whatever: both answers are the same, and one that they notice is noticed by
// both.
TEST(DisplayContents, FingerprintAndComparisonAgreeOnEveryChangedByte) {
    const TwoFolders folders;
    const DisplayContents ours = DisplayContents::ofFolder(folders.ours.path());
    Agreements agreements;
    for (const char* const name :
         {"modbus.adr", "ilmvar.def", "stdmsg.ilm", "altmsg.ilm", "default.pls", "pump.bmp"})
        holdTogether(
            folders, name, ours, [&] { return DisplayContents::ofFolder(folders.theirs.path()); },
            agreements);
    EXPECT_GT(agreements.equal, 50U);
    EXPECT_GT(agreements.different, 500U);
}

/// What saving the project in that folder writes.
DisplayContents projectIn(const TemporaryFolder& folder) {
    ScriptedMessages messages;
    Project project;
    const PathRules paths = PathRules::native();
    DocMgrModule::readProjectWithoutWriting(folder.file("PUMPSTATION.orx"), project, {paths, messages});
    return DisplayContents::ofProject(project);
}

Agreements agreementsAboutProjectFile(const TwoFolders& folders) {
    Agreements agreements;
    holdTogether(
        folders, "PUMPSTATION.orx", projectIn(folders.ours), [&] { return projectIn(folders.theirs); },
        agreements);
    return agreements;
}

TEST(DisplayContents, FingerprintAndComparisonAgreeOnChangedBytesOfAProjectFile) {
    const Agreements agreements = agreementsAboutProjectFile(TwoFolders());
    EXPECT_GT(agreements.equal, 5U);
    EXPECT_GT(agreements.different, 100U);
}

TEST(DisplayContents, FingerprintAndComparisonAgreeOnEveryChangedByteOfASmallProjectFile) {
    const TwoFolders folders;
    for (const TemporaryFolder* const folder : {&folders.ours, &folders.theirs})
        writeBytes(folder->file("PUMPSTATION.orx"),
                   "[CONFIG]\r\nIP 127.0.0.1\r\n"
                   "[MODBUS.ADR]\r\nAnalogInput 100\r\nDigitalInput 100\r\nAlertMessage 300\r\n"
                   "[STDMSG.ILM]\r\nDEFMSG STDMSG1\r\nCLEAR\r\nIMG 0 0 RED BLACK pump.bmp\r\nENDMSG\r\n"
                   "[ALTMSG.ILM]\r\nDEFMSG ALTMSG1\r\nTEXT 0 0 RED BLACK \"a\"\r\nENDMSG\r\n"
                   "[ILMVAR.DEF]\r\nDEFVAR RegVar1\r\ntype float\r\naddress 100\r\ndefault 1\r\nENDVAR\r\n"
                   "DEFVAR CoilVar1\r\ntype bit\r\naddress 100\r\non \"A\"\r\noff \"B\"\r\nENDVAR\r\n");
    const Agreements agreements = agreementsAboutProjectFile(folders);
    EXPECT_GT(agreements.equal, 20U);
    EXPECT_GT(agreements.different, 100U);
}

} // namespace
} // namespace orvista
