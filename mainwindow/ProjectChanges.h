#pragma once

#include "model/Change.h"
#include "model/Item.h"
#include "model/People.h"

#include <QUndoStack>

#include <span>
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

    /// Makes changes in one step: writes them into the project, shows again what is on a page, and marks the
    /// project modified. Where there are none, nothing happens.
    /// \param step what was done, as it stands after "Undo": "Paste"
    /// \param changes of the project as it is now
    /// \returns false where mayChange() refuses; then nothing was changed
    bool change(const QString& step, std::span<const Change> changes);
    /// False while a page shows an edit of one of these items that is not applied. Then the notice says so.
    bool mayChange(std::span<const Item> items);

    /// A page's own button has made these changes of its item. Where there are any they become a step.
    void noteStored(std::span<const Change> changes);

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

    bool mayRun(int step);
    void push(const QString& step, std::span<const Change> changes);
    void forgetOldest();
    const Step& step(int index) const;
    void show(std::span<const Change> changes);

    Project& project_;
    ModifiedMark& modifiedMark_;
    std::vector<ItemPage*> pages_;
    QUndoStack stack_;
    bool refused_ = false;
};

} // namespace orvista
