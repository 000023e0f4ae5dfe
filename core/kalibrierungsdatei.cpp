#include "core/kalibrierungsdatei.h"

#include "core/atomicfile.h"
#include "core/rowsetwriter.h"
#include "core/runtimeerror.h"
#include "core/values.h"
#include "core/xmlpruefung.h"

#include <QFile>

#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>
#include <new>

namespace fs = std::filesystem;

namespace {

QString toText(std::string_view utf8)
{
    // At the start of a text U+FEFF is a character like any other, which fromUtf8() would drop as a
    // byte order mark.
    constexpr std::string_view mark = "\xef\xbb\xbf";
    QString marks;
    for (; utf8.starts_with(mark); utf8.remove_prefix(mark.size()))
        marks += QChar::ByteOrderMark;
    const QString text = QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
    return marks.isEmpty() ? text : marks + text;
}

[[noreturn]] void refuseSize(qint64 size)
{
    constexpr qint64 mebibyte = qint64{1024} * 1024;
    throw RunTimeError(ErrorNumber::InvalidFileFormat,
                       u"die Datei ist mit %1 MiB größer als die erlaubten %2 MiB"_qs
                           .arg((size + mebibyte - 1) / mebibyte)
                           .arg(Kalibrierungsdatei::maximumSize / mebibyte));
}

// Refuses everything but an ordinary file before it is opened: opening a pipe would wait for ever.
void checkIsFile(const fs::path &path)
{
    if (path.empty())
        throw RunTimeError(ErrorNumber::PathFileAccess, u"der Dateiname fehlt"_qs);
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (fs::is_regular_file(status))
        return;
    if (fs::exists(status))
        throw RunTimeError(ErrorNumber::PathFileAccess, u"das ist keine Datei"_qs);
    std::error_code ignored;
    if (error == std::errc::no_such_file_or_directory &&
        fs::is_directory(fs::absolute(path, ignored).parent_path(), ignored))
        throw RunTimeError(ErrorNumber::FileNotFound);
    throw errorOf(error.default_error_condition().value(), ErrorNumber::PathFileAccess);
}

QByteArray contentsOf(const QString &path)
{
    checkIsFile(nativePath(path));
    QFile file(path);
    errno = 0;
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        throw errorOf(errno, ErrorNumber::PathFileAccess);
    if (file.size() > Kalibrierungsdatei::maximumSize)
        refuseSize(file.size());
    // The file may be longer than it says, or grow meanwhile.
    QByteArray bytes(std::max<qint64>(file.size() + 1, 4096), Qt::Uninitialized);
    qint64 used = 0;
    for (;;) {
        const qint64 got = file.read(bytes.data() + used, bytes.size() - used);
        if (got < 0)
            throw RunTimeError(ErrorNumber::DeviceIo);
        if (got == 0)
            break;
        used += got;
        if (used > Kalibrierungsdatei::maximumSize)
            refuseSize(used);
        if (used == bytes.size())
            bytes.resize(2 * used);
    }
    bytes.truncate(used);
    return bytes;
}

QString textToSave(const QString &key, const Variant &value, const Values &values)
{
    try {
        return values.text(value);
    } catch (const RunTimeError &error) {
        throw RunTimeError(error.errorNumber(),
                           u"der Eintrag „%1“ hat keinen Wert, der gespeichert werden kann"_qs.arg(
                               forMessage(key)));
    }
}

} // namespace

Kalibrierungsdatei Kalibrierungsdatei::read(const QString &path)
try {
    return Kalibrierungsdatei(Rowset::parse(contentsOf(path), "Variable", "Wert"));
} catch (const std::bad_alloc &) {
    throw RunTimeError(ErrorNumber::OutOfMemory);
}

void Kalibrierungsdatei::storeRows(KeyedStore &store) const
try {
    const std::vector<Rowset::Row> &rows = m_rowset.rows();
    store.reserve(store.size() + rows.size());
    std::array<QString, 16> keys; // of the rows whose places in the store are being fetched
    for (std::size_t first = 0; first < rows.size(); first += keys.size()) {
        const std::size_t count = std::min(keys.size(), rows.size() - first);
        for (std::size_t i = 0; i < count; ++i) {
            keys[i] = toText(rows[first + i].first);
            store.prefetch(keys[i]);
        }
        for (std::size_t i = 0; i < count; ++i) {
            if (!keys[i].isEmpty())
                store.set(std::move(keys[i]), toText(rows[first + i].second));
        }
    }
} catch (const std::bad_alloc &) {
    throw RunTimeError(ErrorNumber::OutOfMemory);
}

QByteArray Kalibrierungsdatei::bytesOf(const KeyedStore &store, const Values &values)
try {
    RowsetWriter writer(QStringLiteral("Variable"), QStringLiteral("Wert"), store.size() + 1);
    writer.append(QStringLiteral("KalibrierungWendral"), QStringLiteral("V1"));
    store.forEach([&](const QString &key, const Variant &value) {
        writer.append(key, textToSave(key, value, values));
    });
    return writer.finish();
} catch (const std::bad_alloc &) {
    throw RunTimeError(ErrorNumber::OutOfMemory);
}

void Kalibrierungsdatei::write(const QString &path, const KeyedStore &store, const Values &values)
{
    const QByteArray bytes = bytesOf(store, values);
    if (bytes.size() > maximumSize)
        refuseSize(bytes.size()); // it could never be opened again
    AtomicFile file(path);
    file.write(bytes);
    file.commit();
}
