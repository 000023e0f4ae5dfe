#pragma once

#include "core/windowservice.h"
#include "wizard/assistentdienste.h"

/// Makes and shows the windows that a document opens.
class Fensterdienst : public WindowService
{
public:
    explicit Fensterdienst(const AssistentDienste &services) : m_services(services) {}

    QObject *createAssistent(Kalibrierung &document) override;
    QObject *createInfo() override;
    QObject *createCalcOptions(Kalibrierung &document) override;
    QObject *createProtocollExtraData(Kalibrierung &document) override;
    void showForm(QObject *form, bool modal, QObject *parentForm) override;

private:
    AssistentDienste m_services;
};
