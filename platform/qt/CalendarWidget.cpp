// SPDX-License-Identifier: Apache-2.0
#include "platform/qt/CalendarWidget.h"

#include "base/Calendar.h"
#include "platform/qt/Mirror.h"
#include "platform/qt/ShopStyle.h"

#include <QSpinBox>
#include <QTextCharFormat>
#include <QTimer>
#include <QToolButton>

namespace platform::qt {

namespace {

constexpr const char* kDays = "qt_calendar_calendarview";  // as Qt names its table of days
constexpr int kColumns = 7;
constexpr int kDayWidth = 54;  // for the name of the day over it
constexpr int kRows = 7;       // six weeks under the names of the days

base::Date DateOf(const QDate& date)
{
    return base::DateFrom({date.year(), date.month(), date.day(), 0, 0, 0});
}

QDate DateOf(base::Date date)
{
    const base::DateParts parts = base::PartsOf(date);
    return {parts.year, parts.month, parts.day};
}

}  // namespace

CalendarWidget::CalendarWidget(Calendar& calendar, QWidget* parent, const QLocale& locale)
    : QCalendarWidget(parent), calendar_(&calendar)
{
    setLocale(locale);
    setFirstDayOfWeek(locale.firstDayOfWeek());
    setVerticalHeaderFormat(NoVerticalHeader);
    setGridVisible(true);
    Enlarge();
    Colour();
    connect(this, &QCalendarWidget::selectionChanged, this, [this] {
        if (mirroring_) return;
        if (chosen) chosen(DateOf(selectedDate()));
        // Where the choice was not taken over, the screen goes back.
        QTimer::singleShot(0, this, [this] { Mirror(); });
    });
    connect(this, &QCalendarWidget::activated, this, [this] {
        if (doubleClicked) doubleClicked();
    });
    Follow(calendar, this, [this] { Mirror(); });
}

void CalendarWidget::FocusDays()
{
    if (auto* days = findChild<QWidget*>(kDays)) days->setFocus();
}

void CalendarWidget::Enlarge()
{
    int bar = 0;
    for (auto* button : findChildren<QToolButton*>()) {
        button->setMinimumSize(kButtonHeight, kButtonHeight);
        button->setIconSize({24, 24});
        bar = kButtonHeight;
    }
    if (auto* year = findChild<QSpinBox*>("qt_calendar_yearedit"))
        year->setMinimumHeight(kButtonHeight);
    const auto name = [this](const char* button, const char* spoken) {
        if (auto* found = findChild<QToolButton*>(button)) found->setAccessibleName(spoken);
    };
    if (auto* days = findChild<QWidget*>(kDays)) days->setAccessibleName("Days of the month");
    name("qt_calendar_prevmonth", "Previous month");
    name("qt_calendar_nextmonth", "Next month");
    name("qt_calendar_monthbutton", "Month");
    name("qt_calendar_yearbutton", "Year");
    setMinimumSize(kColumns * kDayWidth + kSpacing, bar + kRows * kButtonHeight + kSpacing);
}

// The days of a weekend can be worked on: they are as readable as the others.
void CalendarWidget::Colour()
{
    QTextCharFormat day;
    day.setForeground(palette().brush(QPalette::Active, QPalette::Text));
    setWeekdayTextFormat(Qt::Saturday, day);
    setWeekdayTextFormat(Qt::Sunday, day);
    QTextCharFormat header;
    header.setFontWeight(QFont::Bold);
    setHeaderTextFormat(header);
}

void CalendarWidget::Mirror()
{
    mirroring_ = true;
    const QDate date = DateOf(calendar_->Value());
    if (date != selectedDate()) {
        setSelectedDate(date);
        setCurrentPage(date.year(), date.month());
    }
    mirroring_ = false;
}

}  // namespace platform::qt
