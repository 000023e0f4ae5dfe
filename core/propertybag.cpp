#include "core/propertybag.h"

#include "core/runtimeerror.h"

#include <QCryptographicHash>
#include <QDataStream>
#include <QIODevice>

#include <algorithm>
#include <type_traits>

namespace {

constexpr quint32 magic = 0x4b57424c; // tells a bag from other bytes
constexpr auto streamVersion = QDataStream::Qt_6_4;
constexpr qsizetype digestSize = 32;

QByteArray digestOf(const QByteArray &bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256);
}

void writeValue(QDataStream &out, const Variant &value)
{
    out << static_cast<quint8>(value.index());
    std::visit(
        [&out](const auto &held) {
            using Held = std::decay_t<decltype(held)>;
            if constexpr (!std::is_same_v<Held, Empty> && !std::is_same_v<Held, Null>)
                out << held;
        },
        value);
}

// The kind with the given number, read into the variant.
template <std::size_t Kind = 0>
bool readKind(QDataStream &in, std::size_t kind, Variant &value)
{
    if constexpr (Kind == std::variant_size_v<Variant>) {
        return false;
    } else {
        if (kind != Kind)
            return readKind<Kind + 1>(in, kind, value);
        std::variant_alternative_t<Kind, Variant> held{};
        if constexpr (!std::is_empty_v<decltype(held)>)
            in >> held;
        value = held;
        return true;
    }
}

} // namespace

void PropertyBag::writeProperty(const QString &name, const Variant &value)
{
    m_properties.insert(name, value);
}

Variant PropertyBag::readProperty(const QString &name, const Variant &fallback) const
{
    return m_properties.value(name, fallback);
}

QByteArray PropertyBag::contents() const
{
    QByteArray body;
    QDataStream out(&body, QIODevice::WriteOnly);
    out.setVersion(streamVersion);
    out << magic << static_cast<quint32>(m_properties.size());
    for (auto property = m_properties.cbegin(); property != m_properties.cend(); ++property) {
        out << property.key();
        writeValue(out, property.value());
    }
    return body + digestOf(body);
}

PropertyBag PropertyBag::fromContents(const QByteArray &contents)
{
    const QByteArray body = contents.chopped(std::min(digestSize, contents.size()));
    if (contents.sliced(body.size()) != digestOf(body))
        throw RunTimeError(ErrorNumber::InvalidFileFormat);
    QDataStream in(body);
    in.setVersion(streamVersion);
    quint32 mark = 0;
    quint32 count = 0;
    in >> mark >> count;
    PropertyBag bag;
    bool good = in.status() == QDataStream::Ok && mark == magic;
    for (quint32 i = 0; good && i < count; ++i) {
        QString name;
        quint8 kind = 0;
        Variant value;
        in >> name >> kind;
        good = readKind(in, kind, value) && in.status() == QDataStream::Ok;
        bag.m_properties.insert(name, value);
    }
    if (!good || !in.atEnd())
        throw RunTimeError(ErrorNumber::InvalidFileFormat);
    return bag;
}
