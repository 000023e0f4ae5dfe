#pragma once

#include "wizard/einstellungen.h"

#include <QObject>

#include <array>

class QAction;
class QMenu;

/// The recent files in a menu: one entry per place of the list, hidden where the place is empty.
class LetzteDateien : public QObject
{
    Q_OBJECT

public:
    /// Adds its entries to the end of \a menu, which owns this object.
    LetzteDateien(Einstellungen &settings, QMenu *menu);

    /// Puts \a newest at the head of the stored list, if it is not empty, and shows the list.
    void refresh(const QString &newest = {});

signals:
    void chosen(const QString &path);

private:
    Einstellungen &m_settings;
    std::array<QAction *, Einstellungen::recentFileCount> mf_LastFile;
    QAction *m_separator;
};
