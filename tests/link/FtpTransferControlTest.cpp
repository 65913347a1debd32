#include "link/ftp/FtpTransferControl.h"
#include "link/ftp/FtpLink.h"
#include "model/Bytes.h"
#include "model/SystemPath.h"

#include "tests/support/EnvironmentSetting.h"
#include "tests/support/FtpTestServer.h"

#include <gmock/gmock.h>

#include <arpa/inet.h>
#include <cstdlib>
#include <sys/socket.h>

#include <algorithm>
#include <filesystem>
#include <future>
#include <new>
#include <string>
#include <vector>

namespace orvista {
namespace {

namespace fs = std::filesystem;
using orvista::testing::fileBytes;
using orvista::testing::FtpTestServer;
using orvista::testing::TemporaryFolder;
using orvista::testing::writeBytes;
using ::testing::AllOf;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;
using ::testing::StartsWith;

/// For servers that answer, however busy the machine is.
constexpr std::chrono::seconds longTimeout{60};
/// For servers that never will, where the library itself waits, in whole seconds: for a greeting, for a
/// farewell.
constexpr std::chrono::seconds shortTimeout{1};

/// A clock that runs ahead of the wall's.
TransferWatch::Clock fastClock(int factor) {
    return [factor, start = std::chrono::steady_clock::now()] {
        return start + factor * (std::chrono::steady_clock::now() - start);
    };
}

/// Listens but never accepts.
class SilentPort {
public:
    SilentPort() : socket_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        for (std::uint16_t port = 20'000; port < 32'767; ++port) {
            sockaddr_in address{};
            address.sin_family = AF_INET;
            address.sin_port = htons(port);
            address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
            if (bind(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0) {
                port_ = static_cast<std::int16_t>(port);
                return;
            }
        }
        throw std::runtime_error("no free port");
    }
    ~SilentPort() { ::close(socket_); }
    SilentPort(const SilentPort&) = delete;
    SilentPort& operator=(const SilentPort&) = delete;

    void listen() const { ::listen(socket_, 1); }
    std::int16_t port() const { return port_; }

private:
    int socket_;
    std::int16_t port_ = 0;
};

class FtpTransferControlTest : public ::testing::Test {
protected:
    explicit FtpTransferControlTest(std::chrono::seconds timeout = longTimeout,
                                    TransferWatch::Clock clock = &std::chrono::steady_clock::now)
        : timeout_(timeout), clock_(std::move(clock)) {}

    std::int64_t open(const FtpTestServer& server) { return open(control, server.port()); }
    static std::int64_t open(FtpTransferControl& control, std::int16_t port) {
        control.RemoteAddress("127.0.0.1");
        control.RemotePort(port);
        return control.OpenLink();
    }
    std::int64_t upload(const std::string& name, const std::string& bytes) {
        writeBytes(local.file(name), bytes);
        return control.UploadFile(local.file(name));
    }
    std::int64_t download() { return control.DownloadFiles("", local.path()); }
    std::vector<std::string> localNames() const {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(local.path()))
            names.push_back(utf8Path(entry.path().filename()));
        std::ranges::sort(names);
        return names;
    }
    std::string localBytes(const std::string& name) const { return fileBytes(local.file(name)); }
    /// A server whose listing is these bytes.
    std::vector<std::string> listing(const std::string& bytes) {
        writeBytes(listings.file("listing"), bytes);
        return {"--listing", listings.file("listing")};
    }
    static std::string deviceFileLines() {
        return "modbus.adr\r\nilmvar.def\r\nstdmsg.ilm\r\naltmsg.ilm\r\ndefault.pls\r\n";
    }

    std::chrono::seconds timeout_;
    TransferWatch::Clock clock_;
    TemporaryFolder local;
    TemporaryFolder listings;
    std::vector<std::string> notices;
    FtpTransferControl control{[this](const std::string& name, std::size_t number, std::size_t count) {
                                   notices.push_back(name + " " + std::to_string(number) + "/" +
                                                     std::to_string(count));
                               },
                               timeout_, PathRules::native(), clock_};
};

/// Silence that our own watch ends: after the timeout of the program, of which half a second passes on the
/// wall. Left to the library all ten would.
class SilentServerTest : public FtpTransferControlTest {
protected:
    SilentServerTest() : FtpTransferControlTest(std::chrono::seconds(10), fastClock(20)) {}

