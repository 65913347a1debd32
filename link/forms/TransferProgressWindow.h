#pragma once

#include "link/ProjectTransfer.h"

#include <QDialog>

class QLabel;
class QProgressBar;

namespace orvista {

/// Shows what a running transfer does. The transfer blocks the thread, so the window repaints itself whenever
/// something new is to be seen. It takes no input: what the user types or clicks meanwhile is dropped.
class TransferProgressWindow final : public QDialog, public DocTsfModule::TransferProgress {
    Q_OBJECT
public:
    explicit TransferProgressWindow(const QString& title, QWidget* parent = nullptr);
    ~TransferProgressWindow() override;

    void showActivity(const std::string& text) override;
    void showFile(const std::string& name, std::size_t number, std::size_t count) override;

    /// Esc and the frame do nothing.
    void reject() override {}

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void showText(const QString& text);
    void repaintNow();

    QLabel* activity_;
    QProgressBar* count_;
};

} // namespace orvista
