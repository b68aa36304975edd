// SPDX-License-Identifier: Apache-2.0
#include "platform/qt/QtSystemFormats.h"

#include "base/Calendar.h"
#include "platform/qt/QtText.h"

#include <QDate>
#include <QTime>

namespace platform::qt {

namespace {

// The year with its century.
QString WithWholeYear(QString pattern)
{
    return pattern.contains("yyyy") ? pattern : pattern.replace("yy", "yyyy");
}

// The time to the second, without its zone.
QString WithoutZone(QString pattern)
{
    pattern.remove('t');
    pattern.replace(QChar(0x202F), ' ');
    return pattern.trimmed();
}

QDate DateOf(const base::DateParts& parts)
{
    return {parts.year, parts.month, parts.day};
}

}  // namespace

QLocale MachineLocale(const QLocale& locale)
{
    return locale.language() == QLocale::C ? QLocale(QLocale::English, QLocale::UnitedStates)
                                           : locale;
}

QtSystemFormats::QtSystemFormats(const QLocale& locale)
    : locale_(MachineLocale(locale)), longDate_(locale_.dateFormat(QLocale::LongFormat)),
      shortDate_(WithWholeYear(locale_.dateFormat(QLocale::ShortFormat))),
      time_(WithoutZone(locale_.timeFormat(QLocale::LongFormat)))
{
}

std::string QtSystemFormats::LongDate(base::Date date) const
{
    return FromQt(locale_.toString(DateOf(base::PartsOf(date)), longDate_));
}

std::string QtSystemFormats::ShortDate(base::Date date) const
{
    return FromQt(locale_.toString(DateOf(base::PartsOf(date)), shortDate_));
}

std::string QtSystemFormats::Time(base::Date date) const
{
    const base::DateParts parts = base::PartsOf(date);
    return FromQt(locale_.toString(QTime(parts.hour, parts.minute, parts.second), time_));
}

}  // namespace platform::qt
