#include "items/RecoveryFile.h"

#include "items/CheckedTexts.h"
#include "items/CountedTexts.h"
#include "model/Fields.h"

#include <charconv>
#include <utility>

namespace orvista {

namespace {

constexpr std::string_view recoveryFirstLine = "orvista-recovery 1\n";
constexpr std::string_view recoveryWord = recoveryFirstLine.substr(0, recoveryFirstLine.size() - 2);
constexpr int recoveryVersion = 1;

/// Calls `visit` with every text that stands before the addresses.
template <typename Projects, typename Visit>
void visitSettings(Projects& project, Visit&& visit) {
    visit(project.ProjPath);
    visit(project.ProjName);
    visit(project.SerialPort);
    visit(project.IP);
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
    return checkedTexts(recoveryFirstLine, texts);
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
    const auto texts = textsChecked(recoveryFirstLine, bytes);
    if (!texts)
        return std::nullopt;
    CountedTextReader reader(*texts);
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
