#include "batch/jsonbericht.h"

#include "batch/ergebnisse.h"
#include "batch/jsonwriter.h"
#include "core/kalibrierung.h"

#include <utility>
#include <vector>

namespace {

class Bericht
{
public:
    explicit Bericht(Kalibrierung &document) : m_document(document) {}

    QByteArray bytes(const QString &datei);

private:
    template <typename Value>
    void addOrNull(const QString &path, const QString &name, Value value);
    void addMerkmal(const QString &name, Prüfmerkmal &merkmal);
    void addErgebnisse(const std::vector<Ergebnisgruppe> &groups);
    void addAnzeige(const std::vector<Ergebnisgruppe> &groups);
    void addUrteil();
    void addFehler();

    Kalibrierung &m_document;
    JsonWriter m_json;
    std::vector<std::pair<QString, RunTimeError>> m_errors; ///< path and reason
};

QByteArray Bericht::bytes(const QString &datei)
{
    m_json.add(QStringLiteral("datei"), datei);
    addOrNull({}, QStringLiteral("prueffelder"),
              [&] { return qint64{m_document.PrüffelderAnzahl()}; });
    addOrNull({}, QStringLiteral("pruefpunkte"),
              [&] { return qint64{m_document.PrüfpunkteTotal()}; });
    m_json.beginObject(QStringLiteral("merkmale"));
    addMerkmal(QStringLiteral("direkt"), m_document.DirektesPrüfmerkmal());
    addMerkmal(QStringLiteral("indirekt"), m_document.IndirektesPrüfmerkmal());
    addMerkmal(QStringLiteral("kovariable"), m_document.Kovariable());
    m_json.endObject();
    const std::vector<Ergebnisgruppe> groups = ergebnisse(m_document);
    addErgebnisse(groups);
    addUrteil();
    addAnzeige(groups);
    addFehler();
    return m_json.finish();
}

template <typename Value>
void Bericht::addOrNull(const QString &path, const QString &name, Value value)
{
    try {
        m_json.add(name, value());
    } catch (const RunTimeError &error) {
        m_json.addNull(name);
        m_errors.emplace_back(path + name, error);
    }
}

void Bericht::addMerkmal(const QString &name, Prüfmerkmal &merkmal)
{
    const QString path = u"merkmale."_qs + name + u'.';
    m_json.beginObject(name);
    addOrNull(path, QStringLiteral("name"), [&] { return merkmal.Name(); });
    addOrNull(path, QStringLiteral("formelzeichen"), [&] { return merkmal.Formelzeichen(); });
    addOrNull(path, QStringLiteral("einheit"), [&] { return merkmal.Einheit(); });
    addOrNull(path, QStringLiteral("nachkommastellen"),
              [&] { return qint64{merkmal.Nachkommastellen()}; });
    m_json.endObject();
}

void Bericht::addErgebnisse(const std::vector<Ergebnisgruppe> &groups)
{
    for (const Ergebnisgruppe &group : groups) {
        m_json.beginObject(group.schluessel);
        for (const Ergebnis &result : group.ergebnisse) {
            addOrNull(group.schluessel + u'.', result.schluessel, [&] {
                if (result.fehler)
                    throw *result.fehler;
                return *result.wert;
            });
        }
        m_json.endObject();
    }
}

void Bericht::addUrteil()
{
    addOrNull({}, QStringLiteral("minimum"),
              [&] { return m_document.MinBestimmtheitsmaßIndirektDirekt(); });
    const bool ok = m_document.StatistikBestimmtheitsmaßIndirektDirektOk();
    m_json.add(QStringLiteral("ok"), ok);
    m_json.add(QStringLiteral("urteil"), ok ? QStringLiteral("gut") : QStringLiteral("kritisch"));
}

void Bericht::addAnzeige(const std::vector<Ergebnisgruppe> &groups)
{
    m_json.beginObject(QStringLiteral("anzeige"));
    for (const Ergebnisgruppe &group : groups) {
        m_json.beginObject(group.schluessel);
        for (const Ergebnis &result : group.ergebnisse)
            m_json.add(result.schluessel, result.anzeige);
        m_json.endObject();
    }
    m_json.endObject();
}

void addFehlertext(JsonWriter &json, const QString &path, const RunTimeError &error)
{
    json.beginObject(path);
    json.add(QStringLiteral("nummer"), qint64{error.number()});
    json.add(QStringLiteral("text"), error.description());
    json.endObject();
}

void Bericht::addFehler()
{
    m_json.beginObject(QStringLiteral("fehler"));
    for (const auto &[path, error] : m_errors)
        addFehlertext(m_json, path, error);
    m_json.endObject();
}

} // namespace

QByteArray jsonBericht(const QString &datei, Kalibrierung &document)
{
    return Bericht(document).bytes(datei);
}

QByteArray jsonFehler(const QString &datei, const RunTimeError &error)
{
    JsonWriter json;
    json.add(QStringLiteral("datei"), datei);
    json.beginObject(QStringLiteral("fehler"));
    addFehlertext(json, QStringLiteral("datei"), error);
    json.endObject();
    return json.finish();
}
