#pragma once

#include "display/Programme.h"
#include "display/forms/PreviewClock.h"
#include "items/ItemTexts.h"
#include "items/ProjectNotes.h"
#include "link/forms/DisplayMonitor.h"
#include "widgets/ProjectPanel.h"
#include "widgets/RowsTable.h"

#include <QTimer>

#include <functional>
#include <optional>
#include <string>
#include <vector>

class QBoxLayout;
class QCheckBox;
class QDoubleSpinBox;
class QLabel;
class QPushButton;

namespace orvista {

class PanelView;
class SeenDelay;

/// The panel "Display Monitor": what the display holds for each item, read repeatedly, and beside it the
/// LED panel as the display should show it. It reads no more without a project, when the
/// user closes the dock, and when the window is gone; what it has read goes with the project and the address.
class MonitorPanel final : public ProjectPanel {
    Q_OBJECT
public:
    /// \param columns of the display, 1 to PanelSize::maximumColumns
    /// \param port where the display speaks Modbus
    /// \param notAppliedItems the items that are shown with an edit that is not applied
    MonitorPanel(const Project& project, int columns, PreviewClock clock, std::uint16_t port,
                 std::function<std::vector<Item>()> notAppliedItems);

    DisplayMonitor& monitor() { return *monitor_; }
    void setColumns(int columns);
    /// What is noted about the items; must outlive the panel.
    void useNotes(const ProjectNotes& notes) { notes_ = &notes; }
    void follow() override;
    void markNotApplied() override;
    void closeForUser() override;

signals:
    /// The tester's boxes are to be ticked as these items are on.
    void takeAsked(const std::vector<orvista::DisplayItem>& items);

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    enum Column { Name, Label, Address, State, Raw, Text, Changed, columnCount };

    struct Moment {
        std::int64_t milliseconds = 0; ///< of the clock
        LocalTime time;
    };

    QBoxLayout* buildControls();
    QWidget* buildViews(int columns);

    void btnMonitorStart_Click();
    void btnMonitorStop_Click();
    void btnMonitorTake_Click();

    void showReading();
    void readProject();
    void noteChanges();
    void showState();
    void showRows();
    void showOnly();
    void showPanel();
    void beginProgramme();
    bool isMarked(std::size_t row) const;
    void awaitEndOfMarks();
    void endMarks();
    TableRow cells(std::size_t row) const;
    DisplayValues values() const;
    QString stateText() const;
    QString readingText() const;

    const Project& project_;
    int columns_;
    const ProjectNotes* notes_ = &noNotes();
    PreviewClock clock_;
    std::function<std::vector<Item>()> notAppliedItems_;
    DisplayMonitor* monitor_;
    std::optional<ItemTexts> texts_;
    std::vector<DisplayItem> items_;             ///< that the rows are about; none before the first reading
    std::vector<std::optional<Moment>> changes_; ///< when an item was last seen to have changed
    LocalTime readAt_;                           ///< the last good reading
    std::string address_;                        ///< of the display that is read, as in the project
    std::optional<Programme> programme_;
    MessageCoils coils_;
    std::int64_t programmeStart_ = 0;
    Moment pictured_; ///< what the picture shows; it stands once reading has stopped
    QTimer frames_{this};
    QTimer endOfMarks_{this};

    QPushButton* btnMonitorStart;
    QPushButton* btnMonitorStop;
    QDoubleSpinBox* spnMonitorSeconds;
    QCheckBox* chkMonitorOnlyOn;
    QPushButton* btnMonitorTake;
    QLabel* lblMonitorState;
    RowsTable* tblMonitor = nullptr;
    PanelView* monitorPanel = nullptr;
    SeenDelay* textsDelay_;
};

} // namespace orvista
