#include "protocol/windows/diagramwidget.h"
#include "tests/support/testregistry.h"
#include "tests/wizard/dialoge/beispiel.h"
#include "tests/wizard/dialoge/controls.h"
#include "tests/wizard/fakes.h"
#include "wizard/bilder.h"
#include "wizard/bildfeld.h"
#include "wizard/lesefeld.h"
#include "wizard/plausibilitaet.h"
#include "wizard/plausibilitaetsseite.h"

#include <QAccessible>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTextDocument>
#include <QTreeWidget>

class TestPlausibilitaetsseite : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_messages.emplace();
        m_document.emplace(beispiel::german);
        m_page.emplace(Seitenkontext{*m_document, *m_messages});
    }

    void cleanup()
    {
        QVERIFY(m_messages->shown.empty());
        m_page.reset();
        m_document.reset();
        m_messages.reset();
    }

    void captionAndColumnsAreThoseOfThePage()
    {
        QCOMPARE(control<QLabel>(*m_page, u"labPageCaption4"_qs)->text(),
                 u"Schritt 4: Plausibilitätsprüfung"_qs);
        const QTreeWidgetItem *header = list()->headerItem();
        QCOMPARE(header->columnCount(), 3);
        QCOMPARE(header->text(0), u"Statistische Größe"_qs);
        QCOMPARE(header->text(1), u"Wert"_qs);
        QCOMPARE(header->text(2), u"Wertung"_qs);
    }

    void listShowsEveryRow()
    {
        beispiel::enterValues(*m_document);
        m_page->fill();
        const std::vector<plausibilitaet::Zeile> rows = plausibilitaet::zeilen(*m_document);
        QCOMPARE(list()->topLevelItemCount(), static_cast<int>(rows.size()));
        for (std::size_t i = 0; i < rows.size(); ++i) {
            const QTreeWidgetItem *item = list()->topLevelItem(static_cast<int>(i));
            QCOMPARE(item->text(0), rows[i].groesse);
            QCOMPARE(item->text(1), rows[i].wert);
            QCOMPARE(item->text(2), rows[i].wertung);
        }
    }

    void enteringAgainReplacesTheRows()
    {
        m_page->fill();
        const int rows = list()->topLevelItemCount();
        beispiel::enterValues(*m_document);
        m_page->fill();
        QCOMPARE(list()->topLevelItemCount(), rows);
        QCOMPARE(list()->topLevelItem(1)->text(1), u"5,0"_qs);
    }

    void aChangedMinimumFlipsSentenceImageAndRatingAtOnce()
    {
        beispiel::enterValues(*m_document);
        m_page->fill();
        QVERIFY(verdict()->toPlainText().contains(u"liegt über dem"_qs));
        QCOMPARE(image()->path(), bilder::info());
        QCOMPARE(list()->topLevelItem(21)->text(2), u"gut"_qs);

        m_document->setMinBestimmtheitsmaßIndirektDirekt(0.9);
        m_page->fill();
        QVERIFY(verdict()->toPlainText().contains(u"liegt nicht über dem"_qs));
        QCOMPARE(image()->path(), bilder::examination());
        QCOMPARE(list()->topLevelItem(21)->text(2), u"kritisch"_qs);
    }

    void verdictKeepsItsLineBreak()
    {
        m_page->fill();
        QCOMPARE(verdict()->toPlainText(),
                 u"Das Bestimmtheitsmaß zwischen dem direkten und indirekten Prüfmerkmal liegt "
                 u"nicht über dem minimal erforderlichen Wert von 0,65.\nDie ermittelte "
                 u"Kalibriergerade darf somit nicht für die Umrechnung zwischen den Prüfmerkmalen "
                 u"genutzt werden!"_qs);
    }

    void readingThePageLeavesTheDocumentClean()
    {
        beispiel::enterValues(*m_document);
        m_document->setIsDirty(false);
        m_page->fill();
        QVERIFY(m_page->check());
        QVERIFY(m_page->takeOver(AssistentSeite::Anlass::Vor));
        QVERIFY(!m_page->hasChanges());
        QVERIFY(!m_document->IsDirty());
    }

    void optionsButtonAsksForTheOptions()
    {
        auto *button = control<QPushButton>(*m_page, u"cmdPlausibilitätOptionen"_qs);
        QCOMPARE(seen(button->text()), u"Optionen..."_qs);
        const QSignalSpy asked(&*m_page, &Plausibilitaetsseite::optionsClicked);
        button->click();
        QCOMPARE(asked.count(), 1);
    }

    // What a screen reader gets: names of list and verdict, and the verdict's text.
    void assistiveTechnologyReadsListAndVerdict()
    {
        m_page->fill();
        QAccessibleInterface *table = QAccessible::queryAccessibleInterface(list());
        QCOMPARE(table->text(QAccessible::Name), u"Plausibilitätsprüfung"_qs);
        QAccessibleInterface *sentence = QAccessible::queryAccessibleInterface(verdict());
        QCOMPARE(sentence->text(QAccessible::Name), u"Urteil"_qs);
        QVERIFY(sentence->textInterface());
        QVERIFY(sentence->textInterface()->text(0, 20).startsWith(u"Das Bestimmtheitsmaß"_qs));
        QCOMPARE(image()->accessibleName(), u"Wertung: kritisch"_qs);
    }

    void keyboardGoesFromTheListOverTheVerdictToTheButton()
    {
        m_page->show();
        QVERIFY(QTest::qWaitForWindowActive(&*m_page));
        m_page->firstControl()->setFocus();
        QTRY_VERIFY(list()->hasFocus());
        QTest::keyClick(list(), Qt::Key_Tab);
        QVERIFY(verdict()->hasFocus());
        QTest::keyClick(verdict(), Qt::Key_Tab);
        QVERIFY(control<QPushButton>(*m_page, u"cmdPlausibilitätOptionen"_qs)->hasFocus());
    }

    void longNamesAreReadWithoutAHorizontalBar()
    {
        beispiel::enterValues(*m_document);
        m_document->IndirektesPrüfmerkmal().setName(
            u"Messwert Flächendeckende Dynamische Verdichtungskontrolle"_qs);
        m_page->resize(m_page->minimumSizeHint());
        m_page->show();
        m_page->fill();
        QVERIFY(list()->header()->length() <= list()->viewport()->width());
        QVERIFY(list()->topLevelItem(2)->toolTip(0).contains(
            u"Messwert Flächendeckende Dynamische Verdichtungskontrolle"_qs));
        // Value and rating are never cut.
        QVERIFY(list()->columnWidth(1) >= list()->fontMetrics().horizontalAdvance(u"3,3333"_qs));
        QVERIFY(list()->columnWidth(2) >= list()->fontMetrics().horizontalAdvance(u"kritisch"_qs));
    }

    void namesAreNeverMarkup()
    {
        beispiel::enterValues(*m_document);
        m_document->DirektesPrüfmerkmal().setName(u"<b>fett</b>"_qs);
        m_document->DirektesPrüfmerkmal().setFormelzeichen(u"<i>x</i>"_qs);
        m_page->fill();
        const QString caption = list()->topLevelItem(1)->text(0);
        QVERIFY(caption.contains(u"<b>fett</b>"_qs));
        QTextDocument shown;
        shown.setHtml(list()->topLevelItem(1)->toolTip(0));
        QCOMPARE(shown.toPlainText(), caption.trimmed());
        const auto *diagram = m_page->findChild<DiagramWidget *>();
        shown.setHtml(diagram->toolTip());
        QCOMPARE(shown.toPlainText(), diagram->accessibleDescription());
        QVERIFY(shown.toPlainText().contains(u"<i>x</i>"_qs));
    }

    void threeDiagramsFollowTheDocument()
    {
        m_page->fill();
        const QList<DiagramWidget *> diagrams = m_page->findChildren<DiagramWidget *>();
        QCOMPARE(diagrams.size(), 3);
        for (const DiagramWidget *diagram : diagrams)
            QCOMPARE(diagram->accessibleDescription(), u"Kein Diagramm: Es fehlen Messwerte."_qs);
        beispiel::enterValues(*m_document);
        m_page->fill();
        for (const DiagramWidget *diagram : diagrams)
            QVERIFY(diagram->accessibleDescription().contains(u" Punkte, waagerecht "_qs));
        QVERIFY(diagrams[0]->accessibleDescription().contains(
            m_document->StatistikKalibriergeradeAnstiegString(mDirekt, mIndirekt)));
        QVERIFY(diagrams[1]->accessibleDescription().contains(
            m_document->StatistikKalibriergeradeAnstiegString(mDirekt, mZ)));
        QVERIFY(diagrams[2]->accessibleDescription().contains(
            m_document->StatistikKalibriergeradeAnstiegString(mIndirekt, mZ)));
        const QString before = diagrams[2]->accessibleDescription();
        m_document->setNachkommastellenAnstieg(0);
        m_page->fill();
        QVERIFY(diagrams[2]->accessibleDescription() != before);
    }

    void diagramsFindTheirPlaceBelowTheList()
    {
        const auto *diagrams = m_page->findChild<DiagramWidget *>()->parentWidget();
        m_page->resize(m_page->sizeHint() * 2);
        m_page->show();
        m_page->fill();
        QVERIFY(diagrams->isVisible());
        const auto place = [this](const QWidget *widget) {
            return QRect(widget->mapTo(&*m_page, QPoint()), widget->size());
        };
        QVERIFY(place(diagrams).top() > place(list()).bottom());
        QCOMPARE(place(diagrams).width(), place(list()).width());
        QVERIFY(place(diagrams).bottom() < place(verdict()).top());
    }

private:
    QTreeWidget *list() const { return control<QTreeWidget>(*m_page, u"lvPlausibilität"_qs); }
    Lesefeld *verdict() const
    {
        return static_cast<Lesefeld *>(control<QTextEdit>(*m_page, u"labPlausibilität"_qs));
    }
    Bildfeld *image() const
    {
        return static_cast<Bildfeld *>(control<QLabel>(*m_page, u"imgPlausibilität"_qs));
    }

    std::optional<FakeDialogs> m_messages;
    std::optional<Kalibrierung> m_document;
    std::optional<Plausibilitaetsseite> m_page;
};

REGISTER_TEST(TestPlausibilitaetsseite)
#include "tst_plausibilitaetsseite.moc"
