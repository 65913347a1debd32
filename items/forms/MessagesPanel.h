#pragma once

#include "check/Finding.h"
#include "display/DisplayValues.h"
#include "items/ItemRows.h"
#include "items/forms/ItemPanel.h"

#include <QTimer>

#include <map>

namespace orvista {

class StillPictures;

/// The panel "Messages": all messages at a glance, each with a picture of what the display shows first.
class MessagesPanel final : public ItemPanel {
    Q_OBJECT
public:
    /// \param columns of the display, 1 to PanelSize::maximumColumns
    /// \param localTime what fields of time and date show
    MessagesPanel(ItemSources sources, int columns, std::function<LocalTime()> localTime);

    /// Draws for a display of another width, in the range above.
    void setColumns(int columns);

protected:
    void read() override;
    void readMore() override;
    std::size_t count() const override { return rows_.size(); }
    Item item(std::size_t row) const override { return rows_.at(row).item; }
    TableRow cells(std::size_t row) const override;

private:
    enum Column { Name, Label, Address, Reference, Pages, Picture, Text, Variables, Bitmaps, FindingsMark };

    void readOn();
    void showMatches();
    void takePictureSize();

    int columns_;
    std::vector<MessageRow> rows_;
    std::map<Item, FindingCounts> findings_;
    StillPictures* pictures_;
    QTimer reading_{this};
};

} // namespace orvista
