#pragma once

#include <QString>
#include <QStringList>

/// Where the spreadsheets of several files go.
struct Tabellenziele
{
    QString ordner;      ///< the folder that must exist for them; empty where one target was named
    QStringList dateien; ///< one for each input
};

/// The targets for \a inputs where \a target was named: the file itself for a single input, else,
/// or where \a target is a folder or ends with a separator, a file in that folder. These are called
/// like the inputs with ".xlsx"; what is taken already, in whatever case, gets a number: "a
/// (2).xlsx".
Tabellenziele tabellenziele(const QStringList &inputs, const QString &target);
