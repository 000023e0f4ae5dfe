#include "export/tabellenausgabe.h"

#include "core/atomicfile.h"
#include "core/kalibrierung.h"
#include "export/arbeitsmappe.h"
#include "export/auswertungsblatt.h"
#include "export/cnumericlocale.h"
#include "export/geradenblatt.h"
#include "export/mappenpruefung.h"
#include "export/messwerteblatt.h"
#include "export/protokollblatt.h"
#include "export/rechenplan.h"

#include <chrono>
#include <cstdint>
#include <future>
#include <numeric>
#include <vector>

namespace {

// Measured shares of a large document's time.
constexpr int rowsDone = 60;
constexpr int packed = 90;
constexpr int checked = 99;
constexpr int complete = 100;

// Reading a key that the document does not have adds it; afterwards such keys are taken out again.
class OhneSpuren
{
public:
    explicit OhneSpuren(KeyedStore &store) : m_store(store), m_size(store.size()) {}
    ~OhneSpuren()
    {
        if (m_store.size() == m_size)
            return;
        const std::vector<QString> keys = m_store.keys(); // new ones come last
        for (std::size_t i = m_size; i < keys.size(); ++i)
            m_store.remove(keys[i]);
    }
    Q_DISABLE_COPY_MOVE(OhneSpuren)

private:
    KeyedStore &m_store;
    std::size_t m_size;
};

class Ausgabe
{
public:
    Ausgabe(Kalibrierung &document, const Tabellenfortschritt &progress)
        : m_document(document)
        , m_points(punkteJeFeld(document))
        , m_total(std::accumulate(m_points.begin(), m_points.end(), 0))
        , m_progress(progress)
    {
    }

    bool schreibe(const QString &target, const QDateTime &created);

private:
    bool report(int percent);
    bool fuelle(Arbeitsmappe &book);
    void packe(Arbeitsmappe &book);
    bool pruefe(const QString &path);

    Kalibrierung &m_document;
    std::vector<int> m_points;
    int m_total;
    int m_row = 0;
    const Tabellenfortschritt &m_progress;
    bool m_cancelled = false;
    std::map<QString, Blattumfang> m_sheets;
};

bool Ausgabe::report(int percent)
{
    m_cancelled = m_cancelled || (m_progress && !m_progress(percent));
    return !m_cancelled;
}

bool Ausgabe::fuelle(Arbeitsmappe &book)
{
    using namespace tabellenplan;
    Blatt values(book, messwerte);
    Blatt results(book, auswertung);
    Blatt lines(book, geraden);
    Blatt texts(book, protokolldaten);
    constexpr int slice = 2000; ///< rows between two reports
    const Messwerttabelle table = schreibeMesswerte(values, m_document, m_points, [this] {
        ++m_row;
        return m_row % slice != 0 ||
               report(static_cast<int>(std::int64_t{m_row} * rowsDone / m_total));
    });
    if (m_cancelled)
        return false;
    const Rechenplan plan = rechenplan(m_document, table);
    schreibeAuswertung(results, m_document, table, plan);
    schreibeGeraden(book, lines, m_document, table, plan);
    schreibeProtokolldaten(texts, m_document);
    int number = 0;
    for (const Blatt *sheet : {&values, &results, &lines, &texts})
        m_sheets[u"xl/worksheets/sheet%1.xml"_qs.arg(++number)] = sheet->umfang();
    return true;
}

// The library packs in one call. Whoever watches is asked and told meanwhile, so that a window
// stays alive; what is cancelled then ends with the packing.
void Ausgabe::packe(Arbeitsmappe &book)
{
    if (!m_progress) {
        book.close();
        return;
    }
    constexpr std::chrono::milliseconds betweenReports(50);
    // On a thread of its own, or in get() where the system gives none.
    std::future<void> packing = std::async([&book] {
        const CNumericLocale withPoint;
        book.close();
    });
    while (packing.wait_for(betweenReports) == std::future_status::timeout)
        report(rowsDone);
    packing.get();
}

bool Ausgabe::pruefe(const QString &path)
{
    return pruefeMappe(path, m_sheets, [this](std::uint64_t read, std::uint64_t total) {
        return report(packed + static_cast<int>(read * (checked - packed) / total));
    });
}

bool Ausgabe::schreibe(const QString &target, const QDateTime &created)
{
    AtomicFile file(target);
    const CNumericLocale withPoint;
    Arbeitsmappe book(file.temporaryPath(), created);
    if (!fuelle(book) || !report(rowsDone))
        return false;
    packe(book);
    if (!report(packed) || !pruefe(file.temporaryPath()))
        return false;
    file.commit();
    report(complete);
    return true;
}

} // namespace

bool schreibeTabelle(Kalibrierung &document, const QString &target, const QDateTime &created,
                     const Tabellenfortschritt &progress)
{
    const OhneSpuren untouched(document.DataStore());
    return Ausgabe(document, progress).schreibe(target, created);
}
