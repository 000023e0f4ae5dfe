#include "wizard/einstellungen.h"

#include <QSettings>

namespace {

const QString dontShowKey = QStringLiteral("Main/DontShowPage0");
const QString geometryKey = QStringLiteral("Main/Geometry");

QString fileKey(int position)
{
    return u"RecentFiles/File"_qs + QString::number(position);
}

} // namespace

bool Einstellungen::dontShowPage0() const
{
    return m_store.value(dontShowKey, 0).toInt() != 0;
}

void Einstellungen::setDontShowPage0(bool dontShow)
{
    m_store.setValue(dontShowKey, dontShow ? 1 : 0);
}

QStringList Einstellungen::recentFiles() const
{
    QStringList paths;
    for (int position = 1; position <= recentFileCount; ++position)
        paths.append(m_store.value(fileKey(position)).toString());
    return paths;
}

void Einstellungen::setRecentFiles(const QStringList &paths)
{
    for (int position = 1; position <= recentFileCount; ++position)
        m_store.setValue(fileKey(position), paths.value(position - 1, u""_qs));
}

QByteArray Einstellungen::windowGeometry() const
{
    return m_store.value(geometryKey).toByteArray();
}

void Einstellungen::setWindowGeometry(const QByteArray &geometry)
{
    m_store.setValue(geometryKey, geometry);
}

QStringList withMostRecent(QStringList paths, const QString &newest)
{
    const auto count = paths.size();
    paths.removeOne(newest);
    paths.prepend(newest);
    paths.resize(count);
    return paths;
}
