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
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(leastCharacters);
    hide();
    connect(this, &QComboBox::currentIndexChanged, this,
            [this](int row) { emit displayChosen(row > asTyped ? names_.value(row - 1) : QString()); });
}

void DisplaysList::show(const MasterView& view) {
    QStringList names;
    for (const FleetDisplay& display : view.displays())
        names << QString::fromStdString(display.name);
    const QSignalBlocker blocker(this); // what is chosen is known
    if (names != names_ || count() == 0) {
        names_ = names;
        clear();
        addItem(tr("as typed"));
        addItems(names_);
    }
    const auto chosen =
        view.display() ? names_.indexOf(QString::fromStdString(view.display()->name)) + 1 : asTyped;
    setCurrentIndex(static_cast<int>(chosen));
    setVisible(view.isMaster());
}

} // namespace orvista
