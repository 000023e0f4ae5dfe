#pragma once

#include <QString>

#include <optional>

class QWidget;

/// Everything that the wizard asks or tells its user in a window of its own.
///
/// Texts are plain, lines in them joined with CR LF. \a owner is the window to which the box
/// belongs.
class Dialogs
{
public:
    enum class Icon { Information, Exclamation, Critical };
    enum class Answer { Yes, No, Cancel };
    /// What to do with a file that somebody else changed.
    enum class Conflict { KeepMine, OtherName, Cancel };

    virtual ~Dialogs() = default;

    /// A box with one Ok button. An empty \a title stands for the application's.
    virtual void message(QWidget *owner, Icon icon, const QString &title, const QString &text) = 0;
    /// A box with the question icon and the buttons Yes, No and Cancel.
    virtual Answer question(QWidget *owner, const QString &title, const QString &text) = 0;
    /// A box with the exclamation icon that offers keeping mine, saving under another name, and
    /// cancelling.
    virtual Conflict conflict(QWidget *owner, const QString &title, const QString &text) = 0;

    /// The file to open, or nothing when the dialog was cancelled. \a startAt is a file or folder
    /// to start at, or empty.
    virtual std::optional<QString> openFileName(QWidget *owner, const QString &startAt) = 0;
    /// The file to save to, or nothing when cancelled. \a preset is the name to start with, or
    /// empty.
    virtual std::optional<QString> saveFileName(QWidget *owner, const QString &preset) = 0;
};
