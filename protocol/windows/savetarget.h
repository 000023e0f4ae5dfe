#pragma once

#include <QString>

class QWidget;

/// What a dialog for saving a file asks for.
struct SaveTarget
{
    QString title;
    QString kind;    ///< of the files, as the list of kinds shows it: "PDF-Dokumente"
    QString suffix;  ///< with its point
    QString startAt; ///< a file's name or path to start with, or a folder, or empty
};

/// The file that the user names in the platform's dialog; empty when cancelled.
///
/// Unless all files are listed, a name gets the suffix even where a point in it could pass for one
/// ("Feld 12.03"). Where there is a file of the name that comes of it, the user is asked whether it
/// may be replaced; who says no chooses once more.
QString chooseSaveTarget(QWidget *owner, const SaveTarget &target);

/// Where a dialog for the file or folder \a startAt begins: folders go away when a stick is pulled
/// out, and a bare system has no folder for documents.
QString startFolder(const QString &startAt);

/// The list of kinds for files with \a suffix, which are called \a kind.
QStringList nameFilters(const QString &kind, const QString &suffix);
