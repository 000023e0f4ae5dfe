#pragma once

#include "app/wiederherstellung.h"
#include "tests/wizard/beispielblatt.h"

#include <QDir>

#include <deque>
#include <optional>

/// One run of the program on made-up values, whose recovery keeps its files in a folder of the
/// test's. It looks at the work when it is told to.
class Programmlauf : public PageFixture
{
public:
    using Antwort = Wiederherstellung::Antwort;

    explicit Programmlauf(int page, QString recoveryFolder, int points = 4,
                          const QLocale &locale = QLocale(QLocale::German, QLocale::Germany))
        : PageFixture(page, 3, points, locale), folderOfRecovery(std::move(recoveryFolder))
    {
    }

    /// Opens the made-up calibration, and from then on keeps the work.
    void start(std::chrono::milliseconds delay = std::chrono::hours(1))
    {
        open();
        recover(delay);
    }

    /// Opens nothing, as after a start.
    void startEmpty()
    {
        document.Reset();
        WizardFixture::open();
        recover();
    }

    void recover(std::chrono::milliseconds delay = std::chrono::hours(1))
    {
        const auto ask = [this](QWidget *, const Wiederherstellung::Fund &found) {
            offers.push_back(found);
            if (answersToOffers.empty())
                return Antwort::Später;
            const Antwort answer = answersToOffers.front();
            answersToOffers.pop_front();
            return answer;
        };
        recovery.emplace(
            Wiederherstellung::Umgebung{folderOfRecovery, [this] { return now; }, ask, delay},
            dialogs);
        recovery->watch(document, *window);
    }

    /// Types \a value into the first cell of the values and has it kept.
    void typeAndKeep(const QString &value = u"9"_qs)
    {
        type(valuesGrid, 1, 2, value);
        recovery->check();
        if (files().isEmpty())
            qFatal("nothing is kept");
    }

    /// Closes the window as a user does who wants nothing of it.
    void end()
    {
        dialogs.answers = {Dialogs::Answer::No};
        window->close();
    }

    QStringList files() const { return filesIn(folderOfRecovery); }
    static QStringList filesIn(const QString &folder)
    {
        return QDir(folder).entryList({u"*.xml"_qs}, QDir::Files);
    }

    /// What a clean-up may do that knows nothing of running programs.
    void removeLock() const
    {
        const QDir dir(folderOfRecovery);
        if (!QFile::remove(dir.filePath(dir.entryList({u"*.lock"_qs}).value(0))))
            qFatal("there is no lock");
    }

    /// What a start after a crash finds: the files as they are now, with nobody's lock, in a folder
    /// of their own.
    QString crash(const QTemporaryDir &disk) const
    {
        const QString target = disk.filePath(u"nach dem Absturz"_qs);
        QDir().mkpath(target);
        for (const QString &name : files())
            QFile::copy(folderOfRecovery + u'/' + name, target + u'/' + name);
        return target;
    }

    QString folderOfRecovery;
    QDateTime now{QDate(2026, 3, 14), QTime(15, 9, 26)};
    std::deque<Antwort> answersToOffers;
    std::vector<Wiederherstellung::Fund> offers;
    std::optional<Wiederherstellung> recovery; ///< before the window, as in the program
};

/// Text keys and values of a document, numbers as they are saved.
inline QMap<QString, QString> textsOf(const Kalibrierung &document)
{
    QMap<QString, QString> texts;
    document.DataStore().forEach([&](const QString &key, const Variant &value) {
        if (key != u"IsDirty" && key != u"AssistentActivePage")
            texts.insert(key, document.values().text(value));
    });
    return texts;
}
