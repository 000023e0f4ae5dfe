#pragma once

#include <QString>
#include <QStringList>

#include <vector>

/// A table of texts with columns as wide as their widest cell, for a terminal.
class TextTabelle
{
public:
    /// \a alignments has one letter a column: 'l' left, 'r' right.
    explicit TextTabelle(const QString &alignments) : m_alignments(alignments) {}

    /// Adds a row with one cell a column. Control characters become blanks, more than
    /// 80 characters are cut.
    void add(const QStringList &cells);

    /// The rows, indented, columns two blanks apart, without blanks at line ends.
    QString text() const;

private:
    QString m_alignments;
    std::vector<QStringList> m_rows;
};
