#include "items/Master.h"
#include "link/ProjectSnapshot.h"
#include "link/TransferredFiles.h"
#include "model/Lines.h"
#include "model/ProjectFile.h"
#include "model/Windows1252.h"
#include "tests/support/ListedDisplay.h"
#include "tests/support/RandomChoices.h"
#include "tests/support/ScriptedPeople.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>

namespace orvista {
namespace {

using Files = std::map<std::string, std::string>;

/// A master and one display, made side by side with what the display is to show.
class RandomMaster {
public:
    explicit RandomMaster(testing::RandomChoices& random) : hasBraces(random.below(2) == 0), random_(random) {
        for (Project* const project : {&master, &expected}) // as they are read
            for (const Item message : allMessages())
                scriptOf(*project, message) += lineEnd;
        std::vector<std::pair<std::string, std::string>> cells;
        for (std::size_t i = 0; i < values_.size(); ++i) {
            for (std::size_t length = 1 + random_.below(6); length > 0; --length)
                values_[i] += character();
            cells.emplace_back((i % 2 == 0 ? "Value" : "value") + std::to_string(i),
                               utf8FromWindows1252(values_[i]));
        }
        display = testing::listedDisplay("a", "10.0.0.1", cells);
        for (std::size_t i = 0; i < 4; ++i)
            addMessage(i);
        const auto [written, shown] = text(0);
        master.CoilVar[3].onText = "{value1}" + written;
        expected.CoilVar[3].onText = values_[1] + shown;
    }

    Project master;
    Project expected;
    FleetDisplay display;
    const bool hasBraces; ///< what is shown may hold some, with which places of a master begin

private:
    /// Any that the display has and a text may hold.
    char character() {
        constexpr std::string_view odd = "{}%v:>^_ 0aZ";
        if (random_.below(3) > 0) {
            return odd[hasBraces ? random_.below(odd.size()) : 1 + random_.below(odd.size() - 1)];
        }
        const std::size_t byte = 0xA0 + random_.below(0x60);
        return static_cast<char>(byte);
    }

    /// What stands in the master, and on the display. \param least parts
    std::pair<std::string, std::string> text(std::size_t least) {
        std::string written;
        std::string shown;
        for (std::size_t parts = least + random_.below(5); parts > 0; --parts) {
            const std::size_t which = random_.below(values_.size());
            const std::string& value = values_[which];
            const std::size_t width = value.size() + random_.below(5);
            const std::size_t blanks = width - value.size();
            const std::string place = "{vaLue" + std::to_string(which) + ":" + std::to_string(width);
            switch (random_.below(hasBraces ? 5 : 4)) {
            case 0:
                written += place + "}";
                shown += value + std::string(blanks, ' ');
                break;
            case 1:
                written += place + ">}";
                shown += std::string(blanks, ' ') + value;
                break;
            case 2:
                written += place + "^}";
                shown += std::string(blanks / 2, ' ') + value + std::string(blanks - blanks / 2, ' ');
                break;
            case 3:
                written += " no} %5v";
                shown += " no} %5v";
                break;
            default:
                written += "{{";
                shown += "{";
            }
        }
        return {written, shown};
    }

    void addMessage(std::size_t index) {
        const auto [written, shown] = text(1);
        const std::string before = "CLEAR\r\nTEXTS 0 0 RED BLACK \"";
        const std::string behind = "\"\r\nIMG 0 0 RED BLACK ";
        master.STDMSG[index] = before + written + behind + "{value2}.bmp\r\n";
        const std::string name = values_[2].substr(
            values_[2].find_first_not_of(' ') == std::string::npos ? 0 : values_[2].find_first_not_of(' '));
        expected.STDMSG[index] =
            before + shown + behind + name.substr(0, name.find_last_not_of(' ') + 1) + ".bmp\r\n";
    }

    testing::RandomChoices& random_;
    std::array<std::string, 3> values_{"", "", "x"};
};

Files filesSent(const Project& project, const std::string& folder) {
    std::filesystem::create_directory(folder);
    writeSnapshot(project, folder);
    Files files;
    for (const std::string_view name : transferredDeviceFiles)
        files[std::string(name)] = testing::fileBytes(folder + "/" + std::string(name));
    for (const std::string& name : bitmapsOfFolder(folder))
        files[name] = testing::fileBytes(folder + "/" + name);
    return files;
}

void expectSameItems(const Project& one, const Project& other) {
    EXPECT_EQ(one.STDMSG, other.STDMSG);
    EXPECT_EQ(one.ALTMSG, other.ALTMSG);
    EXPECT_EQ(one.CoilVar, other.CoilVar);
    EXPECT_EQ(one.RegVar, other.RegVar);
}

/// The device files in memory, by name.
Files deviceFilesOf(const Project& project) {
    Files files;
    for (const DeviceFile* const file : deviceFiles) {
        MemorySink sink;
        file->write(sink, project);
        files[std::string(file->name)] = sink.bytes();
    }
    return files;
}

/// As expanding writes it, and commands read it. \param path of the project file
Project readAgain(const Project& project, const std::string& path) {
    MemorySink sink;
    DocMgrModule::writeProjectFile(sink, project);
    testing::writeBytes(path, sink.bytes());
    testing::ScriptedMessages messages;
    const PathRules paths = PathRules::native();
    Project again;
    EXPECT_TRUE(DocMgrModule::readProjectWithoutWriting(path, again, {paths, messages}));
    return again;
}

TEST(RandomMasters, AThousandAreSentAsTheirExpansionsThatWereWrittenAndReadAgain) {
    const testing::TemporaryFolder folder;
    testing::RandomChoices random(17);
    std::size_t again = 0;
    for (int round = 0; round < 1000; ++round) {
        const RandomMaster made(random);
        const Expansion expansion = expand(made.master, made.display);
        ASSERT_TRUE(expansion.errors.empty()) << expansion.errors[0].text;
        expectSameItems(expansion.project, made.expected);
        const Files sent = deviceFilesOf(expansion.project);
        ASSERT_EQ(deviceFilesOf(readAgain(expansion.project, folder.file("a.orx"))), sent);
        if (made.hasBraces)
            continue;
        expectSameItems(expand(expansion.project, made.display).project, expansion.project);
        ++again;
    }
    EXPECT_GT(again, 400U);
}

TEST(RandomMasters, AreSentWithTheirBitmapsAsTheirProjectFilesAre) {
    testing::RandomChoices random(18);
    for (int round = 0; round < 20; ++round) {
        const testing::TemporaryFolder folder;
        testing::writeBytes(folder.file("b.bmp"), "BM" + std::to_string(round));
        RandomMaster made(random);
        made.master.ProjPath = folder.path();
        made.master.ProjName = "PLANT";
        const Files sent = filesSent(expand(made.master, made.display).project, folder.file("sent"));
        EXPECT_EQ(sent.size(), transferredDeviceFiles.size() + 1);
        Project written = readAgain(expand(made.master, made.display).project, folder.file("sent/PLANT.orx"));
        EXPECT_EQ(filesSent(written, folder.file("again")), sent);
    }
}

} // namespace
} // namespace orvista
