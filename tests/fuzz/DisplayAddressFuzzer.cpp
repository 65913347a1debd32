#include "link/DisplayAddress.h"
#include "tests/fuzz/ReaderRun.h"

/// Any bytes may be typed as an address: they are refused, or come back from the text of what was read.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace orvista;
    const std::string_view text = testing::inputBytes(data, size);
    for (const DisplayService service : {fileTransfer, modbusTcp}) {
        try {
            const DisplayAddress address = displayAddress(text, service);
            testing::require(address.port >= 1 && address.port <= service.highestPort);
            testing::require(!address.host.empty() && text.find(address.host) != std::string_view::npos);
            testing::require(address.host.find_first_of(" /\\@\r\n") == std::string::npos);
            testing::require(displayAddress(address.text(), service) == address);
        } catch (const BadDisplayAddress& failure) {
            testing::require(std::string_view(failure.what()).size() > 1);
        }
    }
    return 0;
}
