#include "wizard/produkttexte.h"

#include "core/produkt.h"

QString versionText()
{
    return QStringLiteral("Version %1.%2.%3")
        .arg(QString::number(produkt::versionMajor), QString::number(produkt::versionMinor),
             QString::number(produkt::versionRevision));
}

QString shownLines(QString text)
{
    return text.replace(u"\r\n"_qs, u"\n"_qs);
}
