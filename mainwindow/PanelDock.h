#pragma once

#include <QDockWidget>
#include <QPointer>

#include <functional>
#include <span>
#include <vector>

class QMainWindow;
class QTabWidget;
class QVBoxLayout;

namespace orvista {

class NoticeBar;
class ProjectPanel;
struct Place;

/// The dock `dockPanels` below the pages, with a tab for each panel that was opened, and lines of text below
/// the tabs. It is hidden until one of them is there, and takes the focus only from a user who goes there;
/// Esc leads back to the page.
class PanelDock final : public QDockWidget {
    Q_OBJECT
public:
    /// Adds the dock to the window.
    explicit PanelDock(QMainWindow& window);

    /// A panel's entry in the View menu.
    struct ViewEntry {
        const char* name = nullptr; ///< null for a panel that is opened by what fills it
        QString caption;
        QString toolTip;
    };
    /// A tab, built when it is opened for the first time.
    struct Panel {
        const QMetaObject* type; ///< each panel has a class of its own
        QString title;
        std::function<ProjectPanel*()> make;
        ViewEntry entry = {};
        ProjectPanel* widget = nullptr;
    };
    void addPanel(const Panel& panel) { panels_.push_back(panel); }
    std::span<const Panel> panels() const { return panels_; }

    /// Shows the dock with that panel's tab in front. The focus stays where it is.
    /// \throws std::out_of_range when there is no such panel
    ProjectPanel& open(const QMetaObject& type);
    template <typename Type>
    Type& open() {
        return static_cast<Type&>(open(Type::staticMetaObject));
    }
    /// The user closes the dock, and with it what goes on in its panels.
    void closeForUser();
    /// Shows the dock as it was, or with its first panel.
    void openAsItWas();
    /// The panel on the screen, or null.
    ProjectPanel* shownPanel() const;
    /// The project in memory is another, or may be.
    void followProject();
    /// What is shown with an edit that is not applied has changed.
    void markNotApplied();
    /// The panels work on the project; the dock can be hidden without one, too.
    void setPanelsEnabled(bool enabled);

    /// Says something in the line `lblNotice` below the tabs and opens the dock for it; an empty text takes
    /// the line away.
    void showNotice(const QString& text);

    /// A line of its own with a button. It stays until the user presses the button or takes it away, or it is
    /// withdrawn; an offer of the same name replaces it.
    struct Offer {
        QString name; ///< without a prefix: the button of "Reload" is `btnReload`
        QString text;
        QString button;            ///< empty for a line without a button
        std::function<void()> run; ///< what the button does, once the line is gone
    };
    /// Opens the dock for it. The focus stays where it is.
    void offer(const Offer& offer);
    /// True while the line of that name stands there.
    bool offers(const QString& name) const;
    /// Takes the line away; nothing happens when there is none.
    void withdraw(const QString& name);

signals:
    /// A panel was built.
    void made(orvista::ProjectPanel& panel);
    /// A row of a panel was chosen, as ProjectPanel tells.
    void placeChosen(const orvista::Place& place);
    void rowLeft();
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
    NoticeBar* line(const QString& name) const;
    NoticeBar* addLine(const QString& name);
    void takeAway(NoticeBar& line);
    void followFocus(QWidget* before, QWidget* now);
    void keepOpen() { openedForLine_ = false; }
    void returnFocus();

    QMainWindow& window_;
    std::vector<Panel> panels_;
    QTabWidget* tabs_ = nullptr;
    QVBoxLayout* layout_ = nullptr;
    bool panelsEnabled_ = true;
    bool openedForLine_ = false; ///< and so closed with the last one, unless the user goes to a panel
    QPointer<QWidget> focusOfPage_;
};

} // namespace orvista
