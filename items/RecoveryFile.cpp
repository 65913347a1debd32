#include "items/RecoveryFile.h"

#include "items/CountedTexts.h"
#include "model/Fields.h"

#include <array>
#include <charconv>
#include <cstdint>
#include <utility>

namespace orvista {

namespace {

constexpr std::string_view recoveryFirstLine = "orvista-recovery 1\n";
constexpr std::string_view recoveryWord = recoveryFirstLine.substr(0, recoveryFirstLine.size() - 2);
constexpr int recoveryVersion = 1;
constexpr std::size_t checksumDigits = 16;

/// Calls `visit` with every text that stands before the addresses.
template <typename Projects, typename Visit>
void visitSettings(Projects& project, Visit&& visit) {
    visit(project.ProjPath);
    visit(project.ProjName);
    visit(project.SerialPort);
    visit(project.IP);
}

std::uint64_t checksum(std::string_view bytes) {
    // The offset basis and the prime of FNV-1a for 64 bits.
    std::uint64_t sum = 0xcbf29ce484222325;
    for (const char byte : bytes) {
        sum ^= static_cast<unsigned char>(byte);
        sum *= 0x100000001b3;
    }
    return sum;
}

std::string checksumText(std::string_view bytes) {
    std::array<char, checksumDigits> digits{};
    const auto written = std::to_chars(digits.data(), digits.data() + digits.size(), checksum(bytes), 16);
    const std::string text(digits.data(), written.ptr);
    return std::string(checksumDigits - text.size(), '0') + text;
}

/// What stands in front of these texts.
std::string recoveryHead(std::string_view texts) {
    std::string head(recoveryFirstLine);
    head += checksumText(texts);
    head += '\n';
    return head;
}

void readNotApplied(CountedTextReader& reader, std::vector<NotAppliedTexts>& items) {
    for (std::size_t left = reader.number(maximumNotAppliedItems); left > 0 && !reader.hasFailed(); --left) {
        const auto item = itemNamed(reader.text());
        std::vector<std::string> shown;
        for (std::size_t texts = reader.number(maximumNotAppliedTexts); texts > 0; --texts)
            shown.emplace_back(reader.text());
        if (item) // there is no page for anything else
            items.push_back({*item, std::move(shown)});
    }
}

} // namespace

std::string recoveryFrame(std::string_view texts) {
    std::string bytes = recoveryHead(texts);
    bytes += texts;
    return bytes;
}

std::string recoveryBytes(const Project& project, const std::vector<NotAppliedTexts>& notApplied) {
    CountedTextWriter writer;
    const auto add = [&writer](const std::string& text) { writer.add(text); };
    visitSettings(project, add);
    for (const Item item : allItems())
        for (const Field& field : fieldsOf(item.kind))
            add(textOf(project, item, field));
    writer.add(notApplied.size());
    for (const NotAppliedTexts& item : notApplied) {
        writer.add(nameOf(item.item));
        writer.add(item.texts.size());
        for (const std::string& text : item.texts)
            writer.add(text);
    }
    return recoveryFrame(writer.bytes());
}

bool isRecoveryOfNewerVersion(std::string_view bytes) {
    if (!bytes.starts_with(recoveryWord))
        return false;
    const std::string_view line = bytes.substr(recoveryWord.size(), bytes.find('\n') - recoveryWord.size());
    int version = 0;
    const auto [end, error] = std::from_chars(line.data(), line.data() + line.size(), version);
    return error == std::errc() && end == line.data() + line.size() && version > recoveryVersion;
}

std::optional<UnsavedWork> readRecovery(std::string_view bytes) {
    constexpr std::size_t head = recoveryFirstLine.size() + checksumDigits + 1;
    if (bytes.size() < head || bytes.substr(0, head) != recoveryHead(bytes.substr(head)))
        return std::nullopt;
    CountedTextReader reader(bytes.substr(head));
    UnsavedWork work;
    const auto take = [&reader](std::string& text) { text = reader.text(); };
    visitSettings(work.project, take);
    bool isRead = true;
    for (const Item item : allItems())
        for (const Field& field : fieldsOf(item.kind))
            isRead = setText(work.project, item, field, reader.text()) && isRead;
    readNotApplied(reader, work.notApplied);
    return isRead && reader.isDone() ? std::optional(std::move(work)) : std::nullopt;
}

} // namespace orvista
