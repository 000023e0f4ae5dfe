#include "tests/core/file/childprocess.h"
#include "tests/core/file/rowsetsupport.h"
#include "tests/support/testregistry.h"

#include "core/kalibrierung.h"

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>

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
    constexpr int saves = 4; // the longest run of a child after its first save
    QRandomGenerator random(1);
    int seen[] = {0, 0};
    for (int i = 0; i < kills; ++i) {
        int ends[2];
        QVERIFY(::pipe(ends) == 0);
        QElapsedTimer timer;
        timer.start();
        const pid_t child = ::fork();
        if (child == 0) {
            two.SaveFile(file);
            const bool told = ::write(ends[1], "", 1) == 1;
            while (told) {
                one.SaveFile(file);
                two.SaveFile(file);
            }
            ::_exit(1);
        }
        QVERIFY(child > 0);
        ::close(ends[1]);
        char saved = 0;
        const bool underWay = ::read(ends[0], &saved, 1) == 1;
        const qint64 oneSave = std::max<qint64>(timer.nsecsElapsed() / 1000, 1); // microseconds
        if (underWay)
            ::usleep(static_cast<useconds_t>(random.bounded(saves * oneSave)));
        ::kill(child, SIGKILL);
        int status = 0;
        ::waitpid(child, &status, 0);
        ::close(ends[0]);
        QVERIFY(underWay);
        QVERIFY(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL);

        const QByteArray found = bytesAt(file);
        QVERIFY2(found == first || found == second, qPrintable(QString::number(found.size())));
        ++seen[found == first ? 0 : 1];
        Kalibrierung document(german);
        document.LoadFile(file);
    }
    // Both were met, so files were really replaced.
    QVERIFY(seen[0] > 0 && seen[1] > 0);
}

REGISTER_TEST(SaveKilledTest)
#include "tst_savekilled.moc"
