#pragma once

#include <QLocale>
#include <QString>

#include <functional>

/// What an editable grid takes from outside, handed in so that tests depend on none of it.
struct GridEnvironment
{
    std::function<QString()> clipboardText;
    /// Empties the clipboard before.
    std::function<void(const QString &)> setClipboardText;
    /// Time of day in seconds since midnight.
    std::function<double()> secondsSinceMidnight;
    /// A typed text in a number or date format; a text that does not fit the format comes back as
    /// is.
    std::function<QString(const QString &text, const QString &format)> format;

    /// The desktop's clipboard, the system's clock, and \a locale's numbers and dates.
    static GridEnvironment system(const QLocale &locale = QLocale());
};
