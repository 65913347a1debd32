#pragma once

#include "script/MessagePage.h"

#include <QGroupBox>

namespace orvista {

class DropDownList;

/// How the page enters, what it does while it stands, and how it leaves.
class EffectsFrame : public QGroupBox {
    Q_OBJECT
public:
    explicit EffectsFrame(QWidget* parent = nullptr);

    void readInto(MessageForm& form) const;

private:
    DropDownList* cbInEffect;
    DropDownList* cbIFSpeed;
    DropDownList* cbOutEffect;
    DropDownList* cbOFSpeed;
    DropDownList* cbSpEffect;
    DropDownList* cbDelay;
};

} // namespace orvista
