#pragma once

#include "mainwindow/TryOutSettings.h"
#include "model/ProjectLifecycle.h"
#include "model/ScratchFolder.h"

#include <QObject>
#include <QProcess>

#include <functional>
#include <optional>
#include <string>

namespace orvista {

class Navigator;
class PanelDock;

/// Tools > Try without a Display: a copy of the example, opened, and a simulated display that holds it. The
/// display goes with the editor, and so does what it holds.
class TryOut final : public QObject {
    Q_OBJECT
public:
    TryOut(DocMgrModule::ProjectLifecycle& lifecycle, Navigator& navigator, PanelDock& dock,
           TryOutSettings settings, QWidget& window, std::function<void()> showTester);
    ~TryOut() override;

    void miToolsTry_Click();
    /// The project in memory is another, or may be.
    void follow();
    /// The user has found out how to go on.
    void takeHintAway();

private:
    void takeFaultsAway();
    void openCopy(const std::string& folder);
    void startDisplay();
    void tellHowToGoOn();
    void readOutput();
    void takeLine(const QString& line);
    void tellNotStarted(QProcess::ProcessError error);
    /// The test page does not work: the hint to go there is taken away.
    void tellOutOfReach(const QString& text);
    /// In a line below the pages.
    void tell(const char* notice, const QString& text);

    DocMgrModule::ProjectLifecycle& lifecycle_;
    Navigator& navigator_;
    PanelDock& dock_;
    TryOutSettings settings_;
    QWidget& window_; ///< beside which the display stands
    std::function<void()> showTester_;
    std::string copy_;                  ///< the folder of the project that was opened last, UTF-8
    std::optional<ScratchFolder> held_; ///< what the display holds; outlives its process
    std::optional<QProcess> display_;
};

} // namespace orvista
