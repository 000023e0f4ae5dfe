#include "protocol/pages/protocolpdf.h"
#include "tests/protocol/composed.h"
#include "tests/protocol/documents.h"
#include "tests/support/testregistry.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QStorageInfo>
#include <QTemporaryDir>
#include <QTest>

namespace {

QByteArray outputOf(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished();
    return process.readAllStandardOutput();
}

QStringList words(const QString &text)
{
    QStringList result = text.split(QRegularExpression(u"\\s+"_qs), Qt::SkipEmptyParts);
    result.sort();
    return result;
}

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class TstPdf : public QObject
{
    Q_OBJECT

    QTemporaryDir m_folder;

    QString path(const QString &name) const { return m_folder.filePath(name); }
    static bool has(const QString &tool) { return !QStandardPaths::findExecutable(tool).isEmpty(); }

private slots:
    void theTextsOfThePdfAreThoseOfThePages_data()
    {
        QTest::addColumn<int>("fields");
        QTest::addColumn<int>("points");
        QTest::newRow("9 points") << 3 << 3;
        QTest::newRow("16 points") << 4 << 4;
        QTest::newRow("240 points") << 12 << 20;
        QTest::newRow("2000 points") << 50 << 40;
    }
    void theTextsOfThePdfAreThoseOfThePages()
    {
        if (!has(u"pdftotext"_qs))
            QSKIP("pdftotext is not installed.");
        QFETCH(int, fields);
        QFETCH(int, points);
        const auto document = documents::grid(fields, points);
        const QString target = path(u"texts.pdf"_qs);
        writeProtocolPdf(*document, ProtocolType::WithCalibrationField, target);
        const QString extracted = QString::fromUtf8(
            outputOf(u"pdftotext"_qs, {u"-raw"_qs, u"-enc"_qs, u"UTF-8"_qs, target, u"-"_qs}));
        QCOMPARE(words(extracted), words(composed(*document).texts().join(u' ')));
        for (std::int32_t field = 1; field <= fields; ++field) {
            for (std::int32_t point = 1; point <= points; ++point) {
                QVERIFY(extracted.contains(document->PrüfpunktKey(point) + u' ' +
                                           document->MesswertString(pmIndirekt, field, point) +
                                           u' ' +
                                           document->MesswertString(pmDirekt, field, point)));
            }
        }
    }

    void thePdfBreaksItsPagesWhereTheCompositionDoes()
    {
        if (!has(u"pdftotext"_qs))
            QSKIP("pdftotext is not installed.");
        const auto document = documents::grid(12, 20);
        const Composed protocol = composed(*document);
        const QString target = path(u"pages.pdf"_qs);
        writeProtocolPdf(*document, ProtocolType::WithCalibrationField, target);
        const QStringList pages =
            QString::fromUtf8(outputOf(u"pdftotext"_qs, {u"-raw"_qs, target, u"-"_qs}))
                .split(u'\f', Qt::SkipEmptyParts);
        QCOMPARE(static_cast<std::size_t>(pages.size()), protocol.pages.size());
        for (qsizetype i = 0; i < pages.size(); ++i)
            QCOMPARE(
                words(pages.at(i)),
                words(Composed::textsOf(protocol.pages.at(static_cast<std::size_t>(i))->drawing)
                          .join(u' ')));
    }

    void fontsAreEmbeddedAndTheProfileIsArchival()
    {
        if (!has(u"pdffonts"_qs) || !has(u"pdfinfo"_qs))
            QSKIP("pdffonts and pdfinfo are not installed.");
        const auto document = documents::good();
        const QString target = path(u"fonts.pdf"_qs);
        writeProtocolPdf(*document, ProtocolType::WithCalibrationField, target);
        const QStringList fonts = QString::fromUtf8(outputOf(u"pdffonts"_qs, {target}))
                                      .split(u'\n', Qt::SkipEmptyParts)
                                      .mid(2);
        QVERIFY(!fonts.isEmpty());
        for (const QString &font : fonts)
            QVERIFY2(font.contains(QRegularExpression(u"Identity-H\\s+yes"_qs)), qPrintable(font));
        const QString info = QString::fromUtf8(outputOf(u"pdfinfo"_qs, {target}));
        QVERIFY(info.contains(u"Kalibrierung eines direkten und eines indirekten Prüfmerkmals"_qs));
        QVERIFY(info.contains(u"(A4)"_qs));
        QVERIFY(contents(target).contains("<pdfaid:part>1</pdfaid:part>") ||
                contents(target).contains("pdfaid:part=\"1\""));
    }

    void otherSheetsHaveTheirOwnSize()
    {
        if (!has(u"pdfinfo"_qs))
            QSKIP("pdfinfo is not installed.");
        const auto document = documents::good();
        const QString target = path(u"a5.pdf"_qs);
        writeProtocolPdf(*document, ProtocolType::ResultsOnly, target, {14.8, 21.0});
        const QString info = QString::fromUtf8(outputOf(u"pdfinfo"_qs, {target}));
        QVERIFY2(info.contains(QRegularExpression(u"Page size:\\s+(419|420)[.\\d]* x 595"_qs)),
                 qPrintable(info));
    }

    void anExistingFileIsReplaced()
    {
        const auto document = documents::good();
        const QString target = path(u"again.pdf"_qs);
        writeProtocolPdf(*document, ProtocolType::WithCalibrationField, target);
        const auto longer = contents(target).size();
        writeProtocolPdf(*document, ProtocolType::ResultsOnly, target);
        QVERIFY(contents(target).startsWith("%PDF-"));
        QVERIFY(contents(target).size() < longer);
    }

    void aFailureLeavesTheOldFileAndNothingElse_data()
    {
        QTest::addColumn<QString>("target");
        QTest::addColumn<int>("number");
        QTest::newRow("no such folder") << u"fehlt/protokoll.pdf"_qs << 76;
        QTest::newRow("a folder") << u"ordner"_qs << 75;
        QTest::newRow("cannot be composed") << u"alt.pdf"_qs << 94;
    }
    void aFailureLeavesTheOldFileAndNothingElse()
    {
        QFETCH(QString, target);
        QFETCH(int, number);
        QTemporaryDir folder;
        QDir(folder.path()).mkdir(u"ordner"_qs);
        QFile old(folder.filePath(u"alt.pdf"_qs));
        QVERIFY(old.open(QIODevice::WriteOnly));
        old.write("alt");
        old.close();
        auto document = number == 94 ? documents::fresh() : documents::good();
        try {
            writeProtocolPdf(*document, ProtocolType::ResultsOnly, folder.filePath(target));
            QFAIL("no error");
        } catch (const RunTimeError &error) {
            QCOMPARE(error.number(), number);
        }
        QCOMPARE(contents(folder.filePath(u"alt.pdf"_qs)), QByteArray("alt"));
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot),
                 (QStringList{u"alt.pdf"_qs, u"ordner"_qs}));
    }

    void aFullDiskIsReportedAndLeavesNoHalfFile()
    {
        // A file system of 16 KiB in a name space of its own holds no protocol.
        if (!has(u"unshare"_qs))
            QSKIP("unshare is not installed.");
        QProcess process;
        process.start(u"unshare"_qs,
                      {u"-Urm"_qs, u"sh"_qs, u"-c"_qs,
                       u"mount -t tmpfs -o size=16k tmpfs \"$1\" && cd \"$1\" && "
                       u"\"$2\" TstPdf writeInto >/dev/null 2>&1; cat ergebnis; ls"_qs,
                       u"sh"_qs, m_folder.path(), QCoreApplication::applicationFilePath()});
        QVERIFY(process.waitForFinished());
        const QByteArray error = process.readAllStandardError();
        if (error.contains("unshare") || error.contains("mount"))
            QSKIP("No small file system can be mounted here.");
        QCOMPARE(process.readAllStandardOutput(), QByteArray("61ergebnis\n"));
    }

    // Run by the test above in a folder that is nearly full; does nothing elsewhere.
    void writeInto()
    {
        const QStorageInfo here(QDir::currentPath());
        if (here.bytesTotal() > 64 * 1024 || here.bytesTotal() <= 0)
            return;
        const auto document = documents::good();
        QFile result(u"ergebnis"_qs);
        QVERIFY(result.open(QIODevice::WriteOnly));
        try {
            writeProtocolPdf(*document, ProtocolType::WithCalibrationField, u"protokoll.pdf"_qs);
            result.write("0");
        } catch (const RunTimeError &failure) {
            result.write(QByteArray::number(failure.number()));
        }
    }
};

REGISTER_TEST(TstPdf)
#include "tst_pdf.moc"
