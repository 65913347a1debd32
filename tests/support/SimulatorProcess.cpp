#include "tests/support/SimulatorProcess.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QRegularExpression>
#include <QTimer>
#include <stdexcept>
#ifdef Q_OS_LINUX
#include <csignal>
#include <sys/prctl.h>
#endif

namespace orvista::testing {

namespace {

constexpr int timeoutMilliseconds = 10'000;

/// The process ends with the test, should that crash. Elsewhere than on Linux whoever runs the tests ends
/// what is left.
void bindToTest([[maybe_unused]] QProcess& process) {
#ifdef Q_OS_LINUX
    process.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
#endif
}

quint16 portIn(const QString& line) {
    return line.section(':', -1).toUShort();
}

} // namespace

SimulatorProcess::SimulatorProcess(const QStringList& options) {
    bindToTest(process_);
    process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    // A later option of the same name counts. Without any folder the device makes one, which a kill would
    // leave behind.
    process_.start(ORVISTA_SIMULATOR,
                   QStringList{"--headless", "--log", "--modbus-port", "0", "--transfer-port", "0", "--root",
                               QString::fromStdString(root_.path())} +
                       options);
    QString modbus;
    QString transfer;
    if (!waitForLine("^Modbus/TCP on ", &modbus) || !waitForLine("^File transfer on ", &transfer) ||
        !waitForLine("The files are shown|The device holds no files"))
        throw std::runtime_error("the simulator did not start: " + lines_.join('\n').toStdString());
    modbusPort_ = portIn(modbus);
    transferPort_ = portIn(transfer);
}

SimulatorProcess::~SimulatorProcess() {
    process_.kill();
    process_.waitForFinished();
}

bool SimulatorProcess::takeLines(int milliseconds) {
    // An event loop may have taken the output already; waiting would then be for more.
    if (process_.bytesAvailable() == 0)
        process_.waitForReadyRead(milliseconds);
    unfinished_ += process_.readAllStandardOutput();
    const qsizetype before = lines_.size();
    for (qsizetype end = unfinished_.indexOf('\n'); end >= 0; end = unfinished_.indexOf('\n')) {
        lines_ << QString::fromUtf8(unfinished_.left(end)).remove('\r');
        unfinished_.remove(0, end + 1);
    }
    return lines_.size() > before || process_.state() != QProcess::NotRunning;
}

bool SimulatorProcess::waitForLine(const QString& pattern, QString* line) {
    const QRegularExpression expression(pattern);
    QElapsedTimer clock;
    clock.start();
    for (;;) {
        for (; waitedPast_ < lines_.size(); ++waitedPast_) {
            if (!expression.match(lines_[waitedPast_]).hasMatch())
                continue;
            if (line != nullptr)
                *line = lines_[waitedPast_];
            ++waitedPast_;
            return true;
        }
        const auto rest = static_cast<int>(timeoutMilliseconds - clock.elapsed());
        if (rest <= 0 || !takeLines(rest))
            return false;
    }
}

int SimulatorProcess::terminate() {
    process_.terminate();
    if (!process_.waitForFinished(timeoutMilliseconds) || process_.exitStatus() != QProcess::NormalExit)
        return -1;
    takeLines(0);
    return process_.exitCode();
}

QString outputOf(const QString& program, const QStringList& arguments) {
    QProcess process;
    bindToTest(process);
    QEventLoop loop;
    QObject::connect(&process, &QProcess::finished, &loop, &QEventLoop::quit);
    QObject::connect(&process, &QProcess::errorOccurred, &loop, &QEventLoop::quit);
    QTimer::singleShot(3 * timeoutMilliseconds, &loop, &QEventLoop::quit);
    process.start(program, arguments);
    loop.exec();
    const QString output = QString::fromUtf8(process.readAllStandardOutput());
    if (process.state() == QProcess::NotRunning && process.exitStatus() == QProcess::NormalExit &&
        process.exitCode() == 0)
        return output;
    process.kill();
    process.waitForFinished();
    return "FAILED " + QString::number(process.exitCode()) + " " + output +
           QString::fromUtf8(process.readAllStandardError());
}

} // namespace orvista::testing
