#include "display/forms/PreviewClock.h"

#include "widgets/DeviceClock.h"

#include <QDateTime>
#include <chrono>

namespace orvista {

PreviewClock PreviewClock::system() {
    return {[] {
                const auto now = std::chrono::steady_clock::now().time_since_epoch();
                return std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
            },
            [] { return orvista::localTime(QDateTime::currentDateTime()); }};
}

} // namespace orvista
