#include "batch/jsonwriter.h"

#include "batch/zahlentext.h"

void JsonWriter::beginObject(const QString &name)
{
    appendName(name);
    m_text += '{';
}

void JsonWriter::endObject()
{
    m_text += '}';
}

void JsonWriter::add(const QString &name, const QString &value)
{
    appendName(name);
    appendString(value);
}

void JsonWriter::add(const QString &name, bool value)
{
    appendName(name);
    m_text += value ? "true" : "false";
}

void JsonWriter::add(const QString &name, qint64 value)
{
    appendName(name);
    m_text += QByteArray::number(value);
}

void JsonWriter::add(const QString &name, double value)
{
    appendName(name);
    m_text += zahlentext(value);
}

void JsonWriter::addNull(const QString &name)
{
    appendName(name);
    m_text += "null";
}

QByteArray JsonWriter::finish()
{
    return m_text + "}\n";
}

void JsonWriter::appendName(const QString &name)
{
    if (!m_text.endsWith('{'))
        m_text += ',';
    appendString(name);
    m_text += ':';
}

void JsonWriter::appendString(const QString &text)
{
    m_text += '"';
    for (const char c : text.toUtf8()) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            m_text += '\\';
            m_text += c;
        } else if (byte < 0x20) {
            m_text += "\\u" + QByteArray::number(byte, 16).rightJustified(4, '0');
        } else {
            m_text += c;
        }
    }
    m_text += '"';
}
