#include "link/dispatch/DispatchTransferControl.h"
#include "model/SystemPath.h"

#include "tests/link/dispatch/Registration.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

using namespace orvista;
using orvista::testing::fileBytes;
using orvista::testing::Registration;
using orvista::testing::TemporaryFolder;
using orvista::testing::writeBytes;

namespace {

using Lines = std::vector<std::string>;

class DispatchTransferControlTest : public ::testing::Test {
protected:
    DispatchTransferControlTest() {
        configure(L"LOG", wideText(log_));
        std::filesystem::create_directory(systemPath(device_));
        configure(L"DEVICE", wideText(device_));
    }
    ~DispatchTransferControlTest() override {
        for (const std::wstring& name : configured_)
            SetEnvironmentVariableW(name.c_str(), nullptr);
    }

    void configure(const std::wstring& name, const std::wstring& value) {
        configured_.push_back(L"ORVISTA_TEST_CONTROL_" + name);
        SetEnvironmentVariableW(configured_.back().c_str(), value.c_str());
    }

    void registerAs(std::initializer_list<const wchar_t*> ways) { registration_.emplace(ways); }

    Lines recorded() const { return orvista::testing::recordedLines(log_); }

    std::string deviceFile(const std::string& name) const { return fileBytes(device_ + "\\" + name); }

    void uploadOneFileAndDownload();

