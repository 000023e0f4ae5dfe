#pragma once

#include <QStringList>

#include <optional>

/// Tables as plain text with tabs between the cells.
namespace tabtext {

/// The lines of \a text, ended by CR LF, LF or CR; line breaks at the end of the text add none.
/// Control characters other than tabs are dropped.
QStringList lines(const QString &text);

/// What a one-line editor holds after typing or pasting into it: line breaks at its end are
/// dropped, others become "\n", tabs become blanks, other control characters are dropped.
QString typed(const QString &text);

/// Reads the cells of a text as spreadsheets write it: one line break at its end adds no row. A
/// cell in quotation marks may hold line breaks (they become "\n"), tabs (they become blanks) and
/// doubled quotation marks; a mark that nothing closes is an ordinary character. Other control
/// characters are dropped.
class CellReader
{
public:
    explicit CellReader(const QString &text) : m_text(text) {}

    /// Goes to the first, then to the next row; false behind the last. All cells of a row are to be
    /// read before.
    bool nextRow();
    /// The next cell of the row; none behind its last.
    std::optional<QString> nextCell();

private:
    QString m_text;
    qsizetype m_at = 0;
    bool m_inRow = false;
    bool m_moreCells = false;
};

} // namespace tabtext
