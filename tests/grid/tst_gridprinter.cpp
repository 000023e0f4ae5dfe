#include "tests/grid/editgridfixture.h"
#include "tests/support/testregistry.h"

#include <QBuffer>
#include <QImage>
#include <QPdfWriter>
#include <QTableView>

/// The grid on a picture and on pages.
class TestGridPrinter : public QObject
{
    Q_OBJECT

private slots:
    void onOnePageAGridIsNeverEnlarged();
    void onOnePageALargerGridIsShrunkToFit();
    void withoutOnePageAPictureIsFilled();
    void gridLinesAreDrawnOnRequest();
    void columnsAreAlignedAsTheGridSays();
    void furtherRowsContinueOnFurtherPages();
    void oneLargePageHoldsAllRows();
    void anEmptyGridDrawsNothing();
    void columnsWithoutWidthDrawNothing();
    void aDeviceWithoutResolutionTakesTheScreens();
};

namespace {

QImage blank(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::white);
    image.setDotsPerMeterX(3780); // 96 to the inch, as the test's screen has
    image.setDotsPerMeterY(3780);
    return image;
}

/// What is drawn, as the smallest rectangle around it.
QRect inked(const QImage &image)
{
    QRect all;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y) != qRgb(255, 255, 255))
                all |= QRect(x, y, 1, 1);
        }
    }
    return all;
}

struct PrintedGrid : EditGridFixture
{
    PrintedGrid(int rows, int cols) : EditGridFixture(rows, cols)
    {
        for (int col = 0; col < cols; ++col)
            grid->setColWidth(col, 100);
    }
    int height() const { return grid->rowHeight(0) + (grid->rows() - 1) * grid->rowHeight(1); }
};

int pagesOf(const QByteArray &pdf)
{
    return int(pdf.count("/Type /Page\n"));
}

} // namespace

void TestGridPrinter::onOnePageAGridIsNeverEnlarged()
{
    PrintedGrid f(3, 2);
    QImage image = blank(1000, 1000);
    QVERIFY(f.edit->PrintToPrinter(&image, true, true));
    const QRect ink = inked(image);
    QVERIFY(qAbs(ink.right() - 200) <= 2);
    QVERIFY(qAbs(ink.bottom() - f.height()) <= 2);
}

void TestGridPrinter::onOnePageALargerGridIsShrunkToFit()
{
    PrintedGrid f(200, 8);
    QImage image = blank(300, 300);
    QVERIFY(f.edit->PrintToPrinter(&image, true, true));
    const QRect ink = inked(image);
    QVERIFY(ink.right() >= 297);
    QVERIFY(ink.bottom() >= 297);
}

void TestGridPrinter::withoutOnePageAPictureIsFilled()
{
    PrintedGrid f(3, 2);
    QImage image = blank(600, 700);
    QVERIFY(f.edit->PrintToPrinter(&image, false, true));
    const QRect ink = inked(image);
    QVERIFY(ink.right() >= 597);
    QVERIFY(ink.bottom() >= 697);
}

void TestGridPrinter::gridLinesAreDrawnOnRequest()
{
    PrintedGrid f(3, 2);
    for (int row = 0; row < 3; ++row) {
        for (int col = 0; col < 2; ++col)
            f.grid->setTextMatrix(row, col, QString());
    }
    QImage without = blank(400, 400);
    QVERIFY(f.edit->PrintToPrinter(&without, true, false));
    QVERIFY(inked(without).isEmpty());
    QImage with = blank(400, 400);
    QVERIFY(f.edit->PrintToPrinter(&with, true, true));
    QVERIFY(!inked(with).isEmpty());
}

void TestGridPrinter::columnsAreAlignedAsTheGridSays()
{
    PrintedGrid f(2, 1);
    f.grid->setColWidth(0, 300);
    f.grid->setTextMatrix(0, 0, QString());
    f.grid->setTextMatrix(1, 0, u"x"_qs);
    const auto middle = [&f](Qt::Alignment alignment) {
        f.grid->setColAlignment(0, alignment);
        QImage image = blank(400, 200);
        f.edit->PrintToPrinter(&image, true, false);
        return inked(image).center().x();
    };
    QVERIFY(middle(Qt::AlignLeft) < 30);
    QVERIFY(qAbs(middle(Qt::AlignHCenter) - 150) < 10);
    QVERIFY(middle(Qt::AlignRight) > 270);
}

void TestGridPrinter::furtherRowsContinueOnFurtherPages()
{
    PrintedGrid f(201, 4);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QVERIFY(buffer.open(QIODevice::WriteOnly));
    QPdfWriter pdf(&buffer);
    pdf.setResolution(300);
    const double scale = pdf.width() * 96.0 / 300 / 400;
    const double usable = pdf.height() * 96.0 / 300 - f.grid->rowHeight(0) * scale;
    const int rowsAPage = int(usable / (f.grid->rowHeight(1) * scale));
    QVERIFY(f.edit->PrintToPrinter(&pdf, false, true));
    buffer.close();
    QCOMPARE(pagesOf(bytes), (200 + rowsAPage - 1) / rowsAPage);
}

void TestGridPrinter::oneLargePageHoldsAllRows()
{
    PrintedGrid f(201, 4);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QVERIFY(buffer.open(QIODevice::WriteOnly));
    QPdfWriter pdf(&buffer);
    QVERIFY(f.edit->PrintToPrinter(&pdf, true, true));
    buffer.close();
    QCOMPARE(pagesOf(bytes), 1);
}

void TestGridPrinter::anEmptyGridDrawsNothing()
{
    PrintedGrid f(2, 2);
    f.grid->setCols(0);
    QImage image = blank(100, 100);
    QVERIFY(!f.edit->PrintToPrinter(&image, true, true));
    QVERIFY(inked(image).isEmpty());
}

void TestGridPrinter::columnsWithoutWidthDrawNothing()
{
    PrintedGrid f(2, 2);
    for (int col = 0; col < 2; ++col)
        f.grid->table()->setColumnHidden(col, true);
    QImage image = blank(100, 100);
    QVERIFY(!f.edit->PrintToPrinter(&image, false, true));
    QVERIFY(inked(image).isEmpty());
}

void TestGridPrinter::aDeviceWithoutResolutionTakesTheScreens()
{
    struct Device : QImage
    {
        using QImage::QImage;
        int metric(PaintDeviceMetric which) const override
        {
            return which == PdmDpiX || which == PdmDpiY ? 0 : QImage::metric(which);
        }
    };
    PrintedGrid f(3, 2);
    Device image(1000, 1000, QImage::Format_RGB32);
    image.fill(Qt::white);
    QVERIFY(f.edit->PrintToPrinter(&image, true, true));
    const QRect ink = inked(image);
    QVERIFY(qAbs(ink.right() - 200) <= 2);
    QVERIFY(qAbs(ink.bottom() - f.height()) <= 2);
}

REGISTER_TEST(TestGridPrinter)
#include "tst_gridprinter.moc"
