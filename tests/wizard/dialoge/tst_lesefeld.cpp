#include "tests/support/testregistry.h"
#include "wizard/lesefeld.h"

#include <QTest>
#include <QVBoxLayout>

class TestLesefeld : public QObject
{
    Q_OBJECT

private slots:
    void isAsHighAsItsText()
    {
        QWidget window;
        auto *column = new QVBoxLayout(&window);
        auto *field = new Lesefeld(&window);
        column->addWidget(field);
        column->addStretch();
        field->setText(u"Ein Satz, der in einem schmalen Fenster auf mehrere Zeilen umbricht.\r\n"
                       u"Und noch einer."_qs);
        window.resize(field->fontMetrics().averageCharWidth() * 100, 400);
        window.show();
        const int wide = field->height();
        QVERIFY(wide >= 2 * field->fontMetrics().height());
        QVERIFY(wide < 3 * field->fontMetrics().lineSpacing());
        QVERIFY(field->document()->size().height() <= field->viewport()->height());
        window.resize(field->fontMetrics().averageCharWidth() * 36, 400);
        QTRY_VERIFY(field->height() > wide);
        QVERIFY(field->document()->size().height() <= field->viewport()->height());
    }

    void textIsPlainAndCanOnlyBeRead()
    {
        Lesefeld field;
        field.setText(u"<b>a</b>\r\nb"_qs);
        QCOMPARE(field.toPlainText(), u"<b>a</b>\nb"_qs);
        QVERIFY(field.isReadOnly());
        QTest::keyClicks(&field, u"x"_qs);
        QCOMPARE(field.toPlainText(), u"<b>a</b>\nb"_qs);
    }
};

REGISTER_TEST(TestLesefeld)
#include "tst_lesefeld.moc"
