#pragma once

#include <QLocale>
#include <QStringList>

/// What the command line asks for.
struct Optionen
{
    enum class Format { Text, Json };

    Format format = Format::Text;
    QLocale locale;
    QString speichern; ///< target of --speichern, empty without it
    QStringList dateien;
    bool hilfe = false;
    bool version = false;
    QString fehler; ///< what is wrong with the command line, German; empty when nothing is
};

/// Reads \a arguments, the words behind the program's name. \a userLocale holds unless one is
/// named.
Optionen leseOptionen(const QStringList &arguments, const QLocale &userLocale);

/// The text of --help.
QString hilfetext();
/// The text of --version.
QString versionstext();
