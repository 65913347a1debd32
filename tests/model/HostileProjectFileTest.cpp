#include "model/ProjectFile.h"

#include "tests/support/ExpectedFiles.h"
#include "tests/support/ScriptedPeople.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <random>

namespace orvista::DocMgrModule {
namespace {

using namespace orvista::testing;

class HostileProjectFile : public ::testing::Test {
protected:
    /// Every project file ends in a model that can be saved and read again.
    void survive(const std::string& bytes) {
        Project project;
        writeBytes(folder.file("Plant.orx"), bytes);
        ReadProject(folder.file("Plant.orx"), project, context);
        ASSERT_EQ(SaveProject(folder.path(), "Saved", project, context), SaveOutcome::Saved);
        Project back;
        ASSERT_TRUE(ReadProject(folder.file("Saved.orx"), back, context));
        EXPECT_EQ(back.AnalogInput, project.AnalogInput);
        EXPECT_EQ(back.AlertMessage, project.AlertMessage);
    }

    static std::string deviceHeaders() {
        return "[MODBUS.ADR]\r\n[STDMSG.ILM]\r\n[ALTMSG.ILM]\r\n[ILMVAR.DEF]\r\n";
    }

    TemporaryFolder folder;
    PathRules rules = PathRules::native();
    ScriptedMessages messages;
    FileContext context{rules, messages};
};

TEST_F(HostileProjectFile, Empty) {
    Project project;
    project.SerialPort = "COM5";
    writeBytes(folder.file("Plant.orx"), "");
    EXPECT_TRUE(ReadProject(folder.file("Plant.orx"), project, context));
    EXPECT_EQ(project.SerialPort, "COM5");
    std::vector<std::string> texts;
    for (const auto& shown : messages.shown)
        texts.push_back(shown.text);
    EXPECT_EQ(texts, (std::vector<std::string>{"Unable to open " + folder.file("modbus.adr"),
                                               "Unable to open " + folder.file("ilmvar.def"),
                                               "Unable to open " + folder.file("stdmsg.ilm"),
                                               "Unable to open " + folder.file("altmsg.ilm")}))
        << "no device file is there to be read";
}

TEST_F(HostileProjectFile, SixtyFourMegabytesOfNoise) {
    std::mt19937 random(1);
    std::string noise(std::size_t{64} << 20, '\0');
    for (std::size_t i = 0; i + 4 <= noise.size(); i += 4) {
        const std::uint32_t word = random();
        for (std::size_t j = 0; j < 4; ++j)
            noise[i + j] = static_cast<char>(word >> 8 * j);
    }
    survive(noise);
}

TEST_F(HostileProjectFile, NoiseInsideEverySection) {
    std::mt19937 random(2);
    for (const char* header : {"[MODBUS.ADR]", "[STDMSG.ILM]", "[ALTMSG.ILM]", "[ILMVAR.DEF]", "[CONFIG]"}) {
        std::string bytes = deviceHeaders() + header + "\r\n";
        for (int i = 0; i < 100'000; ++i)
            bytes.push_back(static_cast<char>(random()));
        survive(bytes);
    }
}

TEST_F(HostileProjectFile, OneLineOfSixteenMegabytes) {
    survive(deviceHeaders() + "[STDMSG.ILM]\r\nDEFMSG a\r\n" + std::string(std::size_t{16} << 20, 'x') +
            "\r\nENDMSG\r\n");
    EXPECT_GT(fileBytes(folder.file("stdmsg.ilm")).size(), std::size_t{16} << 20);
}

TEST_F(HostileProjectFile, FullOfNuls) {
    survive(std::string(1 << 20, '\0'));
}

TEST_F(HostileProjectFile, NestedAndRepeatedHeaders) {
    survive("[CONFIG][MODBUS.ADR]\n[MODBUS.ADR]\n[STDMSG.ILM]\nDEFMSG a\n[ALTMSG.ILM]\n[CONFIG]\n"
            "[STDMSG.ILM]\n[ILMVAR.DEF]\nENDMSG\n[MODBUS.ADR]\n[CONFIG]\n[CONFIG]\nIP\n[[STDMSG.ILM]]\n");
}

TEST_F(HostileProjectFile, CutAtEveryByteOfASmallProject) {
    const std::string whole = "[CONFIG]\r\nSerialPort   COM1\r\nIP   127.0.0.1\r\n[MODBUS.ADR]\r\n"
                              "AnalogInput    100\r\nAlertMessage   300\r\n[STDMSG.ILM]\r\n"
                              "DEFMSG STDMSG1\r\nCLEAR\r\nENDMSG\r\n[ALTMSG.ILM]\r\nDEFMSG ALTMSG1\r\n"
                              "CLEAR\r\nENDMSG\r\n[ILMVAR.DEF]\r\nDEFVAR RegVar1\r\n    type      float\r\n"
                              "    address   100\r\nENDVAR\r\n";
    for (std::size_t size = 0; size <= whole.size(); ++size)
        survive(whole.substr(0, size));
}

} // namespace
} // namespace orvista::DocMgrModule