    TemporaryFolder folder_;
    std::string log_ = folder_.file("control.log");
    std::string device_ = folder_.file("device");

private:
    std::optional<Registration> registration_;
    std::vector<std::wstring> configured_;
};

/// Every operation there is, and what the control must have seen of it.
void DispatchTransferControlTest::uploadOneFileAndDownload() {
    const std::string file = folder_.file("modbus.adr");
    const std::string target = folder_.file("target");
    writeBytes(file, "bytes");
    std::filesystem::create_directory(systemPath(target));

    auto control = DispatchTransferControl::create();
    ASSERT_TRUE(control);
    control->RemoteAddress("127.0.0.1");
    control->RemotePort(7000);
    EXPECT_EQ(control->OpenLink(), 1);
    control->PrepareUpload("");
    EXPECT_EQ(control->UploadFile(file), 1);
    control->FinishUpload();
    EXPECT_EQ(control->DownloadFiles("", target), 1);
    control->CloseLink();
    control.reset();

    EXPECT_EQ(recorded(), (Lines{
                              "created",
                              "initialized",
                              "set 1: text \"127.0.0.1\"",
                              "set 2: 16-bit 7000",
                              "call 5",
                              "call 8: text \"\"",
                              "call 10: text by reference \"" + file + "\"",
                              "call 7",
                              "call 9: text \"\", text by reference \"" + target + "\"",
                              "call 6",
                              "released",
                          }));
    EXPECT_EQ(deviceFile("modbus.adr"), "bytes");
    EXPECT_EQ(fileBytes(target + "\\modbus.adr"), "bytes");
}

TEST_F(DispatchTransferControlTest, NoControlWhereNoneIsRegistered) {
    EXPECT_FALSE(controlClassByName());
    EXPECT_TRUE(controlClassesByTypeLibrary().empty());
    EXPECT_FALSE(DispatchTransferControl::create());
}

TEST_F(DispatchTransferControlTest, CallsEveryOperationByItsNumber) {
    registerAs({L"name"});
    EXPECT_TRUE(controlClassesByTypeLibrary().empty());
    uploadOneFileAndDownload();
}

TEST_F(DispatchTransferControlTest, FindsTheControlByItsTypeLibraryAlone) {
    registerAs({L"library"});
    EXPECT_FALSE(controlClassByName());
    uploadOneFileAndDownload();
}

TEST_F(DispatchTransferControlTest, LeavesALibraryOfAnotherNameAlone) {
    registerAs({L"foreign"});
    EXPECT_FALSE(DispatchTransferControl::create());
    EXPECT_TRUE(recorded().empty());
}

TEST_F(DispatchTransferControlTest, FindsItsLibraryAmongOthers) {
    registerAs({L"foreign", L"library"});
    EXPECT_EQ(controlClassesByTypeLibrary().size(), 1U);
    uploadOneFileAndDownload();
}

TEST_F(DispatchTransferControlTest, NameAndLibraryTogetherMakeOneControl) {
    registerAs({L"name", L"library"});
    uploadOneFileAndDownload();
}

/// Entries that an uninstalled control left behind, in a registry key that goes with the object.
class LeftoverName {
public:
    LeftoverName() {
        const std::wstring nowhere = L"{00000000-0000-0000-0000-0000000000FF}";
        if (controlClassByName() ||
            RegSetKeyValueW(HKEY_LOCAL_MACHINE, (key_ + L"\\CLSID").c_str(), nullptr, REG_SZ, nowhere.c_str(),
                            static_cast<DWORD>((nowhere.size() + 1) * sizeof(wchar_t))) != ERROR_SUCCESS)
            throw std::runtime_error("cannot write the leftover name");
    }
    ~LeftoverName() { RegDeleteTreeW(HKEY_LOCAL_MACHINE, key_.c_str()); }
    LeftoverName(const LeftoverName&) = delete;
    LeftoverName& operator=(const LeftoverName&) = delete;

private:
    std::wstring key_ = L"Software\\Classes\\" + std::wstring(transferControlName);
};

TEST_F(DispatchTransferControlTest, NoControlWhereOnlyItsNameIsLeft) {
    const LeftoverName leftover;
    ASSERT_TRUE(controlClassByName());
    EXPECT_FALSE(DispatchTransferControl::create());
}

TEST_F(DispatchTransferControlTest, ALeftoverNameDoesNotHideTheLibrary) {
    registerAs({L"library"});
    const LeftoverName leftover;
    uploadOneFileAndDownload();
}

TEST_F(DispatchTransferControlTest, PathsKeepEveryCharacter) {
    registerAs({L"name"});
    const std::string name = "Halle \xC3\xA9 \xE2\x82\xAC \xE6\xB0\xB4 \xF0\x9F\x9A\xB0.bmp";
    const std::string file = folder_.file(name);
    writeBytes(file, "picture");
    const auto control = DispatchTransferControl::create();
    ASSERT_TRUE(control);
    EXPECT_EQ(control->UploadFile(file), 1);
    EXPECT_EQ(recorded().back(), "call 10: text by reference \"" + file + "\"");
    EXPECT_EQ(deviceFile(name), "picture");
}

TEST_F(DispatchTransferControlTest, PortsKeepTheirSign) {
    registerAs({L"name"});
    const auto control = DispatchTransferControl::create();
    ASSERT_TRUE(control);
    control->RemotePort(32767);
    EXPECT_EQ(recorded().back(), "set 2: 16-bit 32767");
    control->RemotePort(-1);
    EXPECT_EQ(recorded().back(), "set 2: 16-bit -1");
}

TEST_F(DispatchTransferControlTest, AMissingFileIsTheControlsFailure) {
    registerAs({L"name"});
    const auto control = DispatchTransferControl::create();
    ASSERT_TRUE(control);
    EXPECT_EQ(control->UploadFile(folder_.file("missing.adr")), 0);
}

TEST_F(DispatchTransferControlTest, ARefusedAddressOpensNoLink) {
    registerAs({L"name"});
    const auto control = DispatchTransferControl::create();
    ASSERT_TRUE(control);
    configure(L"RESULT_1", L"FAIL");
    control->RemoteAddress("127.0.0.1");
    control->RemotePort(7000);
    EXPECT_EQ(control->OpenLink(), 0);
    EXPECT_EQ(recorded().back(), "set 2: 16-bit 7000");
    configure(L"RESULT_1", L"I2:1");
    control->RemoteAddress("127.0.0.1");
    EXPECT_EQ(control->OpenLink(), 1);
}

TEST_F(DispatchTransferControlTest, ARefusedPortOpensNoLink) {
    registerAs({L"name"});
    const auto control = DispatchTransferControl::create();
    ASSERT_TRUE(control);
    configure(L"RESULT_2", L"EXCEPTION");
    control->RemoteAddress("127.0.0.1");
    control->RemotePort(7000);
    EXPECT_EQ(control->OpenLink(), 0);
}

struct ResultCase {
    const wchar_t* given;
    std::int64_t taken; ///< 0 for what is no 16-bit number
};

void PrintTo(const ResultCase& result, std::ostream* out) {
    for (const wchar_t* c = result.given; *c; ++c)
        *out << static_cast<char>(*c);
}

class ResultConversion : public DispatchTransferControlTest,
                         public ::testing::WithParamInterface<ResultCase> {};

TEST_P(ResultConversion, IsTheSameForEveryOperationWithAResult) {
    registerAs({L"name"});
    const auto control = DispatchTransferControl::create();
    ASSERT_TRUE(control);
    for (const wchar_t* operation : {L"RESULT_5", L"RESULT_9", L"RESULT_10"})
        configure(operation, GetParam().given);
    EXPECT_EQ(control->OpenLink(), GetParam().taken);
    EXPECT_EQ(control->DownloadFiles("", folder_.path()), GetParam().taken);
    EXPECT_EQ(control->UploadFile(folder_.file("any")), GetParam().taken);
    EXPECT_EQ(transferSucceeded(control->OpenLink()), GetParam().taken > 0);
}

INSTANTIATE_TEST_SUITE_P(
    Results, ResultConversion,
    ::testing::Values(ResultCase{L"I2:1", 1}, ResultCase{L"I2:0", 0}, ResultCase{L"I2:-1", -1},
                      ResultCase{L"I2:32767", 32767}, ResultCase{L"I2:-32768", -32768},
                      ResultCase{L"I4:1", 1}, ResultCase{L"I4:32767", 32767},
                      // Cut to 16 bits these would be a success.
                      ResultCase{L"I4:32768", 0}, ResultCase{L"I4:65537", 0}, ResultCase{L"I4:-65535", 0},
                      ResultCase{L"UI4:4294967295", 0}, ResultCase{L"UI4:2", 2}, ResultCase{L"R8:0.5", 0},
                      ResultCase{L"R8:1.5", 2}, ResultCase{L"R8:2.5", 2}, ResultCase{L"R8:40000", 0},
                      ResultCase{L"BOOL:-1", -1}, ResultCase{L"BOOL:0", 0}, ResultCase{L"TEXT:7", 7},
                      ResultCase{L"TEXT:seven", 0}, ResultCase{L"TEXT:", 0}, ResultCase{L"EMPTY:", 0},
                      ResultCase{L"NULL:", 0}, ResultCase{L"REFERENCE:3", 3}, ResultCase{L"FAIL:", 0},
                      ResultCase{L"EXCEPTION:", 0}));

} // namespace
