#include "compare/DisplayContents.h"
#include "compare/ContentsComparison.h"
#include "model/SystemPath.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <functional>
#include <set>
#include <string_view>

namespace orvista {
namespace {

using testing::fileBytes;
using testing::TemporaryFolder;
using testing::writeBytes;

/// Two folders with the files of the example, one of which is changed.
class TwoFolders {
public:
    TwoFolders() {
        for (const auto& entry : std::filesystem::directory_iterator(ORVISTA_EXAMPLES "/pumpstation")) {
            std::filesystem::copy(entry, systemPath(ours.path()));
            std::filesystem::copy(entry, systemPath(theirs.path()));
        }
    }
    void replace(const std::string& name, std::string_view part, std::string_view by) const {
        std::string bytes = fileBytes(theirs.file(name));
        const auto at = bytes.find(part);
        ASSERT_NE(at, std::string::npos) << part;
        writeBytes(theirs.file(name), bytes.replace(at, part.size(), by));
    }
    ContentsComparison compared() const {
        return compareContents(DisplayContents::ofFolder(ours.path()),
                               DisplayContents::ofFolder(theirs.path()));
    }
    bool haveOneFingerprint() const {
        return fingerprint(DisplayContents::ofFolder(ours.path())) ==
               fingerprint(DisplayContents::ofFolder(theirs.path()));
    }

