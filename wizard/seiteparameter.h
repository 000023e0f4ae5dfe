#pragma once

#include "wizard/assistentseite.h"
#include "wizard/merkmalgruppe.h"

#include <array>

class QComboBox;

/// Page 1: the two characteristics, the covariable and the number of test fields.
class SeiteParameter : public AssistentSeite
{
public:
    explicit SeiteParameter(const Seitenkontext &context, QWidget *parent = nullptr);

    bool check() override;
    bool takeOver(Anlass anlass) override;
    void fill() override;
    Eingaben entries() const override;
    void restoreEntries(const Eingaben &entries) override;
    QWidget *firstControl() const override;

private:
    void addPresets();
    void completeLeft(const QWidget *old, const QWidget *now);
    void completeFocused();
    bool checkText(std::size_t group, std::size_t box);
    bool checkPlaces(std::size_t group);
    bool checkFieldCount();
    bool fieldCountIsChanged() const;

    Vorgabentabelle m_presets;
    std::array<Merkmalgruppe *, 3> m_groups; ///< direct, indirect, covariable
    Zahlenfeld *m_fieldCount;
    QString m_filledFieldCount;
    bool m_fieldCountGood = true; ///< whether the document's own count is one, when filled
    bool m_hasPresets = false;
};
