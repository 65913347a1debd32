#pragma once

#include <QObject>

namespace orvista {

class FindingsPanel;
class Navigator;
class PanelDock;
class ProjectChanges;
class ProjectPanel;

/// The check, the way from finding to finding, and the fixes that are chosen in the list of findings.
class FindingCommands final : public QObject {
    Q_OBJECT
public:
    FindingCommands(ProjectChanges& changes, const Navigator& navigator, PanelDock& dock, QObject* parent);

    /// Opens the list; where it is on the screen already, the keyboard goes there.
    void check();
    void miEditNextFinding_Click() { goOn(1); }
    void miEditPreviousFinding_Click() { goOn(-1); }

private:
    void serve(ProjectPanel& made);
    void goOn(int step);
    void showNotice(const QString& text);

    ProjectChanges& changes_;
    const Navigator& navigator_;
    PanelDock& dock_;
    bool hasSaid_ = false;
};

} // namespace orvista
