#include "core/kalibrierungsdatei.h"

#include "core/atomicfile.h"
#include "core/rowsetwriter.h"
#include "core/runtimeerror.h"
#include "core/values.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>

namespace {

QString toText(std::string_view utf8)
{
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

QByteArray contentsOf(const QString &path)
{
    const QFileInfo info(path);
    if (!info.exists())
        throw RunTimeError(info.absoluteDir().exists() ? ErrorNumber::FileNotFound
                                                       : ErrorNumber::PathNotFound);
    if (!info.isFile())
        throw RunTimeError(ErrorNumber::PathFileAccess,
                           u"„%1“ ist keine Datei"_qs.arg(info.fileName()));
    if (info.size() > Kalibrierungsdatei::maximumSize)
        throw RunTimeError(ErrorNumber::InvalidFileFormat,
                           u"die Datei ist mit %1 MiB größer als die erlaubten %2 MiB"_qs
                               .arg(info.size() / 1024 / 1024)
                               .arg(Kalibrierungsdatei::maximumSize / 1024 / 1024));
    QFile file(path);
    errno = 0;
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        throw RunTimeError(errorNumberOf(errno, ErrorNumber::PathFileAccess));
    // One byte more than allowed: the file may have grown since it was measured.
    QByteArray bytes = file.read(Kalibrierungsdatei::maximumSize + 1);
    if (file.error() != QFileDevice::NoError)
        throw RunTimeError(ErrorNumber::DeviceIo);
    if (bytes.size() > Kalibrierungsdatei::maximumSize)
        throw RunTimeError(ErrorNumber::InvalidFileFormat);
    return bytes;
}

} // namespace

Kalibrierungsdatei Kalibrierungsdatei::read(const QString &path)
{
    return Kalibrierungsdatei(Rowset::parse(contentsOf(path), "Variable", "Wert"));
}

void Kalibrierungsdatei::storeRows(KeyedStore &store) const
{
    store.reserve(store.size() + m_rowset.rows().size());
    for (const Rowset::Row &row : m_rowset.rows()) {
        if (!row.first.empty())
            store.set(toText(row.first), toText(row.second));
    }
}

QByteArray Kalibrierungsdatei::bytesOf(const KeyedStore &store, const Values &values)
{
    RowsetWriter writer(QStringLiteral("Variable"), QStringLiteral("Wert"), store.size() + 1);
    writer.append(QStringLiteral("KalibrierungWendral"), QStringLiteral("V1"));
    store.forEach(
        [&](const QString &key, const Variant &value) { writer.append(key, values.text(value)); });
    return writer.finish();
}

void Kalibrierungsdatei::write(const QString &path, const KeyedStore &store, const Values &values)
{
    const QByteArray bytes = bytesOf(store, values);
    AtomicFile file(path);
    file.write(bytes);
    file.commit();
}
