#pragma once

#include <QString>
#include <QStringList>

/// Where what is written for several files goes.
struct Ausgabeziele
{
    QString ordner;      ///< the folder that must exist for them; empty where one target was named
    QStringList dateien; ///< one for each input
};

/// The targets for \a inputs where \a target was named: the file itself for a single input, else,
/// or where \a target is a folder or ends with a separator, a file in that folder. These are called
/// like the inputs with \a suffix, such as ".xlsx"; what is taken already, in whatever case, gets a
/// number: "a (2).xlsx".
Ausgabeziele ausgabeziele(const QStringList &inputs, const QString &target, const QString &suffix);
