#pragma once

#include "model/Place.h"

#include <QWidget>

namespace orvista {

/// A panel of the dock below the pages. The dock tells it what happened to the project, and disables it while
/// there is none; the panel tells the dock where its rows lead.
class ProjectPanel : public QWidget {
    Q_OBJECT
public:
    ProjectPanel();

    /// The project in memory is another, or may be.
    virtual void follow() = 0;
    /// Marks the rows of items that are shown with an edit that is not applied.
    virtual void markNotApplied() = 0;
    /// The user has closed the dock: what would go on unseen ends.
    virtual void closeForUser() {}

signals:
    /// A row was chosen by Enter or a double click.
    void placeChosen(const orvista::Place& place);
    /// The user left the chosen row.
    void rowLeft();
};

} // namespace orvista
