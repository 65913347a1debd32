#pragma once

#include "model/Numbers.h"
#include "model/People.h"

#include <QObject>

namespace orvista {

/// Runs a handler of a button or menu entry. A number that does not fit ends the handler with a message box;
/// the program runs on.
template <typename Handler>
void runGuarded(Messages& messages, Handler&& handler) {
    try {
        handler();
    } catch (const Overflow& overflow) {
        messages.show(MessageIcon::Exclamation, overflow.what());
    }
}

/// Connects a button's or menu entry's signal to a handler. Exceptions must not leave a handler, since Qt's
/// event loop does not pass them on; every such connection is therefore made here.
template <typename Sender, typename Signal, typename Receiver>
void connectGuarded(Messages& messages, Sender* sender, Signal signal, Receiver* receiver,
                    void (Receiver::*handler)()) {
    QObject::connect(sender, signal, receiver, [&messages, receiver, handler] {
        runGuarded(messages, [receiver, handler] { (receiver->*handler)(); });
    });
}

} // namespace orvista
