#include "link/ftp/RemoteNames.h"

#include "model/FileNames.h"
#include "model/Text.h"
#include "model/Windows1252.h"

#include <algorithm>

namespace orvista {

namespace {

/// C0, DEL and the C1 controls, which the encoding's undefined bytes stand for.
bool isControl(char c) {
    const char32_t code = windows1252CodePoint(static_cast<unsigned char>(c));
    return code < 0x20 || (code >= 0x7F && code < 0xA0);
}

bool holdsControl(std::string_view bytes) {
    return std::ranges::any_of(bytes, isControl);
}

} // namespace

std::optional<std::string> remoteFileName(std::string_view localName) {
    auto bytes = windows1252FromUtf8(localName);
    if (!bytes || bytes->empty() || holdsControl(*bytes))
        return std::nullopt;
    return bytes;
}

std::optional<std::string> localFileName(std::string_view remoteName, const PathRules& paths) {
    // Whatever the platform: the folder may be copied to the other one.
    const bool onWindows = paths.separator == '\\';
    const bool refused =
        remoteName.empty() || remoteName == "." || holdsControl(remoteName) ||
        remoteName.find("..") != std::string_view::npos ||
        remoteName.find_first_of(refusedInNames) != std::string_view::npos ||
        (onWindows && remoteName.find_first_of(refusedOnWindows) != std::string_view::npos) ||
        isReservedOnWindows(utf8FromWindows1252(remoteName));
    if (refused)
        return std::nullopt;
    return utf8FromWindows1252(remoteName);
}

bool RemoteListing::append(std::string_view piece) {
    byteCount_ += piece.size();
    if (byteCount_ > byteLimit)
        tooLong_ = true;
    while (!tooLong_ && !piece.empty()) {
        const auto end = piece.find('\n');
        line_.append(piece.substr(0, end));
        if (end == std::string_view::npos || !endLine())
            break;
        piece.remove_prefix(end + 1);
    }
    return !tooLong_;
}

bool RemoteListing::finish() {
    endLine();
    std::ranges::sort(names_);
    names_.erase(std::unique(names_.begin(), names_.end()), names_.end());
    return !tooLong_;
}

bool RemoteListing::endLine() {
    if (line_.ends_with('\r'))
        line_.pop_back();
    if (!line_.empty()) {
        tooLong_ = tooLong_ || names_.size() == nameLimit;
        if (!tooLong_)
            names_.push_back(line_);
    }
    line_.clear();
    return !tooLong_;
}

bool RemoteListing::has(std::string_view name) const {
    return std::ranges::find(names_, name) != names_.end();
}

std::string RemoteListing::variantOf(std::string_view name) const {
    const std::string lowerCase = lowerAscii(name);
    if (has(lowerCase))
        return lowerCase;
    const auto variant = std::ranges::find_if(
        names_, [&](const std::string& listed) { return equalsIgnoringCase(listed, name); });
    return variant == names_.end() ? std::string(name) : *variant;
}

} // namespace orvista
