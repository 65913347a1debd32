#pragma once

#include "display/DisplayValues.h"
#include "display/FieldFormats.h"
#include "display/FolderBitmaps.h"
#include "display/MessagePlayer.h"
#include "display/forms/CursorPage.h"
#include "display/forms/PreviewClock.h"
#include "model/People.h"
#include "model/Project.h"
#include "widgets/QuietTimer.h"
#include "widgets/ScriptPositions.h"

#include <QTimer>
#include <QWidget>

#include <optional>
#include <string>

class QAction;

namespace orvista {

class DeviceTextEdit;
class PanelView;
class PreviewBar;

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

    /// Shows or hides the preview for good.
    void setShown(bool shown);

    const PreviewClock& clock() const { return clock_; }
    int columns() const;
    void setColumns(int columns);

    QSize sizeHint() const override;

signals:
    void shownChanged(bool shown);
    void columnsChanged();

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
    const ScriptPage* shownPage() const;
    void standOnCursor();
    void takeCursor();
    void play();
    void turnPage(int by);
    void takeFrame();
    void render();
    void describe(const ScriptPage* page);
    void savePicture();
    bool isLong() const;
    bool isHeld() const;

    const Project& project_;
    DeviceTextEdit& box_;
    Messages& messages_;
    PreviewClock clock_;
    PanelView* panel_;
    PreviewBar* row_;
    QAction* savePicture_;

    FieldFormats formats_;
    DisplayValues values_;
    std::string bitmapFolder_;
    std::optional<FolderBitmaps> bitmaps_;
    MessagePlayer player_;
    CursorPage cursorPage_;
    std::optional<Programme> pageAlone_; ///< the edited page of a long script, newer than the player's
    ScriptPositions positions_;
    int shownRevision_ = 0; ///< of the document
    QTimer frames_{this};
    QuietTimer quiet_;
};

} // namespace orvista
