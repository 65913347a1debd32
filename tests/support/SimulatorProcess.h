#pragma once

#include "tests/support/TemporaryFolder.h"

#include <QProcess>
#include <QString>
#include <QStringList>

namespace orvista::testing {

/// The simulator as a process of its own, on free ports and an empty folder, without a window. It ends with
/// the object, and with the test should that crash.
class SimulatorProcess {
public:
    /// Starts it and waits until both services told their ports.
    /// \param options further command-line options
    /// \throws std::runtime_error when it does not come up
    explicit SimulatorProcess(const QStringList& options = {});
    ~SimulatorProcess();
    SimulatorProcess(const SimulatorProcess&) = delete;
    SimulatorProcess& operator=(const SimulatorProcess&) = delete;

    quint16 modbusPort() const { return modbusPort_; }
    quint16 transferPort() const { return transferPort_; }
    qint64 id() const { return process_.processId(); }

    /// Waits for a line that matches, among those not yet waited past. False after ten seconds.
    bool waitForLine(const QString& pattern, QString* line = nullptr);
    /// Lines printed so far.
    const QStringList& lines() const { return lines_; }
    /// Asks it to end in order and returns its exit code, -1 when it had to be killed.
    int terminate();

private:
    bool takeLines(int milliseconds);

    const TemporaryFolder root_; ///< outlives the process
    QProcess process_;
    QByteArray unfinished_;
    QStringList lines_;
    qsizetype waitedPast_ = 0;
    quint16 modbusPort_ = 0;
    quint16 transferPort_ = 0;
};

/// Runs a program to its end, with the event loop turning. Its output, or a text that begins with "FAILED".
QString outputOf(const QString& program, const QStringList& arguments);

} // namespace orvista::testing
