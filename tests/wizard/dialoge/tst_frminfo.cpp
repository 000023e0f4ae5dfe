#include "core/baskalibrierungwendral.h"
#include "tests/support/testregistry.h"
#include "tests/wizard/dialoge/controls.h"
#include "wizard/bilder.h"
#include "wizard/bildfeld.h"
#include "wizard/frminfo.h"

#include <QLabel>
#include <QPushButton>
#include <QRegularExpression>
#include <QTest>
#include <QTextEdit>

class TestFrmInfo : public QObject
{
    Q_OBJECT

private slots:
    void versionHasThreeNumbers_data()
    {
        QTest::addColumn<QVersionNumber>("version");
        QTest::addColumn<QString>("text");
        QTest::newRow("revision 0") << QVersionNumber(2, 3, 0) << u"Version 2.3.0"_qs;
        QTest::newRow("revision left out") << QVersionNumber(2, 3) << u"Version 2.3.0"_qs;
        QTest::newRow("two digits") << QVersionNumber(1, 0, 12) << u"Version 1.0.12"_qs;
    }

    void versionHasThreeNumbers()
    {
        QFETCH(QVersionNumber, version);
        QFETCH(QString, text);
        const frmInfo window(version);
        QCOMPARE(label(window, u"labVersion"_qs), text);
    }

    void captionsNameTheProduct()
    {
        const frmInfo window(QVersionNumber(1, 0, 0));
        QCOMPARE(window.windowTitle(), u"Info"_qs);
        QCOMPARE(label(window, u"labInfo"_qs), u"Info über Kalibrierung nach Wendral"_qs);
        QCOMPARE(label(window, u"labProductName"_qs), u"Kalibrierung nach Wendral"_qs);
        QCOMPARE(label(window, u"labThema"_qs),
                 u"Kalibrierung eines indirekten Prüfmerkmals\nmit einem direkten Prüfmerkmal"_qs);
        QCOMPARE(label(window, u"labFirma"_qs).replace(u"\n"_qs, u"\r\n"_qs),
                 basKalibrierungWendral::TitleText(0));
        QVERIFY(!label(window, u"labWarnung"_qs).isEmpty());
        const auto *image =
            static_cast<const Bildfeld *>(control<QLabel>(window, u"imgProgramm"_qs));
        QCOMPARE(image->path(), bilder::programm());
    }

    void contactBoxHoldsThreeBlocksToRead()
    {
        const frmInfo window(QVersionNumber(1, 0, 0));
        const auto *box = control<QTextEdit>(window, u"rtfKontakt"_qs);
        QVERIFY(box->isReadOnly());
        QVERIFY(box->acceptRichText());
        const QStringList blocks = box->toPlainText().split(u"\n\n"_qs);
        QCOMPARE(blocks.size(), 3);
        QVERIFY(blocks.at(0).startsWith(u"Herstellung Vertrieb\n"_qs));
        QVERIFY(blocks.at(1).startsWith(u"Support und programmtechnische Umsetzung\n"_qs));
        QVERIFY(blocks.at(2).contains(QString::fromLatin1(qVersion())));
    }

    // No address, number or name is known that could stand here.
    void nothingIsInvented()
    {
        const frmInfo window(QVersionNumber(1, 0, 0));
        const QString text = control<QTextEdit>(window, u"rtfKontakt"_qs)->toPlainText();
        static const QRegularExpression address(u"@|www\\.|https?:|\\b\\d{5}\\b|Tel|Fax|GmbH"_qs);
        QVERIFY(!text.contains(address));
    }

    void closeButtonUnloadsTheDialog_data()
    {
        QTest::addColumn<bool>("byKey");
        QTest::newRow("button") << false;
        QTest::newRow("Escape") << true;
    }

    void closeButtonUnloadsTheDialog()
    {
        QFETCH(bool, byKey);
        const QPointer<frmInfo> window(new frmInfo(QVersionNumber(1, 0, 0)));
        window->show();
        QVERIFY(QTest::qWaitForWindowActive(window));
        auto *close = control<QPushButton>(*window, u"cmdClose"_qs);
        QCOMPARE(seen(close->text()), u"Schließen"_qs);
        QVERIFY(close->hasFocus());
        if (byKey)
            QTest::keyClick(close, Qt::Key_Escape);
        else
            QTest::mouseClick(close, Qt::LeftButton);
        QTRY_VERIFY(!window);
    }

private:
    static QString label(const frmInfo &window, const QString &name)
    {
        return control<QLabel>(window, name)->text();
    }
};

REGISTER_TEST(TestFrmInfo)
#include "tst_frminfo.moc"
