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

    void whatHasNoDiagramSaysWhyAndComesBack()
    {
        const auto document = documents::fresh();
        DiagramWidget widget;
        widget.showPair(*document, mIndirekt, mZ);
        QCOMPARE(widget.accessibleDescription(),
                 u"Kein Diagramm: Unzulässige Verwendung von Null"_qs);
        QVERIFY(darkPixels(widget) > 10);
        const auto filled = documents::good();
        widget.showPair(*filled, mIndirekt, mZ);
        QVERIFY(widget.accessibleDescription().startsWith(u"12 Punkte"_qs));
    }
};

REGISTER_TEST(TstDiagramWidget)
#include "tst_diagramwidget.moc"
