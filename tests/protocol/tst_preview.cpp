#include "core/produkt.h"
#include "protocol/windows/frmprotocollextradata.h"
#include "protocol/windows/frmprotocollpreview.h"
#include "protocol/windows/pagepicture.h"
#include "protocol/windows/pagestack.h"
#include "protocol/windows/zoom.h"
#include "tests/protocol/composed.h"
#include "tests/protocol/documents.h"
#include "tests/protocol/fakeservices.h"
#include "tests/support/testregistry.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QRegularExpression>
#include <QScrollBar>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <QWheelEvent>

namespace {

const QString errorLine = u"Folgender Fehler ist aufgetreten:\r\n"_qs;

// A window on a document, with what tests look at.
struct Preview
{
    FakeServices services;
    std::unique_ptr<Kalibrierung> document;
    frmProtocollPreview window;

    explicit Preview(std::unique_ptr<Kalibrierung> with, bool debugMode = false)
        : document(std::move(with)), window(services, debugMode)
    {
        window.setKalibrierung(*document);
    }

    void show()
    {
        window.show();
        QCoreApplication::processEvents();
        settle();
    }
    void settle() { QTRY_VERIFY_WITH_TIMEOUT(!window.isBusy(), 60'000); }

    template <typename Widget>
    Widget &child(const QString &name) const
    {
        Widget *found = window.findChild<Widget *>(name);
        Q_ASSERT(found);
        return *found;
    }
    PageStack &stack() const { return child<PageStack>(u"picWorkspace"_qs); }
    QScrollBar &vertical() const { return child<QScrollBar>(u"VScroll1"_qs); }
    QScrollBar &horizontal() const { return child<QScrollBar>(u"HScroll1"_qs); }
    QComboBox &type() const { return child<QComboBox>(u"cboTyp"_qs); }
    QComboBox &zoomBox() const { return child<QComboBox>(u"cboZoom"_qs); }
    QString pageText() const { return child<QLabel>(u"labSeiten"_qs).text(); }
    bool isProgressShown() const { return !child<QPushButton>(u"cmdAbbrechen"_qs).isHidden(); }

    void enterZoom(const QString &text)
    {
        zoomBox().setEditText(text);
        QTest::keyClick(zoomBox().lineEdit(), Qt::Key_Return);
    }
    void click(const QString &key) { child<QAction>(key).trigger(); }

    QList<QStringList> pageTexts() const
    {
        QList<QStringList> result;
        for (const auto &page : stack().pages())
            result.append(Composed::textsOf(page->drawing));
        return result;
    }
};

QList<QStringList> textsOf(const Composed &protocol)
{
    QList<QStringList> result;
    for (const auto &page : protocol.pages)
        result.append(Composed::textsOf(page->drawing));
    return result;
}

// Opens the dialog of the descriptive data without showing it and lets a test use it.
struct EditingWindows : WindowService
{
    std::function<void(frmProtocollExtraData &)> use;

    QObject *createAssistent(Kalibrierung &) override { return nullptr; }
    QObject *createInfo() override { return nullptr; }
    QObject *createCalcOptions(Kalibrierung &) override { return nullptr; }
    QObject *createProtocollExtraData(Kalibrierung &document) override
    {
        auto *form = new frmProtocollExtraData;
        form->setKalibrierung(document);
        return form;
    }
    void showForm(QObject *form, bool modal, QObject *) override
    {
        Q_ASSERT(modal);
        const std::unique_ptr<QObject> owner(form);
        use(*static_cast<frmProtocollExtraData *>(form));
    }
};

} // namespace

class TstPreview : public QObject
{
    Q_OBJECT

private slots:
    void controlsHaveTheirNamesAndStandInTheirOrder()
    {
        Preview preview(documents::good());
        const auto &bar = preview.child<QToolBar>(u"tbProtokoll"_qs);
        QStringList keys;
        QStringList tips;
        for (const QAction *action : bar.actions().mid(0, 6)) {
            keys.append(action->objectName());
            tips.append(action->isSeparator() ? u"-"_qs : action->toolTip());
        }
        QCOMPARE(keys, (QStringList{u"refresh"_qs, u"print"_qs, u"printersetup"_qs, u"tr1"_qs,
                                    u"edit"_qs, u"pdf"_qs}));
        QCOMPARE(tips, (QStringList{u"Dokument neu aufbauen"_qs, u"Drucken ..."_qs,
                                    u"Drucker einrichten ..."_qs, u"-"_qs,
                                    u"Protokolldaten bearbeiten"_qs, u"Als PDF speichern ..."_qs}));
        for (const QAction *action : bar.actions().mid(0, 6))
            QVERIFY(action->isSeparator() || !action->icon().pixmap(24, 24).isNull());
        QVERIFY(preview.window.findChild<QStatusBar *>(u"StatusBar1"_qs));
    }

