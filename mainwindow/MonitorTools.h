#pragma once

#include "display/forms/PreviewClock.h"
#include "mainwindow/Commands.h"
#include "model/Project.h"

#include <QObject>
#include <QPointer>

#include <cstdint>
#include <vector>

class QMainWindow;

namespace orvista {

class DisplayPreview;
struct DisplayItem;
class MonitorPanel;
class Navigator;
class PanelDock;
class TcpTesterPage;

/// The panel "Display Monitor" of the dock, and how it gets on with the test page: the display hears one of
/// the two at a time.
class MonitorTools final : public QObject {
    Q_OBJECT
public:
    /// Adds the panel to the dock.
    /// \param preview whose columns and clock it goes by
    /// \param port where the display speaks Modbus
    MonitorTools(const Project& project, TcpTesterPage& tester, DisplayPreview& preview, Navigator& navigator,
                 PanelDock& dock, std::uint16_t port, QMainWindow& window);

    std::vector<CommandRow> viewEntries();

    /// The project in memory is another, or may be.
    void projectChanged();
    /// Marks the rows of items that are not applied.
    void markNotApplied();
    /// Reads no more: there is no project, or the window is gone.
    void stop();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* makePanel();
    void miViewMonitor_Click();
    void takeIntoTester(const std::vector<DisplayItem>& items);
    void followTester(bool isSending);

    const Project& project_;
    TcpTesterPage& tester_;
    DisplayPreview& preview_;
    Navigator& navigator_;
    PanelDock& dock_;
    std::uint16_t port_;
    QPointer<MonitorPanel> panel_; ///< null until it is opened
};

} // namespace orvista
