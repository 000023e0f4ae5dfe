#include "batch/auswertungslauf.h"

#include "batch/ausgabeziele.h"
#include "batch/csvbericht.h"
#include "batch/geordneterlauf.h"
#include "batch/jsonbericht.h"
#include "batch/textbericht.h"
#include "core/kalibrierung.h"
#include "export/tabellenausgabe.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>

#include <algorithm>
#include <memory>
#include <new>
#include <optional>
#include <thread>
#include <utility>

namespace {

QByteArray errorLine(const QString &file, const RunTimeError &error)
{
    // A name may hold line breaks, and the error is one line.
    QString name = file;
    std::replace_if(
        name.begin(), name.end(), [](QChar c) { return c.category() == QChar::Other_Control; },
        QChar(QChar::ReplacementCharacter));
    return u"kalibrierung-auswertung: %1: %2 (%3)\n"_qs
        .arg(name, error.description(), QString::number(error.number()))
        .toUtf8();
}

// Where spreadsheets and protocols go; empty without them.
struct Ziele
{
    Ausgabeziele tabellen;
    Ausgabeziele protokolle;
};

// What one file gives.
struct Dateiergebnis
{
    QByteArray bericht;
    QByteArray fehler; ///< whole lines
    bool gut = true;
};

// Evaluates one file after the other. Each thread has one of its own.
class Auswerter
{
public:
    Auswerter(const Optionen &options, const Ziele &targets,
              const Protokollschreiber &writeProtocol)
        : m_options(options)
        , m_targets(targets)
        , m_writeProtocol(writeProtocol)
        , m_document(options.locale)
    {
    }

    Dateiergebnis werteAus(std::size_t number);

private:
    template <typename Work>
    std::optional<RunTimeError> versuche(Work work);
    void scheitere(const QString &file, const RunTimeError &error, Dateiergebnis &result) const;
    void schreibeZiele(std::size_t number, Dateiergebnis &result);
    QByteArray bericht(const QString &file);

    const Optionen &m_options;
    const Ziele &m_targets;
    const Protokollschreiber &m_writeProtocol;
    Kalibrierung m_document; ///< one for all files: loading replaces everything
};

template <typename Work>
std::optional<RunTimeError> Auswerter::versuche(Work work)
{
    try {
        work();
        return std::nullopt;
    } catch (const RunTimeError &error) {
        return error;
    } catch (const std::bad_alloc &) {
        return RunTimeError(ErrorNumber::OutOfMemory);
    }
}

Dateiergebnis Auswerter::werteAus(std::size_t number)
{
    const QString &file = m_options.dateien[static_cast<qsizetype>(number)];
    Dateiergebnis result;
    if (const auto error = versuche([&] { m_document.LoadFile(file); })) {
        scheitere(file, *error, result);
        return result;
    }
    m_document.setIsDirty(false);
    // Before the evaluation, whose reading of missing options adds them to the store.
    schreibeZiele(number, result);
    if (const auto error = versuche([&] { result.bericht = bericht(file); }))
        scheitere(file, *error, result);
    return result;
}

// Reports \a error in place of the results of \a file.
void Auswerter::scheitere(const QString &file, const RunTimeError &error,
                          Dateiergebnis &result) const
{
    result.fehler += errorLine(file, error);
    result.gut = false;
    if (m_options.format == Optionen::Format::Json)
        result.bericht = jsonFehler(file, error);
    else if (m_options.format == Optionen::Format::Csv)
        result.bericht = csvFehler(file, error);
}

void Auswerter::schreibeZiele(std::size_t number, Dateiergebnis &result)
{
    const auto note = [&](const QString &target, const std::optional<RunTimeError> &error) {
        if (!error)
            return;
        result.fehler += errorLine(target, *error);
        result.gut = false;
    };
    const QString &copy = m_options.speichern;
    if (!copy.isEmpty())
        note(copy, versuche([&] { m_document.SaveFile(copy); }));
    if (!m_targets.tabellen.dateien.isEmpty()) {
        const QString &target = m_targets.tabellen.dateien[static_cast<qsizetype>(number)];
        note(target, versuche([&] { schreibeTabelle(m_document, target, m_options.zeitpunkt); }));
    }
    if (!m_targets.protokolle.dateien.isEmpty()) {
        const QString &target = m_targets.protokolle.dateien[static_cast<qsizetype>(number)];
        note(target, versuche([&] { m_writeProtocol(m_document, m_options.typ, target); }));
    }
}

QByteArray Auswerter::bericht(const QString &file)
{
    switch (m_options.format) {
    case Optionen::Format::Json:
        return jsonBericht(file, m_document);
    case Optionen::Format::Csv:
        return csvBericht(file, m_document);
    case Optionen::Format::Text:
        break;
    }
    return textBericht(file, m_document).toUtf8();
}

// Writes the files' results one after the other and keeps in mind what failed.
class Schreiber
{
public:
    Schreiber(const Optionen &options, const Ausgabe &output, const Ausgabe &errors)
        : m_options(options), m_output(output), m_errors(errors)
    {
        if (m_options.format == Optionen::Format::Csv)
            write(csvKopf());
    }

