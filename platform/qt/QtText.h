// SPDX-License-Identifier: Apache-2.0
// QtText: text on its way between the program (UTF-8) and Qt, and plain text where Qt expects
// markup.
#pragma once

#include <QString>
#include <QTextDocument>

#include <string>
#include <string_view>

namespace platform::qt {

[[nodiscard]] inline QString ToQt(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

[[nodiscard]] inline std::string FromQt(const QString& text)
{
    return text.toStdString();
}

// A text for a tip. Rule: Qt reads tips as markup, so a "<" of a name is escaped.
[[nodiscard]] inline QString PlainTip(const QString& text)
{
    return Qt::mightBeRichText(text) ? text.toHtmlEscaped() : text;
}

}  // namespace platform::qt
