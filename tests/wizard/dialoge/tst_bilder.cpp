#include "tests/support/testregistry.h"
#include "wizard/bilder.h"
#include "wizard/bildfeld.h"

#include <QImage>
#include <QPainter>
#include <QTest>

#include <cmath>

namespace {

constexpr int side = 48;

// The drawing on a ground, in shades of grey: what somebody sees who can't tell colours apart.
QImage grey(const QString &path, const QColor &ground)
{
    QImage image(side, side, QImage::Format_RGB32);
    image.fill(ground);
    QPainter painter(&image);
    painter.drawPixmap(0, 0, bilder::pixmap(path, side, 1.0));
    painter.end();
    return image.convertToFormat(QImage::Format_Grayscale8);
}

// Part of the pixels whose shade differs by more than a quarter.
double difference(const QImage &one, const QImage &other)
{
    int count = 0;
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x)
            count += std::abs(qGray(one.pixel(x, y)) - qGray(other.pixel(x, y))) > 64;
    }
    return count / double(side * side);
}

} // namespace

class TestBilder : public QObject
{
    Q_OBJECT

private slots:
    void imagesAreToldApartWithoutColour_data()
    {
        QTest::addColumn<QColor>("ground");
        QTest::newRow("light") << QColor(0xef, 0xef, 0xef);
        QTest::newRow("dark") << QColor(0x2a, 0x2a, 0x2a);
    }

    void imagesAreToldApartWithoutColour()
    {
        QFETCH(QColor, ground);
        const QImage info = grey(bilder::info(), ground);
        const QImage examination = grey(bilder::examination(), ground);
        QImage empty(side, side, QImage::Format_Grayscale8);
        empty.fill(qGray(ground.rgb()));
        QVERIFY(difference(info, examination) > 0.2);
        QVERIFY(difference(info, empty) > 0.1);
        QVERIFY(difference(examination, empty) > 0.1);
    }

    void drawingIsSharpOnADenseScreen()
    {
        const QPixmap pixmap = bilder::pixmap(bilder::info(), side, 2.0);
        QCOMPARE(pixmap.size(), QSize(2 * side, 2 * side));
        QCOMPARE(pixmap.deviceIndependentSize(), QSizeF(side, side));
    }

    void iconHasEverySize()
    {
        const QIcon icon = bilder::programmsymbol();
        for (const int size : {16, 32, 48, 256})
            QVERIFY(icon.availableSizes().contains(QSize(size, size)));
        const QImage small = icon.pixmap(16, 16).toImage();
        QVERIFY(qAlpha(small.pixel(8, 8)) == 255);
    }

    void fieldGrowsWithItsFont()
    {
        Bildfeld field(3.0);
        field.setBild(bilder::info(), u"Hinweis"_qs);
        QCOMPARE(field.accessibleName(), u"Hinweis"_qs);
        const QSize before = field.sizeHint();
        QFont font = field.font();
        font.setPointSizeF(2 * font.pointSizeF());
        field.setFont(font);
        QVERIFY(field.sizeHint().height() > before.height() * 3 / 2);
        QCOMPARE(field.sizeHint().width(), field.sizeHint().height());
    }
};

REGISTER_TEST(TestBilder)
#include "tst_bilder.moc"
