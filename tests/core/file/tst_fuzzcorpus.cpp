#include "tests/core/file/rowsetsupport.h"
#include "tests/support/testregistry.h"

#include "core/rowsetwriter.h"

#include <QDir>
#include <QTest>

/// What the fuzzer started from and what it found, without the fuzzer.
class FuzzCorpusTest : public QObject
{
    Q_OBJECT

private slots:
    void bytes_give_rows_or_a_clear_error_data();
    void bytes_give_rows_or_a_clear_error();
};

void FuzzCorpusTest::bytes_give_rows_or_a_clear_error_data()
{
    QTest::addColumn<QString>("path");
    const QDir folder(QStringLiteral(PROJECT_DIR "/fuzz/corpus"));
    const QStringList names = folder.entryList(QDir::Files, QDir::Name);
    QVERIFY(!names.isEmpty());
    for (const QString &name : names)
        QTest::newRow(qPrintable(name)) << folder.filePath(name);
}

void FuzzCorpusTest::bytes_give_rows_or_a_clear_error()
{
    QFETCH(QString, path);
    const QByteArray bytes = bytesAt(path);
    Rows rows;
    const auto error = errorOf([&] { rows = rowsOf(bytes); });
    if (error) {
        QCOMPARE(error->number(), 321);
        return;
    }
    RowsetWriter writer(u"Variable"_qs, u"Wert"_qs, rows.size());
    for (const auto &[key, value] : rows)
        writer.append(key, value);
    QCOMPARE(rowsOf(writer.finish()), rows);
}

REGISTER_TEST(FuzzCorpusTest)
#include "tst_fuzzcorpus.moc"
