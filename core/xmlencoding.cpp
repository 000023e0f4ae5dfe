#include "core/xmlencoding.h"

#include "core/runtimeerror.h"
#include "core/xmlpruefung.h"

#include <QStringDecoder>

#include <string>

QByteArray utf8Of(QByteArray file)
{
    if (file.startsWith("\xef\xbb\xbf"))
        return file.remove(0, 3);
    // A file begins with an ASCII character, which tells the byte order where there is no mark.
    const bool two = file.size() >= 2;
    const bool little = file.startsWith("\xff\xfe") || (two && file[0] != 0 && file[1] == 0);
    const bool big = file.startsWith("\xfe\xff") || (two && file[0] == 0 && file[1] != 0);
    if (!little && !big)
        return file;
    QStringDecoder decoder(little ? QStringDecoder::Utf16LE : QStringDecoder::Utf16BE,
                           QStringDecoder::Flag::Stateless);
    const QString text = decoder(file);
    if (decoder.hasError() || file.size() % 2 != 0 || !text.isValidUtf16())
        throw RunTimeError(ErrorNumber::InvalidFileFormat,
                           u"ungültige Zeichenkodierung (kein UTF-16)"_qs);
    return text.toUtf8();
}

void checkDeclaredEncoding(std::string_view utf8)
{
    constexpr std::string_view start = "<?xml";
    if (!utf8.starts_with(start) || utf8.find_first_of(" \t\r\n", start.size()) != start.size())
        return;
    const std::string_view declaration = utf8.substr(0, utf8.find("?>"));
    const std::size_t mark = declaration.find("encoding");
    const std::size_t open = declaration.find_first_of("'\"", mark);
    if (mark == std::string_view::npos || open == std::string_view::npos)
        return;
    const std::size_t close = declaration.find(declaration[open], open + 1);
    const QByteArray name =
        QByteArray::fromStdString(std::string(declaration.substr(open + 1, close - open - 1)))
            .toUpper();
    for (const char *known : {"UTF-8", "UTF-16", "UTF-16LE", "UTF-16BE", "US-ASCII"}) {
        if (name == known)
            return;
    }
    throw RunTimeError(ErrorNumber::InvalidFileFormat,
                       u"die Zeichenkodierung „%1“ wird nicht unterstützt"_qs.arg(
                           forMessage(QString::fromUtf8(name))));
}
