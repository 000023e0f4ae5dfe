#pragma once

#include "core/variant.h"

#include <QByteArray>
#include <QHash>
#include <QString>

/// Named values with their kinds, written to and read from one self-describing blob.
class PropertyBag
{
public:
    void writeProperty(const QString &name, const Variant &value);
    /// The value under \a name, \a fallback where there is none.
    Variant readProperty(const QString &name, const Variant &fallback = Empty{}) const;

    QByteArray contents() const;
    /// Raises 321 for bytes that contents() did not make.
    static PropertyBag fromContents(const QByteArray &contents);

private:
    QHash<QString, Variant> m_properties;
};
