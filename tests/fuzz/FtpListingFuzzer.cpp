#include "tests/fuzz/ReaderRun.h"

#include "link/ftp/RemoteNames.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace {

using namespace orvista;

/// A local name leads nowhere else, on whatever platform, and is the listed one in another encoding.
void checkLocalName(const std::string& listed, const PathRules& paths) {
    const auto local = localFileName(listed, paths);
    if (!local)
        return;
    testing::require(!local->empty() && *local != "." && local->find("..") == std::string::npos);
    testing::require(local->find_first_of("/\\:") == std::string::npos);
    testing::require(
        std::ranges::none_of(*local, [](char c) { return static_cast<unsigned char>(c) < 0x20; }));
    testing::require(remoteFileName(*local) == listed);
}

} // namespace

/// The first byte says how large the pieces are in which the rest arrives.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes = testing::inputBytes(data, size);
    const std::size_t pieceSize = bytes.empty() ? 1 : 1 + static_cast<unsigned char>(bytes.front());
    RemoteListing listing;
    for (std::size_t at = 1; at < bytes.size(); at += pieceSize)
        listing.append(bytes.substr(at, pieceSize));
    const bool complete = listing.finish();
    testing::require(listing.names().size() <= RemoteListing::nameLimit);
    testing::require(std::ranges::is_sorted(listing.names()));

    // Pieces make no difference.
    RemoteListing whole;
    whole.append(bytes.substr(std::min<std::size_t>(1, bytes.size())));
    testing::require(whole.finish() == complete && (!complete || whole.names() == listing.names()));

    for (const std::string& name : listing.names()) {
        testing::require(!name.empty() && name.find('\n') == std::string::npos);
        checkLocalName(name, PathRules::posix());
        checkLocalName(name, PathRules::windows());
    }
    return 0;
}
