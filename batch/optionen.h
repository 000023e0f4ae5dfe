#pragma once

#include <QDateTime>
#include <QLocale>
#include <QStringList>

/// What the command line asks for.
struct Optionen
{
    enum class Format { Text, Json, Csv };

    Format format = Format::Text;
    QLocale locale;
    QString speichern;     ///< target of --speichern, empty without it
    QString tabelle;       ///< target of --tabelle, empty without it
    QString protokoll;     ///< target of --protokoll, empty without it
    int typ = 0;           ///< type of the protocol, 0 or 1
    unsigned parallel = 0; ///< threads; 0 for as many as there are processors
    QDateTime zeitpunkt;   ///< date in the properties of spreadsheets
    QStringList dateien;
    bool hilfe = false;
    bool version = false;
    QString fehler; ///< what is wrong with the command line, German; empty when nothing is
};

/// Reads \a arguments, the words behind the program's name. \a userLocale holds unless one is
/// named; \a now is when the program runs.
Optionen leseOptionen(const QStringList &arguments, const QLocale &userLocale,
                      const QDateTime &now);

/// The text of --help.
QString hilfetext();
/// The text of --version.
QString versionstext();
