#include "protocol/windows/diagramwidget.h"
#include "tests/protocol/documents.h"
#include "tests/support/testregistry.h"

#include <QTest>

namespace {

int darkPixels(QWidget &widget)
{
    const QImage image = widget.grab().toImage();
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            count += qGray(image.pixel(x, y)) < 100 ? 1 : 0;
    }
    return count;
}

} // namespace

class TstDiagramWidget : public QObject
{
    Q_OBJECT

private slots:
    void theDiagramIsPaintedAsLargeAsThereIsRoom()
    {
        const auto document = documents::good();
        DiagramWidget widget;
        widget.showPair(*document, mDirekt, mIndirekt);
        widget.resize(300, 220);
        const int small = darkPixels(widget);
        widget.resize(600, 440);
        const int large = darkPixels(widget);
        QVERIFY(small > 100);
        QVERIFY(large > small);
        const QImage image = widget.grab().toImage();
        QCOMPARE(image.pixel(1, 1), qRgb(255, 255, 255));
    }

    void itIsReadAsText()
    {
        const auto document = documents::good();
        DiagramWidget widget;
        widget.showPair(*document, mDirekt, mIndirekt);
        QCOMPARE(widget.accessibleName(), u"Diagramm D = f(M)"_qs);
        QCOMPARE(widget.accessibleDescription(),
                 u"12 Punkte, waagerecht M [MN/m²] von 26,9 bis 47,2, senkrecht D [%] von 94,3 bis "
                 u"98,9. Kalibriergerade D = 88,85 + 0,2087 * M."_qs);
    }

    void itFollowsTheOptions()
    {
        const auto document = documents::good();
        DiagramWidget widget;
        widget.showPair(*document, mDirekt, mZ);
        const QImage before = widget.grab().toImage();
        document->setNachkommastellenAnstieg(0);
        widget.showPair(*document, mDirekt, mZ);
        QVERIFY(widget.grab().toImage() != before);
        QVERIFY(widget.accessibleDescription().contains(u" + 1 * Z"_qs));
    }

    void pointsUponEachOtherArePaintedOnce()
    {
        const documents::Field one{{94.8, 28.4}, {95.6, 31.2}, {95.1, 30.1}};
        const documents::Field two{{96.7, 37.8}, {97.4, 40.6}, {96.2, 36.1}};
        const documents::Field three{{98.1, 44.7}, {98.9, 47.2}, {97.8, 43.0}};
        const auto repeated = [](const documents::Field &field) {
            documents::Field result;
            for (int i = 0; i < 500; ++i)
                result.insert(result.end(), field.begin(), field.end());
            return result;
        };
        DiagramWidget once;
        once.showPair(*documents::of({one, two, three}), mDirekt, mIndirekt);
        DiagramWidget often;
        often.showPair(*documents::of({repeated(one), repeated(two), repeated(three)}), mDirekt,
                       mIndirekt);
        QVERIFY2(often.accessibleDescription().startsWith(u"4500 Punkte"_qs),
                 qPrintable(often.accessibleDescription()));
        for (const QSize &size : {QSize(170, 130), QSize(800, 300)}) {
            once.resize(size);
            often.resize(size);
            QCOMPARE(often.grab().toImage(), once.grab().toImage());
        }
    }

    void whatHasNoDiagramSaysWhyAndComesBack()
    {
        const auto document = documents::fresh();
        DiagramWidget widget;
        widget.showPair(*document, mIndirekt, mZ);
        QCOMPARE(widget.accessibleDescription(), u"Kein Diagramm: Es fehlen Messwerte."_qs);
        QVERIFY(darkPixels(widget) > 10);
        const auto filled = documents::good();
        widget.showPair(*filled, mIndirekt, mZ);
        QVERIFY(widget.accessibleDescription().startsWith(u"12 Punkte"_qs));
    }
};

REGISTER_TEST(TstDiagramWidget)
#include "tst_diagramwidget.moc"