    static constexpr std::chrono::seconds limit{5};
};

TEST_F(FtpTransferControlTest, LogsInAsAdminWithAnEmptyPassword) {
    const FtpTestServer server;
    EXPECT_EQ(open(server), 1);
    control.CloseLink();
    EXPECT_THAT(server.commands(),
                AllOf(Contains("USER admin"), Contains(StartsWith("PASS")), Contains("QUIT")));
    EXPECT_THAT(server.commands(), Not(Contains(StartsWith("PORT"))));
}

TEST_F(FtpTransferControlTest, WrongPort) {
    const SilentPort closed;
    EXPECT_LE(open(control, closed.port()), 0);
}

TEST_F(FtpTransferControlTest, PortZeroAndBelow) {
    EXPECT_LE(open(control, 0), 0);
    EXPECT_LE(open(control, -1), 0);
}

TEST_F(FtpTransferControlTest, AddressesThatAreNone) {
    for (const char* address :
         {"", " ", " 127.0.0.1", "a b", "admin@127.0.0.1", "127.0.0.1/x", "a\r\nb", "%00"}) {
        control.RemoteAddress(address);
        control.RemotePort(7000);
        EXPECT_LE(control.OpenLink(), 0) << address;
    }
}

TEST_F(FtpTransferControlTest, ServersThatNeverGreet) {
    FtpTransferControl impatient({}, shortTimeout);
    const SilentPort silent;
    silent.listen();
    auto neverAccepted = std::async(std::launch::async, [&] {
        FtpTransferControl another({}, shortTimeout);
        return open(another, silent.port());
    });
    const FtpTestServer server({"--fault", "no-greeting"});
    EXPECT_LE(open(impatient, server.port()), 0);
    EXPECT_LE(neverAccepted.get(), 0);
}

/// A long greeting may begin with lines that have no number.
TEST_F(FtpTransferControlTest, WhatGreetsWithoutADigitIsNoFileService) {
    for (const char* other : {"SSH-2.0", "/", ":"}) {
        const FtpTestServer server({"--greeting", other});
        EXPECT_LE(open(server), 0) << other;
        EXPECT_EQ(control.cause(), "no file service answers there") << other;
    }
    for (const char* digits : {"0 files", "9 files", "99"}) {
        const FtpTestServer server({"--greeting", digits});
        EXPECT_LE(open(server), 0) << digits;
        EXPECT_EQ(control.cause(), "hung up") << digits;
    }
    const FtpTestServer server({"--greeting", "421 later"});
    EXPECT_LE(open(server), 0);
    EXPECT_EQ(control.cause(), "refused: 421 later");
}

TEST_F(FtpTransferControlTest, NothingWorksWithoutALink) {
    EXPECT_LE(upload("a.bmp", "x"), 0);
    EXPECT_LE(download(), 0);
    control.PrepareUpload("");
    control.FinishUpload();
    control.CloseLink();
}

TEST_F(FtpTransferControlTest, EnvironmentsProxyIsNotAsked) {
    const testing::EnvironmentSetting ftp("ftp_proxy", "http://127.0.0.1:9");
    const testing::EnvironmentSetting all("all_proxy", "http://127.0.0.1:9");
    const FtpTestServer server;
    EXPECT_EQ(open(server), 1);
}

TEST_F(FtpTransferControlTest, UploadStoresTheBytesUnderTheBareName) {
    const FtpTestServer server;
    ASSERT_EQ(open(server), 1);
    std::string bytes;
    for (int value = 0; value < 256; ++value)
        bytes += static_cast<char>(value);
    EXPECT_EQ(upload("logo.bmp", bytes + "\r\n\n\r"), 1);
    EXPECT_EQ(upload("empty.bmp", ""), 1);
    EXPECT_EQ(server.bytes("logo.bmp"), bytes + "\r\n\n\r");
    EXPECT_EQ(server.bytes("empty.bmp"), "");
}

TEST_F(FtpTransferControlTest, DeviceFilesAreLowerCaseOnTheServer) {
    const FtpTestServer server;
    ASSERT_EQ(open(server), 1);
    writeBytes(local.file("MODBUS.ADR"), "map");
    EXPECT_EQ(control.UploadFile(local.file("modbus.adr")), 1);
    EXPECT_EQ(upload("StdMsg.ILM", "messages"), 1);
    EXPECT_EQ(upload("Logo.BMP", "picture"), 1);
    EXPECT_EQ(server.bytes("modbus.adr"), "map");
    EXPECT_EQ(server.bytes("stdmsg.ilm"), "messages");
    EXPECT_EQ(server.bytes("Logo.BMP"), "picture");
}

TEST_F(FtpTransferControlTest, UploadOfAMissingFileOrAFolder) {
    const FtpTestServer server;
    ASSERT_EQ(open(server), 1);
    EXPECT_LE(control.UploadFile(local.file("none.bmp")), 0);
    fs::create_directory(local.file("folder.bmp"));
    EXPECT_LE(control.UploadFile(local.file("folder.bmp")), 0);
    EXPECT_EQ(upload("still.bmp", "works"), 1);
    EXPECT_THAT(server.commands(), Not(Contains("STOR none.bmp")));
}

TEST_F(FtpTransferControlTest, NamesWithSpecialCharactersArriveAsTheyAre) {
    const FtpTestServer server;
    ASSERT_EQ(open(server), 1);
    for (const char* name : {"two  blanks .bmp", " first.bmp", "100%.bmp", "%41.bmp", "%2e%2e.bmp", "#1.bmp",
                             "a?b.bmp", "a;type=a.bmp", "a..b.bmp", "~.bmp", "-r.bmp", "*.bmp", "a\\b.bmp",
                             "a:b.bmp", "a&b=c+d.bmp", "[x].bmp"})
        EXPECT_EQ(upload(name, name), 1) << name;
    for (const char* name : {"two  blanks .bmp", " first.bmp", "100%.bmp", "%41.bmp", "%2e%2e.bmp", "#1.bmp",
                             "a?b.bmp", "a;type=a.bmp", "a..b.bmp", "~.bmp", "-r.bmp", "*.bmp", "a\\b.bmp",
                             "a:b.bmp", "a&b=c+d.bmp", "[x].bmp"})
        EXPECT_EQ(server.bytes(name), name);
}

TEST_F(FtpTransferControlTest, NamesAreTheBytesOfTheScripts) {
    const FtpTestServer server;
    ASSERT_EQ(open(server), 1);
    EXPECT_EQ(upload("\xC3\xA9.bmp", "acute"), 1);
    EXPECT_EQ(upload("\xE2\x82\xAC.bmp", "euro"), 1);
    EXPECT_EQ(upload("\xC3\xBF.bmp", "last"), 1);
    EXPECT_EQ(server.bytes("\xE9.bmp"), "acute");
    EXPECT_EQ(server.bytes("\x80.bmp"), "euro");
    EXPECT_EQ(server.bytes("\xFF.bmp"), "last");
}

TEST_F(FtpTransferControlTest, NamesTheDeviceCannotHaveFail) {
    const FtpTestServer server;
    ASSERT_EQ(open(server), 1);
    EXPECT_LE(upload("\xD0\xB6.bmp", "x"), 0);
    EXPECT_LE(upload("a\r\nDELE b.bmp", "x"), 0);
    EXPECT_LE(upload("a\nb.bmp", "x"), 0);
    EXPECT_THAT(server.commands(), Not(Contains(StartsWith("DELE"))));
    EXPECT_EQ(upload("after.bmp", "x"), 1);
}

TEST_F(FtpTransferControlTest, TheDeviceIsToldOfTheUpload) {
    const FtpTestServer server;
    ASSERT_EQ(open(server), 1);
    control.PrepareUpload("");
    EXPECT_EQ(upload("a.bmp", "x"), 1);
    control.FinishUpload();
    control.CloseLink();
    std::vector<std::string> told;
    std::ranges::copy_if(server.commands(), std::back_inserter(told), [](const std::string& line) {
        return line.starts_with("SITE") || line.starts_with("STOR") || line.starts_with("USER");
    });
    EXPECT_THAT(told, ElementsAre("USER admin", "SITE UPLOAD BEGIN", "STOR a.bmp", "SITE UPLOAD END"))
        << "on one connection, by a server that knows neither command";
}

TEST_F(FtpTransferControlTest, ServerThatHangsUpAfterLogin) {
    const FtpTestServer server({"--fault", "hang-up-after-login"});
    open(server);
    EXPECT_LE(upload("a.bmp", "x"), 0);
    EXPECT_LE(download(), 0);
    EXPECT_FALSE(server.has("a.bmp"));
}

TEST_F(FtpTransferControlTest, ABrokenLinkIsNotOpenedAnewInSilence) {
    const FtpTestServer server({"--fault", "hang-up-before-store"});
    ASSERT_EQ(open(server), 1);
    EXPECT_LE(upload("a.bmp", "x"), 0);
    EXPECT_LE(upload("b.bmp", "x"), 0);
    EXPECT_THAT(server.commands(), Not(Contains("STOR b.bmp")));
}

TEST_F(FtpTransferControlTest, ServerThatHangsUpAtTheUploadsBeginning) {
    const FtpTestServer server({"--fault", "site-hang-up"});
    ASSERT_EQ(open(server), 1);
    control.PrepareUpload("");
    EXPECT_LE(upload("a.bmp", "x"), 0);
}

TEST_F(FtpTransferControlTest, ServerThatHangsUpInTheMiddleOfAnUpload) {
    const FtpTestServer server({"--fault", "hang-up-in-store"});
    ASSERT_EQ(open(server), 1);
    EXPECT_LE(upload("a.bmp", std::string(8 << 20, 'x')), 0);
}

TEST_F(FtpTransferControlTest, FullDiskAtTheServer) {
    const FtpTestServer server({"--fault", "full", "--files-served", "1"});
    ASSERT_EQ(open(server), 1);
    EXPECT_EQ(upload("a.bmp", "x"), 1);
    EXPECT_LE(upload("b.bmp", "x"), 0);
}

TEST_F(FtpTransferControlTest, DiskThatFillsInTheMiddleOfAnUpload) {
    const FtpTestServer server({"--fault", "full-in-store"});
    ASSERT_EQ(open(server), 1);
    EXPECT_LE(upload("a.bmp", std::string(8 << 20, 'x')), 0);
}

TEST_F(FtpTransferControlTest, ReadOnlyServer) {
    const FtpTestServer server({"--fault", "read-only"});
    server.putDeviceFiles();
    ASSERT_EQ(open(server), 1);
    EXPECT_LE(upload("a.bmp", "x"), 0);
    EXPECT_EQ(download(), 1);
}

TEST_F(SilentServerTest, SilenceEndsAnUpload) {
    for (const char* fault : {"silent-store", "silent-in-store"}) {
        const FtpTestServer server({"--fault", fault});
        ASSERT_EQ(open(server), 1);
        const auto start = std::chrono::steady_clock::now();
        EXPECT_LE(upload("a.bmp", std::string(8 << 20, 'x')), 0) << fault;
        EXPECT_LT(std::chrono::steady_clock::now() - start, limit) << fault;
        control.CloseLink();
    }
}

TEST_F(FtpTransferControlTest, SilenceAfterAFilesBytesEndsAnUploadAtOnceAndWithoutAFarewell) {
    constexpr std::chrono::seconds timeout{2};
    FtpTransferControl impatient({}, timeout);
    const FtpTestServer server({"--fault", "silent-after-store"});
    ASSERT_EQ(open(impatient, server.port()), 1);
    writeBytes(local.file("a.bmp"), "x");
    const auto start = std::chrono::steady_clock::now();
    EXPECT_LE(impatient.UploadFile(local.file("a.bmp")), 0);
    impatient.CloseLink();
    EXPECT_LT(std::chrono::steady_clock::now() - start, 2 * timeout);
}

TEST_F(FtpTransferControlTest, ADripEndsADownloadAfterThirtySeconds) {
    // Silence does not matter here. By the clock on the wall each file would take 20 s.
    FtpTransferControl watchful({}, std::chrono::seconds(10'000), PathRules::native(), fastClock(100));
    for (const char* fault : {"slow-retrieve", "slow-list"}) {
        const FtpTestServer server({"--fault", fault, "--piece", "1", "--pause", "0.02"});
        server.putDeviceFiles();
        server.put("modbus.adr", std::string(1000, 'x'));
        ASSERT_EQ(open(watchful, server.port()), 1);
        const auto start = std::chrono::steady_clock::now();
        EXPECT_LE(watchful.DownloadFiles("", local.path()), 0) << fault;
        watchful.CloseLink();
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10)) << fault;
        EXPECT_THAT(localNames(), IsEmpty()) << fault;
    }
}

TEST_F(FtpTransferControlTest, ASlowButSteadyTransferIsNotEnded) {
    // 36 s of this clock for one file: longer than the timeout, and than a window of the watch.
    FtpTransferControl watchful({}, std::chrono::seconds(32), PathRules::native(), fastClock(20));
    const FtpTestServer server({"--fault", "slow-retrieve", "--piece", "512", "--pause", "0.1"});
    server.putDeviceFiles();
    const std::string bytes(std::size_t{18} * 512, 'x');
    server.put("modbus.adr", bytes);
    ASSERT_EQ(open(watchful, server.port()), 1);
    EXPECT_EQ(watchful.DownloadFiles("", local.path()), 1);
    EXPECT_TRUE(localBytes("modbus.adr") == bytes);
}

TEST_F(FtpTransferControlTest, AListThatBreaksOffFailsTheDownload) {
    // Every name is there; only its end was never confirmed.
    const FtpTestServer server({"--fault", "broken-list"});
    server.putDeviceFiles();
    ASSERT_EQ(open(server), 1);
    EXPECT_LE(download(), 0);
    EXPECT_THAT(notices, IsEmpty());
    EXPECT_THAT(localNames(), IsEmpty());
}

/// Fails in the library's callbacks as a disk does.
struct BrokenDisk final : ByteSource, ByteSink {
    std::size_t read(char*, std::size_t) override {
        throw ReadFailure(std::make_error_code(std::errc::io_error));
    }
    void write(std::string_view) override {
        throw WriteFailure(std::make_error_code(std::errc::no_space_on_device));
    }
    void close() override {}
};

class FtpLinkTest : public ::testing::Test {
protected:
    void SetUp() override { server.put("ten.bmp", "0123456789"); }
    FtpLink connected() const {
        return {CurlLibrary::open(),
                {"127.0.0.1", static_cast<std::uint16_t>(server.port()), ftpUser, ftpPassword, longTimeout},
                &std::chrono::steady_clock::now};
    }

