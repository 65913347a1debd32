#include "mainwindow/ProjectChanges.h"

#include "mainwindow/ItemPage.h"

#include <QUndoCommand>

#include <algorithm>
#include <memory>
#include <utility>

namespace orvista {

namespace {

QString shownName(const std::string& item) {
    return item == addressMapName ? ProjectChanges::tr("the address map") : QString::fromStdString(item);
}

/// Empty where the page shows none.
std::string shownName(const ItemPage& page) {
    const auto item = page.shownItem();
    return item ? nameOf(*item) : std::string();
}

QString stepOfPage(const std::string& item) {
    return item == addressMapName ? ProjectChanges::tr("Addresses")
                                  : ProjectChanges::tr("Apply %1").arg(QString::fromStdString(item));
}

std::vector<std::string> itemsOf(const std::vector<ItemChange>& changes) {
    std::vector<std::string> items;
    items.reserve(changes.size());
    for (const ItemChange& change : changes)
        items.push_back(change.item());
    return items;
}

std::size_t bytesOf(const std::vector<ItemChange>& changes) {
    std::size_t bytes = 0;
    for (const ItemChange& change : changes)
        bytes += change.bytes();
    return bytes;
}

} // namespace

class ProjectChanges::Step final : public QUndoCommand {
public:
    using Changes = std::shared_ptr<const std::vector<ItemChange>>;

    /// Of changes that were made already.
    Step(ProjectChanges& owner, const QString& name, Changes changes)
        : QUndoCommand(name), changes_(std::move(changes)), owner_(owner) {}

    void undo() override {
        for (const ItemChange& change : *changes_)
            change.revert(owner_.project_);
        owner_.show(*changes_);
    }
    void redo() override {
        // The stack does so once when it gets the step.
        if (!std::exchange(isUndoable_, true))
            return;
        for (const ItemChange& change : *changes_)
            change.apply(owner_.project_);
        owner_.show(*changes_);
    }

    /// A step that is made anew shares them.
    const Changes& changes() const { return changes_; }

private:
    Changes changes_;
    ProjectChanges& owner_;
    bool isUndoable_ = false;
};

ProjectChanges::ProjectChanges(Project& project, ModifiedMark& modifiedMark, std::vector<ItemPage*> pages,
                               QObject* parent)
    : QObject(parent), project_(project), modifiedMark_(modifiedMark), pages_(std::move(pages)) {
    stack_.setUndoLimit(maximumSteps);
}

bool ProjectChanges::change(const QString& step, const std::vector<ItemState>& wanted) {
    std::vector<ItemChange> changes = changesTo(wanted);
    if (changes.empty())
        return true;
    if (!mayChange(itemsOf(changes)))
        return false;
    for (const ItemChange& change : changes)
        change.apply(project_);
    show(changes);
    push(step, std::move(changes));
    return true;
}

std::vector<ItemChange> ProjectChanges::changesTo(const std::vector<ItemState>& wanted) const {
    std::vector<ItemChange> changes;
    for (const ItemState& state : wanted) {
        ItemChange change(itemState(project_, state.item), state.value);
        if (!change.changesNothing())
            changes.push_back(std::move(change));
    }
    return changes;
}

bool ProjectChanges::mayChange(std::span<const std::string> items) {
    for (const ItemPage* page : pages_) {
        const std::string shown = shownName(*page);
        if (std::find(items.begin(), items.end(), shown) == items.end() || !page->isNotApplied())
            continue;
        refused_ = true;
        emit notice(tr("Not done: apply or discard the edit of %1 first.").arg(shownName(shown)));
        return false;
    }
    settle();
    return true;
}

void ProjectChanges::noteStored(const ItemState& before) {
    ItemChange change(before, itemState(project_, before.item).value);
    if (!change.changesNothing())
        push(stepOfPage(before.item), {std::move(change)});
}

void ProjectChanges::undo() {
    if (mayRun(stack_.index() - 1))
        stack_.undo();
}

void ProjectChanges::redo() {
    if (mayRun(stack_.index()))
        stack_.redo();
}

bool ProjectChanges::mayRun(int step) {
    return step >= 0 && step < stack_.count() && mayChange(itemsOf(*this->step(step).changes()));
}

void ProjectChanges::clear() {
    stack_.clear();
    settle();
}

void ProjectChanges::settle() {
    if (std::exchange(refused_, false))
        emit notice({});
}

void ProjectChanges::push(const QString& step, std::vector<ItemChange> changes) {
    stack_.push(new Step(*this, step, std::make_shared<const std::vector<ItemChange>>(std::move(changes))));
    forgetOldest();
}

void ProjectChanges::forgetOldest() {
    std::size_t bytes = 0;
    int oldest = stack_.count();
    while (oldest > 0 && bytes + bytesOf(*step(oldest - 1).changes()) <= maximumBytes)
        bytes += bytesOf(*step(--oldest).changes());
    if (oldest == 0)
        return;
    // The stack itself drops steps by their number only: what stays goes through it once more.
    std::vector<Step*> kept;
    for (int index = oldest; index < stack_.count(); ++index)
        kept.push_back(new Step(*this, step(index).text(), step(index).changes()));
    stack_.clear();
    for (Step* const step : kept)
        stack_.push(step);
}

const ProjectChanges::Step& ProjectChanges::step(int index) const {
    return static_cast<const Step&>(*stack_.command(index));
}

void ProjectChanges::show(const std::vector<ItemChange>& changes) {
    const std::vector<std::string> items = itemsOf(changes);
    for (ItemPage* const page : pages_) {
        if (std::find(items.begin(), items.end(), shownName(*page)) != items.end())
            page->showAnew();
    }
    modifiedMark_.SetModified(true);
}

} // namespace orvista