    void theBoxesHoldTheirTextsAndStartWithTheFirstTypeAndFullSize()
    {
        Preview preview(documents::good());
        QStringList types;
        QStringList zooms;
        for (int i = 0; i < preview.type().count(); ++i)
            types.append(preview.type().itemText(i));
        for (int i = 0; i < preview.zoomBox().count(); ++i)
            zooms.append(preview.zoomBox().itemText(i));
        QCOMPARE(types, (QStringList{u"Kalibrierfeldprotokoll mit Berechnungsergebnissen"_qs,
                                     u"Berechnungsergebnisse"_qs}));
        QCOMPARE(zooms, (QStringList{u"200%"_qs, u"150%"_qs, u"100%"_qs, u"75%"_qs, u"50%"_qs,
                                     u"25%"_qs, u"10%"_qs}));
        QCOMPARE(preview.type().currentIndex(), 0);
        QCOMPARE(preview.zoomBox().currentText(), u"100%"_qs);
        QVERIFY(preview.zoomBox().isEditable());
    }

    void openingComposesTheProtocol()
    {
        Preview preview(documents::good());
        preview.show();
        QCOMPARE(preview.pageTexts(), textsOf(composed(*preview.document)));
        QCOMPARE(preview.pageText(), u"Seite 1 von %1"_qs.arg(preview.stack().pages().size()));
        QVERIFY(preview.services.messages.empty());
    }

    void withoutAPrinterTheWarningIsShownOnceAndThePreviewWorks()
    {
        Preview preview(documents::good());
        preview.services.hasPrinter = false;
        preview.show();
        preview.click(u"refresh"_qs);
        preview.window.hide();
        preview.show();
        QCOMPARE(preview.services.messages.size(), std::size_t{1});
        const auto &message = preview.services.messages.front();
        QCOMPARE(message.icon, ProtocolServices::Icon::Exclamation);
        QCOMPARE(message.title, produkt::name());
        QCOMPARE(message.text,
                 u"Es ist kein Drucker installiert. Während der Ausführung kann es deshalb zu "
                 u"Darstellungsfehlern kommen. Installieren Sie einen Drucker und starten Sie das "
                 u"Programm erneut."_qs);
        QVERIFY(preview.stack().pages().size() > 1);
    }

    void printersAreNotLookedUpBeforeThePreviewOpens()
    {
        Preview preview(documents::good());
        QCOMPARE(preview.services.printerQuestions, 0);
        preview.show();
        QCOMPARE(preview.services.printerQuestions, 1);
    }

    void anotherTypeComposesAnew()
    {
        Preview preview(documents::good());
        preview.show();
        preview.type().setCurrentIndex(1);
        preview.settle();
        QCOMPARE(preview.pageTexts(),
                 textsOf(composed(*preview.document, ProtocolType::ResultsOnly)));
    }

    void refreshShowsWhatTheDocumentHoldsNow()
    {
        Preview preview(documents::good());
        preview.show();
        preview.document->setMesswert(pmDirekt, 1, 1, 91.23);
        preview.click(u"refresh"_qs);
        preview.settle();
        QVERIFY(preview.pageTexts().at(1).contains(u"91,23"_qs));
    }

    void refreshKeepsThePlace()
    {
        Preview preview(documents::grid(12, 20));
        preview.show();
        preview.vertical().setValue(3000);
        preview.click(u"refresh"_qs);
        preview.settle();
        QCOMPARE(preview.vertical().value(), 3000);
        preview.document->setPrüffelderAnzahl(3);
        preview.type().setCurrentIndex(1);
        preview.settle();
        QVERIFY(preview.vertical().maximum() >= preview.vertical().value());
        QCOMPARE(preview.vertical().maximum(),
                 preview.stack().stackSize().height() - preview.stack().height());
    }

