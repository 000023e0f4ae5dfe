#include "app/wiederherstellungsdatei.h"

#include "core/kalibrierung.h"
#include "core/kalibrierungsdatei.h"
#include "core/runtimeerror.h"

#include <QDataStream>
#include <QFile>
#include <QLocale>

namespace {

const QString headerKey = QStringLiteral("Wiederherstellung");
constexpr qint32 formatVersion = 1;
// Behind the version in every one of them, so that a damaged header doesn't look like a newer one.
constexpr quint32 formatMark = 0x4b57'5750;

// How a locale writes numbers, as far as a text read under another one would be another number.
QString numberStyle(const QLocale &locale)
{
    return locale.decimalPoint() + u' ' + locale.groupSeparator();
}

// As one row: whatever texts hold, the file can hold it.
QString headerText(const Arbeitsstand &work, const QDateTime &time, const QByteArray &content,
                   const QLocale &locale)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_6_0);
    stream << formatVersion << formatMark << time << work.fileName << work.contentOnDisk
           << qint32(work.page) << work.entries << content << numberStyle(locale);
    return QString::fromLatin1(bytes.toBase64());
}

// The replaced file keeps its permissions, so that nobody else reads what is unsaved.
void makePrivateFile(const QString &path)
{
    QFile file(path);
    file.open(QIODevice::WriteOnly | QIODevice::NewOnly, QFile::ReadOwner | QFile::WriteOwner);
}

} // namespace

void Wiederherstellungsdatei::write(const QString &path, const Kalibrierung &document,
                                    const Arbeitsstand &work, const QDateTime &time)
{
    const auto writeRows = [&](KeyedStore rows, const QByteArray &content) {
        rows.set(headerKey, headerText(work, time, content, document.values().locale()));
        Kalibrierungsdatei::write(path, rows, document.values());
    };
    makePrivateFile(path);
    try {
        writeRows(document.DataStore(), {});
    } catch (const RunTimeError &error) {
        // An entry may hold what the format can't: a control character, say.
        if (error.errorNumber() != ErrorNumber::InvalidFileFormat &&
            error.errorNumber() != ErrorNumber::InvalidUseOfNull)
            throw;
        writeRows({}, document.ContentString());
    }
}

Wiederherstellungsdatei::Wiederherstellungsdatei(const QString &path) : m_path(path)
{
    KeyedStore rows;
    Kalibrierungsdatei::read(path).storeRows(rows);
    const Variant *header = rows.find(headerKey);
    const auto *text = header ? std::get_if<QString>(header) : nullptr;
    const QByteArray bytes = text ? QByteArray::fromBase64(text->toLatin1()) : QByteArray();
    QDataStream stream(bytes);
    stream.setVersion(QDataStream::Qt_6_0);
    qint32 version = 0;
    qint32 page = 0;
    quint32 mark = 0;
    stream >> version >> mark;
    if (version == formatVersion)
        stream >> m_time >> m_work.fileName >> m_work.contentOnDisk >> page >> m_work.entries >>
            m_content >> m_numberStyle;
    m_newer = version > formatVersion && mark == formatMark;
    if (m_newer)
        return;
    if (version != formatVersion || mark != formatMark || stream.status() != QDataStream::Ok)
        throw RunTimeError(ErrorNumber::InvalidFileFormat);
    m_work.page = page;
}

bool Wiederherstellungsdatei::hasNumbersOf(const QLocale &locale) const
{
    return m_numberStyle == numberStyle(locale);
}

void Wiederherstellungsdatei::loadInto(Kalibrierung &document) const
{
    if (!m_content.isEmpty()) {
        document.setContentString(m_content);
        return;
    }
    document.LoadFile(m_path);
    document.DataStore().remove(headerKey);
}
