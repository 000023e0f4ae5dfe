#include "export/mappenpruefung.h"

#include "core/atomicfile.h"
#include "core/runtimeerror.h"

#include <QByteArray>
#include <QFile>

#include <minizip/unzip.h>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <utility>

namespace {

struct Close
{
    void operator()(void *file) const { unzClose(file); }
};
using Archiv = std::unique_ptr<void, Close>;

// What can be said of an XML text that runs by in pieces: whether every element that begins ends,
// too, how many rows there are, and how long its texts and formulas are together. A text that was
// cut short has elements without an end, whatever was put behind it; one that lacks a piece within
// a long text is shorter. The library writes no comments, and ">" in texts and attributes as a
// reference.
class Teilpruefung
{
public:
    void take(QByteArrayView piece)
    {
        while (!piece.isEmpty()) {
            const qsizetype end = piece.indexOf(m_inTag ? '>' : '<');
            const QByteArrayView run = end < 0 ? piece : piece.first(end);
            if (m_inTag)
                takeTag(run);
            else if (m_inText)
                takeText(run);
            piece = piece.sliced(end < 0 ? piece.size() : end + 1);
            if (end < 0)
                return;
            if (m_inTag)
                endTag();
            m_inTag = !m_inTag;
        }
    }

    Blattumfang umfang() const { return m_umfang; }
    bool complete() const { return m_good && !m_inTag && m_depth == 0 && m_roots == 1; }

private:
    // Within "<" and ">"; a tag can lie across two pieces.
    void takeTag(QByteArrayView run)
    {
        if (run.isEmpty())
            return;
        m_good = m_good && !run.contains('<');
        if (m_tag.size() < tagSize)
            m_tag += run.first(std::min(tagSize - m_tag.size(), run.size()));
        m_last = run.back();
    }

    // "&amp;" stands for one byte; it can lie across two pieces.
    void takeText(QByteArrayView run)
    {
        for (const char c : run) {
            if (!m_inReference)
                ++m_umfang.textbytes;
            m_inReference = m_inReference ? c != ';' : c == '&';
        }
    }

    void endTag()
    {
        const QByteArray tag = std::exchange(m_tag, {});
        m_inText = tag == "t" || tag.startsWith("t ") || tag == "f";
        if (tag.startsWith('?'))
            return;
        if (tag.startsWith('/')) {
            --m_depth;
            m_good = m_good && m_depth >= 0;
            return;
        }
        if (m_depth == 0)
            ++m_roots;
        if (tag == "row" || tag.startsWith("row ") || tag.startsWith("row/"))
            ++m_umfang.zeilen;
        if (m_last != '/')
            ++m_depth;
    }

    static constexpr qsizetype tagSize = 4; ///< as much of a tag as tells a row or a text

    QByteArray m_tag;
    char m_last = 0;
    bool m_inTag = false;
    bool m_inText = false;
    bool m_inReference = false;
    bool m_good = true;
    int m_depth = 0;
    int m_roots = 0;
    Blattumfang m_umfang;
};

// False when cancelled.
bool liesTeil(unzFile file, Teilpruefung &part, const std::function<bool(int)> &progress)
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
        part.take(QByteArrayView(piece).first(size));
        if (!progress(size))
            return false;
    }
    if (unzCloseCurrentFile(file) != UNZ_OK) // the check sum
        throw RunTimeError(ErrorNumber::DeviceIo);
    return true;
}

struct Teil
{
    QString name;
    std::uint64_t size; ///< in bytes, unpacked
};

Teil currentPart(unzFile file)
{
    char name[256] = {};
    unz_file_info64 info{};
    if (unzGetCurrentFileInfo64(file, &info, name, sizeof name - 1, nullptr, 0, nullptr, 0) !=
        UNZ_OK)
        throw RunTimeError(ErrorNumber::DeviceIo);
    return {QString::fromUtf8(name), info.uncompressed_size};
}

// Calls \a visit, which may end the walk with false, for one part after the other.
bool walk(unzFile file, const std::function<bool(const Teil &)> &visit)
{
    int found = unzGoToFirstFile(file);
    for (; found == UNZ_OK; found = unzGoToNextFile(file)) {
        if (!visit(currentPart(file)))
            return false;
    }
    if (found != UNZ_END_OF_LIST_OF_FILE)
        throw RunTimeError(ErrorNumber::DiskFull);
    return true;
}

} // namespace

bool pruefeMappe(const QString &path, const std::map<QString, Blattumfang> &sheets,
                 const Prueffortschritt &progress)
{
    errno = 0;
    const Archiv archive(unzOpen64(QFile::encodeName(path).constData()));
    if (!archive)
        throw errorOf(errno, ErrorNumber::DiskFull);
    std::uint64_t total = 0;
    walk(archive.get(), [&total](const Teil &part) {
        total += part.size;
        return true;
    });
    std::uint64_t read = 0;
    std::size_t found = 0;
    const auto check = [&](const Teil &part) {
        Teilpruefung content;
        if (!liesTeil(archive.get(), content, [&](int size) {
                read += static_cast<std::uint64_t>(size);
                return progress(read, std::max(read, total)); // the file's own sizes may lie
            }))
            return false;
        const auto expected = sheets.find(part.name);
        const bool isSheet = expected != sheets.end();
        found += isSheet ? 1 : 0;
        if (!content.complete() || (isSheet && content.umfang() != expected->second))
            throw RunTimeError(ErrorNumber::DiskFull);
        return true;
    };
    if (!walk(archive.get(), check))
        return false;
    if (found != sheets.size())
        throw RunTimeError(ErrorNumber::DiskFull);
    return true;
}
