#include "app/ausgabe.h"

#include "app/start.h"
#include "core/kalibrierung.h"
#include "export/tabellenausgabe.h"
#include "protocol/windows/frmprotocollpreview.h"
#include "wizard/frmassistent.h"
#include "wizard/frmexport.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QProgressDialog>
#include <QStandardPaths>

namespace {

constexpr int showProgressAfterMs = 500;

// Beside the calibration and named like it, where it has a file already.
QString suggestedSpreadsheet(const QWidget *window)
{
    const auto *wizard = qobject_cast<const frmAssistent *>(window);
    if (!wizard || wizard->FileName().isEmpty())
        return QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation) +
               u"/Kalibrierung.xlsx"_qs;
    const QFileInfo file(wizard->FileName());
    return file.absolutePath() + u'/' + file.completeBaseName() + u".xlsx"_qs;
}

void exportSpreadsheet(const ausgabe::Dienste &services, Kalibrierung &document, QWidget *owner,
                       const QString &suggestion)
{
    const QString target = services.chooseSpreadsheet(owner, suggestion);
    if (target.isEmpty())
        return;
    QProgressDialog progress(u"Die Tabelle wird geschrieben."_qs, u"Abbrechen"_qs, 0, 100, owner);
    progress.setWindowTitle(owner->windowTitle());
    progress.setWindowModality(Qt::WindowModal);
    progress.setMinimumDuration(showProgressAfterMs);
    schreibeTabelle(document, target, services.now(), [&progress](int percent) {
        progress.setValue(percent);
        return !progress.wasCanceled();
    });
}

} // namespace

void ausgabe::showProtocol(const Dienste &services, Kalibrierung &document, QWidget *owner)
{
    auto *preview =
        new frmProtocollPreview(services.protocol, basKalibrierungWendral::debugMode(), owner);
    preview->setAttribute(Qt::WA_DeleteOnClose);
    preview->setKalibrierung(document);
    preview->show();
}

void ausgabe::showExport(const Dienste &services, Kalibrierung &document, QWidget *owner)
{
    const QString suggestion = suggestedSpreadsheet(owner);
    auto *actions = new frmExport(
        services.dialogs,
        [services, &document, suggestion](QWidget *window) {
            exportSpreadsheet(services, document, window, suggestion);
        },
        owner);
    actions->setWindowModality(Qt::WindowModal);
    actions->show();
}

QString ausgabe::chooseSpreadsheet(QWidget *owner, const QString &suggestion)
{
    QFileDialog dialog(owner, u"Export nach MS Excel"_qs, QFileInfo(suggestion).absolutePath(),
                       u"Excel-Dateien (*.xlsx);;alle Dateien (*)"_qs);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setDefaultSuffix(QStringLiteral("xlsx"));
    dialog.selectFile(QFileInfo(suggestion).fileName());
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}
