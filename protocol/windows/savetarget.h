#pragma once

#include <QFileDialog>
#include <QString>

/// What a file dialog asks for.
struct FileChoice
{
    QString title;
    QString kind;    ///< of the files, as the list of kinds shows it: "PDF-Dokumente"
    QString suffix;  ///< with its point
    QString startAt; ///< a file's name or path to start with, or a folder, or empty
};

/// The platform's file dialog: it begins where the choice says or, where that is gone, in a folder
/// that is there, and lists the files of the kind or all. Every box in it has an accessible name.
class FileDialog : public QFileDialog
{
public:
    FileDialog(QWidget *owner, const FileChoice &choice);
};

/// The file that the user names in the platform's dialog; empty when cancelled.
///
/// Unless all files are listed, a name gets the suffix even where a point in it could pass for one
/// ("Feld 12.03"). Where there is a file of the name that comes of it, the user is asked whether it
/// may be replaced; who says no chooses once more.
QString chooseSaveTarget(QWidget *owner, const FileChoice &target);
