#include "core/userlocale.h"

QLocale userLocale(const Environment &environment)
{
    const QLocale fallback(QLocale::German, QLocale::Germany);
    for (const char *name : {"LC_ALL", "LC_NUMERIC", "LANG"}) {
        const QByteArray value = environment(name);
        if (value.isEmpty())
            continue;
        // "de_DE.UTF-8@euro": only language and country say how numbers look.
        const QByteArray locale = value.split('.').first().split('@').first();
        const QLocale named(QString::fromLatin1(locale));
        return named.language() == QLocale::C ? fallback : named;
    }
#ifdef Q_OS_UNIX
    return fallback;
#else
    return QLocale::system().language() == QLocale::C ? fallback : QLocale::system();
#endif
}
