#pragma once

#include <QByteArray>
#include <QString>

/// Writes two text columns in the published rowset persistence format: UTF-8, CR LF, rows directly
/// under the data block. What it writes, every XML parser reads back unchanged.
class RowsetWriter
{
public:
    /// Begins a table with the two columns; \a expectedRows only saves time.
    RowsetWriter(const QString &firstColumn, const QString &secondColumn, std::size_t expectedRows);

    /// Appends a row. Raises 321, naming \a first, where a text holds a character that XML 1.0
    /// can't hold.
    void append(const QString &first, const QString &second);

    /// The whole file. Call it once, at the end.
    QByteArray finish();

private:
    void appendEscaped(const QString &text, const QString &row);

    QByteArray m_file;
    QByteArray m_rowStart;  ///< up to the first value
    QByteArray m_rowMiddle; ///< between the two values
};
