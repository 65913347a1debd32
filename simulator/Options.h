#pragma once

#include "simulator/Faults.h"
#include "simulator/SimulatedDevice.h"

#include <QRect>
#include <QString>
#include <QStringList>
#include <optional>
#include <stdexcept>

namespace orvista {

/// What the command line asks for.
struct Options {
    DeviceSettings device; ///< its root is empty when none was given
    Faults faults;
    bool headless = false;
    bool printLog = false;
    bool untilInputEnds = false;  ///< end when standard input does
    bool removeRoot = false;      ///< with all in it, at the end
    std::optional<QRect> beside;  ///< the window of another program, on the screen, to stand beside
    QString snapshot;             ///< file of the panel's picture, or empty
    std::optional<qint64> moment; ///< milliseconds, see Snapshot
};

/// A command line that cannot be followed; `what()` says why.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// \param arguments the program's name first
/// \throws UsageError
/// Ends the program for --help and --version.
Options parseOptions(const QStringList& arguments);

} // namespace orvista
