#include "protocol/windows/protocolservices.h"

#include "protocol/windows/savetarget.h"

#include <QMessageBox>
#include <QPageSetupDialog>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QScopeGuard>

namespace {

QtMessageHandler otherMessages = nullptr;

// Where no printer is installed Qt calls its page set-up useless, on the terminal. It is not: the
// sheet is the preview's and the PDF's as well.
void passOnMessage(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    if (!message.startsWith(u"QPageSetupDialog: Cannot be used on non-native printers"_qs))
        otherMessages(type, context, message);
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
    otherMessages = qInstallMessageHandler(passOnMessage);
    const auto restore = qScopeGuard([] { qInstallMessageHandler(otherMessages); });
    QPageSetupDialog dialog(&printer, parent);
    return dialog.exec() == QDialog::Accepted;
}

QString PlatformProtocolServices::choosePdfTarget(const QString &suggestion, QWidget *parent)
{
    return chooseSaveTarget(
        parent, {u"Als PDF speichern"_qs, u"PDF-Dokumente"_qs, QStringLiteral(".pdf"), suggestion});
}
