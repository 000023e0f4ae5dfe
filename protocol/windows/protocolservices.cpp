#include "protocol/windows/protocolservices.h"

#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QPageSetupDialog>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QStandardPaths>

namespace {

bool mayReplace(const QString &file, QWidget *parent)
{
    QMessageBox box(
        QMessageBox::Question, u"Als PDF speichern"_qs,
        u"„%1“ gibt es schon. Soll die Datei ersetzt werden?"_qs.arg(QFileInfo(file).fileName()),
        QMessageBox::Yes | QMessageBox::No, parent);
    box.setTextFormat(Qt::PlainText);
    return box.exec() == QMessageBox::Yes;
}

} // namespace

void PlatformProtocolServices::message(QWidget *parent, Icon icon, const QString &title,
                                       const QString &text)
{
    QMessageBox box(icon == Icon::Information ? QMessageBox::Information : QMessageBox::Warning,
                    title, text, QMessageBox::Ok, parent);
    box.setTextFormat(Qt::PlainText); // descriptions may hold file names with any characters
    box.exec();
}

bool PlatformProtocolServices::isPrinterInstalled()
{
    return !QPrinterInfo::availablePrinterNames().isEmpty();
}

bool PlatformProtocolServices::choosePrinter(QPrinter &printer,
                                             QAbstractPrintDialog::PrintDialogOptions options,
                                             QWidget *parent)
{
    QPrintDialog dialog(&printer, parent);
    dialog.setOptions(options);
    return dialog.exec() == QDialog::Accepted;
}

bool PlatformProtocolServices::setUpPrinter(QPrinter &printer, QWidget *parent)
{
    QPageSetupDialog dialog(&printer, parent);
    return dialog.exec() == QDialog::Accepted;
}

QString PlatformProtocolServices::choosePdfTarget(const QString &suggestion, QWidget *parent)
{
    const QFileInfo file(suggestion);
    const QString pdfFilter = u"PDF-Dokumente (*.pdf)"_qs;
    QFileDialog dialog(parent, u"Als PDF speichern"_qs,
                       file.isAbsolute()
                           ? file.path()
                           : QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
    dialog.setNameFilters({pdfFilter, u"Alle Dateien (*)"_qs});
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QStringLiteral("pdf"));
    dialog.selectFile(file.fileName());
    while (dialog.exec() == QDialog::Accepted) {
        QString target = dialog.selectedFiles().value(0);
        // The dialog adds the suffix only to names without any, not to "Feld 12.03".
        if (dialog.selectedNameFilter() != pdfFilter ||
            target.endsWith(u".pdf", Qt::CaseInsensitive))
            return target;
        target += u".pdf"_qs;
        if (!QFile::exists(target) || mayReplace(target, parent))
            return target;
    }
    return {};
}
