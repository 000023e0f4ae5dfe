#include "wizard/qtdialogs.h"

#include "protocol/windows/haltoffen.h"
#include "protocol/windows/savetarget.h"

#include <QGuiApplication>
#include <QMessageBox>
#include <QPushButton>

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

const QString kindOfFile = QStringLiteral("XML-Dateien");
const QString suffix = QStringLiteral(".xml");

} // namespace

void QtDialogs::message(QWidget *owner, Icon icon, const QString &title, const QString &text)
{
    const HaltOffen open(owner);
    QMessageBox box(owner);
    prepare(box, title, text);
    box.setIcon(qtIcon(icon));
    box.setStandardButtons(QMessageBox::Ok);
    box.exec();
}

Dialogs::Answer QtDialogs::question(QWidget *owner, const QString &title, const QString &text)
{
    const HaltOffen open(owner);
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
    const HaltOffen open(owner);
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
    const HaltOffen open(owner);
    FileDialog dialog(owner, {u"Kalibrierung öffnen"_qs, kindOfFile, suffix, startAt});
    dialog.setFileMode(QFileDialog::ExistingFile);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return std::nullopt;
    return dialog.selectedFiles().constFirst();
}

std::optional<QString> QtDialogs::saveFileName(QWidget *owner, const QString &preset)
{
    const HaltOffen open(owner);
    const QString path =
        chooseSaveTarget(owner, {u"Kalibrierung speichern unter"_qs, kindOfFile, suffix, preset});
    return path.isEmpty() ? std::nullopt : std::optional(path);
}
