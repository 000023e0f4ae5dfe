#include "export/zellentext.h"
#include "tests/support/testregistry.h"

#include <QTest>

class TestZellentext : public QObject
{
    Q_OBJECT

private slots:
    void textsBecomeWhatACellCanHold_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("cell");
        QTest::newRow("plain") << u"Maß ²°€"_qs << u"Maß ²°€"_qs;
        QTest::newRow("formula") << u"=1+1"_qs << u"=1+1"_qs;
        QTest::newRow("marks of XML") << u"<&>\"'"_qs << u"<&>\"'"_qs;
        QTest::newRow("line feed and tab") << u"a\nb\tc"_qs << u"a\nb\tc"_qs;
        QTest::newRow("control characters") << u"\u0001\u001f"_qs << u"_x0001__x001f_"_qs;
        QTest::newRow("ends of lines") << u"a\r\nb\rc\r\r\nd"_qs << u"a\nb\nc\n\nd"_qs;
        QTest::newRow("null") << QString(QChar(0)) << u"_x0000_"_qs;
        QTest::newRow("looks like an escape") << u"a_x00Fe_b"_qs << u"a_x005F_x00Fe_b"_qs;
        QTest::newRow("nearly an escape")
            << u"_x00G0_ _x123_ _x1234"_qs << u"_x00G0_ _x123_ _x1234"_qs;
        QTest::newRow("no character") << QString(QChar(0xffff)) << u"_xffff_"_qs;
        QTest::newRow("above the base plane") << u"\U0001F600"_qs << u"\U0001F600"_qs;
        QTest::newRow("half of a pair") << QString(QChar(0xd83d)) << u"?"_qs;
        QTest::newRow("empty") << QString() << QString();
    }

    void textsBecomeWhatACellCanHold()
    {
        QFETCH(QString, text);
        QFETCH(QString, cell);
        QCOMPARE(QString::fromUtf8(zellentext(text)), cell);
    }

    void longTextsEndInThreeDots()
    {
        QCOMPARE(zellentext(QString(maximumZellentext, u'x')).size(), maximumZellentext);
        const QString cell = QString::fromUtf8(zellentext(QString(maximumZellentext + 1, u'x')));
        QCOMPARE(cell.size(), maximumZellentext);
        QVERIFY(cell.endsWith(u"x…"_qs));
    }
};

REGISTER_TEST(TestZellentext)
#include "tst_zellentext.moc"
