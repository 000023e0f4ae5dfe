#include "protocol/windows/frmprotocollpreview.h"
#include "protocol/windows/pagestack.h"
#include "protocol/windows/printpages.h"
#include "tests/protocol/composed.h"
#include "tests/protocol/documents.h"
#include "tests/protocol/fakeservices.h"
#include "tests/protocol/printqueue.h"
#include "tests/support/testregistry.h"

#include <QAction>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QPushButton>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

namespace {

QStringList words(const QString &text)
{
    QStringList result = text.split(QRegularExpression(u"\\s+"_qs), Qt::SkipEmptyParts);
    result.sort();
    return result;
}

QByteArray outputOf(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished();
    return process.readAllStandardOutput();
}

bool has(const QString &tool)
{
    return !QStandardPaths::findExecutable(tool).isEmpty();
}

// The words of each page of a PDF.
QList<QStringList> pagesOf(const QString &pdf)
{
    QList<QStringList> result;
    const QString text = QString::fromUtf8(outputOf(u"pdftotext"_qs, {u"-raw"_qs, pdf, u"-"_qs}));
    for (const QString &page : text.split(u'\f', Qt::SkipEmptyParts))
        result.append(words(page));
    return result;
}

QList<QStringList> pagesOf(const Composed &protocol)
{
    QList<QStringList> result;
    for (const auto &page : protocol.pages)
        result.append(words(Composed::textsOf(page->drawing).join(u' ')));
    return result;
}

// A preview whose printer writes a PDF.
struct Printing
{
    QTemporaryDir folder;
    FakeServices services;
    std::unique_ptr<Kalibrierung> document;
    frmProtocollPreview window{services};

    explicit Printing(std::unique_ptr<Kalibrierung> with) : document(std::move(with))
    {
        window.setKalibrierung(*document);
        services.onChoosePrinter = [this](QPrinter &printer) {
            printer.setOutputFormat(QPrinter::PdfFormat);
            printer.setOutputFileName(target());
            return true;
        };
    }

    QString target() const { return folder.filePath(u"druck.pdf"_qs); }
    void show()
    {
        window.show();
        QCoreApplication::processEvents();
        settle();
    }
    const PageStack &stack() const { return *window.findChild<PageStack *>(); }
    void settle() { QTRY_VERIFY_WITH_TIMEOUT(!window.isBusy(), 60'000); }
    void print()
    {
        window.findChild<QAction *>(u"print"_qs)->trigger();
        settle();
    }
    std::size_t pageCount() const { return window.findChild<PageStack *>()->pages().size(); }
};

} // namespace

class TstPrinting : public QObject
{
    Q_OBJECT

private slots:
    void theDialogOffersNoSelectionNoRangeAndNoFile()
    {
        Printing printing(documents::good());
        printing.show();
        printing.print();
        QCOMPARE(printing.services.printOptions.size(), std::size_t{1});
        const auto options = printing.services.printOptions.front();
        QVERIFY(!options.testFlag(QAbstractPrintDialog::PrintSelection));
        QVERIFY(!options.testFlag(QAbstractPrintDialog::PrintPageRange));
        QVERIFY(!options.testFlag(QAbstractPrintDialog::PrintCurrentPage));
        QVERIFY(!options.testFlag(QAbstractPrintDialog::PrintToFile));
    }

    void aCancelledDialogPrintsNothingAndSaysNothing()
    {
        Printing printing(documents::good());
        printing.show();
        printing.services.onChoosePrinter = [](QPrinter &) { return false; };
        printing.print();
        QVERIFY(printing.services.messages.empty());
        QVERIFY(QDir(printing.folder.path()).isEmpty());
    }

    void thePrintHasThePagesOfThePreviewWhateverItsZoom_data()
    {
        QTest::addColumn<QString>("zoom");
        QTest::newRow("10%") << u"10%"_qs;
        QTest::newRow("100%") << u"100%"_qs;
        QTest::newRow("200%") << u"200%"_qs;
    }
    void thePrintHasThePagesOfThePreviewWhateverItsZoom()
    {
        if (!has(u"pdftotext"_qs))
            QSKIP("pdftotext is not installed.");
        QFETCH(QString, zoom);
        Printing printing(documents::grid(12, 20));
        printing.show();
        auto *box = printing.window.findChild<QComboBox *>(u"cboZoom"_qs);
        box->setEditText(zoom);
        emit box->activated(0);
        printing.print();
        QCOMPARE(pagesOf(printing.target()), pagesOf(composed(*printing.document)));
        QCOMPARE(static_cast<qsizetype>(printing.pageCount()), pagesOf(printing.target()).size());
        QVERIFY(printing.services.messages.empty());
    }