    void zoomTextsMeanTheirFactor_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<double>("factor");
        QTest::addColumn<int>("error");
        QTest::newRow("75%") << u"75%"_qs << 0.75 << 0;
        QTest::newRow("75") << u"75"_qs << 75.0 << 0;
        QTest::newRow("2") << u"2"_qs << 2.0 << 0;
        QTest::newRow("50") << u"50"_qs << 50.0 << 0;
        QTest::newRow("locale") << u"33,3 %"_qs << 0.333 << 0;
        QTest::newRow("first percent") << u"50%0%"_qs << 0.5 << 0;
        QTest::newRow("largest") << u"7500%"_qs << 75.0 << 0;
        QTest::newRow("no number") << u"abc"_qs << 0.0 << 13;
        QTest::newRow("nothing") << QString() << 0.0 << 13;
        QTest::newRow("percent alone") << u"%"_qs << 0.0 << 13;
        QTest::newRow("other locale") << u"33.3%"_qs << 0.0 << 13;
        QTest::newRow("zero") << u"0"_qs << 0.0 << 380;
        QTest::newRow("zero percent") << u"0%"_qs << 0.0 << 380;
        QTest::newRow("negative") << u"-50%"_qs << 0.0 << 380;
        QTest::newRow("too large") << u"75,01"_qs << 0.0 << 380;
        QTest::newRow("huge") << u"1E9"_qs << 0.0 << 380;
        QTest::newRow("out of range") << u"1E999"_qs << 0.0 << 6;
    }
    void zoomTextsMeanTheirFactor()
    {
        QFETCH(QString, text);
        QFETCH(double, factor);
        QFETCH(int, error);
        const Values values{QLocale(QLocale::German)};
        try {
            QCOMPARE(zoom::factorOf(text, values), factor);
            QCOMPARE(error, 0);
        } catch (const RunTimeError &failure) {
            QCOMPARE(failure.number(), error);
        }
    }

    void aZoomThatIsNoneShowsTheMessageOnceAndLeavesTheView_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("message");
        QTest::newRow("no number") << u"abc"_qs << u"Typen unverträglich (13)"_qs;
        QTest::newRow("nothing") << QString() << u"Typen unverträglich (13)"_qs;
        QTest::newRow("zero") << u"0"_qs << u"Ungültiger Eigenschaftswert (380)"_qs;
        QTest::newRow("huge") << u"1000000000"_qs << u"Ungültiger Eigenschaftswert (380)"_qs;
    }
    void aZoomThatIsNoneShowsTheMessageOnceAndLeavesTheView()
    {
        QFETCH(QString, text);
        QFETCH(QString, message);
        Preview preview(documents::good());
        preview.show();
        const auto before = preview.stack().pages();
        preview.services.whileMessage = [&] {
            // The box takes the focus from the line edit.
            emit preview.zoomBox().lineEdit()->editingFinished();
        };
        preview.enterZoom(text);
        QCOMPARE(preview.services.texts(), QStringList{errorLine + message});
        QCOMPARE(preview.services.messages.front().icon, ProtocolServices::Icon::Exclamation);
        QCOMPARE(preview.services.messages.front().title, produkt::name());
        QCOMPARE(preview.stack().zoom(), 1.0);
        QCOMPARE(preview.stack().pages(), before);
        QCOMPARE(preview.zoomBox().currentText(), u"100%"_qs);
    }

    void zoomActsOnEnterOnLeavingAndOnChoosingNotOnEachKey()
    {
        Preview preview(documents::good());
        preview.show();
        preview.zoomBox().lineEdit()->selectAll();
        QTest::keyClicks(preview.zoomBox().lineEdit(), u"50%"_qs);
        QCOMPARE(preview.stack().zoom(), 1.0);
        emit preview.zoomBox().lineEdit()->editingFinished();
        QCOMPARE(preview.stack().zoom(), 0.5);
        preview.enterZoom(u"2"_qs);
        QCOMPARE(preview.stack().zoom(), 2.0);
        preview.zoomBox().setCurrentIndex(5);
        emit preview.zoomBox().activated(5);
        QCOMPARE(preview.stack().zoom(), 0.25);
        QVERIFY(preview.services.messages.empty());
    }

    void pagesBreakAtTheSameTextsAtEveryZoom()
    {
        Preview preview(documents::grid(12, 20));
        preview.show();
        const auto expected = textsOf(composed(*preview.document));
        for (const QString &text : {u"10%"_qs, u"100%"_qs, u"200%"_qs}) {
            preview.enterZoom(text);
            preview.click(u"refresh"_qs);
            preview.settle();
            QCOMPARE(preview.pageTexts(), expected);
        }
    }

    void onlyVisiblePagesHaveAPicture()
    {
        Preview preview(documents::grid(100, 20));
        preview.show();
        QVERIFY(preview.stack().pages().size() > 40);
        const auto pictures = [&] { return preview.stack().findChildren<PagePicture *>().size(); };
        QVERIFY(pictures() <= 3);
        preview.vertical().setValue(preview.vertical().maximum());
        QVERIFY(pictures() <= 3);
        const auto last = preview.stack().pages().size();
        QVERIFY(preview.stack().findChild<PagePicture *>(u"picPage%1"_qs.arg(last)));
        QCOMPARE(preview.pageText(), u"Seite %1 von %1"_qs.arg(last));
    }

