#pragma once

#include "display/BitmapProvider.h"

#include <QObject>
#include <QTimer>

#include <chrono>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace orvista {

/// Notices when bitmaps on the disk come, go or change, while a widget is on the screen in the active window
/// and no modal dialog is open: people draw them in another program.
class BitmapWatch final : public QObject {
    Q_OBJECT
public:
    static constexpr std::chrono::milliseconds interval{500};

    /// Belongs to the widget.
    BitmapWatch(QWidget& widget, std::function<void()> changed);

    /// From now on these are watched. \param bitmaps must outlive the watch, or be replaced in it
    void watch(const BitmapProvider& bitmaps, std::vector<std::string> names);
    /// Looks at once; what has changed is told.
    void look();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void beginOrEnd();

    QWidget& widget_;
    std::function<void()> changed_;
    const BitmapProvider* bitmaps_ = nullptr;
    std::vector<std::pair<std::string, FoundBitmap>> seen_;
    QTimer timer_{this};
};

} // namespace orvista