    TemporaryFolder ours;
    TemporaryFolder theirs;
};

HeldState stateOf(const std::vector<HeldAnswer>& answers, const std::string& name) {
    for (const HeldAnswer& answer : answers)
        if (answer.name == name)
            return answer.state;
    throw std::logic_error("no answer about " + name);
}

/// What is done to one side, and what is said of it then.
struct Case {
    const char* what;
    std::function<void(const TwoFolders&)> change;
    const char* file;
    HeldState state;
    bool isEqual;
};

void PrintTo(const Case& row, std::ostream* out) {
    *out << row.what;
}

class OneDifference : public ::testing::TestWithParam<Case> {};

TEST_P(OneDifference, IsAnsweredAlikeByAll) {
    const TwoFolders folders;
    GetParam().change(folders);
    const ContentsComparison comparison = folders.compared();
    const std::string file = GetParam().file;
    EXPECT_EQ(stateOf(file.ends_with(".bmp") ? comparison.bitmaps : comparison.files, file),
              GetParam().state);
    EXPECT_EQ(comparison.isEqual(), GetParam().isEqual);
    EXPECT_EQ(folders.haveOneFingerprint(), GetParam().isEqual);
    EXPECT_EQ(comparison.holdsEveryByte(),
              GetParam().state == HeldState::Same || GetParam().state == HeldState::Extra);
}

auto replaced(const char* file, const char* part, const char* by) {
    return [=](const TwoFolders& folders) { folders.replace(file, part, by); };
}

void nothing(const TwoFolders&) {}

INSTANTIATE_TEST_SUITE_P(
    Files, OneDifference,
    ::testing::Values(
        Case{"nothing", nothing, "stdmsg.ilm", HeldState::Same, true},
        Case{"a start address", replaced("modbus.adr", "AlertMessage   300", "AlertMessage   301"),
             "modbus.adr", HeldState::Different, false},
        Case{"an address written otherwise", replaced("modbus.adr", "AnalogInput    ", "analoginput="),
             "modbus.adr", HeldState::Equal, true},
        Case{"a line that no reader knows", replaced("modbus.adr", "AnalogInput", "Speed 1\r\nAnalogInput"),
             "modbus.adr", HeldState::Different, false},
        Case{"a default", replaced("ilmvar.def", "    default   0.0", "    default   0.5"), "ilmvar.def",
             HeldState::Different, false},
        Case{"a variable's case and blanks", replaced("ilmvar.def", "    type      float", "TYPE FLOAT"),
             "ilmvar.def", HeldState::Equal, true},
        Case{"an address that rounds to its row",
             replaced("ilmvar.def", "    address   100", "    address   101"), "ilmvar.def",
             HeldState::Different, false},
        Case{"an empty line of a message", replaced("stdmsg.ilm", "CLEAR\r\n", "\r\n  CLEAR  \r\n"),
             "stdmsg.ilm", HeldState::Equal, true},
        Case{"a line of a message", replaced("stdmsg.ilm", "CLEAR\r\n", "CLEAR\r\nACT STILL 7\r\n"),
             "stdmsg.ilm", HeldState::Different, false},
        Case{"a message's name", replaced("altmsg.ilm", "DEFMSG ALTMSG2\r\n", "DEFMSG ALTMSG3\r\n"),
             "altmsg.ilm", HeldState::Different, false},
        Case{"two messages in another order",
             [](const TwoFolders& folders) {
                 folders.replace("altmsg.ilm", "DEFMSG ALTMSG19\r\n", "DEFMSG ALTMSG99\r\n");
                 folders.replace("altmsg.ilm", "DEFMSG ALTMSG20\r\n", "DEFMSG ALTMSG19\r\n");
                 folders.replace("altmsg.ilm", "DEFMSG ALTMSG99\r\n", "DEFMSG ALTMSG20\r\n");
             },
             "altmsg.ilm", HeldState::Different, false},
        Case{"the play list", replaced("default.pls", "STDMSG1\r\n", "STDMSG2\r\n"), "default.pls",
             HeldState::Different, true},
        Case{"no play list",
             [](const TwoFolders& folders) { std::filesystem::remove(folders.theirs.file("default.pls")); },
             "default.pls", HeldState::Missing, true},
        Case{"no messages",
             [](const TwoFolders& folders) { std::filesystem::remove(folders.theirs.file("stdmsg.ilm")); },
             "stdmsg.ilm", HeldState::Missing, false}));

INSTANTIATE_TEST_SUITE_P(
    Bitmaps, OneDifference,
    ::testing::Values(
        Case{"other bytes of a shown bitmap",
             [](const TwoFolders& folders) { writeBytes(folders.theirs.file("pump.bmp"), "BM"); }, "pump.bmp",
             HeldState::Different, false},
        Case{"a shown bitmap is not there",
             [](const TwoFolders& folders) { std::filesystem::remove(folders.theirs.file("pump.bmp")); },
             "pump.bmp", HeldState::Missing, false},
        Case{"a shown bitmap in other case",
             [](const TwoFolders& folders) {
                 std::filesystem::rename(folders.theirs.file("pump.bmp"), folders.theirs.file("PUMP.bmp"));
             },
             "pump.bmp", HeldState::Same, true},
        Case{"a bitmap that no message shows is only there",
             [](const TwoFolders& folders) { writeBytes(folders.theirs.file("old.bmp"), "BM"); }, "old.bmp",
             HeldState::Extra, true},
        Case{"a bitmap that no message shows is only here",
             [](const TwoFolders& folders) { writeBytes(folders.ours.file("old.bmp"), "BM"); }, "old.bmp",
             HeldState::Missing, true},
        Case{"a bitmap that no message shows has other bytes",
             [](const TwoFolders& folders) {
                 writeBytes(folders.ours.file("old.bmp"), "BM1");
                 writeBytes(folders.theirs.file("old.bmp"), "BM2");
             },
             "old.bmp", HeldState::Different, true}));

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

// Whatever byte changes, and to whatever: both answers are the same, and one that they notice is noticed by
// both.
TEST(DisplayContents, FingerprintAndComparisonAgreeOnEveryChangedByte) {
    const TwoFolders folders;
    const DisplayContents ours = DisplayContents::ofFolder(folders.ours.path());
    const std::string known = fingerprint(ours);
    std::size_t equal = 0;
    std::size_t different = 0;
    for (const char* const name :
         {"modbus.adr", "ilmvar.def", "stdmsg.ilm", "altmsg.ilm", "default.pls", "pump.bmp"}) {
        const std::string bytes = fileBytes(folders.ours.file(name));
        // Blocks are alike: a step that shares no factor with their length reaches each place of one.
        const std::size_t step = bytes.size() > 2000 ? 19 : bytes.size() > 500 ? 3 : 1;
        for (std::size_t at = 0; at < bytes.size(); at += step) {
            std::string changed = bytes;
            changed[at] = static_cast<char>(at % 3 == 0 ? ' ' : changed[at] ^ 0x20);
            writeBytes(folders.theirs.file(name), changed);
            const DisplayContents theirs = DisplayContents::ofFolder(folders.theirs.path());
            const bool isEqual = compareContents(ours, theirs).isEqual();
            ASSERT_EQ(fingerprint(theirs) == known, isEqual) << name << " at " << at;
            (isEqual ? equal : different) += 1;
        }
        writeBytes(folders.theirs.file(name), bytes);
    }
    EXPECT_GT(equal, 50U);
    EXPECT_GT(different, 500U);
}

} // namespace
} // namespace orvista
