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

    void textsAreCutByWhatIsWrittenOfThem_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("end");
        const auto x = [](qsizetype count) { return QString(count, u'x'); };
        const qsizetype most = maximumZellentext;
        QTest::newRow("a line end is one character") << x(most - 1) + u'\r' << u"x\n"_qs;
        QTest::newRow("two of which one is kept") << x(most - 1) + u"\r\n"_qs << u"x\n"_qs;
        QTest::newRow("a control character fits") << x(most - 7) + u'\u0001' << u"x_x0001_"_qs;
        QTest::newRow("a control character does not fit") << x(most - 6) + u'\u0001' << u"x…"_qs;
        QTest::newRow("what looks escaped fits")
            << x(most - 13) + u"_x0041_"_qs << u"x_x005F_x0041_"_qs;
        QTest::newRow("what looks escaped does not")
            << x(most - 12) + u"_x0041_"_qs << u"x_x004…"_qs;
        QTest::newRow("control characters only") << QString(most, u'\u0001') << u"_x0001_…"_qs;
        QTest::newRow("a pair fits") << x(most - 2) + u"\U0001F600"_qs << u"x\U0001F600"_qs;
        QTest::newRow("a pair across the cut") << x(most - 2) + u"\U0001F600y"_qs << u"x…"_qs;
        QTest::newRow("pairs only") << u"\U0001F600"_qs.repeated(most) << u"\U0001F600…"_qs;
    }

    void textsAreCutByWhatIsWrittenOfThem()
    {
        QFETCH(QString, text);
        QFETCH(QString, end);
        const QString cell = QString::fromUtf8(zellentext(text));
        QVERIFY2(cell.size() <= maximumZellentext, QByteArray::number(cell.size()).constData());
        QVERIFY2(cell.endsWith(end), qPrintable(cell.right(20)));
        QVERIFY(!cell.contains(u'?'));
    }

    void piecesGiveTheWholeText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("pieces");
        QTest::newRow("empty") << QString() << 1;
        QTest::newRow("short") << u"a\nb"_qs << 1;
        QTest::newRow("full") << QString(maximumZellentext, u'x') << 1;
        QTest::newRow("one more") << QString(maximumZellentext + 1, u'x') << 2;
        QTest::newRow("control characters") << QString(10'000, u'\u0001') << 3;
        QTest::newRow("pairs") << u'x' + u"\U0001F600"_qs.repeated(maximumZellentext) << 3;
        QTest::newRow("look escaped") << u"_x0041_"_qs.repeated(6'000) << 3;
    }

    void piecesGiveTheWholeText()
    {
        QFETCH(QString, text);
        QFETCH(int, pieces);
        const QStringList found = zellenstuecke(text);
        QCOMPARE(found.size(), pieces);
        QCOMPARE(found.join(QString()), text);
        for (const QString &piece : found) {
            const QString cell = QString::fromUtf8(zellentext(piece));
            QVERIFY(cell.size() <= maximumZellentext);
            QVERIFY(!cell.endsWith(u'…') && !cell.contains(u'?'));
        }
    }

    void chartsShowPlainText()
    {
        QCOMPARE(diagrammtext(u"a\u0001b\r\nc\td"_qs, 200), u"a b c d"_qs);
        QCOMPARE(diagrammtext(u"_x0041_"_qs, 200), u"_x0041_"_qs);
        QCOMPARE(diagrammtext(u"abcd"_qs, 3), u"abc"_qs);
        QCOMPARE(diagrammtext(u"ab\U0001F600"_qs, 3), u"ab"_qs);
        QCOMPARE(diagrammtext(u"a\U0001F600b"_qs, 3), u"a\U0001F600"_qs);
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
