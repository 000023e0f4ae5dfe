#pragma once

#include <QByteArray>
#include <QStringList>

class QSettings;

/// What the program remembers for its user between two runs, typed, on a settings store that is
/// handed in.
class Einstellungen
{
public:
    static constexpr int recentFileCount = 9;

    explicit Einstellungen(QSettings &store) : m_store(store) {}

    bool dontShowPage0() const;
    void setDontShowPage0(bool dontShow);

    /// Always nine full paths, most recent first; unused places are empty.
    QStringList recentFiles() const;
    void setRecentFiles(const QStringList &paths);

    /// Size and place of the main window; empty on the first start.
    QByteArray windowGeometry() const;
    void setWindowGeometry(const QByteArray &geometry);

private:
    QSettings &m_store; ///< borrowed
};

/// \a paths with \a newest at its head and only there; as long as before, the last one drops off.
QStringList withMostRecent(QStringList paths, const QString &newest);
