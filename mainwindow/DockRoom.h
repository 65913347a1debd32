#pragma once

#include <QObject>

class QDockWidget;
class QMainWindow;
class QScrollArea;
class QTabWidget;

namespace orvista {

/// Leaves the pages the height they need: the dock below them takes no more than the shown page can spare.
/// Where a page gets less than it needs in spite of that, it scrolls.
class DockRoom final : public QObject {
    Q_OBJECT
public:
    /// \param pages each of them in a scroll area
    DockRoom(QTabWidget& pages, QDockWidget& dock, QMainWindow& window);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void fitSoon();
    void fit();

    QTabWidget& pages_;
    QDockWidget& dock_;
    QMainWindow& window_;
    bool isFitting_ = false;
    int wanted_ = 0; ///< the dock's height before a page needed the room
    int given_ = 0;  ///< what it got instead
};

} // namespace orvista
