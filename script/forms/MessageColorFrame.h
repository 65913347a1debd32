#pragma once

#include "script/MessagePage.h"

#include <QGroupBox>

namespace orvista {

class DropDownList;

/// Colours and font of the page's content.
class MessageColorFrame : public QGroupBox {
    Q_OBJECT
public:
    explicit MessageColorFrame(QWidget* parent = nullptr);

    void readInto(MessageForm& form) const;

private:
    DropDownList* cbFgClr;
    DropDownList* cbBgClr;
    DropDownList* cbFont;
};

} // namespace orvista
