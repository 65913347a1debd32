#include "mainwindow/RecoveryLock.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSysInfo>

#ifdef Q_OS_WIN
#include <windows.h>
#else
#include <cerrno>
#include <csignal>
#endif

namespace orvista {

namespace {

QString lockFileOf(const QString& path) {
    const QFileInfo file(path);
    return file.dir().filePath(file.fileName().section(u'.', 0, 0) + recoveryLockSuffix);
}

bool isProcess(qint64 id) {
#ifdef Q_OS_WIN
    const HANDLE process = OpenProcess(SYNCHRONIZE, FALSE, static_cast<DWORD>(id));
    if (process == nullptr)
        return GetLastError() == ERROR_ACCESS_DENIED;
    const bool runs = WaitForSingleObject(process, 0) == WAIT_TIMEOUT;
    CloseHandle(process);
    return runs;
#else
    return ::kill(static_cast<pid_t>(id), 0) == 0 || errno == EPERM;
#endif
}

/// The number of a process that ended may be another program's by now.
bool isProgram(qint64 process, const QString& name) {
    const QFileInfo link(QStringLiteral("/proc/%1/exe").arg(process));
    const QString program = QFileInfo(link.symLinkTarget()).fileName().section(QStringLiteral(" ("), 0, 0);
    return program.isEmpty() || program == name;
}

/// Process, program, host, machine and start of the system, a line each.
bool isOfThisStart(const QString& lockFile) {
    constexpr int longest = 4096;
    QFile file(lockFile);
    if (!file.open(QIODevice::ReadOnly))
        return true;
    const QByteArray start = file.read(longest).split('\n').value(4);
    const QByteArray now = QSysInfo::bootUniqueId();
    return start.isEmpty() || now.isEmpty() || start == now;
}

} // namespace

std::unique_ptr<QLockFile> recoveryLockOf(const QString& path) {
    auto lock = std::make_unique<QLockFile>(lockFileOf(path));
    lock->setStaleLockTime(0);
    return lock;
}

bool isRecoveryLockHeld(const QString& path) {
    const QString lockFile = lockFileOf(path);
    if (!QFileInfo(lockFile).isFile())
        return false;
    qint64 process = 0;
    QString host;
    QString program;
    if (!QLockFile(lockFile).getLockInfo(&process, &host, &program))
        return true; // an editor is just about to write it
    if (host != QSysInfo::machineHostName())
        return true;
    return isOfThisStart(lockFile) && isProcess(process) && isProgram(process, program);
}

} // namespace orvista
