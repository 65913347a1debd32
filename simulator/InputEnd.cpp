#include "simulator/InputEnd.h"

#include <QCoreApplication>

#include <csignal>
#include <cstdio>
#include <thread>

namespace orvista {

void outliveReaders() {
#ifndef _WIN32
    std::signal(SIGPIPE, SIG_IGN);
#endif
}

void quitWhenInputEnds() {
    // Pipes cannot be watched in the event loop on Windows. The thread waits until the program is gone.
    std::thread([] {
        while (std::fgetc(stdin) != EOF) {
        }
        if (QCoreApplication* const program = QCoreApplication::instance())
            QMetaObject::invokeMethod(program, &QCoreApplication::quit, Qt::QueuedConnection);
    }).detach();
}

} // namespace orvista
