#include "link/forms/TransferProgressWindow.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QLabel>
#include <QProgressBar>
#include <QTimer>
#include <QVBoxLayout>
#include <QWindow>

namespace orvista {

namespace {

/// Nothing but this window is to come to life during a transfer: a test request under way waits.
constexpr QEventLoop::ProcessEventsFlags withoutSockets = QEventLoop::ExcludeSocketNotifiers;

/// The window system may take a moment to map the window; a slow one does not hold up the transfer.
void waitUntilOnScreen(const QWindow& window) {
    constexpr std::chrono::milliseconds timeout{250};
    QTimer deadline;
    deadline.setSingleShot(true);
    deadline.start(timeout);
    while (deadline.isActive() && !window.isExposed())
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents | QEventLoop::WaitForMoreEvents);
}

} // namespace

TransferProgressWindow::TransferProgressWindow(const QString& title, QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint),
      activity_(new QLabel),
      count_(new QProgressBar) {
    setObjectName(QStringLiteral("TransferProgress"));
    setWindowTitle(title);
    setWindowModality(Qt::ApplicationModal);
    activity_->setObjectName(QStringLiteral("lblActivity"));
    activity_->setTextFormat(Qt::PlainText);
    count_->setObjectName(QStringLiteral("barFiles"));
    count_->setAccessibleName(title);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(activity_);
    layout->addWidget(count_);
    setMinimumWidth(60 * fontMetrics().averageCharWidth());
    show();
    waitUntilOnScreen(*windowHandle());
}

TransferProgressWindow::~TransferProgressWindow() {
    // Input that was held back meanwhile is dropped here, where this window is in its way.
    QCoreApplication::processEvents(withoutSockets);
}

void TransferProgressWindow::showActivity(const std::string& text) {
    // Without a known end the bar shows that something goes on.
    count_->setRange(0, 0);
    showText(QString::fromStdString(text));
}

void TransferProgressWindow::showFile(const std::string& name, std::size_t number, std::size_t count) {
    count_->setRange(0, static_cast<int>(count));
    // The file has yet to go: the bar is full only when the last one is through.
    count_->setValue(static_cast<int>(number) - 1);
    count_->setFormat(tr("%1 of %2").arg(number).arg(count));
    showText(QString::fromStdString(name));
}

void TransferProgressWindow::closeEvent(QCloseEvent* event) {
    event->ignore();
}

void TransferProgressWindow::showText(const QString& text) {
    // A long name keeps its end, which tells bitmaps apart, and does not stretch the window.
    activity_->setText(activity_->fontMetrics().elidedText(text, Qt::ElideMiddle, activity_->width()));
    activity_->setToolTip(text);
    repaintNow();
}

void TransferProgressWindow::repaintNow() {
    QCoreApplication::processEvents(withoutSockets | QEventLoop::ExcludeUserInputEvents);
}

} // namespace orvista