    FtpTestServer server{{"--fault", "no-size"}};
    BrokenDisk disk;
    MemorySink sink;
};

TEST_F(FtpLinkTest, ASourceThatThrowsFailsTheFile) {
    FtpLink link = connected();
    ASSERT_TRUE(link.isOpen());
    EXPECT_FALSE(link.store("a.bmp", disk));
}

TEST_F(FtpLinkTest, ASinkThatThrowsFailsTheFile) {
    FtpLink link = connected();
    ASSERT_TRUE(link.isOpen());
    EXPECT_FALSE(link.fetch("ten.bmp", 100, disk));
    EXPECT_EQ(link.cause(), "it cannot be written here: No space left on device");
}

TEST_F(FtpLinkTest, AReceiverThatThrowsFailsTheList) {
    FtpLink link = connected();
    ASSERT_TRUE(link.isOpen());
    EXPECT_FALSE(link.list([](std::string_view) -> bool { throw std::bad_alloc(); }));
}

TEST_F(FtpLinkTest, TheSizeLimitIsTheLargestSize) {
    FtpLink link = connected();
    EXPECT_TRUE(link.fetch("ten.bmp", 10, sink));
    EXPECT_EQ(sink.bytes(), "0123456789");
    EXPECT_FALSE(link.fetch("ten.bmp", 9, sink));
    EXPECT_EQ(link.cause(), "it is too long");
}

TEST_F(FtpTransferControlTest, TwentyMegabytesArrive) {
    const FtpTestServer server;
    ASSERT_EQ(open(server), 1);
    // No piece of it is like its neighbour, however large a buffer is.
    std::string bytes;
    for (int line = 0; bytes.size() < 20 << 20; ++line)
        bytes += std::to_string(line) + std::string(1000, static_cast<char>(line));
    EXPECT_EQ(upload("large.bmp", bytes), 1);
    EXPECT_TRUE(server.bytes("large.bmp") == bytes);
    server.putDeviceFiles();
    fs::remove(local.file("large.bmp"));
    EXPECT_EQ(download(), 1);
    EXPECT_TRUE(localBytes("large.bmp") == bytes);
}

TEST_F(FtpTransferControlTest, FiveHundredBitmapsThereAndBack) {
    const FtpTestServer server;
    ASSERT_EQ(open(server), 1);
    server.putDeviceFiles();
    for (int number = 0; number < 500; ++number)
        ASSERT_EQ(upload("b" + std::to_string(number) + ".bmp", std::to_string(number)), 1);
    TemporaryFolder target;
    ASSERT_EQ(control.DownloadFiles("", target.path()), 1);
    for (int number = 0; number < 500; ++number)
        ASSERT_EQ(fileBytes(target.file("b" + std::to_string(number) + ".bmp")), std::to_string(number));
    EXPECT_EQ(std::ranges::count(server.commands(), "USER admin"), 1);
}

TEST_F(FtpTransferControlTest, DownloadFetchesTheFiveFilesAndTheBitmapsAndNothingElse) {
    const FtpTestServer server;
    server.putDeviceFiles();
    server.put("logo.bmp", "picture");
    server.put("UPPER.BMP", "another");
    server.put("\xE9 %#.bmp", "acute");
    server.put("notes.txt", "no");
    server.put("plant.orx", "no");
    server.put("system.ini", "no");
    fs::create_directory(server.file("inner"));
    server.put("inner/deep.bmp", "no");
    ASSERT_EQ(open(server), 1);
    EXPECT_EQ(download(), 1);
    EXPECT_THAT(localNames(), ElementsAre("UPPER.BMP", "altmsg.ilm", "default.pls", "ilmvar.def", "logo.bmp",
                                          "modbus.adr", "stdmsg.ilm", "\xC3\xA9 %#.bmp"));
    EXPECT_EQ(localBytes("modbus.adr"), "remote modbus.adr");
    EXPECT_EQ(localBytes("\xC3\xA9 %#.bmp"), "acute");
    EXPECT_THAT(notices,
                ElementsAre("modbus.adr 1/8", "ilmvar.def 2/8", "stdmsg.ilm 3/8", "altmsg.ilm 4/8",
                            "default.pls 5/8", "UPPER.BMP 6/8", "logo.bmp 7/8", "\xC3\xA9 %#.bmp 8/8"));
}

TEST_F(FtpTransferControlTest, DownloadWithoutBitmaps) {
    const FtpTestServer server;
    server.putDeviceFiles();
    ASSERT_EQ(open(server), 1);
    EXPECT_EQ(download(), 1);
    EXPECT_THAT(localNames(), SizeIs(5));
}

TEST_F(FtpTransferControlTest, DeviceFilesAreFoundInAnyCaseOnBothSides) {
    const FtpTestServer server;
    server.putDeviceFiles();
    fs::rename(server.file("modbus.adr"), server.file("MODBUS.ADR"));
    writeBytes(local.file("StdMsg.ilm"), "old");
    ASSERT_EQ(open(server), 1);
    EXPECT_EQ(download(), 1);
    EXPECT_EQ(localBytes("modbus.adr"), "remote modbus.adr");
    EXPECT_EQ(localBytes("StdMsg.ilm"), "remote stdmsg.ilm");
    EXPECT_FALSE(fs::exists(local.file("stdmsg.ilm")));
}

TEST_F(FtpTransferControlTest, AMissingDeviceFileFailsTheDownload) {
    const FtpTestServer server;
    server.putDeviceFiles();
    fs::remove(server.file("altmsg.ilm"));
    std::vector<std::string> missing;
    control.onMissing([&missing](const std::vector<std::string>& names) { missing = names; });
    ASSERT_EQ(open(server), 1);
    EXPECT_LE(download(), 0);
    EXPECT_THAT(localNames(), IsEmpty());
    EXPECT_THAT(missing, ElementsAre("altmsg.ilm"));
}

TEST_F(FtpTransferControlTest, EmptyServer) {
    const FtpTestServer server;
    ASSERT_EQ(open(server), 1);
    EXPECT_LE(download(), 0);
    EXPECT_THAT(localNames(), IsEmpty());
}

TEST_F(FtpTransferControlTest, FailedDownloadLeavesTheFolderAsItWas) {
    for (const char* fault : {"hang-up-in-retrieve", "short-retrieve"}) {
        const FtpTestServer server({"--fault", fault});
        server.putDeviceFiles();
        writeBytes(local.file("modbus.adr"), "mine");
        control.onMissing([&](const std::vector<std::string>&) { FAIL() << fault; });
        ASSERT_EQ(open(server), 1);
        EXPECT_LE(download(), 0) << fault;
        EXPECT_THAT(localNames(), ElementsAre("modbus.adr")) << fault;
        EXPECT_EQ(localBytes("modbus.adr"), "mine") << fault;
    }
}

TEST_F(FtpTransferControlTest, AFarewellIsWaitedForNoLongerThanAnyOtherAnswer) {
    FtpTransferControl impatient({}, shortTimeout);
    const FtpTestServer server({"--fault", "silent-quit"});
    ASSERT_EQ(open(impatient, server.port()), 1);
    writeBytes(local.file("a.bmp"), "x");
    EXPECT_EQ(impatient.UploadFile(local.file("a.bmp")), 1);
    const auto start = std::chrono::steady_clock::now();
    impatient.CloseLink();
    EXPECT_LT(std::chrono::steady_clock::now() - start, 5 * shortTimeout / 2);
    EXPECT_THAT(server.commands(), Contains("QUIT"));
}

TEST_F(SilentServerTest, SilenceInTheMiddleOfAFileEndsADownload) {
    const FtpTestServer server({"--fault", "silent-in-retrieve"});
    server.putDeviceFiles();
    ASSERT_EQ(open(server), 1);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_LE(download(), 0);
    EXPECT_LT(std::chrono::steady_clock::now() - start, limit);
    EXPECT_THAT(localNames(), IsEmpty());
}

TEST_F(SilentServerTest, SilenceInsteadOfAFilesEndEndsADownload) {
    for (const char* fault : {"silent-after-retrieve", "open-after-retrieve"}) {
        const FtpTestServer server({"--fault", fault});
        server.putDeviceFiles();
        ASSERT_EQ(open(server), 1);
        const auto start = std::chrono::steady_clock::now();
        EXPECT_LE(download(), 0) << fault;
        EXPECT_LT(std::chrono::steady_clock::now() - start, limit) << fault;
        EXPECT_THAT(localNames(), IsEmpty()) << fault;
    }
}

TEST_F(FtpTransferControlTest, ATransferThatIsNoLongerWantedEndsAtOnce) {
    for (const char* fault : {"silent-retrieve", "silent-in-retrieve", "open-after-retrieve"}) {
        const FtpTestServer server({"--fault", fault});
        server.putDeviceFiles();
        FtpTransferControl patient({}, longTimeout);
        const auto start = std::chrono::steady_clock::now();
        patient.endWhen([&server] {
            const auto commands = server.commands();
            return !commands.empty() && commands.back().starts_with("RETR");
        });
        ASSERT_EQ(open(patient, server.port()), 1);
        EXPECT_LE(patient.DownloadFiles("", local.path()), 0) << fault;
        patient.CloseLink();
        EXPECT_LT(std::chrono::steady_clock::now() - start, longTimeout / 4) << fault;
        EXPECT_THAT(localNames(), IsEmpty()) << fault;
    }
}

TEST_F(FtpTransferControlTest, ConnectingThatIsNoLongerWantedEndsAtOnce) {
    const FtpTestServer server({"--fault", "no-greeting"});
    FtpTransferControl patient({}, longTimeout);
    patient.endWhen([] { return true; });
    const auto start = std::chrono::steady_clock::now();
    EXPECT_LE(open(patient, server.port()), 0);
    EXPECT_LT(std::chrono::steady_clock::now() - start, longTimeout / 4);
}

TEST_F(SilentServerTest, SilenceEndsADownload) {
    const FtpTestServer server({"--fault", "silent-retrieve", "--files-served", "2"});
    server.putDeviceFiles();
    ASSERT_EQ(open(server), 1);
    EXPECT_LE(download(), 0);
    EXPECT_THAT(notices, SizeIs(3));
    EXPECT_THAT(localNames(), IsEmpty());
}

TEST_F(FtpTransferControlTest, DownloadReplacesFilesButNotWhatTheyLinkTo) {
    const FtpTestServer server;
    server.putDeviceFiles();
    server.put("logo.bmp", "new");
    writeBytes(listings.file("elsewhere"), "untouched");
    fs::create_symlink(listings.file("elsewhere"), local.file("logo.bmp"));
    ASSERT_EQ(open(server), 1);
    EXPECT_EQ(download(), 1);
    EXPECT_EQ(localBytes("logo.bmp"), "new");
    EXPECT_EQ(fileBytes(listings.file("elsewhere")), "untouched");
}

TEST_F(FtpTransferControlTest, TargetThatIsNoFolder) {
    const FtpTestServer server;
    server.putDeviceFiles();
    ASSERT_EQ(open(server), 1);
    EXPECT_LE(control.DownloadFiles("", local.file("none")), 0);
    EXPECT_LE(control.DownloadFiles("", ""), 0);
    writeBytes(local.file("file"), "x");
    EXPECT_LE(control.DownloadFiles("", local.file("file")), 0);
}

TEST_F(FtpTransferControlTest, FolderInTheWayOfAFileFails) {
    const FtpTestServer server;
    server.putDeviceFiles();
    server.put("logo.bmp", "x");
    fs::create_directories(local.file("logo.bmp/inner"));
    writeBytes(local.file("modbus.adr"), "mine");
    ASSERT_EQ(open(server), 1);
    EXPECT_LE(download(), 0);
    EXPECT_TRUE(fs::exists(local.file("logo.bmp/inner")));
    EXPECT_THAT(localNames(), ElementsAre("logo.bmp", "modbus.adr"));
    EXPECT_EQ(localBytes("modbus.adr"), "mine");
}

TEST_F(FtpTransferControlTest, HostileNamesAreNotWritten) {
    const FtpTestServer server(listing(
        deviceFileLines() + "../up.bmp\r\n/etc/root.bmp\r\n..\\up.bmp\r\nC:evil.bmp\r\nCON.bmp\r\nnul.bmp\r\n"
                            "a\tb.bmp\r\n..bmp\r\nsub/logo.bmp\r\n\x81.bmp\r\ngood.bmp\r\n"));
    server.putDeviceFiles();
    server.put("good.bmp", "good");
    ASSERT_EQ(open(server), 1);
    EXPECT_EQ(download(), 1);
    EXPECT_THAT(localNames(), ElementsAre("altmsg.ilm", "default.pls", "good.bmp", "ilmvar.def", "modbus.adr",
                                          "stdmsg.ilm"));
    std::vector<std::string> retrieved;
    std::ranges::copy_if(server.commands(), std::back_inserter(retrieved),
                         [](const std::string& line) { return line.starts_with("RETR"); });
    EXPECT_THAT(retrieved, SizeIs(6));
}

TEST_F(FtpTransferControlTest, ListOfGarbage) {
    std::string garbage;
    std::uint32_t state = 7;
    for (int count = 0; count < 100'000; ++count)
        garbage += static_cast<char>((state = state * 1664525 + 1013904223) >> 24);
    const FtpTestServer server(listing(deviceFileLines() + garbage));
    server.putDeviceFiles();
    ASSERT_EQ(open(server), 1);
    EXPECT_EQ(download(), 1);
    EXPECT_THAT(localNames(), SizeIs(5));
}

TEST_F(FtpTransferControlTest, MoreThanTenThousandNamesFail) {
    std::string names = deviceFileLines();
    for (int number = 0; number < 9'995; ++number)
        names += std::to_string(number) + ".txt\r\n";
    const FtpTestServer full(listing(names));
    full.putDeviceFiles();
    ASSERT_EQ(open(full), 1);
    EXPECT_EQ(download(), 1);

    const FtpTestServer tooMany(listing(names + "one.txt\r\n"));
    tooMany.putDeviceFiles();
    ASSERT_EQ(open(tooMany), 1);
    EXPECT_LE(download(), 0);
}

TEST_F(FtpTransferControlTest, FilesOf64MegabytesAreFetched) {
    const FtpTestServer server;
    server.putDeviceFiles();
    server.put("huge.bmp", "");
    fs::resize_file(server.file("huge.bmp"), 64u << 20);
    ASSERT_EQ(open(server), 1);
    EXPECT_EQ(download(), 1);
    EXPECT_EQ(fs::file_size(local.file("huge.bmp")), 64u << 20);
}

TEST_F(FtpTransferControlTest, FilesOver64MegabytesFail) {
    for (const char* fault : {"none", "no-size"}) {
        const FtpTestServer server({"--fault", fault});
        server.putDeviceFiles();
        server.put("huge.bmp", "");
        fs::resize_file(server.file("huge.bmp"), (64u << 20) + 1);
        ASSERT_EQ(open(server), 1);
        EXPECT_LE(download(), 0) << fault;
        EXPECT_THAT(localNames(), IsEmpty()) << fault;
    }
}

TEST_F(FtpTransferControlTest, ServerThatTellsNoSizes) {
    const FtpTestServer server({"--fault", "no-size"});
    server.putDeviceFiles();
    ASSERT_EQ(open(server), 1);
    EXPECT_EQ(download(), 1);
    EXPECT_EQ(localBytes("default.pls"), "remote default.pls");
}

TEST_F(FtpTransferControlTest, AFileThatGoesOnBeyondItsToldSizeFailsTheDownload) {
    // Small ones wait in the sockets' buffers, all of them there when the told part has been read.
    for (const char* fault : {"small-size", "small-announcement"}) {
        for (const std::size_t size : {4u, 1000u, 100'000u, 8u << 20}) {
            const FtpTestServer server({"--fault", fault});
            server.putDeviceFiles();
            for (const char* name : {"modbus.adr", "ilmvar.def", "stdmsg.ilm", "altmsg.ilm", "default.pls"})
                server.put(name, "abc");
            server.put("last.bmp", std::string(size, 'x'));
            ASSERT_EQ(open(server), 1);
            EXPECT_LE(download(), 0) << fault << " " << size;
            EXPECT_THAT(localNames(), IsEmpty()) << fault << " " << size;
        }
    }
}

TEST_F(FtpTransferControlTest, ALeftoverOfAKilledDownloadIsRemovedByTheNext) {
    const FtpTestServer server;
    server.putDeviceFiles();
    fs::create_directory(local.file("download0.tmp"));
    writeBytes(local.file("download0.tmp/0"), "left");
    ASSERT_EQ(open(server), 1);
    EXPECT_EQ(download(), 1);
    EXPECT_THAT(localNames(), SizeIs(5));
}

TEST_F(FtpTransferControlTest, NamesThatTheDiskCannotHoldAreLeftOut) {
    const std::string longName = std::string(300, 'x') + ".bmp";
    const FtpTestServer server(listing(deviceFileLines() + longName + "\r\nzebra.bmp\r\n"));
    server.putDeviceFiles();
    server.put("zebra.bmp", "zebra");
    ASSERT_EQ(open(server), 1);
    EXPECT_EQ(download(), 1);
    EXPECT_THAT(localNames(), SizeIs(6));
    EXPECT_EQ(localBytes("zebra.bmp"), "zebra");
    EXPECT_THAT(server.commands(), Not(Contains("RETR " + longName)));
}

TEST_F(FtpTransferControlTest, LinksOpenOneAfterAnother) {
    const FtpTestServer first;
    const FtpTestServer second;
    ASSERT_EQ(open(first), 1);
    ASSERT_EQ(open(second), 1);
    EXPECT_EQ(upload("a.bmp", "x"), 1);
    EXPECT_FALSE(first.has("a.bmp"));
    EXPECT_TRUE(second.has("a.bmp"));
}

} // namespace
} // namespace orvista
