#pragma once

#include "widgets/ElidedLabel.h"

namespace orvista {

/// The label `lblNotApplied` beside an Apply button: tells that what the page shows is not in the project. It
/// keeps its room while there is nothing to tell, so that the first key of an edit moves nothing on the page;
/// where the page is narrow, its text is cut and the whole of it is the tool-tip.
class NotAppliedLabel final : public ElidedLabel {
    Q_OBJECT
public:
    explicit NotAppliedLabel(QWidget* parent = nullptr);

    /// Returns whether that is news.
    bool showState(bool notApplied);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

private:
    static QString sentence();
};

} // namespace orvista
