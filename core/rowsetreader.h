#pragma once

#include <QByteArray>

#include <string_view>
#include <vector>

/// The rows of a file in the published rowset persistence format, for two of its text columns.
///
/// Understands rows directly under the data block and in insert, update and delete groups, columns
/// under an alias and in any order, other prefixes for the four namespaces, UTF-8 and UTF-16. White
/// space in values comes back as it stands in the file.
class Rowset
{
public:
    /// UTF-8 without escapes. A missing or null value is empty. Valid as long as the rowset.
    struct Row
    {
        std::string_view first;
        std::string_view second;
    };

    /// Parses \a file. Raises 321, naming line or reason, where it is no well-formed file of this
    /// format, holds rows within rows, or has no columns \a firstColumn and \a secondColumn
    /// (UTF-8).
    static Rowset parse(QByteArray file, std::string_view firstColumn,
                        std::string_view secondColumn);

    const std::vector<Row> &rows() const { return m_rows; }

private:
    QByteArray m_buffer; ///< what the rows point into
    std::vector<Row> m_rows;
};
