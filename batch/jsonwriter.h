#pragma once

#include <QByteArray>
#include <QString>

/// Writes one JSON object on one line, members in the order in which they are added. Own code
/// because Qt's writer sorts the members and chooses the digits of numbers itself.
class JsonWriter
{
public:
    JsonWriter() { m_text += '{'; }

    void beginObject(const QString &name);
    void endObject();
    void add(const QString &name, const QString &value);
    void add(const QString &name, bool value);
    void add(const QString &name, qint64 value);
    /// With 17 significant digits, which give the same double back. \a value is finite.
    void add(const QString &name, double value);
    void addNull(const QString &name);

    /// The whole object with its line end. Call it once, at the end.
    QByteArray finish();

private:
    void appendName(const QString &name);
    void appendString(const QString &text);

    QByteArray m_text;
};