    void thePrintHasTheRealSize()
    {
        if (!has(u"pdftotext"_qs))
            QSKIP("pdftotext is not installed.");
        Printing printing(documents::good());
        printing.show();
        printing.print();
        // The page number's baseline lies 1 cm above the edge of a sheet of 29.7 cm.
        const QString box =
            QString::fromUtf8(outputOf(u"pdftotext"_qs, {u"-bbox"_qs, u"-f"_qs, u"1"_qs, u"-l"_qs,
                                                         u"1"_qs, printing.target(), u"-"_qs}));
        const QRegularExpression number(u"yMax=\"([\\d.]+)\">-</word>"_qs);
        const double bottom = number.match(box).captured(1).toDouble() / 72 * 2.54;
        const TextMeasure measure;
        QVERIFY2(std::abs(bottom - (28.7 + measure.descent(styleOfPoints(12)))) < 0.02,
                 qPrintable(box));
    }

    void theSheetChosenForPrintingHoldsForThePreviewToo()
    {
        Printing printing(documents::grid(12, 20));
        printing.show();
        const auto before = printing.pageCount();
        const auto choose = printing.services.onChoosePrinter;
        printing.services.onChoosePrinter = [&](QPrinter &printer) {
            choose(printer);
            printer.setPageOrientation(QPageLayout::Landscape);
            return true;
        };
        printing.print();
        QVERIFY(printing.pageCount() > before);
    }

    void aProtocolThatFailsIsNotPrintedInPartAndReportedOnce()
    {
        Printing printing(documents::fresh());
        printing.show();
        printing.services.messages.clear();
        printing.print();
        QCOMPARE(printing.services.texts(),
                 QStringList{u"Folgender Fehler ist aufgetreten:\r\n"
                             u"Unzulässige Verwendung von Null (94)"_qs});
        QVERIFY(printing.pageCount() >= 2);
    }

    void aPrinterThatCannotBeReachedIsReported()
    {
        Printing printing(documents::good());
        printing.show();
        printing.services.onChoosePrinter = [&](QPrinter &printer) {
            printer.setOutputFormat(QPrinter::PdfFormat);
            printer.setOutputFileName(printing.folder.filePath(u"fehlt/druck.pdf"_qs));
            return true;
        };
        printing.print();
        QCOMPARE(printing.services.messages.size(), std::size_t{1});
        QVERIFY(printing.services.texts().first().endsWith(u" (57)"_qs));
        QVERIFY(printing.pageCount() > 1);
        QVERIFY(printing.window.isVisible());
    }

    void aRefusedJobLeavesThePreviewAsItIs()
    {
        Printing printing(documents::grid(900, 20));
        printing.services.onChoosePrinter = [&](QPrinter &printer) {
            printer.setOutputFormat(QPrinter::PdfFormat);
            printer.setOutputFileName(printing.folder.filePath(u"fehlt/druck.pdf"_qs));
            printer.setPageOrientation(QPageLayout::Landscape);
            return true;
        };
        printing.window.show();
        QTRY_VERIFY(printing.window.isBusy() && !printing.stack().pages().empty());
        printing.window.tbProtokoll_ButtonClick(u"print"_qs);
        QCOMPARE(printing.services.messages.size(), 1U);
        QVERIFY(printing.window.isBusy()); // composing goes on
        printing.settle();
        QVERIFY(printing.stack().pages().size() > 380);
        QCOMPARE(printing.stack().pages().back()->format, PageFormat());
        QVERIFY(printing.window.findChild<QPushButton *>(u"cmdAbbrechen"_qs)->isHidden());
    }

    void closingWhilePrintingComposesNothingAnew()
    {
        Printing printing(documents::grid(900, 20));
        printing.show();
        printing.window.tbProtokoll_ButtonClick(u"print"_qs);
        QVERIFY(printing.window.isBusy());
        printing.window.close();
        QVERIFY(!printing.window.isBusy());
        QVERIFY(printing.services.messages.empty());
    }