    void aHugeZoomShowsAPartOfAPageAtNoCost()
    {
        Preview preview(documents::good());
        preview.show();
        preview.enterZoom(u"75"_qs);
        QVERIFY(preview.services.messages.empty());
        QCOMPARE(preview.stack().findChildren<PagePicture *>().size(), 1);
        QVERIFY(preview.horizontal().maximum() > 50'000);
        QVERIFY(!preview.window.grab().isNull());
        preview.vertical().setValue(preview.vertical().maximum() / 2);
        QVERIFY(!preview.window.grab().isNull());
    }

    void keysScrollByThePageAndByTheStep()
    {
        Preview preview(documents::grid(20, 20));
        preview.show();
        preview.enterZoom(u"200%"_qs);
        preview.vertical().setValue(0);
        preview.horizontal().setValue(0);
        auto &stack = preview.stack();
        QTest::keyClick(&stack, Qt::Key_PageUp);
        QCOMPARE(preview.vertical().value(), preview.vertical().minimum());
        QTest::keyClick(&stack, Qt::Key_PageDown);
        QCOMPARE(preview.vertical().value(), preview.vertical().pageStep());
        QTest::keyClick(&stack, Qt::Key_Down);
        QCOMPARE(preview.vertical().value(),
                 preview.vertical().pageStep() + preview.vertical().singleStep());
        QTest::keyClick(&stack, Qt::Key_Up);
        QTest::keyClick(&stack, Qt::Key_PageUp);
        QCOMPARE(preview.vertical().value(), 0);
        QTest::keyClick(&stack, Qt::Key_Left);
        QCOMPARE(preview.horizontal().value(), 0);
        QTest::keyClick(&stack, Qt::Key_Right);
        QCOMPARE(preview.horizontal().value(), preview.horizontal().singleStep());
        QTest::keyClick(&stack, Qt::Key_Home);
        QTest::keyClick(&stack, Qt::Key_A);
        QCOMPARE(preview.horizontal().value(), preview.horizontal().singleStep());
        preview.vertical().setValue(preview.vertical().maximum() - 1);
        QTest::keyClick(&stack, Qt::Key_PageDown);
        QCOMPARE(preview.vertical().value(), preview.vertical().maximum());
    }

    void scrollingMovesThePages()
    {
        Preview preview(documents::good());
        preview.show();
        const auto *page = preview.stack().findChild<PagePicture *>(u"picPage1"_qs);
        const int before = page->y();
        preview.vertical().setValue(100);
        QCOMPARE(page->y(), before - 100);
    }

    void theWheelScrollsAndWithControlItZooms()
    {
        Preview preview(documents::grid(20, 20));
        preview.show();
        const auto turn = [&](int delta, Qt::KeyboardModifiers modifiers) {
            const QPointF at = preview.stack().rect().center();
            QWheelEvent event(at, preview.stack().mapToGlobal(at), {}, {0, delta}, Qt::NoButton,
                              modifiers, Qt::NoScrollPhase, false);
            QCoreApplication::sendEvent(&preview.stack(), &event);
        };
        turn(-120, Qt::NoModifier);
        QCOMPARE(preview.vertical().value(), 3 * preview.vertical().singleStep());
        turn(120, Qt::ControlModifier);
        QCOMPARE(preview.zoomBox().currentText(), u"150%"_qs);
        turn(-60, Qt::ControlModifier);
        turn(-60, Qt::ControlModifier);
        QCOMPARE(preview.stack().zoom(), 1.0);
        for (int i = 0; i < 10; ++i)
            turn(-120, Qt::ControlModifier);
        QCOMPARE(preview.zoomBox().currentText(), u"10%"_qs);
        QVERIFY(preview.services.messages.empty());
    }

    void theWorkspaceFillsWhatTheBarsLeave()
    {
        Preview preview(documents::good());
        preview.window.resize(700, 600);
        preview.show();
        const QRect client = preview.window.centralWidget()->rect();
        const QRect stack = preview.stack().geometry();
        QCOMPARE(stack.topLeft(), client.topLeft());
        QCOMPARE(preview.vertical().geometry(),
                 QRect(stack.right() + 1, stack.top(), preview.vertical().sizeHint().width(),
                       stack.height()));
        QCOMPARE(preview.horizontal().geometry(),
                 QRect(stack.left(), stack.bottom() + 1, stack.width(),
                       preview.horizontal().sizeHint().height()));
        QCOMPARE(preview.vertical().geometry().right(), client.right());
        QCOMPARE(preview.horizontal().geometry().bottom(), client.bottom());
    }

    void aFailureOfComposingIsShownAndThePagesSoFarStay()
    {
        Preview preview(documents::fresh());
        preview.show();
        QCOMPARE(preview.services.texts(),
                 QStringList{errorLine + u"Unzulässige Verwendung von Null (94)"_qs});
        const auto texts = preview.pageTexts();
        QVERIFY(texts.size() >= 2);
        QVERIFY(texts.last().contains(u"3 Statistische Auswertung"_qs));
        QVERIFY(preview.window.isVisible());
        QVERIFY(preview.pageText().contains(u"unvollständig"_qs));
        preview.click(u"refresh"_qs);
        preview.settle();
        QCOMPARE(preview.services.messages.size(), std::size_t{2});
    }

    void aFailureOfComposingWaitsForTheDialogThatIsOpen()
    {
        Preview preview(documents::fresh());
        preview.window.show();
        QTRY_VERIFY(preview.window.isBusy()); // opened, and the first page is there
        preview.services.whilePdfDialog = [&] {
            QTest::qWait(200);
            QVERIFY(preview.services.messages.empty());
            QVERIFY(preview.window.isBusy());
        };
        preview.click(u"pdf"_qs);
        QCOMPARE(preview.services.pdfSuggestions.size(), 1);
        preview.settle();
        QCOMPARE(preview.services.messages.size(), std::size_t{1});
    }

    void aFailureOfComposingWaitsForTheEditedData()
    {
        EditingWindows windows;
        Kalibrierung document(QLocale(QLocale::German), &windows); // without values
        Preview preview(documents::good());
        preview.window.setKalibrierung(document);
        preview.window.show();
        QTRY_VERIFY(preview.window.isBusy()); // opened, and the first page is there
        bool opened = false;
        windows.use = [&](frmProtocollExtraData &) {
            opened = true;
            QTest::qWait(200);
            QVERIFY(preview.services.messages.empty());
            QVERIFY(preview.window.isBusy());
        };
        preview.click(u"edit"_qs);
        QVERIFY(opened);
        preview.settle();
        QCOMPARE(preview.services.messages.size(), std::size_t{1});
    }

    void aFailureOfComposingWaitsForTheBoxThatIsOpen_data()
    {
        QTest::addColumn<bool>("hasPrinter");
        QTest::newRow("no printer") << false;
        QTest::newRow("no zoom") << true;
    }
    void aFailureOfComposingWaitsForTheBoxThatIsOpen()
    {
        QFETCH(bool, hasPrinter);
        Preview preview(documents::fresh());
        preview.services.hasPrinter = hasPrinter;
        std::vector<std::size_t> boxesAtTheEnd;
        preview.services.whileMessage = [&] {
            QTest::qWait(200);
            boxesAtTheEnd.push_back(preview.services.messages.size());
        };
        preview.window.show();
        if (hasPrinter) {
            QTRY_VERIFY(preview.window.isBusy());
            preview.enterZoom(u"abc"_qs);
        }
        QTRY_COMPARE(boxesAtTheEnd, (std::vector<std::size_t>{1, 2}));
    }

    void aPageThatCannotBeMadeIsReportedWithItsOwnMessage()
    {
        Preview preview(documents::good());
        preview.window.setPageMaker([](std::int32_t) -> std::shared_ptr<Page> { return nullptr; });
        preview.show();
        QCOMPARE(preview.services.texts(),
                 QStringList{u"Die Komponente VecorDraw ist nicht ordnungsgemäß installiert. \r\n"
                             u"Deinstallieren Sie das Programm und führen Sie die Installation des "
                             u"Programmes erneut aus."_qs});
        QVERIFY(preview.stack().pages().empty());
        QCOMPARE(preview.pageText(), u"Keine Seiten"_qs);
    }

    void aLaterPageThatCannotBeMadeLeavesTheFirst()
    {
        Preview preview(documents::good());
        preview.window.setPageMaker([](std::int32_t number) -> std::shared_ptr<Page> {
            if (number == 2)
                throw std::bad_alloc();
            return std::make_shared<Page>(makePage(number, {}, TextMeasure()));
        });
        preview.show();
        QCOMPARE(preview.services.messages.size(), std::size_t{1});
        QVERIFY(preview.services.texts().first().startsWith(u"Die Komponente"_qs));
        QCOMPARE(preview.stack().pages().size(), std::size_t{1});
    }

    void debugModeReportsEachPage()
    {
        Preview preview(documents::good(), true);
        preview.show();
        const auto count = preview.stack().pages().size();
        QCOMPARE(preview.services.messages.size(), count);
        QCOMPARE(preview.services.messages.at(0).title, u"Debug-Modus"_qs);
        QCOMPARE(preview.services.messages.at(0).icon, ProtocolServices::Icon::Information);
        QCOMPARE(preview.services.messages.at(0).text, u"Seite 1\r\nSeitenzahl: 1"_qs);
        QCOMPARE(preview.services.messages.at(1).text, u"Seite 2\r\nSeitenzahl: 2"_qs);
        QVERIFY(preview.pageTexts().at(0).contains(u"DrawDest 1"_qs));
        QVERIFY(preview.pageTexts().at(0).contains(u"Seite 1"_qs));

        const QTemporaryDir folder;
        preview.services.messages.clear();
        preview.services.onChoosePrinter = [&](QPrinter &printer) {
            printer.setOutputFormat(QPrinter::PdfFormat);
            printer.setOutputFileName(folder.filePath(u"druck.pdf"_qs));
            return true;
        };
        preview.click(u"print"_qs);
        preview.settle();
        QCOMPARE(preview.services.messages.size(), 2 * count); // on paper, then on screen again
    }

    void editedDataAreShownAfterOkAndNotAfterCancel()
    {
        Preview preview(documents::good());
        EditingWindows windows;
        Kalibrierung document(QLocale(QLocale::German), &windows);
        preview.window.setKalibrierung(document);
        preview.show();
        const auto editTo = [&](const QString &text, bool ok) {
            windows.use = [=](frmProtocollExtraData &dialog) {
                auto *list = dialog.findChild<DictionaryEdit *>();
                TextDictionary dictionary = list->dictionary();
                dictionary.at(0).second = text;
                list->setDictionary(dictionary);
                dialog.findChild<QPushButton *>(ok ? u"cmdOk"_qs : u"cmdCancel"_qs)->click();
            };
            preview.click(u"edit"_qs);
            preview.settle();
        };
        editTo(u"GW, neu"_qs, false);
        QVERIFY(!preview.pageTexts().at(0).contains(u"GW, neu"_qs));
        editTo(u"GW, neu"_qs, true);
        QVERIFY(preview.pageTexts().at(0).contains(u"GW, neu"_qs));
        QVERIFY(document.IsDirty());
    }

    void editingWithoutWindowsIsReported()
    {
        Preview preview(documents::good());
        preview.show();
        preview.click(u"edit"_qs);
        QCOMPARE(
            preview.services.texts(),
            QStringList{errorLine + u"Ungültiger Prozeduraufruf oder ungültiges Argument (5)"_qs});
    }

    void printerSetUpGivesTheSheetAndComposesAnew()
    {
        Preview preview(documents::grid(12, 20));
        preview.show();
        const auto a4 = preview.stack().pages().size();
        preview.services.onSetUp = [](QPrinter &printer) {
            printer.setPageSize(QPageSize(QPageSize::A4));
            printer.setPageOrientation(QPageLayout::Landscape);
            return true;
        };
        preview.click(u"printersetup"_qs);
        preview.settle();
        QVERIFY(preview.stack().pages().size() > a4);
        const PageFormat &format = preview.stack().pages().front()->format;
        QVERIFY(std::abs(format.sheetWidth - 29.7) < 0.05);
        QVERIFY(std::abs(format.sheetHeight - 21.0) < 0.05);
    }

    void theSetUpDialogIsQuietAlsoWithoutAPrinter()
    {
        QTest::failOnWarning(QRegularExpression(u"QPageSetupDialog"_qs));
        QPrinter printer; // without a printer of the system's it writes a file
        printer.setOutputFormat(QPrinter::PdfFormat);
        bool shown = false;
        QTimer::singleShot(50, this, [&shown] {
            auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
            shown = dialog;
            if (dialog)
                dialog->accept();
        });
        QVERIFY(PlatformProtocolServices().setUpPrinter(printer, nullptr));
        QVERIFY(shown);
    }

    void aCancelledSetUpKeepsTheSheet()
    {
        Preview preview(documents::good());
        preview.show();
        preview.document->setMesswert(pmDirekt, 1, 1, 91.23);
        preview.services.onSetUp = [](QPrinter &printer) {
            printer.setPageSize(QPageSize(QPageSize::A3));
            return false;
        };
        preview.click(u"printersetup"_qs);
        preview.settle();
        QCOMPARE(preview.stack().pages().front()->format, PageFormat{});
        QVERIFY(preview.pageTexts().at(1).contains(u"91,23"_qs)); // composed anew all the same
    }

    void savingAsPdfWritesTheProtocol()
    {
        QTemporaryDir folder;
        Preview preview(documents::good());
        preview.show();
        preview.services.pdfTarget = folder.filePath(u"p.pdf"_qs);
        preview.click(u"pdf"_qs);
        preview.settle();
        QFile file(preview.services.pdfTarget);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(file.readAll().startsWith("%PDF-"));
        QVERIFY(preview.services.messages.empty());
        QCOMPARE(preview.services.pdfSuggestions, QStringList{u"Protokoll.pdf"_qs});
    }

    void aPdfThatCannotBeWrittenIsReportedAndNothingIsLeft()
    {
        QTemporaryDir folder;
        Preview preview(documents::good());
        preview.show();
        preview.services.pdfTarget = folder.filePath(u"fehlt/p.pdf"_qs);
        preview.click(u"pdf"_qs);
        preview.settle();
        QCOMPARE(preview.services.texts(), QStringList{errorLine + u"Pfad nicht gefunden (76)"_qs});
        QVERIFY(QDir(folder.path()).isEmpty());
        QVERIFY(preview.stack().pages().size() > 1);
    }

    void aPdfNeverReplacesTheCalibration_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("its file") << u"a.xml"_qs;
        QTest::newRow("a link to it") << u"b.xml"_qs;
    }

