#pragma once

#include "simulator/LogModel.h"
#include "simulator/SimulatedDevice.h"

#include <QMainWindow>

namespace orvista {

/// The device on the screen: its panel, what is on, and what it was asked.
class SimulatorWindow final : public QMainWindow {
    Q_OBJECT

public:
    explicit SimulatorWindow(SimulatedDevice& device, QWidget* parent = nullptr);

    const LogModel& log() const { return log_; }
    /// False and an error text when the file cannot be written.
    bool saveLog(const QString& file, QString& error) const;

    QSize sizeHint() const override;
    /// Takes a place beside that window, as placeBeside() says; where there is none, the system gives it one.
    /// It is then shown without taking the keyboard away from it.
    void standBeside(const QRect& other);

private:
    void makeMenus();
    QWidget* makeCentre();
    QWidget* makePortNotice(const QStringList& missing);
    QWidget* makePanel();
    void askAndSaveLog();
    void askAndSavePicture();

    SimulatedDevice& device_;
    LogModel log_;
};

} // namespace orvista
