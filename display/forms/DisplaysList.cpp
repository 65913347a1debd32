#include "display/forms/DisplaysList.h"

#include "items/MasterView.h"

#include <QSignalBlocker>

#include <algorithm>

namespace orvista {

namespace {

/// The entry before the displays.
constexpr int asTyped = 0;
/// As much of a display's name as the row can spare.
constexpr int leastCharacters = 8;

} // namespace

DisplaysList::DisplaysList(QWidget* parent) : DropDownList(parent) {
    setObjectName(QStringLiteral("cboPreviewDisplay"));
    // Without a label before it: the row has no room to spare.
    setAccessibleName(tr("Display whose values are shown"));
    setToolTip(tr("With the values of which display places such as {line:4} are shown"));
    keepWidth(leastCharacters);
    hide();
    connect(this, &QComboBox::currentIndexChanged, this,
            [this](int row) { emit displayChosen(row > asTyped ? names_.value(row - 1) : QString()); });
}

void DisplaysList::offer(const std::vector<FleetDisplay>& displays) {
    QStringList names;
    for (const FleetDisplay& display : displays)
        names << QString::fromStdString(display.name);
    if (names == names_ && count() != 0)
        return;
    names_ = names;
    clear();
    addItem(tr("as typed"));
    addItems(names_);
}

void DisplaysList::show(const MasterView& view) {
    const QSignalBlocker blocker(this); // what is chosen is known
    // Each choice comes by here, and a list may be long.
    if (displays_ != view.sharedDisplays()) {
        displays_ = view.sharedDisplays();
        offer(*displays_);
    }
    setCurrentIndex(view.display() ? static_cast<int>(view.display() - displays_->data()) + 1 : asTyped);
    setVisible(view.isMaster());
}

} // namespace orvista
