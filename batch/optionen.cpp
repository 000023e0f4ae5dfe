#include "batch/optionen.h"

#include "core/produkt.h"

namespace {

const QStringList valueOptions{u"--format"_qs,  u"--gebietsschema"_qs, u"--speichern"_qs,
                               u"--tabelle"_qs, u"--protokoll"_qs,     u"--typ"_qs,
                               u"--parallel"_qs};

// Takes words one after the other; the first fault ends the reading.
class Leser
{
public:
    Leser(const QStringList &arguments, const QLocale &userLocale, const QDateTime &now)
        : m_words(arguments)
    {
        m_result.locale = userLocale;
        m_result.zeitpunkt = now;
    }

    Optionen lies()
    {
        while (!m_words.isEmpty() && m_result.fehler.isEmpty())
            liesWort(m_words.takeFirst());
        if (m_result.fehler.isEmpty() && !m_result.hilfe && !m_result.version)
            prüfe();
        return m_result;
    }

private:
    void liesWort(const QString &word)
    {
        if (m_onlyFiles || word == u"-" || !word.startsWith(u'-')) {
            m_result.dateien += word;
            return;
        }
        if (word == u"--") {
            m_onlyFiles = true;
            return;
        }
        const qsizetype equals = word.indexOf(u'=');
        liesOption(word.left(equals < 0 ? word.size() : equals),
                   equals < 0 ? QString() : word.sliced(equals + 1), equals >= 0);
    }

    void liesOption(const QString &name, const QString &attached, bool hasAttached)
    {
        if (name == u"--help" || name == u"-h" || name == u"--hilfe") {
            m_result.hilfe = true;
        } else if (name == u"--version") {
            m_result.version = true;
        } else if (valueOptions.contains(name)) {
            if (!hasAttached && m_words.isEmpty())
                m_result.fehler = u"Die Option „%1“ braucht einen Wert."_qs.arg(name);
            else
                setze(name, hasAttached ? attached : m_words.takeFirst());
            return;
        } else {
            m_result.fehler = u"Die Option „%1“ gibt es nicht."_qs.arg(name);
        }
        if (hasAttached && m_result.fehler.isEmpty())
            m_result.fehler = u"Die Option „%1“ hat keinen Wert."_qs.arg(name);
    }

    void setze(const QString &name, const QString &value)
    {
        if (name == u"--format")
            setzeFormat(value);
        else if (name == u"--speichern")
            setzeZiel(name, value, m_result.speichern);
        else if (name == u"--tabelle")
            setzeZiel(name, value, m_result.tabelle);
        else if (name == u"--protokoll")
            setzeZiel(name, value, m_result.protokoll);
        else if (name == u"--typ")
            setzeTyp(value);
        else if (name == u"--parallel")
            setzeParallel(value);
        else
            setzeGebietsschema(value);
    }

    void setzeFormat(const QString &value)
    {
        using Format = Optionen::Format;
        if (value == u"json")
            m_result.format = Format::Json;
        else if (value == u"csv")
            m_result.format = Format::Csv;
        else if (value == u"text")
            m_result.format = Format::Text;
        else
            m_result.fehler =
                u"„%1“ ist kein Format; möglich sind „text“, „json“ und „csv“."_qs.arg(value);
    }

    void setzeZiel(const QString &name, const QString &value, QString &target)
    {
        target = value;
        if (value.isEmpty())
            m_result.fehler = u"Die Option „%1“ braucht einen Dateinamen."_qs.arg(name);
    }

    void setzeTyp(const QString &value)
    {
        m_hasType = true;
        m_result.typ = value == u"1" ? 1 : 0;
        if (value != u"0" && value != u"1")
            m_result.fehler =
                u"„%1“ ist kein Protokolltyp; möglich sind „0“ und „1“."_qs.arg(value);
    }

    void setzeParallel(const QString &value)
    {
        constexpr unsigned most = 256;
        bool isNumber = false;
        m_result.parallel = value.toUInt(&isNumber);
        if (!isNumber || m_result.parallel < 1 || m_result.parallel > most)
            m_result.fehler =
                u"Die Option „--parallel“ braucht eine Zahl von 1 bis %1."_qs.arg(most);
    }

