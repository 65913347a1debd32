#pragma once

#include <QObject>
#include <QPointer>
#include <QString>

#include <functional>
#include <string>
#include <vector>

class QMimeData;
class QWidget;
class QWindow;

namespace orvista {

class Messages;

/// Takes a file that is dropped anywhere on a window, also on a box that would take its path as text. It is
/// opened when the drop is over, so that the program it came from does not wait for a dialog.
class FileDrops final : public QObject {
    Q_OBJECT
public:
    /// A kind of file that is taken; everything else goes to the boxes.
    struct Kind {
        QString ending; ///< ".orx", in any case
        std::function<bool()> isTakenNow;
        std::function<void(const std::string& path)> open; ///< the whole path, UTF-8
    };
    /// \param messages tell of a number that did not fit
    FileDrops(QWidget& window, Messages& messages, std::vector<Kind> kinds);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// The kind of that file, if it is taken now; or null.
    const Kind* kindOf(const QString& file) const;
    /// The one file that is dragged, if it is taken.
    QString fileIn(const QMimeData& dragged) const;
    void open(const QString& file);

    QWidget& window_;
    Messages& messages_;
    std::vector<Kind> kinds_;
    QPointer<QWindow> surface_; ///< what the system tells of drags over the window
};

} // namespace orvista
