#include "protocol/windows/savetarget.h"

#include "core/produkt.h"

#include <QDir>
#include <QFileDialog>
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

} // namespace

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

QStringList nameFilters(const QString &kind, const QString &suffix)
{
    return {kind + u" (*"_qs + suffix + u')', u"alle Dateien (*)"_qs};
}

QString chooseSaveTarget(QWidget *owner, const SaveTarget &target)
{
    QFileDialog dialog(owner, target.title, startFolder(target.startAt));
    const QStringList filters = nameFilters(target.kind, target.suffix);
    dialog.setNameFilters(filters);
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