    void setzeGebietsschema(const QString &value)
    {
        m_result.locale = QLocale(value);
        if (m_result.locale.language() == QLocale::C)
            m_result.fehler = u"Das Gebietsschema „%1“ ist nicht bekannt."_qs.arg(value);
    }

    void prüfe()
    {
        if (m_result.dateien.isEmpty())
            m_result.fehler = u"Es ist keine Datei angegeben."_qs;
        else if (!m_result.speichern.isEmpty() && m_result.dateien.size() > 1)
            m_result.fehler = u"Mit „--speichern“ ist nur eine Datei möglich."_qs;
        else if (m_hasType && m_result.protokoll.isEmpty())
            m_result.fehler = u"„--typ“ gilt nur zusammen mit „--protokoll“."_qs;
        else if (m_result.dateien.size() > 1)
            prüfeOrdner();
    }

    void prüfeOrdner()
    {
        const QString message =
            u"Mit mehreren Dateien braucht „%1“ einen Ordner, in den sie kommen."_qs;
        if (m_result.tabelle.endsWith(u".xlsx", Qt::CaseInsensitive))
            m_result.fehler = message.arg(u"--tabelle"_qs);
        else if (m_result.protokoll.endsWith(u".pdf", Qt::CaseInsensitive))
            m_result.fehler = message.arg(u"--protokoll"_qs);
    }

    QStringList m_words;
    Optionen m_result;
    bool m_onlyFiles = false;
    bool m_hasType = false;
};

} // namespace

Optionen leseOptionen(const QStringList &arguments, const QLocale &userLocale, const QDateTime &now)
{
    return Leser(arguments, userLocale, now).lies();
}

QString hilfetext()
{
    return u"Aufruf: kalibrierung-auswertung [Optionen] DATEI…\n"
           u"\n"
           u"Wertet Kalibrierdateien (XML) aus und gibt die Ergebnisse aus.\n"
           u"\n"
           u"  --format text|json|csv Ausgabe als Tabelle (Vorgabe), je Datei ein JSON-Objekt in\n"
           u"                         einer Zeile, oder je Datei und Ergebnis eine CSV-Zeile\n"
           u"  --tabelle ZIEL.xlsx    die Datei außerdem als Tabellenkalkulation mit Formeln und\n"
           u"                         Diagrammen ablegen; bei mehreren Dateien ist ZIEL ein "
           u"Ordner,\n"
           u"                         die Namen folgen den Dateien\n"
           u"  --protokoll ZIEL.pdf   das Protokoll der Datei als PDF ablegen; bei mehreren "
           u"Dateien\n"
           u"                         ist ZIEL ein Ordner\n"
           u"  --typ 0|1              Protokoll mit Anlegen des Kalibrierfeldes (0, Vorgabe) oder\n"
           u"                         nur mit den Ergebnissen (1)\n"
           u"  --parallel N           so viele Dateien gleichzeitig auswerten (1 bis 256); "
           u"Vorgabe\n"
           u"                         sind alle Prozessoren; die Ausgabe folgt immer der Reihe\n"
           u"  --gebietsschema NAME   wie Zahlen in den Dateien stehen und ausgegeben werden,\n"
           u"                         z. B. de_DE oder en_US; Vorgabe ist das Gebietsschema des\n"
           u"                         Benutzers, de_DE, wo keines eingestellt ist\n"
           u"  --speichern ZIEL.xml   die (eine) Datei laden und unter ZIEL.xml wieder speichern\n"
           u"  --help                 diese Hilfe\n"
           u"  --version              Programmversion\n"
           u"\n"
           u"Rückgabewert: 0 alles gelesen und geschrieben, 1 mindestens eine Datei nicht "
           u"gelesen,\n"
           u"nicht ausgewertet, nicht gespeichert oder nicht als Tabelle oder Protokoll abgelegt, "
           u"oder\n"
           u"die Ausgabe nicht geschrieben, 2 falscher Aufruf.\n"_qs;
}

QString versionstext()
{
    return u"%1, Auswertung, Version %2.%3.%4\n"_qs.arg(produkt::name())
        .arg(produkt::versionMajor)
        .arg(produkt::versionMinor)
        .arg(produkt::versionRevision);
}
