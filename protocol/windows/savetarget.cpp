#include "protocol/windows/savetarget.h"

#include "core/produkt.h"

#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QMessageBox>
#include <QStandardPaths>

namespace {

bool mayReplace(QWidget *owner, const QString &path)
{
    QMessageBox box(
        QMessageBox::Question, produkt::name(),
        u"„%1“ gibt es schon. Soll die Datei ersetzt werden?"_qs.arg(QFileInfo(path).fileName()),
        QMessageBox::Yes | QMessageBox::No, owner);
    box.setTextFormat(Qt::PlainText); // file names may look like markup
    box.setDefaultButton(QMessageBox::No);
    return box.exec() == QMessageBox::Yes;
}

// Folders go away when a stick is pulled out, and a bare system has no folder for documents.
QString startFolder(const QString &startAt)
{
    const QFileInfo start(startAt);
    QStringList candidates;
    if (start.isAbsolute())
        candidates.append(start.isDir() ? start.absoluteFilePath() : start.absolutePath());
    candidates.append(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
    candidates.append(QDir::homePath());
    for (const QString &folder : candidates) {
        if (QFileInfo(folder).isDir())
            return folder;
    }
    return QDir::rootPath();
}

// A combo box is called by what is chosen in it, so that its own name is the description.
void describe(const QFileDialog &dialog, const QString &box, const QString &name)
{
    if (auto *found = dialog.findChild<QComboBox *>(box)) // not in the system's own dialogs
        found->setAccessibleDescription(name);
}

} // namespace

FileDialog::FileDialog(QWidget *owner, const FileChoice &choice)
    : QFileDialog(owner, choice.title, startFolder(choice.startAt))
{
    setNameFilters({choice.kind + u" (*"_qs + choice.suffix + u')', u"alle Dateien (*)"_qs});
    describe(*this, u"lookInCombo"_qs, u"Suchen in"_qs);
    describe(*this, u"fileTypeCombo"_qs, u"Dateien des Typs"_qs);
}

QString chooseSaveTarget(QWidget *owner, const FileChoice &target)
{
    FileDialog dialog(owner, target);
    const QStringList filters = dialog.nameFilters();
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    // It would ask about the name as typed, which need not be the one that is written.
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
    if (!target.startAt.isEmpty() && !QFileInfo(target.startAt).isDir()) {
        if (!target.startAt.endsWith(target.suffix, Qt::CaseInsensitive))
            dialog.selectNameFilter(filters.last());
        dialog.selectFile(QFileInfo(target.startAt).fileName());
    }
    while (dialog.exec() == QDialog::Accepted) {
        QString path = dialog.selectedFiles().value(0);
        if (dialog.selectedNameFilter() == filters.first() &&
            !path.endsWith(target.suffix, Qt::CaseInsensitive))
            path += target.suffix;
        if (!QFileInfo::exists(path) || mayReplace(owner, path))
            return path;
        dialog.selectFile(path); // with its folder, which may have been typed as well
    }
    return {};
}
