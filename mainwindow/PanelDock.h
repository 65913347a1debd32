#pragma once

#include <QDockWidget>
#include <QPointer>

#include <functional>
#include <vector>

class QLabel;
class QMainWindow;
class QTabWidget;

namespace orvista {

/// The dock `dockPanels` below the pages, with a tab for each panel that was opened. It is hidden until then,
/// and takes the focus only from a user who goes there; Esc leads back to the page.
class PanelDock final : public QDockWidget {
    Q_OBJECT
public:
    /// Adds the dock to the window.
    explicit PanelDock(QMainWindow& window);

    /// A tab, built when it is opened for the first time.
    struct Panel {
        const char* name; ///< for open()
        QString title;
        std::function<QWidget*()> make;
        QWidget* widget = nullptr;
    };
    void addPanel(const Panel& panel) { panels_.push_back(panel); }

    /// Shows the dock with that panel's tab in front. The focus stays where it is.
    void open(const char* name);
    /// Shows the dock as it was, or with its first panel.
    void open();
    /// The panels work on the project; the dock can be hidden without one, too.
    void setPanelsEnabled(bool enabled);

    /// Says something in the line below the tabs; an empty text takes the line away.
    void showNotice(const QString& text);

signals:
    /// The dock came on the screen or left it.
    void shownChanged(bool shown);

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void build();
    QWidget* closeButton();
    void insertTab(Panel& panel);
    void takeOpeningHeight();
    void rememberFocus(QWidget* before, QWidget* now);
    void returnFocus();

    QMainWindow& window_;
    std::vector<Panel> panels_;
    QTabWidget* tabs_ = nullptr;
    QLabel* notice_ = nullptr;
    bool panelsEnabled_ = true;
    QPointer<QWidget> focusOfPage_;
};

} // namespace orvista
