#pragma once

#include "core/variant.h"

#include <QByteArray>
#include <QMap>
#include <QString>

/// Named values with their kinds, written to and read from one self-describing blob. Equal bags
/// give equal blobs; a digest in the blob tells damage.
class PropertyBag
{
public:
    void writeProperty(const QString &name, const Variant &value);
    /// The value under \a name, \a fallback where there is none.
    Variant readProperty(const QString &name, const Variant &fallback = Empty{}) const;

    qsizetype size() const { return m_properties.size(); }

    QByteArray contents() const;
    /// Raises 321 for bytes that contents() did not make, however little of them has changed.
    static PropertyBag fromContents(const QByteArray &contents);

private:
    QMap<QString, Variant> m_properties;
};
