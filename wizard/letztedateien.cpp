#include "wizard/letztedateien.h"

#include <QAction>
#include <QMenu>

LetzteDateien::LetzteDateien(Einstellungen &settings, QMenu *menu)
    : QObject(menu), m_settings(settings)
{
    for (std::size_t i = 0; i < mf_LastFile.size(); ++i) {
        auto *action = new QAction(menu);
        action->setObjectName(u"mf_LastFile"_qs + QString::number(i + 1));
        connect(action, &QAction::triggered, this,
                [this, action] { emit chosen(action->data().toString()); });
        menu->addAction(action);
        mf_LastFile[i] = action;
    }
    m_separator = menu->addSeparator();
}

void LetzteDateien::refresh(const QString &newest)
{
    QStringList paths = m_settings.recentFiles();
    if (!newest.isEmpty()) {
        paths = withMostRecent(paths, newest);
        m_settings.setRecentFiles(paths);
    }
    bool any = false;
    for (std::size_t i = 0; i < mf_LastFile.size(); ++i) {
        const QString path = paths.value(static_cast<qsizetype>(i));
        QString caption = path;
        mf_LastFile[i]->setText(caption.replace(u'&', u"&&"_qs)); // no mnemonic
        mf_LastFile[i]->setData(path);
        mf_LastFile[i]->setVisible(!path.isEmpty());
        any = any || !path.isEmpty();
    }
    m_separator->setVisible(any);
}
