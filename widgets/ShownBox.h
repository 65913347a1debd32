#pragma once

#include "widgets/DeviceLineEdit.h"

namespace orvista {

/// A one-line box that is only shown: its text can be selected and copied, not edited. It has the window's
/// background, so that users see at a glance which boxes take input.
class ShownBox final : public DeviceLineEdit {
    Q_OBJECT
public:
    explicit ShownBox(QWidget* parent = nullptr);

protected:
    void changeEvent(QEvent* event) override;

private:
    void takeWindowBackground();
};

} // namespace orvista
