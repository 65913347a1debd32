#include "script/forms/MessageColorFrame.h"

#include "script/Styles.h"
#include "script/forms/FixedList.h"

#include <QGridLayout>

namespace orvista {

MessageColorFrame::MessageColorFrame(QWidget* parent)
    : QGroupBox(QStringLiteral("Message Color Setting"), parent),
      cbFgClr(new DropDownList(this)),
      cbBgClr(new DropDownList(this)),
      cbFont(new DropDownList(this)) {
    const MessageForm defaults;
    auto* const colours = listModel(colourStyles, this);
    showFixedList(cbFgClr, QStringLiteral("cbFgClr"), colours, defaults.cbFgClr);
    showFixedList(cbBgClr, QStringLiteral("cbBgClr"), colours, defaults.cbBgClr);
    showFixedList(cbFont, QStringLiteral("cbFont"), listModel(fontStyles, this), defaults.cbFont);
    cbFont->setToolTip(tr("The font of the text and its fields; a bitmap has none"));

    auto* const grid = new QGridLayout(this);
    addLabelledList(grid, 0, 0, QStringLiteral("Forground Color"), cbFgClr);
    addLabelledList(grid, 0, 2, QStringLiteral("Background Color"), cbBgClr);
    addLabelledList(grid, 0, 4, QStringLiteral("Font"), cbFont);
}

void MessageColorFrame::readInto(MessageForm& form) const {
    form.cbFgClr = chosenPosition(cbFgClr);
    form.cbBgClr = chosenPosition(cbBgClr);
    form.cbFont = chosenPosition(cbFont);
}

} // namespace orvista
