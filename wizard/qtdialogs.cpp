#include "wizard/qtdialogs.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QStandardPaths>

namespace {

QMessageBox::Icon qtIcon(Dialogs::Icon icon)
{
    switch (icon) {
    case Dialogs::Icon::Information:
        return QMessageBox::Information;
    case Dialogs::Icon::Exclamation:
        return QMessageBox::Warning;
    case Dialogs::Icon::Critical:
        return QMessageBox::Critical;
    }
    Q_UNREACHABLE();
}

void prepare(QMessageBox &box, const QString &title, const QString &text)
{
    box.setWindowTitle(title.isEmpty() ? QGuiApplication::applicationDisplayName() : title);
    box.setTextFormat(Qt::PlainText); // file names and entries may look like markup
    QString shown = text;
    box.setText(shown.replace(u"\r\n"_qs, u"\n"_qs));
}

const QString xmlFilter = u"XML-Dateien (*.xml)"_qs;
const QString anyFilter = u"alle Dateien (*)"_qs;
const QString suffix = QStringLiteral(".xml");

// Where a dialog for the file or folder startAt begins. Folders go away: a stick is pulled out, a
// bare system has no folder for documents.
QString startFolder(const QString &startAt)
{
    const QFileInfo start(startAt);
    QStringList candidates;
    if (!startAt.isEmpty())
        candidates.append(start.isDir() ? start.absoluteFilePath() : start.absolutePath());
    candidates.append(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
    candidates.append(QDir::homePath());
    for (const QString &folder : candidates) {
        if (QFileInfo(folder).isDir())
            return folder;
    }
    return QDir::rootPath();
}

void prepare(QFileDialog &dialog, const QString &startAt)
{
    dialog.setNameFilters({xmlFilter, anyFilter});
    dialog.setDirectory(startFolder(startAt));
}

// Under the filter for XML files a name gets their suffix even where a point in it could pass for
// one ("Feld 1.2"), or the same filter would not show the file again.
QString withSuffix(const QString &path, const QString &filter)
{
    return filter != xmlFilter || path.endsWith(suffix, Qt::CaseInsensitive) ? path : path + suffix;
}

bool mayReplace(QWidget *owner, const QString &path)
{
    QMessageBox box(owner);
    prepare(
        box, {},
        u"„%1“ gibt es schon. Soll die Datei ersetzt werden?"_qs.arg(QFileInfo(path).fileName()));
    box.setIcon(QMessageBox::Question);
    box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
    box.setDefaultButton(QMessageBox::No);
    return box.exec() == QMessageBox::Yes;
}

std::optional<QString> chosen(QFileDialog &dialog)
{
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return std::nullopt;
    return dialog.selectedFiles().constFirst();
}

} // namespace

void QtDialogs::message(QWidget *owner, Icon icon, const QString &title, const QString &text)
{
    QMessageBox box(owner);
    prepare(box, title, text);
    box.setIcon(qtIcon(icon));
    box.setStandardButtons(QMessageBox::Ok);
    box.exec();
}

Dialogs::Answer QtDialogs::question(QWidget *owner, const QString &title, const QString &text)
{
    QMessageBox box(owner);
    prepare(box, title, text);
    box.setIcon(QMessageBox::Question);
    box.setStandardButtons(QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
    box.setDefaultButton(QMessageBox::Yes);
    box.setEscapeButton(QMessageBox::Cancel);
    switch (box.exec()) {
    case QMessageBox::Yes:
        return Answer::Yes;
    case QMessageBox::No:
        return Answer::No;
    default:
        return Answer::Cancel;
    }
}

Dialogs::Conflict QtDialogs::conflict(QWidget *owner, const QString &title, const QString &text)
{
    QMessageBox box(owner);
    prepare(box, title, text);
    box.setIcon(QMessageBox::Warning);
    const QPushButton *mine = box.addButton(u"&Meine Fassung behalten"_qs, QMessageBox::YesRole);
    QPushButton *other = box.addButton(u"&Unter anderem Namen..."_qs, QMessageBox::NoRole);
    box.addButton(QMessageBox::Cancel);
    box.setDefaultButton(other); // the choice that loses nobody's work
    box.setEscapeButton(QMessageBox::Cancel);
    box.exec();
    if (box.clickedButton() == mine)
        return Conflict::KeepMine;
    return box.clickedButton() == other ? Conflict::OtherName : Conflict::Cancel;
}

std::optional<QString> QtDialogs::openFileName(QWidget *owner, const QString &startAt)
{
    QFileDialog dialog(owner, u"Kalibrierung öffnen"_qs);
    prepare(dialog, startAt);
    dialog.setFileMode(QFileDialog::ExistingFile);
    return chosen(dialog);
}

std::optional<QString> QtDialogs::saveFileName(QWidget *owner, const QString &preset)
{
    QFileDialog dialog(owner, u"Kalibrierung speichern unter"_qs);
    prepare(dialog, preset);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    if (!preset.isEmpty()) {
        if (!preset.endsWith(suffix, Qt::CaseInsensitive))
            dialog.selectNameFilter(anyFilter);
        dialog.selectFile(QFileInfo(preset).fileName());
    }
    while (const std::optional<QString> picked = chosen(dialog)) {
        // The dialog has asked about the name as it was typed. The suffix is not its business,
        // since a platform's own dialog adds it after the question.
        const QString path = withSuffix(*picked, dialog.selectedNameFilter());
        if (path == *picked || !QFileInfo::exists(path) || mayReplace(owner, path))
            return path;
        dialog.selectFile(QFileInfo(path).fileName());
    }
    return std::nullopt;
}