    void nimm(const Dateiergebnis &result)
    {
        m_good = m_good && result.gut;
        if (!result.fehler.isEmpty())
            m_errors(result.fehler);
        if (result.bericht.isEmpty())
            return;
        if (m_options.format == Optionen::Format::Text && !std::exchange(m_first, false))
            write("\n\n");
        write(result.bericht);
    }

    bool gut() const { return m_good; }
    bool outputFailed() const { return m_outputFailed; }

private:
    void write(const QByteArray &bytes) { m_outputFailed = !m_output(bytes) || m_outputFailed; }

    const Optionen &m_options;
    const Ausgabe &m_output;
    const Ausgabe &m_errors;
    bool m_first = true;
    bool m_good = true;
    bool m_outputFailed = false;
};

unsigned threadsFor(const Optionen &options)
{
    // The library tells 0 where it does not know.
    return options.parallel > 0 ? options.parallel
                                : std::max(std::thread::hardware_concurrency(), 1U);
}

QByteArray usageLine(const QString &text)
{
    return u"kalibrierung-auswertung: %1 Hilfe: kalibrierung-auswertung --help\n"_qs.arg(text)
        .toUtf8();
}

// The path that tells two names of one file apart from two files, also before it is there.
QString wahrerPfad(const QString &file)
{
    const QFileInfo info(file);
    return info.exists() ? info.canonicalFilePath() : QDir::cleanPath(info.absoluteFilePath());
}

// Why the files and targets of \a options can't go together: an output would replace an input or
// another output. Empty where all is well.
QString überschneidung(const Optionen &options, const Ziele &targets)
{
    QSet<QString> inputs;
    for (const QString &input : options.dateien)
        inputs.insert(wahrerPfad(input));
    QSet<QString> outputs;
    if (!options.speichern.isEmpty()) // may be the input itself: saved where it was loaded
        outputs.insert(wahrerPfad(options.speichern));
    for (const QString &target : targets.tabellen.dateien + targets.protokolle.dateien) {
        const QString path = wahrerPfad(target);
        if (inputs.contains(path))
            return u"„%1“ ist eine der angegebenen Dateien."_qs.arg(target);
        if (outputs.contains(path))
            return u"„%1“ ist Ziel von zwei Ausgaben."_qs.arg(target);
        outputs.insert(path);
    }
    return {};
}

Ziele zieleVon(const Optionen &options)
{
    const auto targets = [&](const QString &target, const QString &suffix) {
        return target.isEmpty() ? Ausgabeziele{} : ausgabeziele(options.dateien, target, suffix);
    };
    return {targets(options.tabelle, u".xlsx"_qs), targets(options.protokoll, u".pdf"_qs)};
}

} // namespace

int auswertungslauf(const Optionen &options, const Ausgabe &output, const Ausgabe &errors,
                    const Protokollschreiber &writeProtocol)
{
    if (!options.fehler.isEmpty()) {
        errors(usageLine(options.fehler));
        return 2;
    }
    if (options.hilfe || options.version)
        return output((options.hilfe ? hilfetext() : versionstext()).toUtf8()) ? 0 : 1;
    const Ziele targets = zieleVon(options);
    if (const QString fault = überschneidung(options, targets); !fault.isEmpty()) {
        errors(usageLine(fault));
        return 2;
    }
    for (const QString &folder : {targets.tabellen.ordner, targets.protokolle.ordner}) {
        if (!folder.isEmpty())
            QDir().mkpath(folder); // where that fails, every file says so
    }

    Schreiber writer(options, output, errors);
    GeordneterLauf<Dateiergebnis>::laufe(
        static_cast<std::size_t>(options.dateien.size()), threadsFor(options),
        [&] {
            const auto worker = std::make_shared<Auswerter>(options, targets, writeProtocol);
            return [worker](std::size_t number) { return worker->werteAus(number); };
        },
        [&](const Dateiergebnis &result) { writer.nimm(result); });
    if (writer.outputFailed()) {
        errors(
            u"kalibrierung-auswertung: Die Ausgabe konnte nicht vollständig geschrieben werden.\n"_qs
                .toUtf8());
        return 1;
    }
    return writer.gut() ? 0 : 1;
}
