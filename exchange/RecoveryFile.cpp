#include "exchange/RecoveryFile.h"

#include "model/Numbers.h"

#include <array>
#include <charconv>
#include <cstdint>
#include <limits>

namespace orvista {

namespace {

constexpr std::string_view firstLine = "orvista-recovery 1\n";
constexpr std::size_t checksumDigits = 16;

constexpr std::array addresses{&Project::AnalogInput, &Project::DigitalInput, &Project::AlertMessage,
                               &Project::RegularMessage};

/// Calls `visit` with every text that stands before the addresses.
template <typename Projects, typename Visit>
void visitSettings(Projects& project, Visit&& visit) {
    visit(project.ProjPath);
    visit(project.ProjName);
    visit(project.SerialPort);
    visit(project.IP);
}

/// The same for those after them.
template <typename Projects, typename Visit>
void visitItems(Projects& project, Visit&& visit) {
    for (auto& variable : project.RegVar) {
        visit(variable.defaultValue);
        visit(variable.width);
        visit(variable.precision);
    }
    for (auto& variable : project.CoilVar) {
        visit(variable.defaultValue);
        visit(variable.onText);
        visit(variable.offText);
    }
    for (auto& script : project.STDMSG)
        visit(script);
    for (auto& script : project.ALTMSG)
        visit(script);
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
std::string headOf(std::string_view texts) {
    std::string head(firstLine);
    head += checksumText(texts);
    head += '\n';
    return head;
}

class TextWriter {
public:
    void add(std::string_view text) {
        bytes_ += decimalText(static_cast<std::int64_t>(text.size()));
        bytes_ += ':';
        bytes_ += text;
    }
    void add(std::size_t number) { add(decimalText(static_cast<std::int64_t>(number))); }
    const std::string& bytes() const { return bytes_; }

private:
    std::string bytes_;
};

/// Takes the texts back. After the first that is not whole there are only empty ones.
class TextReader {
public:
    explicit TextReader(std::string_view bytes) : rest_(bytes) {}

    std::string_view text() {
        std::size_t length = 0;
        const std::size_t digits = rest_.substr(0, longestNumber).find(':');
        if (digits == std::string_view::npos || !isWhole(rest_.substr(0, digits), length) ||
            length > rest_.size() - digits - 1)
            return fail();
        const std::string_view text = rest_.substr(digits + 1, length);
        rest_.remove_prefix(digits + 1 + length);
        return text;
    }
    /// 0 where it is no number of that type, or above the limit.
    template <typename Number>
    Number number(Number limit = std::numeric_limits<Number>::max()) {
        Number value = 0;
        if (isWhole(text(), value) && value <= limit)
            return value;
        fail();
        return 0;
    }
    /// Whether all was whole, and nothing is left.
    bool isDone() const { return !failed_ && rest_.empty(); }
    bool hasFailed() const { return failed_; }

private:
    /// Digits of the greatest length, and the colon.
    static constexpr std::size_t longestNumber = 21;

    template <typename Number>
    static bool isWhole(std::string_view text, Number& value) {
        const char* const end = text.data() + text.size();
        const auto read = std::from_chars(text.data(), end, value);
        return read.ec == std::errc() && read.ptr == end;
    }
    std::string_view fail() {
        failed_ = true;
        rest_ = {};
        return {};
    }

    std::string_view rest_;
    bool failed_ = false;
};

void readNotApplied(TextReader& reader, std::vector<NotAppliedTexts>& items) {
    for (std::size_t left = reader.number(maximumNotAppliedItems); left > 0 && !reader.hasFailed(); --left) {
        NotAppliedTexts& item = items.emplace_back();
        item.item = reader.text();
        for (std::size_t texts = reader.number(maximumNotAppliedTexts); texts > 0; --texts)
            item.texts.emplace_back(reader.text());
    }
}

} // namespace

std::string recoveryFrame(std::string_view texts) {
    std::string bytes = headOf(texts);
    bytes += texts;
    return bytes;
}

std::string recoveryBytes(const Project& project, const std::vector<NotAppliedTexts>& notApplied) {
    TextWriter writer;
    const auto add = [&writer](const std::string& text) { writer.add(text); };
    visitSettings(project, add);
    for (const auto address : addresses)
        writer.add(decimalText(project.*address));
    visitItems(project, add);
    writer.add(notApplied.size());
    for (const NotAppliedTexts& item : notApplied) {
        writer.add(item.item);
        writer.add(item.texts.size());
        for (const std::string& text : item.texts)
            writer.add(text);
    }
    return recoveryFrame(writer.bytes());
}

std::optional<UnsavedWork> readRecovery(std::string_view bytes) {
    constexpr std::size_t head = firstLine.size() + checksumDigits + 1;
    if (bytes.size() < head || bytes.substr(0, head) != headOf(bytes.substr(head)))
        return std::nullopt;
    TextReader reader(bytes.substr(head));
    UnsavedWork work;
    const auto take = [&reader](std::string& text) { text = reader.text(); };
    visitSettings(work.project, take);
    for (const auto address : addresses)
        work.project.*address = reader.number<std::int32_t>();
    visitItems(work.project, take);
    readNotApplied(reader, work.notApplied);
    return reader.isDone() ? std::optional(std::move(work)) : std::nullopt;
}

} // namespace orvista
