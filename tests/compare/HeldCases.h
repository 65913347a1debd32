#pragma once

#include "compare/ContentsComparison.h"
#include "model/SystemPath.h"
#include "tests/support/TemporaryFolder.h"

#include <filesystem>
#include <functional>
#include <ostream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

/// Each kind of difference between what an upload sends and what a display holds, with the answer to it: the
/// same for whoever is asked.
namespace orvista::testing {

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
        if (at == std::string::npos)
            throw std::logic_error(std::string("no ").append(part));
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

/// What is done to one side, and what is said of it then.
struct Case {
    const char* what;
    std::function<void(const TwoFolders&)> change;
    const char* file;
    HeldState state;
    bool isEqual;
};

inline void PrintTo(const Case& row, std::ostream* out) {
    *out << row.what;
}

inline auto replaced(const char* file, const char* part, const char* by) {
    return [=](const TwoFolders& folders) { folders.replace(file, part, by); };
}

inline auto removed(const char* file) {
    return [=](const TwoFolders& folders) { std::filesystem::remove(folders.theirs.file(file)); };
}

inline void nothing(const TwoFolders&) {}

inline std::vector<Case> heldCases() {
    return {
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
             "stdmsg.ilm", HeldState::Missing, false},
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
             "old.bmp", HeldState::Different, true},
        Case{"a comment that no reader knows",
             replaced("altmsg.ilm", "DEFMSG ALTMSG1\r\n", "stray\r\nDEFMSG ALTMSG1\r\n"), "altmsg.ilm",
             HeldState::Different, false},
        Case{"a name in other case", replaced("stdmsg.ilm", "DEFMSG STDMSG7\r\n", "defmsg StdMsg7\r\n"),
             "stdmsg.ilm", HeldState::Equal, true},
        Case{"a case within a message", replaced("stdmsg.ilm", "CLEAR\r\n", "clear\r\n"), "stdmsg.ilm",
             HeldState::Different, false},
        Case{"line ends without CR",
             replaced("altmsg.ilm", "DEFMSG ALTMSG9\r\nCLEAR\r\n", "DEFMSG ALTMSG9\nCLEAR\n"), "altmsg.ilm",
             HeldState::Equal, true},
        Case{"two variables in another order",
             [](const TwoFolders& folders) {
                 folders.replace("ilmvar.def", "DEFVAR RegVar2\r\n", "DEFVAR RegVar0\r\n");
                 folders.replace("ilmvar.def", "DEFVAR RegVar3\r\n", "DEFVAR RegVar2\r\n");
                 folders.replace("ilmvar.def", "DEFVAR RegVar0\r\n", "DEFVAR RegVar3\r\n");
             },
             "ilmvar.def", HeldState::Different, false},
        Case{"a message twice",
             replaced("altmsg.ilm", "DEFMSG ALTMSG2\r\n", "DEFMSG ALTMSG1\r\nENDMSG\r\nDEFMSG ALTMSG2\r\n"),
             "altmsg.ilm", HeldState::Different, false},
        Case{"nothing behind the middle of a file",
             [](const TwoFolders& folders) {
                 const std::string bytes = testing::fileBytes(folders.theirs.file("stdmsg.ilm"));
                 testing::writeBytes(folders.theirs.file("stdmsg.ilm"), bytes.substr(0, bytes.size() / 2));
             },
             "stdmsg.ilm", HeldState::Different, false},
        Case{"no address map", removed("modbus.adr"), "modbus.adr", HeldState::Missing, false},
        Case{"no variables", removed("ilmvar.def"), "ilmvar.def", HeldState::Missing, false},
        Case{"no emergency messages", removed("altmsg.ilm"), "altmsg.ilm", HeldState::Missing, false},
        Case{"a shown bitmap is only there",
             [](const TwoFolders& folders) { std::filesystem::remove(folders.ours.file("pump.bmp")); },
             "pump.bmp", HeldState::Extra, false}};
}

} // namespace orvista::testing
