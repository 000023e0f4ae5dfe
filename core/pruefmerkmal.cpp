#include "core/pruefmerkmal.h"

#include "core/kalibrierung.h"

void Prüfmerkmal::attach(::Kalibrierung &parent)
{
    m_parent = &parent;
}

void Prüfmerkmal::setKeys(const QString &name, const QString &symbol, const QString &unit,
                          const QString &decimals)
{
    m_nameKey = name;
    m_symbolKey = symbol;
    m_unitKey = unit;
    m_decimalsKey = decimals;
}

const Variant &Prüfmerkmal::DataStore(const QString &key) const
{
    return m_parent->DataStore().item(key);
}

void Prüfmerkmal::setDataStore(const QString &key, const Variant &value)
{
    m_parent->DataStoreLet(key, value);
}

QString Prüfmerkmal::text(const QString &key) const
{
    return m_parent->values().text(DataStore(key));
}

QString Prüfmerkmal::Name() const
{
    return text(m_nameKey);
}
void Prüfmerkmal::setName(const QString &name)
{
    setDataStore(m_nameKey, name);
}

QString Prüfmerkmal::Formelzeichen() const
{
    return text(m_symbolKey);
}
void Prüfmerkmal::setFormelzeichen(const QString &symbol)
{
    setDataStore(m_symbolKey, symbol);
}

QString Prüfmerkmal::Einheit() const
{
    return text(m_unitKey);
}
void Prüfmerkmal::setEinheit(const QString &unit)
{
    setDataStore(m_unitKey, unit);
}

std::int32_t Prüfmerkmal::Nachkommastellen() const
{
    return m_parent->values().whole(DataStore(m_decimalsKey));
}

void Prüfmerkmal::setNachkommastellen(std::int32_t places)
{
    setDataStore(m_decimalsKey, places);
}

QString Prüfmerkmal::Bezeichung() const
{
    // One after the other: reading a missing key adds it, and the name's comes first.
    const QString name = Name();
    return name + u' ' + Formelzeichen();
}
