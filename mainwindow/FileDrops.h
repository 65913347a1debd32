#pragma once

#include <QObject>
#include <QPointer>
#include <QString>

#include <functional>

class QMimeData;
class QWidget;
class QWindow;

namespace orvista {

/// Takes a file that is dropped anywhere on a window, also on a box that would take its path as text. It is
/// handed on when the drop is over, so that the program it came from does not wait for a dialog.
class FileDrops final : public QObject {
    Q_OBJECT
public:
    /// \param takes whether that file (a whole path) is taken now; everything else goes to the boxes
    FileDrops(QWidget& window, std::function<bool(const QString&)> takes);

    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    void dropped(const QString& path);

private:
    /// The one file that is dragged, if it is taken.
    QString fileIn(const QMimeData& dragged) const;

    QWidget& window_;
    std::function<bool(const QString&)> takes_;
    QPointer<QWindow> surface_; ///< what the system tells of drags over the window
};

} // namespace orvista
