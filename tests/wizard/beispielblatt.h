#pragma once

#include "grid/clseditgrid.h"
#include "grid/gridcontrol.h"
#include "tests/wizard/fakes.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTableView>

/// A wizard on a document with \a fields x \a points made-up values, opened on page \a page.
class PageFixture : public WizardFixture
{
public:
    explicit PageFixture(int page, int fields = 3, int points = 4,
                         const QLocale &locale = QLocale(QLocale::German, QLocale::Germany))
        : WizardFixture(locale)
    {
        for (Prüfmerkmal *m :
             {&document.DirektesPrüfmerkmal(), &document.IndirektesPrüfmerkmal()}) {
            m->setName(m == &document.DirektesPrüfmerkmal() ? u"Verdichtungsgrad"_qs
                                                            : u"Walzenwert"_qs);
            m->setFormelzeichen(m == &document.DirektesPrüfmerkmal() ? u"DPr"_qs : u"F"_qs);
            m->setEinheit(u"%"_qs);
        }
        document.setPrüffelderAnzahl(fields);
        for (int field = 1; field <= fields; ++field) {
            if (points != 4)
                document.setPrüffeldPrüfpunkte(field, points);
            for (int point = 1; point <= points; ++point) {
                document.setMesswert(pmDirekt, field, point, 95.0 + field + point / 8.0);
                document.setMesswert(pmIndirekt, field, point, 20.0 + 5.0 * field + point / 4.0);
            }
        }
        firstPage = page;
    }

    frmAssistent &open()
    {
        document.DataStore().set(u"AssistentActivePage"_qs, std::int32_t{firstPage});
        document.setIsDirty(false);
        document.SaveFile(path(u"blatt.xml"_qs));
        WizardFixture::open().FileOpen(path(u"blatt.xml"_qs));
        QCoreApplication::processEvents();
        return *window;
    }

    GridControl &grid(const QString &name) const { return *find<GridControl>(name); }

    /// Types \a text into a cell as a user does, and commits it with Enter.
    void type(const QString &gridName, int row, int col, const QString &text) const
    {
        GridControl &table = grid(gridName);
        table.setFocus();
        table.setCell(row, col);
        QTest::keyClick(table.table(), Qt::Key_Return);
        QWidget *editor = QApplication::focusWidget();
        QTest::keyClick(editor, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(editor, Qt::Key_Delete);
        static_cast<QLineEdit *>(editor)->insert(text); // keys can't carry every letter
        QTest::keyClick(editor, Qt::Key_Return);
        QCoreApplication::processEvents();
    }

    void click(const QString &button) const
    {
        find<QPushButton>(button)->click();
        QCoreApplication::processEvents();
    }

    int firstPage = 1;
};

inline const QString fieldsGrid = u"fgKeysMessreihen"_qs;
inline const QString pointsGrid = u"fgKeysPrüfpunkte"_qs;
inline const QString valuesGrid = u"fgMesswerte"_qs;
