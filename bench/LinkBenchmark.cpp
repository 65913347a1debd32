#include "bench/Pair.h"
#include "bench/PlainFtp.h"
#include "link/ProjectTransfer.h"
#include "link/TransferredFiles.h"
#include "link/forms/TesterClient.h"
#include "link/ftp/FtpTransferControl.h"
#include "mainwindow/TcpTesterPage.h"
#include "tests/support/EditorFixture.h"
#include "tests/support/FtpTestServer.h"

#include <QCoreApplication>
#include <QPushButton>

#include <arpa/inet.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <stdexcept>
#include <thread>

/// A click on the test page until its buttons are enabled again, beside a bare connect, send and close; and
/// uploads beside the same dialogue over plain sockets.
namespace orvista::bench {
namespace {

void require(bool holds, const char* what) {
    if (!holds)
        throw std::runtime_error(what);
}

/// Reads and drops what each connection sends, on a thread of its own.
class Sink {
public:
    Sink() : socket_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        address_.sin_family = AF_INET;
        address_.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address_;
        require(bind(socket_, socketAddress(), size) == 0 && listen(socket_, SOMAXCONN) == 0 &&
                    getsockname(socket_, reinterpret_cast<sockaddr*>(&address_), &size) == 0,
                "no listening socket");
        thread_ = std::thread([this] { serve(); });
    }
    ~Sink() {
        shutdown(socket_, SHUT_RDWR);
        thread_.join();
        close(socket_);
    }
    Sink(const Sink&) = delete;
    Sink& operator=(const Sink&) = delete;

    std::uint16_t port() const { return ntohs(address_.sin_port); }
    const sockaddr* socketAddress() const { return reinterpret_cast<const sockaddr*>(&address_); }

private:
    void serve() const {
        for (int client = accept(socket_, nullptr, nullptr); client >= 0;
             client = accept(socket_, nullptr, nullptr)) {
            std::array<char, 256> bytes{};
            while (read(client, bytes.data(), bytes.size()) > 0) {
            }
            close(client);
        }
    }

    int socket_;
    sockaddr_in address_{};
    std::thread thread_;
};

void sendBare(const Sink& sink, const Frame& frame) {
    const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    require(connect(socket, sink.socketAddress(), sizeof(sockaddr_in)) == 0, "no connection");
    require(send(socket, frame.data(), frame.size(), MSG_NOSIGNAL) == static_cast<ssize_t>(frame.size()),
            "not sent");
    close(socket);
}

void ClickToButtonsEnabled(benchmark::State& state) {
    const Sink sink;
    testing::EditorFixture editor;
    editor.startWithNewProject();
    editor.project.IP = "127.0.0.1";
    TesterClient client(editor.project, editor.window->testerPage(), editor.messages, sink.port());
    editor.window->testerPage().useActions(client);
    auto* const button = editor.find<QPushButton>("cmdUpdateCoil");
    const Frame frame = coilRequest(100, false);
    runBesideFloor(
        state,
        [&] {
            button->click();
            while (!button->isEnabled())
                QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        },
        [&] { sendBare(sink, frame); });
    require(editor.messages.shown.empty(), "a request failed");
}
BENCHMARK(ClickToButtonsEnabled)->UseManualTime()->Unit(benchmark::kMicrosecond);

/// One upload as the program makes it, without its windows. Gives the longest time that one file took.
Seconds upload(const testing::FtpTestServer& server, const std::vector<std::string>& paths) {
    FtpTransferControl control;
    control.RemoteAddress("127.0.0.1");
    control.RemotePort(server.port());
    require(transferSucceeded(control.OpenLink()), "no link");
    control.PrepareUpload({});
    Seconds longest{};
    for (const std::string& path : paths)
        longest = std::max(longest, costOf([&] {
                                        require(transferSucceeded(control.UploadFile(path)), "a file failed");
                                    }).wall);
    control.FinishUpload();
    control.CloseLink();
    return longest;
}

void uploadPlainly(const testing::FtpTestServer& server, const std::vector<std::string>& paths) {
    PlainFtp ftp({"127.0.0.1", static_cast<std::uint16_t>(server.port())});
    ftp.begin();
    for (const std::string& path : paths)
        ftp.store(path.substr(path.find_last_of('/') + 1), testing::fileBytes(path));
    ftp.finish();
    ftp.quit();
}

void uploadBesidePlainSockets(benchmark::State& state, const std::vector<std::string>& paths) {
    const testing::FtpTestServer server;
    Seconds longest{};
    runBesideFloor(
        state, [&] { longest = std::max(longest, upload(server, paths)); },
        [&] { uploadPlainly(server, paths); });
    state.counters["longest_file_us"] = longest.count() * 1e6;
}

std::vector<std::string> inFolder(const std::string& folder, const std::vector<std::string>& names) {
    std::vector<std::string> paths;
    for (const std::string& name : names)
        paths.push_back(PathRules::native().join(folder, name));
    return paths;
}

void UploadExample(benchmark::State& state) {
    const std::string folder = ORVISTA_EXAMPLES "/pumpstation";
    std::vector<std::string> names(transferredDeviceFiles.begin(), transferredDeviceFiles.end());
    for (const std::string& bitmap : bitmapsOfFolder(folder))
        names.push_back(bitmap);
    uploadBesidePlainSockets(state, inFolder(folder, names));
}
BENCHMARK(UploadExample)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(10);

void Upload500Bitmaps(benchmark::State& state) {
    const testing::TemporaryFolder folder;
    constexpr int bitmaps = 500;
    constexpr std::size_t bitmapSize = 4096;
    for (int number = 0; number < bitmaps; ++number)
        testing::writeBytes(folder.file("b" + std::to_string(number) + ".bmp"), std::string(bitmapSize, 'x'));
    uploadBesidePlainSockets(state, inFolder(folder.path(), bitmapsOfFolder(folder.path())));
}
BENCHMARK(Upload500Bitmaps)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);

} // namespace
} // namespace orvista::bench