    void aPdfNeverReplacesTheCalibration()
    {
        QFETCH(QString, name);
        QTemporaryDir folder;
        QFile calibration(folder.filePath(u"a.xml"_qs));
        QVERIFY(calibration.open(QIODevice::ReadWrite) && calibration.write("alt") == 3);
        calibration.close();
        QVERIFY(QFile::link(calibration.fileName(), folder.filePath(u"b.xml"_qs)));
        Preview preview(documents::good());
        preview.window.setCalibrationFile(calibration.fileName());
        preview.show();
        preview.services.pdfTarget = folder.filePath(name);
        preview.click(u"pdf"_qs);
        preview.settle();
        QVERIFY(calibration.open(QIODevice::ReadOnly));
        QCOMPARE(calibration.readAll(), QByteArray("alt"));
        QCOMPARE(preview.services.texts(),
                 QStringList{errorLine + u"Fehler beim Zugriff auf Pfad/Datei: „%1“ ist die Datei "
                                         u"dieser Kalibrierung, das Protokoll braucht eine "
                                         u"eigene (75)"_qs.arg(name)});
        QVERIFY(preview.stack().pages().size() > 1);
    }

    void aCancelledPdfDialogDoesNothing()
    {
        Preview preview(documents::good());
        preview.show();
        preview.click(u"pdf"_qs);
        QVERIFY(preview.services.messages.empty());
        QVERIFY(!preview.window.isBusy());
    }

