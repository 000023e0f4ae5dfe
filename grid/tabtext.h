#pragma once

#include <QStringList>

#include <optional>

/// Tables as plain text with tabs between the cells.
namespace tabtext {

/// The lines of \a text, ended by CR LF, LF or CR; line breaks at the end of the text add none.
/// Control characters other than tabs are treated as in typed().
QStringList lines(const QString &text);

/// What a one-line editor holds after typing or pasting into it: line breaks become "\n". What
/// separates words becomes two blanks, for a single one may stand inside of a number: tabs,
/// vertical tabs, form feeds, next-line characters. Both are dropped where they separate nothing,
/// and so are other control characters.
QString typed(const QString &text);

/// Reads the cells of a text as spreadsheets write it: one line break at its end adds no row. A
/// cell in quotation marks may hold line breaks (they become "\n"), tabs and doubled quotation
/// marks; a mark that nothing closes is an ordinary character. Control characters, and tabs in
/// quotation marks, are treated as in typed().
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
