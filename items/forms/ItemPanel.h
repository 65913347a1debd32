#pragma once

#include "check/FolderCheck.h"
#include "items/MasterView.h"
#include "items/MessageDigest.h"
#include "items/ProjectNotes.h"
#include "widgets/ProjectPanel.h"
#include "widgets/RowsTable.h"

#include <functional>
#include <string>
#include <vector>

namespace orvista {

class FilterBox;
class SeenDelay;

/// What the panels of items are about.
struct ItemSources {
    const Project& project;
    MessageDigests& messages; ///< shared, so that each message is read once
    FolderCheck& check;       ///< the same
    /// The items that are shown with an edit that is not applied.
    std::function<std::vector<Item>()> notAppliedItems;
    /// How the project is looked at; null where it is shown as it is.
    const MasterView* master = nullptr;

    const Project& shown() const { return master != nullptr ? master->shown() : project; }
};

/// A panel with a row for each item of a kind, in a fixed order. While it is on the screen it follows the
/// project's changes; otherwise it does nothing.
class ItemPanel : public ProjectPanel {
    Q_OBJECT
public:
    void follow() override;
    void markNotApplied() override;
    /// What is noted about the items; must outlive the panel. None are noted before.
    void useNotes(const ProjectNotes& notes) { notes_ = &notes; }
    /// Puts the cursor into the filter's box.
    void enterFilter();

    /// In the order in which they are shown.
    std::vector<Item> selectedItems() const;
    /// The first of them and all that are shown below it.
    std::vector<Item> itemsFromSelected() const;
    /// Digests of all messages as they are now.
    const MessageDigests& digests() const;
    RowsTable& table() { return *table_; }

protected:
    /// Takes the two widgets, which have their names already, into its layout.
    ItemPanel(ItemSources sources, FilterBox* filter, RowsTable* table);

    const ItemSources& sources() const { return sources_; }
    const ItemNote& noteOf(Item item) const { return notes_->of(item); }
    FilterBox& filter() { return *filter_; }
    /// Brings the rows to the screen that item() and cells() tell of.
    void fill();
    void showEvent(QShowEvent* event) override;

    /// Reads the project again.
    virtual void read() = 0;
    /// What takes longer, a moment after read().
    virtual void readMore() {}
    virtual std::size_t count() const = 0;
    virtual Item item(std::size_t row) const = 0;
    /// The last of them may get the notAppliedMark() after it.
    virtual TableRow cells(std::size_t row) const = 0;

private:
    void readNow();
    std::vector<Item> items(const std::vector<int>& rows) const;

    ItemSources sources_;
    const ProjectNotes* notes_ = &noNotes();
    FilterBox* filter_;
    RowsTable* table_;
    SeenDelay* moment_;
};

/// A text for a cell, cut where it is very long.
QString cellText(const std::string& utf8);

} // namespace orvista
