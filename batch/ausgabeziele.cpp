#include "batch/ausgabeziele.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>
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
    // Both folded, for file systems that don't tell cases apart.
    QSet<QString> taken;
    QHash<QString, int> numbers; // that a name has used up
    for (const QString &input : inputs) {
        const QString base = baseName(input);
        QString name = base;
        int &number = numbers[base.toCaseFolded()];
        while (taken.contains(name.toCaseFolded()))
            name = u"%1 (%2)"_qs.arg(base, QString::number(++number + 1));
        taken.insert(name.toCaseFolded());
        result.dateien += QDir(target).filePath(name + suffix);
    }
    return result;
}
