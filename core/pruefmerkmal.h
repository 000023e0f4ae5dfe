#pragma once

#include "core/variant.h"

#include <QString>

#include <cstdint>

class Kalibrierung;

/// One of the three quantities of a calibration, as a typed view of four keys of the document's
/// store. Keeps no value itself, checks none; every write goes through the document's change
/// detection.
class Prüfmerkmal
{
public:
    ::Kalibrierung &Kalibrierung() const { return *m_parent; }

    /// The document's item under \a key; a missing key is added with Empty.
    const Variant &DataStore(const QString &key) const;
    void setDataStore(const QString &key, const Variant &value);

    QString Name() const;
    void setName(const QString &name);
    QString Formelzeichen() const;
    void setFormelzeichen(const QString &symbol);
    QString Einheit() const;
    void setEinheit(const QString &unit);
    /// Decimal places of displayed values. Raises 13 or 6 where the stored item is no whole number.
    std::int32_t Nachkommastellen() const;
    void setNachkommastellen(std::int32_t places);

    /// Name, blank, formula symbol.
    QString Bezeichung() const;

private:
    friend class ::Kalibrierung;
    Prüfmerkmal() = default;

    void attach(::Kalibrierung &parent);
    void setKeys(const QString &name, const QString &symbol, const QString &unit,
                 const QString &decimals);
    QString text(const QString &key) const;

    ::Kalibrierung *m_parent = nullptr; ///< borrowed: the document owns its characteristics
    QString m_nameKey;
    QString m_symbolKey;
    QString m_unitKey;
    QString m_decimalsKey;
};
