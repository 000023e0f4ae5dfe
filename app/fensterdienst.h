#pragma once

#include "core/windowservice.h"
#include "wizard/assistentdienste.h"

class Wiederherstellung;

/// Makes and shows the windows that a document opens.
class Fensterdienst : public WindowService
{
public:
    /// \a recovery, where there is one, keeps the work in the wizard's window; borrowed.
    explicit Fensterdienst(const AssistentDienste &services, Wiederherstellung *recovery = nullptr)
        : m_services(services), m_recovery(recovery)
    {
    }

    QObject *createAssistent(Kalibrierung &document) override;
    QObject *createInfo() override;
    QObject *createCalcOptions(Kalibrierung &document) override;
    QObject *createProtocollExtraData(Kalibrierung &document) override;
    void showForm(QObject *form, bool modal, QObject *parentForm) override;

private:
    AssistentDienste m_services;
    Wiederherstellung *m_recovery;
};
