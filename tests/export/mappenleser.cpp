#include "tests/export/mappenleser.h"

#include <QDebug>
#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>

namespace {

// Debian's own, where its packages are; another one may come first in the path.
const QString python = QStringLiteral("/usr/bin/python3");

QJsonObject run(const QStringList &arguments)
{
    bool good = false;
    const QByteArray output = starteProgramm(
        python, QStringList(QStringLiteral(SCRIPTS "/lies_mappe.py")) + arguments, &good);
    return good ? QJsonDocument::fromJson(output).object() : QJsonObject();
}

} // namespace

QByteArray starteProgramm(const QString &program, const QStringList &arguments, bool *good,
                          int milliseconds)
{
    QProcess process;
    process.start(program, arguments);
    process.closeWriteChannel();
    *good = process.waitForFinished(milliseconds) && process.exitStatus() == QProcess::NormalExit &&
            process.exitCode() == 0;
    if (!*good) {
        qWarning() << program << arguments << process.errorString()
                   << process.readAllStandardError().right(2000);
        process.kill();
        process.waitForFinished();
    }
    return process.readAllStandardOutput();
}

bool GeleseneMappe::moeglich()
{
    QProcess process;
    process.start(python, {QStringLiteral("-c"), QStringLiteral("import openpyxl")});
    return process.waitForFinished(60000) && process.exitStatus() == QProcess::NormalExit &&
           process.exitCode() == 0;
}

GeleseneMappe GeleseneMappe::lies(const QString &path)
{
    GeleseneMappe result;
    result.m_sheets = run({path});
    return result;
}

QJsonObject GeleseneMappe::liesKurz(const QString &path)
{
    return run({path, QStringLiteral("--kurz")});
}

GeleseneZelle GeleseneMappe::zelle(const QString &sheet, const QString &address) const
{
    const QJsonValue found = m_sheets[sheet].toObject().value(address);
    if (found.isUndefined())
        return {{}, QJsonValue(QJsonValue::Undefined), {}, {}};
    const QJsonArray parts = found.toArray();
    return {parts[0].toString(), parts[1], parts[2].toString(), parts[3].toString()};
}

int GeleseneMappe::zeileMit(const QString &sheet, QChar column, const QString &text) const
{
    const QJsonObject cells = m_sheets[sheet].toObject();
    for (int row = 1; row <= 2000; ++row) {
        const QJsonValue cell = cells.value(column + QString::number(row));
        if (cell.toArray().size() > 1 && cell.toArray()[1].toString() == text)
            return row;
    }
    return 0;
}
