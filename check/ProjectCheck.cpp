#include "check/ProjectCheck.h"

#include "check/AddressCheck.h"
#include "check/FindingList.h"
#include "check/MessageCheck.h"
#include "check/VariableCheck.h"
#include "display/FieldFormats.h"
#include "display/LedRaster.h"
#include "model/Fields.h"
#include "model/Item.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace orvista {

namespace {

PanelSize panelOf(int columns) {
    return LedRaster({columns}).size();
}

/// What was found in an item, and what the item was then.
template <typename Content>
struct CheckedItem {
    Content content;
    Findings findings;
};

/// The variables that the two show in different ways.
VariableUse differences(const FieldFormats& one, const FieldFormats& other) {
    VariableUse different;
    for (std::size_t i = 0; i < one.floats.size(); ++i)
        different.floats[i] = !(one.floats[i] == other.floats[i]);
    for (std::size_t i = 0; i < one.booleans.size(); ++i)
        different.booleans[i] = !(one.booleans[i] == other.booleans[i]);
    return different;
}

bool meet(const VariableUse& one, const VariableUse& other) {
    return (one.floats & other.floats).any() || (one.booleans & other.booleans).any();
}

bool isSameBitmap(const FoundBitmap& one, const FoundBitmap& other) {
    return one.image == other.image && one.error == other.error;
}

Findings notInUse(Item variable) {
    FindingList found(variable);
    found.add(Code::NotInUse, {}, [&] {
        return "No message shows " + nameOf(variable) +
               ", though its settings were changed: show it with DISPVAR, or ignore this note.";
    });
    return std::move(found).sorted();
}

} // namespace

struct ProjectCheck::State {
    struct Message {
        std::string script;
        CheckedMessage checked;
    };
    template <typename Content, std::size_t count>
    using Items = std::array<std::optional<CheckedItem<Content>>, count>;
    template <std::size_t count>
    using Messages = std::array<std::optional<Message>, count>;

    void update(const Project& project, const BitmapProvider& bitmaps, PanelSize newPanel);
    template <typename Content, typename Check>
    void update(std::optional<CheckedItem<Content>>& item, const Content& content, Check&& check);
    template <std::size_t count>
    void update(Messages<count>& messages, Kind kind, const std::array<std::string, count>& scripts,
                const BitmapProvider& bitmaps, const VariableUse& changed);
    static bool isCurrent(const Message& message, const std::string& script, const BitmapProvider& bitmaps,
                          const VariableUse& changed);

    VariableUse variablesShown() const;
    Findings collected(Notes notes) const;

    bool looksAgain = true; ///< and so keeps the scripts, which are most of the work's memory
    std::optional<PanelSize> panel;
    FieldFormats formats;
    std::size_t itemsLookedAt = 0;
    std::optional<CheckedItem<std::vector<std::string>>> addresses;
    Items<FloatVariable, floatVariableCount> floats;
    Items<BooleanVariable, booleanVariableCount> booleans;
    Messages<regularMessageCount> regular;
    Messages<emergencyMessageCount> emergency;
};

template <typename Content, typename Check>
void ProjectCheck::State::update(std::optional<CheckedItem<Content>>& item, const Content& content,
                                 Check&& check) {
    if (item && item->content == content)
        return;
    item = CheckedItem<Content>{content, check()};
    ++itemsLookedAt;
}

bool ProjectCheck::State::isCurrent(const Message& message, const std::string& script,
                                    const BitmapProvider& bitmaps, const VariableUse& changed) {
    return message.script == script && !meet(message.checked.variables, changed) &&
           std::ranges::all_of(message.checked.bitmaps, [&](const auto& bitmap) {
               return isSameBitmap(bitmap.second, bitmaps.bitmap(bitmap.first));
           });
}

