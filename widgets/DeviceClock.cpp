#include "widgets/DeviceClock.h"

#include <QDateTime>

namespace orvista {

LocalTime localTime(const QDateTime& time) {
    return {time.date().year(), time.date().month(),  time.date().day(),
            time.time().hour(), time.time().minute(), time.time().second()};
}

} // namespace orvista
