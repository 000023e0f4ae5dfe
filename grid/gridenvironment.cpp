#include "grid/gridenvironment.h"

#include "grid/textformat.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QTime>

GridEnvironment GridEnvironment::system(const QLocale &locale)
{
    return {
        [] { return QGuiApplication::clipboard()->text(); },
        [](const QString &text) {
            QGuiApplication::clipboard()->clear();
            QGuiApplication::clipboard()->setText(text);
        },
        [] { return QTime::currentTime().msecsSinceStartOfDay() / 1000.0; },
        [locale](const QString &text, const QString &format) {
            return formattedText(text, format, locale);
        },
    };
}
