#include "app/ausgabe.h"

#include "app/start.h"
#include "core/kalibrierung.h"
#include "core/outputtarget.h"
#include "export/tabellenausgabe.h"
#include "protocol/windows/frmprotocollpreview.h"
#include "protocol/windows/savetarget.h"
#include "wizard/frmassistent.h"
#include "wizard/frmexport.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QProgressDialog>

namespace {

const QString spreadsheetSuffix = QStringLiteral(".xlsx");

// The file of the calibration that \a window shows; empty where it has none yet.
QString calibrationFile(const QWidget *window)
{
    const auto *wizard = qobject_cast<const frmAssistent *>(window);
    return wizard ? wizard->FileName() : QString();
}

// Beside the calibration and named like it, where it has a file already.
QString suggestionFor(const QString &calibration, const QString &otherwise, const QString &suffix)
{
    if (calibration.isEmpty())
        return otherwise + suffix;
    const QFileInfo file(calibration);
    return file.absolutePath() + u'/' + file.completeBaseName() + suffix;
}

void exportSpreadsheet(const ausgabe::Dienste &services, Kalibrierung &document, frmExport *owner,
                       const QString &calibration)
{
    const QString target = services.chooseSpreadsheet(
        owner, suggestionFor(calibration, u"Kalibrierung"_qs, spreadsheetSuffix));
    if (target.isEmpty())
        return;
    refuseCalibrationAsTarget(target, calibration, u"die Tabelle"_qs);
    QProgressDialog progress(u"Die Tabelle wird geschrieben."_qs, u"Abbrechen"_qs, 0, 100, owner);
    progress.setWindowTitle(owner->windowTitle());
    progress.setWindowModality(Qt::WindowModal);
    progress.setMinimumDuration(static_cast<int>(services.showProgressAfter.count()));
    // Until it shows, the user sees the list only.
    QObject::connect(owner, &frmExport::cancelRequested, &progress, &QProgressDialog::cancel);
    schreibeTabelle(document, target, services.now(), [&progress](int percent) {
        progress.setValue(percent);
        // A value that stays lets no event through, and the cancel button would be dead.
        QCoreApplication::processEvents();
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
    const QString calibration = calibrationFile(owner);
    preview->setCalibrationFile(calibration);
    preview->setPdfSuggestion(suggestionFor(calibration, u"Protokoll"_qs, QStringLiteral(".pdf")));
    preview->show();
}

void ausgabe::showExport(const Dienste &services, Kalibrierung &document, QWidget *owner)
{
    const QString calibration = calibrationFile(owner);
    auto *actions = new frmExport(
        services.dialogs,
        [services, &document, calibration](frmExport *window) {
            exportSpreadsheet(services, document, window, calibration);
        },
        owner);
    actions->setWindowModality(Qt::WindowModal);
    actions->show();
}

QString ausgabe::chooseSpreadsheet(QWidget *owner, const QString &suggestion)
{
    return chooseSaveTarget(
        owner, {u"Export nach MS Excel"_qs, u"Excel-Dateien"_qs, spreadsheetSuffix, suggestion});
}
