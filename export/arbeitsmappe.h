#pragma once

#include "export/mappenpruefung.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <xlsxwriter.h>

#include <map>
#include <memory>
#include <tuple>

/// How a cell looks.
struct Zellenstil
{
    QString zahlenformat = {}; ///< empty: as the spreadsheet program likes
    bool fett = false;
    bool kopf = false; ///< grey, wrapped, with a line below
    bool umbruch = false;
    int einzug = 0;

    bool operator==(const Zellenstil &) const = default;
    /// Some order, for looking formats up.
    bool operator<(const Zellenstil &other) const
    {
        return std::tie(zahlenformat, fett, kopf, umbruch, einzug) <
               std::tie(other.zahlenformat, other.fett, other.kopf, other.umbruch, other.einzug);
    }
};

/// One sheet of a workbook. Rows are written from top to bottom: a row that is begun ends those
/// above it. Raises 5 for what the library refuses.
class Blatt
{
public:
    Blatt(class Arbeitsmappe &mappe, const QString &name);

    const QString &name() const { return m_name; }
    lxw_worksheet *handle() const { return m_sheet; }
    /// What its file will hold. Rows without any cell don't count.
    Blattumfang umfang() const { return m_umfang; }

    void zahl(int row, int column, double value, const Zellenstil &style = {});
    void text(int row, int column, const QString &value, const Zellenstil &style = {});
    /// \a expression without "=", and the value that it has.
    void formel(int row, int column, const QString &expression, double value,
                const Zellenstil &style = {});
    void formel(int row, int column, const QString &expression, const QString &value,
                const Zellenstil &style = {});

    /// A chart whose upper left corner lies in this cell.
    void diagramm(int row, int column, lxw_chart *chart);
    /// \a text as the title of \a axis.
    static void achsentitel(lxw_chart_axis *axis, const QString &text);

    /// Width in characters of the standard font.
    void spaltenbreite(int firstColumn, int lastColumn, double width);
    void zeilenhoehe(int row, double points);
    /// Joins the cells of \a row; what is written into the first one afterwards fills all.
    void verbinde(int row, int firstColumn, int lastColumn, const Zellenstil &style);
    /// What is printed: all cells up to this one.
    void druckbereich(int lastRow, int lastColumn);
    /// A4 across or upright, as wide as one page, \a headerRows repeated on each and fixed on the
    /// screen, with the sheet's name above and page numbers below.
    void seite(bool landscape, int headerRows);

private:
    lxw_row_t begin(int row);
    /// \a expression as the library takes it; counted.
    QByteArray formeltext(const QString &expression);

    Arbeitsmappe &m_mappe;
    QString m_name;
    lxw_worksheet *m_sheet;
    Blattumfang m_umfang;
    int m_last = -1; ///< the row that is being written
};

/// A workbook on its way into a file. Rows leave memory as soon as the next one begins.
///
/// Not written unless close() is called.
class Arbeitsmappe
{
public:
    /// For the file at \a path. Raises 7 and what stands in the way of temporary files.
    Arbeitsmappe(const QString &path, const QDateTime &created);

    lxw_workbook *handle() const { return m_book.get(); }
    lxw_format *format(const Zellenstil &style);

    /// Writes the file. Raises 7, 57, 61, 70 or 75.
    void close();

private:
    struct Free
    {
        void operator()(lxw_workbook *book) const;
    };

    std::unique_ptr<lxw_workbook, Free> m_book;
    std::map<Zellenstil, lxw_format *> m_formats; ///< owned by the workbook
};
