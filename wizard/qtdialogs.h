#pragma once

#include "wizard/dialogs.h"

/// The dialogs on a screen: Qt's message boxes and file dialogs.
class QtDialogs : public Dialogs
{
public:
    void message(QWidget *owner, Icon icon, const QString &title, const QString &text) override;
    Answer question(QWidget *owner, const QString &title, const QString &text) override;
    Conflict conflict(QWidget *owner, const QString &title, const QString &text) override;
    std::optional<QString> openFileName(QWidget *owner, const QString &startAt) override;
    std::optional<QString> saveFileName(QWidget *owner, const QString &preset) override;
};
