#include "mainwindow/ProjectChanges.h"

#include "mainwindow/ItemPage.h"

#include <QUndoCommand>

#include <algorithm>
#include <iterator>
#include <memory>
#include <utility>

namespace orvista {

namespace {

QString shownName(Item item) {
    return item.kind == Kind::AddressMap ? ProjectChanges::tr("the address map")
                                         : QString::fromStdString(nameOf(item));
}

QString stepOfPage(Item item) {
    return item.kind == Kind::AddressMap ? ProjectChanges::tr("Addresses")
                                         : ProjectChanges::tr("Apply %1").arg(shownName(item));
}

bool shows(const ItemPage& page, std::span<const Item> items) {
    const auto shown = page.shownItem();
    return shown && std::ranges::find(items, *shown) != items.end();
}

std::size_t bytesOf(std::span<const Change> changes) {
    std::size_t bytes = 0;
    for (const Change& change : changes)
        bytes += bytesOf(change);
    return bytes;
}

} // namespace

class ProjectChanges::Step final : public QUndoCommand {
public:
    using Changes = std::shared_ptr<const std::vector<Change>>;

    /// Of changes that were made already.
    Step(ProjectChanges& owner, const QString& name, Changes changes)
        : QUndoCommand(name), changes_(std::move(changes)), owner_(owner) {}

    void undo() override {
        revertChanges(owner_.project_, *changes_);
        owner_.show(*changes_);
    }
    void redo() override {
        // The stack does so once when it gets the step.
        if (!std::exchange(isUndoable_, true))
            return;
        applyChanges(owner_.project_, *changes_);
        owner_.show(*changes_);
    }

    /// A step that is redone shares them.
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

bool ProjectChanges::change(const QString& step, std::span<const Change> changes) {
    if (changes.empty())
        return true;
    if (!mayChange(itemsOf(changes)))
        return false;
    applyChanges(project_, changes);
    show(changes);
    push(step, changes);
    return true;
}

bool ProjectChanges::mayChange(std::span<const Item> items) {
    for (const ItemPage* page : pages_) {
        if (!shows(*page, items) || !page->isNotApplied())
            continue;
        refused_ = true;
        emit notice(
            tr("Not done: apply or discard the edit of %1 first.").arg(shownName(*page->shownItem())));
        return false;
    }
    settle();
    return true;
}

void ProjectChanges::noteStored(std::span<const Change> changes) {
    if (!changes.empty())
        push(stepOfPage(changes.front().item), changes);
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

void ProjectChanges::push(const QString& step, std::span<const Change> changes) {
    std::vector<Change> kept;
    kept.reserve(changes.size());
    std::ranges::transform(changes, std::back_inserter(kept), trimmed);
    stack_.push(new Step(*this, step, std::make_shared<const std::vector<Change>>(std::move(kept))));
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

void ProjectChanges::show(std::span<const Change> changes) {
    const std::vector<Item> items = itemsOf(changes);
    for (ItemPage* const page : pages_)
        if (shows(*page, items))
            page->showAnew();
    modifiedMark_.SetModified(true);
}

} // namespace orvista
