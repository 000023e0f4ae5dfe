#include "tests/core/file/childprocess.h"
#include "tests/core/file/rowsetsupport.h"
#include "tests/support/testregistry.h"

#include "core/kalibrierung.h"

#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

namespace {

const QLocale german(QLocale::German, QLocale::Germany);

void fill(Kalibrierung &document, int fields, double value)
{
    for (int field = 1; field <= fields; ++field) {
        for (int point = 1; point <= 4; ++point)
            document.setMesswert(pmDirekt, field, point, value + field);
    }
}

} // namespace

class SaveKilledTest : public QObject
{
    Q_OBJECT

private slots:
    void file_is_the_old_or_the_new_document_whenever_the_program_is_killed();
};

void SaveKilledTest::file_is_the_old_or_the_new_document_whenever_the_program_is_killed()
{
    const QTemporaryDir folder;
    QVERIFY(folder.isValid());
    const QString file = folder.filePath(u"a.xml"_qs);
    Kalibrierung one(german);
    Kalibrierung two(german);
    fill(one, 100, 1.5);
    fill(two, 300, 2.25);
    two.SaveFile(file);
    const QByteArray second = bytesAt(file);
    one.SaveFile(file);
    const QByteArray first = bytesAt(file);
    QVERIFY(first != second);

    constexpr int kills = 50;
    constexpr int longestOfAll = 5'000'000;
    int longest = 20'000; // microseconds, several saves long on an idle machine
    QRandomGenerator random(1);
    int seen[] = {0, 0};
    for (int i = 0; i < kills || ((seen[0] == 0 || seen[1] == 0) && longest < longestOfAll); ++i) {
        if (i >= kills)
            longest *= 2; // a busy machine has not let the child save yet
        const pid_t child = ::fork();
        if (child == 0) {
            for (;;) {
                two.SaveFile(file);
                one.SaveFile(file);
            }
        }
        QVERIFY(child > 0);
        ::usleep(static_cast<useconds_t>(random.bounded(longest)));
        ::kill(child, SIGKILL);
        int status = 0;
        ::waitpid(child, &status, 0);
        QVERIFY(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL);

        const QByteArray found = bytesAt(file);
        QVERIFY2(found == first || found == second, qPrintable(QString::number(found.size())));
        ++seen[found == first ? 0 : 1];
        Kalibrierung document(german);
        document.LoadFile(file);
    }
    // Both were met, so saves were really under way.
    QVERIFY(seen[0] > 0 && seen[1] > 0);
}

REGISTER_TEST(SaveKilledTest)
#include "tst_savekilled.moc"
