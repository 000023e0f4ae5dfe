#include "protocol/windows/protocolservices.h"

#include <QFileDialog>
#include <QMessageBox>
#include <QPageSetupDialog>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QStandardPaths>

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
    QFileDialog dialog(parent, u"Als PDF speichern"_qs,
                       QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation),
                       u"PDF-Dokumente (*.pdf);;Alle Dateien (*)"_qs);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QStringLiteral("pdf"));
    dialog.selectFile(suggestion);
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}
