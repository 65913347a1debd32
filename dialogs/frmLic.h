#pragma once

#include <QDialog>

namespace orvista {

/// The About box.
class frmLic : public QDialog {
    Q_OBJECT
public:
    explicit frmLic(QWidget* parent = nullptr);
};

} // namespace orvista