template <std::size_t count>
void ProjectCheck::State::update(Messages<count>& messages, Kind kind,
                                 const std::array<std::string, count>& scripts, const BitmapProvider& bitmaps,
                                 const VariableUse& changed) {
    for (std::size_t i = 0; i < count; ++i) {
        if (messages[i] && isCurrent(*messages[i], scripts[i], bitmaps, changed))
            continue;
        messages[i] = Message{looksAgain ? scripts[i] : std::string(),
                              checkScript({kind, i}, scripts[i], *panel, formats, bitmaps)};
        ++itemsLookedAt;
    }
}

void ProjectCheck::State::update(const Project& project, const BitmapProvider& bitmaps, PanelSize newPanel) {
    itemsLookedAt = 0;
    if (panel != newPanel) {
        regular = {};
        emergency = {};
        panel = newPanel;
    }
    const FieldFormats newFormats = fieldFormats(project);
    const VariableUse changed = differences(formats, newFormats);
    formats = newFormats;

    update(addresses, textsOf(project, Item()), [&] { return checkAddressMap(project); });
    for (std::size_t i = 0; i < floats.size(); ++i)
        update(floats[i], project.RegVar[i], [&] {
            return checkVariable({Kind::Float, i}, project.RegVar[i]);
        });
    for (std::size_t i = 0; i < booleans.size(); ++i)
        update(booleans[i], project.CoilVar[i], [&] {
            return checkVariable({Kind::Boolean, i}, project.CoilVar[i]);
        });
    update(regular, Kind::Regular, project.STDMSG, bitmaps, changed);
    update(emergency, Kind::Emergency, project.ALTMSG, bitmaps, changed);
}

VariableUse ProjectCheck::State::variablesShown() const {
    VariableUse shown;
    for (const auto& message : regular)
        shown |= message->checked.variables;
    for (const auto& message : emergency)
        shown |= message->checked.variables;
    return shown;
}

Findings ProjectCheck::State::collected(Notes notes) const {
    static const Project defaults;
    const VariableUse shown = variablesShown();
    Findings findings = addresses->findings;
    const auto appendVariables = [&](const auto& items, const auto& ofDefaults, const auto& isShown,
                                     Kind kind) {
        for (std::size_t i = 0; i < items.size(); ++i) {
            append(findings, items[i]->findings);
            if (notes == Notes::Included && !isShown[i] && items[i]->content != ofDefaults[i])
                append(findings, notInUse({kind, i}));
        }
    };
    appendVariables(floats, defaults.RegVar, shown.floats, Kind::Float);
    appendVariables(booleans, defaults.CoilVar, shown.booleans, Kind::Boolean);
    for (const auto& message : regular)
        append(findings, message->checked.findings);
    for (const auto& message : emergency)
        append(findings, message->checked.findings);
    return findings;
}

ProjectCheck::ProjectCheck() = default;
ProjectCheck::~ProjectCheck() = default;
ProjectCheck::ProjectCheck(ProjectCheck&&) noexcept = default;
ProjectCheck& ProjectCheck::operator=(ProjectCheck&&) noexcept = default;

Findings ProjectCheck::check(const Project& project, const BitmapProvider& bitmaps, int columns,
                             Notes notes) {
    state().update(project, bitmaps, panelOf(columns));
    return state_->collected(notes);
}

ProjectCheck::State& ProjectCheck::state() {
    if (!state_)
        state_ = std::make_unique<State>();
    return *state_;
}

std::size_t ProjectCheck::itemsLookedAt() const {
    return state_ ? state_->itemsLookedAt : 0;
}

Findings checkProject(const Project& project, const BitmapProvider& bitmaps, int columns, Notes notes) {
    ProjectCheck once;
    once.state().looksAgain = false;
    return once.check(project, bitmaps, columns, notes);
}

Findings checkMessage(Item item, std::string_view script, const Project& project,
                      const BitmapProvider& bitmaps, int columns) {
    return checkScript(item, script, panelOf(columns), fieldFormats(project), bitmaps).findings;
}

} // namespace orvista
