#pragma once

#include "core/runtimeerror.h"
#include "wizard/frmassistent.h"

#include <QDateTime>
#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QTimer>

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

class Dialogs;
class Kalibrierung;
class Wiederherstellungsplatz;

/// Keeps unsaved work where the next start finds it, should the program end without order.
///
/// It looks every few seconds, and writes where the work has changed: a document that is dirty, or
/// entries of the visible page that it hasn't got. Once the work is saved or not wanted any more
/// the file is removed. It never speaks up but once: a failure is told below the pages.
class Wiederherstellung : public QObject
{
public:
    enum class Antwort { Wiederherstellen, Verwerfen, Später };

    /// Unsaved work of a program that is gone.
    struct Fund
    {
        QDateTime time;
        QString fileName; ///< empty for work that was never saved
    };

    struct Umgebung
    {
        QString folder; ///< made when first needed
        std::function<QDateTime()> now;
        std::function<Antwort(QWidget *owner, const Fund &found)> ask;
        /// Between two looks; longer where one look takes more than a twentieth of it.
        std::chrono::milliseconds delay{3000};
    };

    Wiederherstellung(Umgebung environment, Dialogs &dialogs);
    /// Leaves what is kept: an orderly end is told by the window, which asks before it closes.
    ~Wiederherstellung() override;

    /// Keeps the work in \a window, which shows \a document, from now on.
    void watch(Kalibrierung &document, frmAssistent &window);

    /// Offers what earlier programs have left, one after the other, until something is restored
    /// into the window. Files that can't be read are told about once.
    void offer();

    /// Writes or removes the file, as the work asks for it.
    void check();

private:
    void look();
    void write(const Arbeitsstand &work);
    void forget();
    void end();
    void tellOnce(ErrorNumber reason);
    bool offerFile(const QString &path);
    bool offerWork(std::unique_ptr<Wiederherstellungsplatz> &place);
    void restore(const Arbeitsstand &work, std::unique_ptr<Wiederherstellungsplatz> &place);
    void report(const QString &text);
    void reportUnreadable();

    Umgebung m_environment;
    Dialogs &m_dialogs;
    QPointer<Kalibrierung> m_document;
    QPointer<frmAssistent> m_window;
    QTimer m_timer;
    std::unique_ptr<Wiederherstellungsplatz> m_place; ///< none until something is to be kept
    std::optional<Arbeitsstand> m_written;            ///< what is in the file
    std::uint64_t m_writtenRevision = 0;              ///< of the document's store
    bool m_told = false;
    bool m_failing = false; ///< a notice stands below the pages
    QStringList m_reports;  ///< what is to be said when all is offered
};
