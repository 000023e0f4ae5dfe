#include "export/arbeitsmappe.h"

#include "core/atomicfile.h"
#include "core/produkt.h"
#include "core/runtimeerror.h"
#include "export/zellentext.h"

#include <QFile>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdio>

namespace {

// Only texts and positions of our own reach the library, so a refusal is a fault of this program.
// The library's own words are English; its number leads to them.
void check(lxw_error error)
{
    if (error == LXW_NO_ERROR)
        return;
    if (error == LXW_ERROR_MEMORY_MALLOC_FAILED)
        throw RunTimeError(ErrorNumber::OutOfMemory);
    throw RunTimeError(ErrorNumber::InvalidProcedureCall,
                       u"ein Inhalt passt nicht in die Tabelle (Kennzahl %1)"_qs.arg(int{error}));
}

RunTimeError closingError(lxw_error error, int systemError)
{
    switch (error) {
    case LXW_ERROR_MEMORY_MALLOC_FAILED:
        return errorOf(systemError, ErrorNumber::OutOfMemory);
    case LXW_ERROR_READING_TMPFILE:
        return errorOf(systemError, ErrorNumber::DeviceIo);
    case LXW_ERROR_CREATING_TMPFILE:
    case LXW_ERROR_CREATING_XLSX_FILE:
        return errorOf(systemError, ErrorNumber::PathFileAccess);
    default: // packing: its one fault that is not ours is a disk without room
        return errorOf(systemError, ErrorNumber::DiskFull);
    }
}

lxw_col_t column(int number)
{
    return static_cast<lxw_col_t>(number);
}

} // namespace

Blatt::Blatt(Arbeitsmappe &mappe, const QString &name) : m_mappe(mappe), m_name(name)
{
    errno = 0;
    m_sheet = workbook_add_worksheet(mappe.handle(), name.toUtf8().constData());
    if (!m_sheet)
        throw errorOf(errno, ErrorNumber::OutOfMemory);
}

lxw_row_t Blatt::begin(int row)
{
    Q_ASSERT(row >= m_last);
    if (row > m_last)
        ++m_umfang.zeilen;
    m_last = row;
    return static_cast<lxw_row_t>(row);
}

void Blatt::zahl(int row, int col, double value, const Zellenstil &style)
{
    Q_ASSERT(std::isfinite(value));
    check(worksheet_write_number(m_sheet, begin(row), column(col), value, m_mappe.format(style)));
}

void Blatt::text(int row, int col, const QString &value, const Zellenstil &style)
{
    if (value.isEmpty())
        return; // an empty cell is none
    const QByteArray bytes = zellentext(value);
    check(worksheet_write_string(m_sheet, begin(row), column(col), bytes.constData(),
                                 m_mappe.format(style)));
    m_umfang.textbytes += bytes.size();
}

QByteArray Blatt::formeltext(const QString &expression)
{
    const QByteArray bytes = expression.toUtf8();
    m_umfang.textbytes += bytes.size();
    return '=' + bytes;
}

void Blatt::formel(int row, int col, const QString &expression, double value,
                   const Zellenstil &style)
{
    Q_ASSERT(std::isfinite(value));
    check(worksheet_write_formula_num(m_sheet, begin(row), column(col),
                                      formeltext(expression).constData(), m_mappe.format(style),
                                      value));
}

void Blatt::formel(int row, int col, const QString &expression, const QString &value,
                   const Zellenstil &style)
{
    check(worksheet_write_formula_str(m_sheet, begin(row), column(col),
                                      formeltext(expression).constData(), m_mappe.format(style),
                                      zellentext(value).constData()));
}

void Blatt::diagramm(int row, int col, lxw_chart *chart)
{
    lxw_chart_options options{};
    options.x_scale = 2.4;
    options.y_scale = 1.9;
    check(worksheet_insert_chart_opt(m_sheet, static_cast<lxw_row_t>(row), column(col), chart,
                                     &options));
}

void Blatt::achsentitel(lxw_chart_axis *axis, const QString &text)
{
    constexpr qsizetype longest = 200; // what a chart shows of it; the file format ends at 255
    // The library takes a text that begins with "=" for the address of a cell.
    const QString title = text.startsWith(u'=') ? u' ' + text : text;
    if (!title.isEmpty())
        chart_axis_set_name(axis, diagrammtext(title, longest).toUtf8().constData());
}

