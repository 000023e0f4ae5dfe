#include "export/mappenpruefung.h"

#include "core/runtimeerror.h"

#include <QByteArray>
#include <QFile>

#include <minizip/unzip.h>

#include <memory>

namespace {

struct Close
{
    void operator()(void *file) const { unzClose(file); }
};
using Archiv = std::unique_ptr<void, Close>;

// What can be said of an XML text that runs by in pieces: its root's name, its end, its rows.
class Teilpruefung
{
public:
    void take(const QByteArray &piece)
    {
        if (m_head.size() < headSize)
            m_head += piece.left(headSize - m_head.size());
        // A mark can lie across two pieces.
        const QByteArray joined = m_tail.right(rowMark.size() - 1) + piece;
        m_rows += static_cast<int>(joined.count(rowMark));
        m_tail = (m_tail + piece).right(tailSize);
    }

    int rows() const { return m_rows; }

    // Whether the root element that the text begins with ends it, too.
    bool complete() const
    {
        const qsizetype declaration = m_head.indexOf("?>");
        const qsizetype root = m_head.indexOf('<', declaration < 0 ? 0 : declaration);
        if (root < 0)
            return false;
        qsizetype end = root + 1;
        while (end < m_head.size() && !QByteArrayView(" />\n").contains(m_head[end]))
            ++end;
        const QByteArray tail = m_tail.trimmed();
        return tail.endsWith("</" + m_head.mid(root + 1, end - root - 1) + '>') ||
               tail.endsWith("/>");
    }

private:
    static constexpr qsizetype headSize = 512;
    static constexpr qsizetype tailSize = 128;
    inline static const QByteArray rowMark = "<row ";

    QByteArray m_head;
    QByteArray m_tail;
    int m_rows = 0;
};

// False when cancelled.
bool liesTeil(unzFile file, Teilpruefung &part, const std::function<bool()> &progress)
{
    if (unzOpenCurrentFile(file) != UNZ_OK)
        throw RunTimeError(ErrorNumber::DeviceIo);
    constexpr unsigned pieceSize = 1U << 18U;
    QByteArray piece(pieceSize, Qt::Uninitialized);
    for (;;) {
        const int size = unzReadCurrentFile(file, piece.data(), pieceSize);
        if (size < 0)
            throw RunTimeError(ErrorNumber::DeviceIo);
        if (size == 0)
            break;
        part.take(QByteArray::fromRawData(piece.constData(), size));
        if (!progress())
            return false;
    }
    if (unzCloseCurrentFile(file) != UNZ_OK) // the check sum
        throw RunTimeError(ErrorNumber::DeviceIo);
    return true;
}

QString nameOf(unzFile file)
{
    char name[256] = {};
    if (unzGetCurrentFileInfo64(file, nullptr, name, sizeof name - 1, nullptr, 0, nullptr, 0) !=
        UNZ_OK)
        throw RunTimeError(ErrorNumber::DeviceIo);
    return QString::fromUtf8(name);
}

} // namespace

bool pruefeMappe(const QString &path, const std::map<QString, int> &rowsOfSheets,
                 const std::function<bool()> &progress)
{
    const Archiv archive(unzOpen64(QFile::encodeName(path).constData()));
    if (!archive)
        throw RunTimeError(ErrorNumber::DiskFull);
    std::size_t sheets = 0;
    int found = unzGoToFirstFile(archive.get());
    for (; found == UNZ_OK; found = unzGoToNextFile(archive.get())) {
        Teilpruefung part;
        if (!liesTeil(archive.get(), part, progress))
            return false;
        const auto expected = rowsOfSheets.find(nameOf(archive.get()));
        if (expected != rowsOfSheets.end())
            ++sheets;
        if (!part.complete() || (expected != rowsOfSheets.end() && part.rows() != expected->second))
            throw RunTimeError(ErrorNumber::DiskFull);
    }
    if (found != UNZ_END_OF_LIST_OF_FILE || sheets != rowsOfSheets.size())
        throw RunTimeError(ErrorNumber::DiskFull);
    return true;
}
