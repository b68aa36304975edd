// SPDX-License-Identifier: Apache-2.0
#include "platform/qt/QtClock.h"

#include "base/Calendar.h"

#include <QDateTime>

namespace platform::qt {

base::Date QtClock::Now() const
{
    const QDateTime now = QDateTime::currentDateTime();
    const QDate date = now.date();
    const QTime time = now.time();
    return base::DateFrom({.year = date.year(),
                           .month = date.month(),
                           .day = date.day(),
                           .hour = time.hour(),
                           .minute = time.minute(),
                           .second = time.second()});
}

}  // namespace platform::qt
