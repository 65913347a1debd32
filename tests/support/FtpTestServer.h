#pragma once

#include "tests/support/ChildProcess.h"
#include "tests/support/TemporaryFolder.h"

#include <cstdint>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

namespace orvista::testing {

/// An independent FTP server in a process of its own. Its folder holds names as the bytes that were sent.
class FtpTestServer {
public:
    explicit FtpTestServer(const std::vector<std::string>& options = {}) {
        std::filesystem::create_directory(root());
        writeBytes(folder_.file("commands"), {});
        std::string order = "start\t" + root() + "\t--commands\t" + folder_.file("commands");
        for (const std::string& option : options)
            order += "\t" + option;
        std::istringstream(starter().ask(order)) >> port_ >> process_;
    }
    ~FtpTestServer() { starter().ask("end\t" + process_); }
    FtpTestServer(const FtpTestServer&) = delete;
    FtpTestServer& operator=(const FtpTestServer&) = delete;

    std::int16_t port() const { return port_; }
    std::string file(const std::string& name) const { return root() + "/" + name; }
    std::string bytes(const std::string& name) const { return fileBytes(file(name)); }
    bool has(const std::string& name) const { return std::filesystem::exists(file(name)); }
    void put(const std::string& name, const std::string& bytes) const { writeBytes(file(name), bytes); }
    void putDeviceFiles() const {
        for (const char* name : {"modbus.adr", "ilmvar.def", "stdmsg.ilm", "altmsg.ilm", "default.pls"})
            put(name, std::string("remote ") + name);
    }

    /// Every command line that came in, in order.
    std::vector<std::string> commands() const {
        std::istringstream text(fileBytes(folder_.file("commands")));
        std::vector<std::string> lines;
        for (std::string line; std::getline(text, line);)
            lines.push_back(line);
        return lines;
    }

private:
    std::string root() const { return folder_.file("root"); }

    /// Starts and ends the servers of this program.
    static ChildProcess& starter() {
        static ChildProcess process({ORVISTA_PYTHON, ORVISTA_FTP_SERVER});
        return process;
    }

    TemporaryFolder folder_;
    std::int16_t port_ = 0;
    std::string process_;
};

} // namespace orvista::testing
