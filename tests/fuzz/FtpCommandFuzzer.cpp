#include "simulator/FtpCommands.h"
#include "tests/fuzz/ReaderRun.h"

#include <algorithm>

namespace {

using namespace orvista;
using testing::require;

void checkName(std::string_view argument) {
    const std::optional<std::string> name = deviceFileName(argument);
    if (!name)
        return;
    require(!name->empty() && name->front() != '.');
    require(name->find_first_of("/\\:") == std::string::npos && name->find('\0') == std::string::npos);
    require(std::none_of(name->begin(), name->end(), [](char byte) { return byte == '\r' || byte == '\n'; }));
    require(deviceFileName(*name) == name);
    const ListedFile file{*name, argument.size(), static_cast<std::int64_t>(argument.size()) << 32U};
    require(longListLine(file).ends_with(" " + *name + "\r\n"));
    require(factListLine(file).ends_with("; " + *name + "\r\n"));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view line = testing::inputBytes(data, size);
    const FtpCommand command = parseFtpCommand(line);
    require(std::all_of(command.verb.begin(), command.verb.end(),
                        [](char letter) { return letter >= 'A' && letter <= 'Z'; }));
    require(command.verb.empty() ? command.argument.empty() : line.ends_with(command.argument));
    require(!describeFtpCommand(command).empty());
    require(!(namesRootFolder(command.argument) && deviceFileName(command.argument)));
    checkName(line);
    checkName(command.argument);
    return 0;
}