void Blatt::spaltenbreite(int firstColumn, int lastColumn, double width)
{
    constexpr double widest = 100.0;
    check(worksheet_set_column(m_sheet, column(firstColumn), column(lastColumn),
                               std::min(width, widest), nullptr));
}

void Blatt::zeilenhoehe(int row, double points)
{
    check(worksheet_set_row(m_sheet, begin(row), points, nullptr));
}

void Blatt::verbinde(int row, int firstColumn, int lastColumn, const Zellenstil &style)
{
    check(worksheet_merge_range(m_sheet, begin(row), column(firstColumn), begin(row),
                                column(lastColumn), "", m_mappe.format(style)));
}

void Blatt::druckbereich(int lastRow, int lastColumn)
{
    check(worksheet_print_area(m_sheet, 0, 0, static_cast<lxw_row_t>(lastRow), column(lastColumn)));
}

void Blatt::seite(bool landscape, int headerRows)
{
    constexpr std::uint8_t a4 = 9;
    worksheet_set_paper(m_sheet, a4);
    if (landscape)
        worksheet_set_landscape(m_sheet);
    worksheet_set_margins(m_sheet, 0.8, 0.6, 0.8, 0.8);
    worksheet_fit_to_pages(m_sheet, 1, 0);
    check(worksheet_repeat_rows(m_sheet, 0, static_cast<lxw_row_t>(headerRows - 1)));
    worksheet_freeze_panes(m_sheet, static_cast<lxw_row_t>(headerRows), 0);
    check(worksheet_set_header(m_sheet,
                               (u"&L"_qs + produkt::name() + u"&R&A"_qs).toUtf8().constData()));
    check(worksheet_set_footer(m_sheet, "&RSeite &P von &N"));
}

Arbeitsmappe::Arbeitsmappe(const QString &path, const QDateTime &created)
{
    lxw_workbook_options options{};
    options.constant_memory = LXW_TRUE;
    m_book.reset(workbook_new_opt(QFile::encodeName(path).constData(), &options));
    if (!m_book)
        throw RunTimeError(ErrorNumber::OutOfMemory);
    QByteArray title = produkt::name().toUtf8();
    lxw_doc_properties properties{};
    properties.title = title.data();
    // close() converts it with gmtime, whose one result all threads share: who writes on several
    // threads gives every file the same date, or another one's may stand in the properties.
    properties.created = static_cast<time_t>(created.toSecsSinceEpoch());
    check(workbook_set_properties(m_book.get(), &properties));
}

lxw_format *Arbeitsmappe::format(const Zellenstil &style)
{
    if (style == Zellenstil())
        return nullptr;
    lxw_format *&known = m_formats[style];
    if (known)
        return known;
    known = workbook_add_format(m_book.get());
    if (!known)
        throw RunTimeError(ErrorNumber::OutOfMemory);
    format_set_align(known, LXW_ALIGN_VERTICAL_TOP);
    if (!style.zahlenformat.isEmpty())
        format_set_num_format(known, style.zahlenformat.toUtf8().constData());
    if (style.fett || style.kopf)
        format_set_bold(known);
    if (style.umbruch || style.kopf)
        format_set_text_wrap(known);
    if (style.einzug > 0)
        format_set_indent(known, static_cast<std::uint8_t>(style.einzug));
    if (style.kopf) {
        constexpr lxw_color_t lightGrey = 0xE7E6E6;
        format_set_bg_color(known, lightGrey);
        format_set_bottom(known, LXW_BORDER_THIN);
    }
    return known;
}

void Arbeitsmappe::close()
{
    errno = 0;
    const lxw_error error = workbook_close(m_book.release()); // frees it in any case
    if (error != LXW_NO_ERROR)
        throw closingError(error, errno);
}

void Arbeitsmappe::Free::operator()(lxw_workbook *book) const
{
    // The library closes the sheets' temporary files only when it packs them.
    lxw_worksheet *sheet = nullptr;
    STAILQ_FOREACH(sheet, book->worksheets, list_pointers)
    {
        if (sheet->optimize_tmpfile)
            std::fclose(sheet->optimize_tmpfile);
    }
    lxw_workbook_free(book);
}
