#include "simulator/FtpService.h"

#include <QCoreApplication>
#include <QDir>
#include <QSocketNotifier>

#include <cstdio>
#include <cstdlib>
#include <deque>
#include <unistd.h>

/// many_displays FIRST COUNT FOLDER: the file service of so many simulated displays in one process, numbered
/// from FIRST on, each with a folder of its own below FOLDER, and an address of its own: of ports that have
/// been used the system keeps some back for a minute, and looks longer and longer for a free one. Prints
/// addresses and ports, and ends when standard input ends.
int main(int argc, char* argv[]) {
    using namespace orvista;
    const QCoreApplication application(argc, argv);
    struct Display {
        explicit Display(const QString& path) : folder(path.toStdString()) {}
        DeviceFolder folder;
        Faults faults;
        FtpService service{folder, faults};
    };
    // Ports of a transfer are signed 16-bit numbers.
    constexpr quint16 lowestPort = 12000;
    constexpr quint16 highestPort = 32767;
    std::deque<Display> displays;
    constexpr quint32 firstAddress = (127U << 24) + (1U << 8) + 1; // 127.0.1.1
    const int first = std::atoi(argv[1]);
    for (int i = first; i < first + std::atoi(argv[2]); ++i) {
        const QString folder = QDir(argv[3]).filePath(QString::number(i));
        QDir().mkpath(folder);
        Display& display = displays.emplace_back(folder);
        const QHostAddress address(firstAddress + static_cast<quint32>(i));
        quint16 port = lowestPort;
        while (!display.service.start(address, port) && port < highestPort)
            ++port;
        std::printf("%s %d\n", qPrintable(address.toString()), port);
    }
    std::fflush(stdout);
    QSocketNotifier end(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&end, &QSocketNotifier::activated, &application, &QCoreApplication::quit);
    return QCoreApplication::exec();
}
