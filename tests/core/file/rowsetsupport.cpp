#include "tests/core/file/rowsetsupport.h"

#include "core/keyedstore.h"
#include "core/rowsetreader.h"

#include <QFile>
#include <QStringDecoder>
#include <QXmlStreamReader>

namespace {

QString text(std::string_view utf8)
{
    // A value may begin with U+FEFF, which is a character there and no mark.
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
    return decoder(QByteArrayView(utf8.data(), static_cast<qsizetype>(utf8.size())));
}

} // namespace

Rows rowsOf(const QByteArray &file, const char *firstColumn, const char *secondColumn)
{
    Rows rows;
    const Rowset rowset = Rowset::parse(file, firstColumn, secondColumn);
    for (const Rowset::Row &row : rowset.rows())
        rows.emplace_back(text(row.first), text(row.second));
    return rows;
}

Rows rowsOfOtherParser(const QByteArray &file)
{
    Rows rows;
    QXmlStreamReader reader(file);
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (reader.namespaceUri() == QLatin1String("#RowsetSchema")) {
            rows.emplace_back(reader.attributes().value(QLatin1String("Variable")).toString(),
                              reader.attributes().value(QLatin1String("Wert")).toString());
        }
    }
    return reader.hasError() ? Rows() : rows;
}

QByteArray tableHead()
{
    return "<xml xmlns:s='uuid:BDC6E3F0-6DA3-11d1-A2A3-00AA00C14882'\r\n"
           "\txmlns:dt='uuid:C2F41010-65B3-11d1-A29F-00AA00C14882'\r\n"
           "\txmlns:rs='urn:schemas-microsoft-com:rowset'\r\n"
           "\txmlns:z='#RowsetSchema'>\r\n"
           "<s:Schema id='RowsetSchema'>\r\n"
           "\t<s:ElementType name='row' content='eltOnly' rs:updatable='true'>\r\n"
           "\t\t<s:AttributeType name='Variable' rs:number='1' rs:write='true'>\r\n"
           "\t\t\t<s:datatype dt:type='string' dt:maxLength='4294967295' rs:precision='0'"
           " rs:long='true' rs:maybenull='false'/>\r\n"
           "\t\t</s:AttributeType>\r\n"
           "\t\t<s:AttributeType name='Wert' rs:number='2' rs:write='true'>\r\n"
           "\t\t\t<s:datatype dt:type='string' dt:maxLength='4294967295' rs:precision='0'"
           " rs:long='true' rs:maybenull='false'/>\r\n"
           "\t\t</s:AttributeType>\r\n"
           "\t\t<s:extends type='rs:rowbase'/>\r\n"
           "\t</s:ElementType>\r\n"
           "</s:Schema>\r\n";
}

QByteArray tableOf(const QByteArray &rows)
{
    return tableHead() + "<rs:data>\r\n" + rows + "</rs:data>\r\n</xml>";
}

QByteArray tableWithValue(const QByteArray &value)
{
    return tableOf("\t<z:row Variable='k' Wert='" + value + "'/>\r\n");
}

StoreEntries entriesOf(const KeyedStore &store)
{
    StoreEntries entries;
    store.forEach(
        [&](const QString &key, const Variant &value) { entries.emplace_back(key, value); });
    return entries;
}

QByteArray bytesAt(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool putBytes(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) &&
           file.write(bytes) == bytes.size();
}
