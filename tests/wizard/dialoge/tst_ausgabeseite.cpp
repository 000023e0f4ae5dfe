#include "tests/support/testregistry.h"
#include "tests/wizard/dialoge/beispiel.h"
#include "tests/wizard/dialoge/controls.h"
#include "tests/wizard/fakes.h"
#include "wizard/ausgabeseite.h"

#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

class TestAusgabeseite : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_document.emplace(beispiel::german);
        m_page.emplace(Seitenkontext{*m_document, m_messages});
    }

    void cleanup()
    {
        m_page.reset();
        m_document.reset();
    }

    void eachCommandStandsBesideItsTexts_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("caption");
        QTest::addColumn<QString>("heading");
        QTest::addColumn<QString>("explanation");
        QTest::newRow("save")
            << u"cmdOutSave"_qs << u"Datei speichern"_qs << u"Ablage der Daten als Datei"_qs
            << u"Legen Sie Ihre Daten als XML-Datei ab und archivieren Sie diese elektronisch. Die XML-Datei kann jederzeit mit diesem Programm geladen und bearbeitet - und von anderen Programmen genutzt werden."_qs;
        QTest::newRow("protocol")
            << u"cmdOutProtocoll"_qs << u"Protokoll erzeugen"_qs
            << u"Anzeige und ggf. Ausdruck eines Berechnungsprotokolls"_qs
            << u"Lassen Sie ein Berechnungsprotokoll erstellen und drucken Sie dieses bei Bedarf aus."_qs;
        QTest::newRow("export")
            << u"cmdOutExport"_qs << u"Daten exportieren"_qs << u"Export in dritte Programme"_qs
            << u"Exportieren Sie die Daten und die Berechnungsergebnisse in Programme von Drittanbietern."_qs;
    }

    void eachCommandStandsBesideItsTexts()
    {
        QFETCH(QString, name);
        QFETCH(QString, caption);
        QFETCH(QString, heading);
        QFETCH(QString, explanation);
        m_page->resize(m_page->sizeHint());
        m_page->show();
        const auto *button = control<QPushButton>(*m_page, name);
        QCOMPARE(seen(button->text()), caption);
        QCOMPARE(button->accessibleDescription(), explanation);
        const QLabel *head = labelWith(heading);
        const QLabel *text = labelWith(explanation);
        QVERIFY(head);
        QVERIFY(text);
        QVERIFY(head->geometry().bottom() <= text->geometry().top());
        QVERIFY(head->geometry().right() < button->geometry().left());
        QVERIFY(button->geometry().top() < text->geometry().bottom());
        QVERIFY(button->geometry().bottom() > head->geometry().top());
    }

    void eachCommandRaisesItsOwnSignal_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("signal");
        QTest::newRow("save") << u"cmdOutSave"_qs << 0;
        QTest::newRow("protocol") << u"cmdOutProtocoll"_qs << 1;
        QTest::newRow("export") << u"cmdOutExport"_qs << 2;
    }

    void eachCommandRaisesItsOwnSignal()
    {
        QFETCH(QString, name);
        QFETCH(int, signal);
        const QSignalSpy save(&*m_page, &Ausgabeseite::saveClicked);
        const QSignalSpy protocol(&*m_page, &Ausgabeseite::protocolClicked);
        const QSignalSpy exporting(&*m_page, &Ausgabeseite::exportClicked);
        control<QPushButton>(*m_page, name)->click();
        const QList<int> counts{static_cast<int>(save.count()), static_cast<int>(protocol.count()),
                                static_cast<int>(exporting.count())};
        QList<int> expected{0, 0, 0};
        expected[signal] = 1;
        QCOMPARE(counts, expected);
    }

    void captionIsThatOfThePage()
    {
        QCOMPARE(control<QLabel>(*m_page, u"labPageCaption5"_qs)->text(),
                 u"Schritt 5: Ausgabe der Ergebnisse"_qs);
    }

    void keyboardReachesTheCommandsInOrder()
    {
        m_page->show();
        QVERIFY(QTest::qWaitForWindowActive(&*m_page));
        m_page->firstControl()->setFocus();
        for (const QString &name : {u"cmdOutSave"_qs, u"cmdOutProtocoll"_qs, u"cmdOutExport"_qs}) {
            auto *button = control<QPushButton>(*m_page, name);
            QTRY_VERIFY(button->hasFocus());
            QTest::keyClick(button, Qt::Key_Tab);
        }
    }

private:
    const QLabel *labelWith(const QString &text) const
    {
        for (const QLabel *label : m_page->findChildren<QLabel *>()) {
            if (label->text() == text)
                return label;
        }
        return nullptr;
    }

    FakeDialogs m_messages;
    std::optional<Kalibrierung> m_document;
    std::optional<Ausgabeseite> m_page;
};

REGISTER_TEST(TestAusgabeseite)
#include "tst_ausgabeseite.moc"
