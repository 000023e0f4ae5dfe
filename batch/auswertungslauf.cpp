#include "batch/auswertungslauf.h"

#include "batch/jsonbericht.h"
#include "batch/textbericht.h"
#include "core/kalibrierung.h"

#include <new>
#include <optional>

namespace {

QByteArray errorLine(const QString &file, const RunTimeError &error)
{
    return u"kalibrierung-auswertung: %1: %2 (%3)\n"_qs.arg(file, error.description())
        .arg(error.number())
        .toUtf8();
}

// Runs one file; false where it could not be read or saved.
class Lauf
{
public:
    Lauf(const Optionen &options, const Ausgabe &output, const Ausgabe &errors)
        : m_options(options), m_output(output), m_errors(errors), m_document(options.locale)
    {
    }

    bool werteAus(const QString &file);
    bool outputFailed() const { return m_outputFailed; }

private:
    std::optional<RunTimeError> lade(const QString &file);
    bool speichere(const QString &file);
    void write(const QByteArray &bytes) { m_outputFailed = !m_output(bytes) || m_outputFailed; }

    const Optionen &m_options;
    const Ausgabe &m_output;
    const Ausgabe &m_errors;
    Kalibrierung m_document; ///< one for all files: loading replaces everything
    bool m_first = true;
    bool m_outputFailed = false;
};

bool Lauf::werteAus(const QString &file)
{
    const bool json = m_options.format == Optionen::Format::Json;
    if (const std::optional<RunTimeError> error = lade(file)) {
        m_errors(errorLine(file, *error));
        if (json)
            write(jsonFehler(file, *error));
        return false;
    }
    m_document.setIsDirty(false);
    // Before the evaluation, whose reading of missing options adds them to the store.
    const bool saved = m_options.speichern.isEmpty() || speichere(m_options.speichern);
    if (json) {
        write(jsonBericht(file, m_document));
    } else {
        write((m_first ? QByteArray() : QByteArray("\n\n")) +
              textBericht(file, m_document).toUtf8());
        m_first = false;
    }
    return saved;
}

std::optional<RunTimeError> Lauf::lade(const QString &file)
{
    try {
        m_document.LoadFile(file);
        return std::nullopt;
    } catch (const RunTimeError &error) {
        return error;
    } catch (const std::bad_alloc &) {
        return RunTimeError(ErrorNumber::OutOfMemory);
    }
}

bool Lauf::speichere(const QString &file)
{
    try {
        m_document.SaveFile(file);
        return true;
    } catch (const RunTimeError &error) {
        m_errors(errorLine(file, error));
        return false;
    }
}

} // namespace

int auswertungslauf(const Optionen &options, const Ausgabe &output, const Ausgabe &errors)
{
    if (!options.fehler.isEmpty()) {
        errors(u"kalibrierung-auswertung: %1 Hilfe: kalibrierung-auswertung --help\n"_qs
                   .arg(options.fehler)
                   .toUtf8());
        return 2;
    }
    if (options.hilfe || options.version)
        return output((options.hilfe ? hilfetext() : versionstext()).toUtf8()) ? 0 : 1;
    Lauf lauf(options, output, errors);
    bool good = true;
    for (const QString &file : options.dateien)
        good = lauf.werteAus(file) && good;
    if (lauf.outputFailed()) {
        errors(
            u"kalibrierung-auswertung: Die Ausgabe konnte nicht vollständig geschrieben werden.\n"_qs
                .toUtf8());
        return 1;
    }
    return good ? 0 : 1;
}
