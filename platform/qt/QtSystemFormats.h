// SPDX-License-Identifier: Apache-2.0
// QtSystemFormats: dates and times as the machine's locale prints them.
#pragma once

#include "platform/SystemFormats.h"

#include <QLocale>
#include <QString>

namespace platform::qt {

// The language and the forms of the machine. Rule: a machine without a locale of its own ("C")
// counts as American English.
[[nodiscard]] QLocale MachineLocale(const QLocale& locale = QLocale::system());

class QtSystemFormats : public SystemFormats {
public:
    // Rule: a machine without a locale of its own ("C") counts as American English.
    explicit QtSystemFormats(const QLocale& locale = QLocale::system());

    [[nodiscard]] std::string LongDate(base::Date date) const override;
    [[nodiscard]] std::string ShortDate(base::Date date) const override;
    [[nodiscard]] std::string Time(base::Date date) const override;

private:
    QLocale locale_;
    QString longDate_, shortDate_, time_;
};

}  // namespace platform::qt