    void aSheetThatIsATrifleOffBreaksPagesWhereTheKnownOneDoes()
    {
        Printing printing(documents::good());
        printing.show();
        printing.services.onSetUp = [](QPrinter &printer) {
            printer.setPageSize(QPageSize(QSizeF(209.9, 297.04), QPageSize::Millimeter, u"A4x"_qs,
                                          QPageSize::ExactMatch));
            return true;
        };
        printing.window.tbProtokoll_ButtonClick(u"printersetup"_qs);
        printing.settle();
        QCOMPARE(printing.stack().pages().back()->format, PageFormat());
    }

    void printingCanBeCancelled()
    {
        Printing printing(documents::grid(900, 20));
        printing.show();
        printing.window.findChild<QAction *>(u"print"_qs)->trigger();
        auto *cancel = printing.window.findChild<QPushButton *>(u"cmdAbbrechen"_qs);
        QTRY_VERIFY(!cancel->isHidden());
        cancel->click();
        printing.settle();
        QVERIFY(printing.services.messages.empty());
        QVERIFY(printing.pageCount() > 380); // the preview is composed anew
    }

    void aRealJobReachesThePrinterWithEveryPage()
    {
        if (!has(u"pdftotext"_qs))
            QSKIP("pdftotext is not installed.");
        PrintQueue queue;
        if (!queue.start())
            QSKIP(qPrintable(queue.reason()));
        // A process of its own, since the print system is looked up once in each.
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"CUPS_SERVER"_qs, queue.server());
        environment.insert(u"WENDRAL_TEST_QUEUE"_qs, queue.name());
        process.setProcessEnvironment(environment);
        process.start(QCoreApplication::applicationFilePath(),
                      {u"TstPrinting"_qs, u"printToQueue"_qs});
        QVERIFY(process.waitForFinished(60'000));
        QVERIFY2(process.exitCode() == 0, process.readAllStandardOutput().constData());
        QTemporaryDir folder;
        QFile file(folder.filePath(u"auftrag.pdf"_qs));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(queue.firstJob());
        file.close();
        const auto document = documents::grid(12, 20);
        QCOMPARE(pagesOf(file.fileName()), pagesOf(composed(*document)));
    }

    // Run by the test above in a process that knows the queue; does nothing elsewhere.
    void printToQueue()
    {
        const QString queue = qEnvironmentVariable("WENDRAL_TEST_QUEUE");
        if (queue.isEmpty())
            return;
        QVERIFY(PlatformProtocolServices().isPrinterInstalled());
        Printing printing(documents::grid(12, 20));
        printing.services.onChoosePrinter = [&](QPrinter &printer) {
            printer.setPrinterName(queue);
            return printer.outputFormat() == QPrinter::NativeFormat;
        };
        printing.show();
        printing.print();
        QVERIFY(printing.services.messages.empty());
        QCOMPARE(printing.services.printOptions.size(), std::size_t{1});
    }

    void everySheetCarriesItsAlmostWhitePoint()
    {
        if (!has(u"pdftoppm"_qs))
            QSKIP("pdftoppm is not installed.");
        QTemporaryDir folder;
        const QString target = folder.filePath(u"p.pdf"_qs);
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(target);
        printer.setResolution(72);
        PrintPages pages(printer);
        const TextMeasure measure;
        for (int number = 1; number <= 2; ++number)
            pages.pageCompleted(std::make_shared<Page>(makePage(number, {}, measure)));
        pages.finish();
        QCOMPARE(pages.pageCount(), 2);
        outputOf(u"pdftoppm"_qs,
                 {u"-r"_qs, u"72"_qs, u"-png"_qs, target, folder.filePath(u"s"_qs)});
        for (const QString &file : {u"s-1.png"_qs, u"s-2.png"_qs}) {
            const QImage image(folder.filePath(file));
            QVERIFY(!image.isNull());
            bool found = false;
            for (int y = 8; y <= 12; ++y) {
                for (int x = 8; x <= 12; ++x)
                    found = found || (image.pixel(x, y) & 0xffffff) == 0xfffffe;
            }
            QVERIFY(found);
        }
    }
};

REGISTER_TEST(TstPrinting)
#include "tst_printing.moc"
