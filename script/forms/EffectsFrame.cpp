#include "script/forms/EffectsFrame.h"

#include "script/WizardLists.h"
#include "script/forms/FixedList.h"

#include <QGridLayout>

namespace orvista {

EffectsFrame::EffectsFrame(QWidget* parent)
    : QGroupBox(QStringLiteral("Effects Setting"), parent),
      cbInEffect(new DropDownList(this)),
      cbIFSpeed(new DropDownList(this)),
      cbOutEffect(new DropDownList(this)),
      cbOFSpeed(new DropDownList(this)),
      cbSpEffect(new DropDownList(this)),
      cbDelay(new DropDownList(this)) {
    const MessageForm defaults;
    auto* const effects = listModel(wizard::effects, this);
    auto* const speeds = listModel(wizard::speeds, this);
    showFixedList(cbInEffect, QStringLiteral("cbInEffect"), effects, defaults.cbInEffect);
    showFixedList(cbOutEffect, QStringLiteral("cbOutEffect"), effects, defaults.cbOutEffect);
    showFixedList(cbSpEffect, QStringLiteral("cbSpEffect"), listModel(actStyles, this), defaults.cbSpEffect);
    showFixedList(cbDelay, QStringLiteral("cbDelay"), listModel(wizard::delays, this), defaults.cbDelay);
    showFixedList(cbIFSpeed, QStringLiteral("cbIFSpeed"), speeds, defaults.cbIFSpeed);
    showFixedList(cbOFSpeed, QStringLiteral("cbOFSpeed"), speeds, defaults.cbOFSpeed);
    cbDelay->setToolTip(tr("How long a STILL page is held; a BLINK page has its own time"));

    auto* const grid = new QGridLayout(this);
    addLabelledList(grid, 0, 0, QStringLiteral("Entering Effects"), cbInEffect);
    addLabelledList(grid, 0, 2, QStringLiteral("Speed"), cbIFSpeed);
    addLabelledList(grid, 1, 0, QStringLiteral("Leaving Effects"), cbOutEffect);
    addLabelledList(grid, 1, 2, QStringLiteral("Speed"), cbOFSpeed);
    addLabelledList(grid, 2, 0, QStringLiteral("Special Effects"), cbSpEffect);
    addLabelledList(grid, 2, 2, QStringLiteral("Delay (Sec.)"), cbDelay);
    grid->setRowStretch(3, 1);
    cbIFSpeed->setAccessibleName(tr("Entering Effects, Speed"));
    cbOFSpeed->setAccessibleName(tr("Leaving Effects, Speed"));
}

void EffectsFrame::readInto(MessageForm& form) const {
    form.cbInEffect = chosenPosition(cbInEffect);
    form.cbIFSpeed = chosenPosition(cbIFSpeed);
    form.cbOutEffect = chosenPosition(cbOutEffect);
    form.cbOFSpeed = chosenPosition(cbOFSpeed);
    form.cbSpEffect = chosenPosition(cbSpEffect);
    form.cbDelay = chosenPosition(cbDelay);
}

} // namespace orvista
