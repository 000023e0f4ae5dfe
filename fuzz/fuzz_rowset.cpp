#include "core/rowsetreader.h"
#include "core/rowsetwriter.h"
#include "core/runtimeerror.h"

#include <QStringDecoder>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace {

QString toText(std::string_view utf8)
{
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
    const QString text = decoder(QByteArrayView(utf8.data(), static_cast<qsizetype>(utf8.size())));
    if (decoder.hasError())
        std::abort(); // the reader let invalid text through
    return text;
}

bool areEqual(const Rowset &a, const Rowset &b)
{
    if (a.rows().size() != b.rows().size())
        return false;
    for (std::size_t i = 0; i < a.rows().size(); ++i) {
        if (a.rows()[i].first != b.rows()[i].first || a.rows()[i].second != b.rows()[i].second)
            return false;
    }
    return true;
}

} // namespace

// Any bytes are either refused with error 321, or give rows that can be written and read again.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    try {
        const QByteArray file(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
        const Rowset rowset = Rowset::parse(file, "Variable", "Wert");
        RowsetWriter writer(QStringLiteral("Variable"), QStringLiteral("Wert"),
                            rowset.rows().size());
        for (const Rowset::Row &row : rowset.rows())
            writer.append(toText(row.first), toText(row.second));
        if (!areEqual(Rowset::parse(writer.finish(), "Variable", "Wert"), rowset))
            std::abort();
    } catch (const RunTimeError &error) {
        if (error.errorNumber() != ErrorNumber::InvalidFileFormat)
            std::abort();
    }
    return 0;
}
