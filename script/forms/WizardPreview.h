#pragma once

#include "display/DisplayValues.h"
#include "display/FieldFormats.h"
#include "display/FolderBitmaps.h"
#include "items/MasterBitmaps.h"
#include "items/MasterView.h"
#include "script/MessagePage.h"

#include <QWidget>

class QLabel;

namespace orvista {

class PanelView;
struct DrawnPage;

/// The page that a wizard would make, as it looks on the panel when it has entered, and a line about what
/// does not fit. There is nothing to operate.
class WizardPreview final : public QWidget {
    Q_OBJECT
public:
    /// \param columns of the panel
    /// \param values that fields show
    /// \param master how the project is looked at; null where it is shown as it is
    WizardPreview(const Project& project, int columns, const DisplayValues& values,
                  const MasterView* master = nullptr, QWidget* parent = nullptr);

    void show(const MessageForm& form);

    QSize sizeHint() const override;
    /// None: on a small screen the form around it has the room.
    QSize minimumSizeHint() const override;

private:
    QString misfits(const MessageForm& form, const DrawnPage& page) const;

    int columns_;
    FieldFormats formats_;
    DisplayValues values_;
    const MasterView* master_;
    FolderBitmaps folderBitmaps_;
    MasterBitmaps masterBitmaps_;
    const BitmapProvider& bitmaps_;
    PanelView* wizardPreview;
    QLabel* lblWizardFit;
};

} // namespace orvista
