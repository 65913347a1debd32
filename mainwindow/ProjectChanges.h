#pragma once

#include "model/ItemChange.h"
#include "model/People.h"

#include <QUndoStack>

#include <span>
#include <string>
#include <vector>

namespace orvista {

class ItemPage;

/// Every change of the open project that no page makes goes through here, and so does the way back from every
/// change of its items. What stands on other pages, applied or not, is left alone; nothing but the modified
/// mark is enabled or disabled, and it is never taken away.
class ProjectChanges final : public QObject {
    Q_OBJECT
public:
    static constexpr int maximumSteps = 200;
    /// Of what the steps keep; where they keep more, the oldest are forgotten.
    static constexpr std::size_t maximumBytes = std::size_t{64} << 20;

    /// \param pages all that show items; they must outlive the changes
    ProjectChanges(Project& project, ModifiedMark& modifiedMark, std::vector<ItemPage*> pages,
                   QObject* parent);

    /// Gives items new values in one step: writes them into the project, shows anew what is on a page, and
    /// marks the project modified. Items that hold their value already are passed over; where all do, nothing
    /// happens.
    /// \param step what was done, as it stands after "Undo": "Paste"
    /// \param wanted each item once
    /// \returns false where mayChange() refuses; then nothing was changed
    /// \throws std::out_of_range, std::bad_variant_access as ItemState tells
    bool change(const QString& step, const std::vector<ItemState>& wanted);
    /// False while a page shows an edit of one of these items that is not applied. Then the notice says so.
    bool mayChange(std::span<const std::string> items);

    /// A page's own button has stored something. It becomes a step when the item held something else before.
    void noteStored(const ItemState& before);

    /// Do nothing where there is no step, or where mayChange() refuses.
    void undo();
    void redo();
    /// The project is another one: there is no way back.
    void clear();
    /// The steps, for their names. Only the functions above change it.
    const QUndoStack& steps() const { return stack_; }

    /// An edit was applied or discarded: what the notice says may be settled.
    void settle();

signals:
    /// Something to say to the user in one line; an empty text takes the line away.
    void notice(const QString& text);

private:
    class Step;

    std::vector<ItemChange> changesTo(const std::vector<ItemState>& wanted) const;
    bool mayRun(int step);
    void push(const QString& step, std::vector<ItemChange> changes);
    void forgetOldest();
    const Step& step(int index) const;
    void show(const std::vector<ItemChange>& changes);

    Project& project_;
    ModifiedMark& modifiedMark_;
    std::vector<ItemPage*> pages_;
    QUndoStack stack_;
    bool refused_ = false;
};

} // namespace orvista
