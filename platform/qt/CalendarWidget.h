// SPDX-License-Identifier: Apache-2.0
// CalendarWidget: a Calendar on the screen, in the machine's language, large enough for a thumb.
#pragma once

#include "platform/controls/Calendar.h"
#include "platform/qt/QtSystemFormats.h"

#include <QCalendarWidget>

#include <functional>

namespace platform::qt {

class CalendarWidget : public QCalendarWidget {
public:
    explicit CalendarWidget(Calendar& calendar, QWidget* parent,
                            const QLocale& locale = MachineLocale());

    // The arrow keys go over the days.
    void FocusDays();

    // The user wants this date to be the calendar's.
    std::function<void(base::Date)> chosen;
    // A double click on a date, or Enter on the chosen one.
    std::function<void()> doubleClicked;

private:
    void Enlarge();
    void Colour();
    void Mirror();

    Calendar* calendar_;
    bool mirroring_ = false;
};

}  // namespace platform::qt