    void theFirstPageIsThereBeforeTheLastIsComposed()
    {
        Preview preview(documents::grid(900, 20));
        preview.window.show();
        QCoreApplication::processEvents();
        QVERIFY(preview.window.isBusy());
        QVERIFY(!preview.stack().pages().empty());
        QTRY_VERIFY(preview.isProgressShown());
        QVERIFY(preview.stack().pages().size() < 400);
        preview.settle();
        QVERIFY(preview.stack().pages().size() > 380);
        QVERIFY(!preview.isProgressShown());
    }

    void composingCanBeCancelled()
    {
        Preview preview(documents::grid(900, 20));
        preview.window.show();
        QTRY_VERIFY(preview.isProgressShown());
        preview.child<QPushButton>(u"cmdAbbrechen"_qs).click();
        QVERIFY(!preview.window.isBusy());
        const auto count = preview.stack().pages().size();
        QVERIFY(count > 0 && count < 400);
        QTest::qWait(50);
        QCOMPARE(preview.stack().pages().size(), count);
        QVERIFY(!preview.isProgressShown());
        preview.click(u"refresh"_qs);
        preview.settle();
        QVERIFY(preview.stack().pages().size() > 380);
    }

    void whatWasCancelledIsCalledIncompleteUntilItIsComposedAgain()
    {
        Preview preview(documents::grid(900, 20));
        preview.window.show();
        QTRY_VERIFY(preview.isProgressShown());
        preview.child<QPushButton>(u"cmdAbbrechen"_qs).click();
        const auto &label = preview.child<QLabel>(u"labSeiten"_qs);
        QVERIFY(label.text().contains(u"unvollständig"_qs));
        preview.click(u"refresh"_qs);
        preview.settle();
        QVERIFY(!label.text().contains(u"unvollständig"_qs));
    }

