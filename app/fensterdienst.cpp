#include "app/fensterdienst.h"

#include "app/wiederherstellung.h"
#include "core/runtimeerror.h"
#include "protocol/windows/frmprotocollextradata.h"
#include "protocol/windows/haltoffen.h"
#include "wizard/frmassistent.h"
#include "wizard/frmcalcoptions.h"
#include "wizard/frminfo.h"

#include <QDialog>
#include <QEventLoop>

#include <memory>

QObject *Fensterdienst::createAssistent(Kalibrierung &document)
{
    auto *window = new frmAssistent(document, m_services);
    if (m_recovery)
        m_recovery->watch(document, *window);
    return window;
}

QObject *Fensterdienst::createInfo()
{
    return new frmInfo;
}

QObject *Fensterdienst::createCalcOptions(Kalibrierung &document)
{
    auto *options = new frmCalcOptions(m_services.dialogs);
    options->setKalibrierung(document);
    return options;
}

QObject *Fensterdienst::createProtocollExtraData(Kalibrierung &document)
{
    auto data = std::make_unique<frmProtocollExtraData>();
    data->setKalibrierung(document); // may raise an error
    return data.release();
}

void Fensterdienst::showForm(QObject *form, bool modal, QObject *parentForm)
{
    auto *window = qobject_cast<QWidget *>(form);
    if (!window)
        throw RunTimeError(ErrorNumber::InvalidProcedureCall);
    window->setAttribute(Qt::WA_DeleteOnClose);
    auto *owner = qobject_cast<QWidget *>(parentForm);
    if (owner)
        window->setParent(owner, window->windowFlags() | Qt::Window);
    if (!modal) {
        window->show();
        return;
    }
    window->setWindowModality(parentForm ? Qt::WindowModal : Qt::ApplicationModal);
    const HaltOffen open(owner);
    QEventLoop untilClosed;
    QObject::connect(window, &QObject::destroyed, &untilClosed, &QEventLoop::quit);
    window->show();
    untilClosed.exec();
}
