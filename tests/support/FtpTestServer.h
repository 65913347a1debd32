#pragma once

#include "tests/support/ChildProcess.h"
#include "tests/support/TemporaryFolder.h"

#include <cstdint>
#include <filesystem>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace orvista::testing {

/// An independent FTP server in a process of its own. Its folder holds names as the bytes that were sent.
class FtpTestServer {
public:
    explicit FtpTestServer(std::vector<std::string> options = {})
        : process_(command(std::move(options))),
          port_(static_cast<std::int16_t>(std::stoi(process_.readLine()))) {}

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

    std::vector<std::string> command(std::vector<std::string> options) const {
        std::filesystem::create_directory(root());
        writeBytes(folder_.file("commands"), {});
        std::vector<std::string> words = {ORVISTA_PYTHON, ORVISTA_FTP_SERVER, root(), "--commands",
                                          folder_.file("commands")};
        words.insert(words.end(), options.begin(), options.end());
        return words;
    }

    TemporaryFolder folder_;
    ChildProcess process_;
    std::int16_t port_;
};

} // namespace orvista::testing