    // A document that is composed in part, by cancelling or by a failure at its end.
    void cancellingAPdfLeavesAnIncompletePreviewIncomplete_data()
    {
        QTest::addColumn<bool>("fails");
        QTest::newRow("cancelled") << false;
        QTest::newRow("failed") << true;
    }
    void cancellingAPdfLeavesAnIncompletePreviewIncomplete()
    {
        QFETCH(bool, fails);
        const QTemporaryDir folder;
        Preview preview(documents::grid(300, 20));
        if (fails)
            preview.document->DataStore().set(preview.document->MesswertKey(pmDirekt, 300, 20),
                                              u"unlesbar"_qs);
        preview.services.pdfTarget = folder.filePath(u"p.pdf"_qs);
        preview.window.show();
        QTRY_VERIFY(preview.isProgressShown());
        if (fails)
            preview.settle();
        else
            preview.child<QPushButton>(u"cmdAbbrechen"_qs).click();
        QVERIFY(preview.pageText().contains(u"unvollständig"_qs));
        preview.click(u"pdf"_qs);
        QTRY_VERIFY(preview.isProgressShown());
        preview.child<QPushButton>(u"cmdAbbrechen"_qs).click();
        QVERIFY(!preview.window.isBusy());
        QVERIFY(preview.pageText().contains(u"unvollständig"_qs));
    }

