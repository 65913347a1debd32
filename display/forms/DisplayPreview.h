#pragma once

#include "display/FieldFormats.h"
#include "display/FieldValues.h"
#include "display/FolderBitmaps.h"
#include "display/MessagePlayer.h"
#include "display/forms/BitmapWatch.h"
#include "display/forms/CursorPage.h"
#include "display/forms/PreviewClock.h"
#include "display/forms/PreviewSetting.h"
#include "items/MasterBitmaps.h"
#include "items/MasterView.h"
#include "model/People.h"
#include "model/Project.h"
#include "widgets/QuietTimer.h"
#include "widgets/ScriptPositions.h"

#include <QTimer>
#include <QWidget>

#include <optional>
#include <string>

class QAction;
class QHBoxLayout;

namespace orvista {

class DeviceTextEdit;
class PanelView;
class PreviewBar;
class ValuesList;

/// The panel as the script in a box makes it look, and the controls to play it. It stands still on the page
/// of the cursor's line until it is played. Where the box is disabled no message is shown: the panel is dark.
/// While the preview is hidden it does nothing; while a modal dialog is open its timers do nothing.
class DisplayPreview final : public QWidget {
    Q_OBJECT
public:
    /// A longer text is shown a moment after the last change.
    static constexpr int longScript = 64 * 1024;

    /// \param project whose variables and bitmaps are shown; it and the rest must outlive the preview
    DisplayPreview(const Project& project, DeviceTextEdit& box, Messages& messages, PreviewClock clock,
                   QWidget* parent = nullptr);
    ~DisplayPreview() override;

    /// The box holds another message now, or the project has changed: stands still on the cursor's page.
    void restart();
    /// The project may lie in another folder now, with other bitmaps.
    void followProject();

    /// How the project is looked at; must outlive the preview. Without one the box's script is shown as it
    /// is.
    void useMaster(const MasterView& view) { master_ = &view; }
    /// Its displays or the shown one have changed.
    void followMaster();

    /// Shows or hides the preview for good.
    void setShown(bool shown);

    const PreviewClock& clock() const { return clock_; }
    int columns() const;
    void setColumns(int columns);

    /// What the fields show now.
    DisplayValues shownValues() const;
    /// How it shows messages now.
    PreviewSetting setting() const { return {columns(), shownValues(), master_}; }
    /// What the display holds, while that is known; its clock is not.
    void setHeldValues(const std::optional<DisplayValues>& held);

    /// Looks whether the bitmaps that the message names have come, gone or changed on the disk. While the
    /// window is active it does so twice a second.
    void lookAtBitmaps() { bitmapWatch_->look(); }

    QSize sizeHint() const override;

    /// Where what does not fit is said of a master; elsewhere the preview's own row says it.
    void setMasterFitRow(QHBoxLayout& row);

signals:
    /// \param name empty for none
    void displayChosen(const QString& name);
    void shownChanged(bool shown);
    void columnsChanged();
    /// The columns, or the values of the fields.
    void settingChanged();
    /// A bitmap that the message names has come, gone or changed on the disk.
    void bitmapsChanged();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void buildLayout();
    void connectControls();
    void readProject();
    void takeText();
    void readScript();
    bool readCursorPage();
    void readLongScript();
    /// Before the player is asked for more than the page alone.
    void readAll();
    const DrawnPage* shownPage() const;
    void stopAtCursor();
    void takeCursor();
    void play();
    void turnPage(int by);
    void takeFrame();
    void takeBitmaps();
    void takeValues();
    void render();
    void showFit(const DrawnPage* page);
    void describe(const ScriptPage* page, const DisplayValues& values);
    void savePicture();
    bool isLong() const;
    bool isHeld() const;
    bool isOfMaster() const { return master_ != nullptr && master_->isMaster(); }
    /// What the display gets for a script of the box.
    std::string filled(std::string script) const;
    const BitmapProvider& bitmaps() const;

    const Project& project_;
    DeviceTextEdit& box_;
    Messages& messages_;
    PreviewClock clock_;
    PanelView* panel_;
    ValuesList* list_;
    PreviewBar* row_;
    QAction* copyPicture_;
    QAction* savePicture_;

    FieldFormats formats_;
    FieldValues values_;
    std::string bitmapFolder_;
    std::optional<FolderBitmaps> bitmaps_;
    std::optional<MasterBitmaps> masterBitmaps_;
    const MasterView* master_ = nullptr;
    BitmapWatch* bitmapWatch_;
    MessagePlayer player_;
    CursorPage cursorPage_;
    std::optional<Programme> pageAlone_; ///< the edited page of a long script, newer than the player's
    const DrawnPage* fitPage_ = nullptr; ///< of which the row says what fits
    ScriptPositions positions_;
    int shownRevision_ = 0; ///< of the document
    QTimer frames_{this};
    QuietTimer quiet_;
};

} // namespace orvista
