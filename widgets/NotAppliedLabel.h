#pragma once

#include <QLabel>

namespace orvista {

/// The label `lblNotApplied` beside an Apply button: tells that what the page shows is not in the project.
class NotAppliedLabel final : public QLabel {
    Q_OBJECT
public:
    explicit NotAppliedLabel(QWidget* parent = nullptr);

    /// Returns whether that is news.
    bool showState(bool notApplied);
};

} // namespace orvista