    void aCancelledPdfIsNotWrittenAndThePreviewIsCompletedAfterwards()
    {
        QTemporaryDir folder;
        Preview preview(documents::grid(900, 20));
        preview.services.pdfTarget = folder.filePath(u"p.pdf"_qs);
        preview.window.show();
        QTRY_VERIFY(preview.window.isBusy() && !preview.stack().pages().empty());
        preview.click(u"pdf"_qs);
        QVERIFY(preview.window.isBusy());
        QTRY_VERIFY(preview.isProgressShown());
        preview.child<QPushButton>(u"cmdAbbrechen"_qs).click();
        preview.settle();
        QVERIFY(preview.stack().pages().size() > 380);
        QVERIFY(QDir(folder.path()).isEmpty());
        QVERIFY(preview.services.messages.empty());
    }

    void closingWhileComposingEndsTheWork()
    {
        Preview preview(documents::grid(900, 20));
        preview.window.show();
        QTRY_VERIFY(preview.isProgressShown());
        preview.window.close();
        QVERIFY(!preview.window.isBusy());
    }

    void aWindowThatWaitsForItsDialogIsNotClosed()
    {
        QWidget owner;
        owner.show();
        FakeServices services;
        const auto document = documents::good();
        auto *window = new frmProtocollPreview(services, false, &owner);
        const QPointer<frmProtocollPreview> alive(window);
        window->setAttribute(Qt::WA_DeleteOnClose);
        window->setKalibrierung(*document);
        window->show();
        services.whilePdfDialog = [&] { // as the end of a session does
            QVERIFY(!owner.close() && !window->close());
            QCoreApplication::processEvents();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            QVERIFY(alive);
        };
        window->tbProtokoll_ButtonClick(u"pdf"_qs);
        QCOMPARE(services.pdfSuggestions.size(), 1);
        QVERIFY(window->close());
        QTRY_VERIFY(!alive);
    }

    void everyControlHasItsOwnNameForScreenReaders()
    {
        Preview preview(documents::good());
        preview.show();
        QCOMPARE(preview.stack().accessibleName(), u"Seiten"_qs);
        QCOMPARE(preview.type().accessibleName(), u"Protokolltyp"_qs);
        QCOMPARE(preview.zoomBox().lineEdit()->accessibleName(), u"Zoom"_qs);
        QStringList names;
        for (const QWidget *widget : preview.window.findChildren<QWidget *>()) {
            if (!widget->accessibleName().isEmpty())
                names.append(widget->accessibleName());
        }
        QCOMPARE(names.removeDuplicates(), 0);
        const auto *page = preview.stack().findChild<PagePicture *>(u"picPage1"_qs);
        QVERIFY(page->accessibleDescription().contains(u"nach Wendral (Ausgabe 2003)"_qs));
    }
};

REGISTER_TEST(TstPreview)
#include "tst_preview.moc"
