#include "batch/ausgabeziele.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>

namespace {

QString baseName(const QString &input)
{
    const QString name = QFileInfo(input).completeBaseName();
    return name.isEmpty() ? QStringLiteral("Kalibrierung") : name;
}

} // namespace

Ausgabeziele ausgabeziele(const QStringList &inputs, const QString &target, const QString &suffix)
{
    const bool isFolder = inputs.size() > 1 || target.endsWith(u'/') ||
                          target.endsWith(QDir::separator()) || QFileInfo(target).isDir();
    if (!isFolder)
        return {{}, {target}};
    Ausgabeziele result{target, {}};
    QSet<QString> taken; // folded, for file systems that don't tell cases apart
    for (const QString &input : inputs) {
        const QString base = baseName(input);
        QString name = base;
        for (int number = 2; taken.contains(name.toCaseFolded()); ++number)
            name = u"%1 (%2)"_qs.arg(base).arg(number);
        taken.insert(name.toCaseFolded());
        result.dateien += QDir(target).filePath(name + suffix);
    }
    return result;
}
