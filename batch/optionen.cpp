#include "batch/optionen.h"

#include "core/produkt.h"

namespace {

// Takes words one after the other; the first fault ends the reading.
class Leser
{
public:
    Leser(const QStringList &arguments, const QLocale &userLocale) : m_words(arguments)
    {
        m_result.locale = userLocale;
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
        } else if (name == u"--format" || name == u"--gebietsschema" || name == u"--speichern") {
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
        if (name == u"--format") {
            if (value != u"text" && value != u"json")
                m_result.fehler =
                    u"„%1“ ist kein Format; möglich sind „text“ und „json“."_qs.arg(value);
            m_result.format = value == u"json" ? Optionen::Format::Json : Optionen::Format::Text;
        } else if (name == u"--speichern") {
            m_result.speichern = value;
            if (value.isEmpty())
                m_result.fehler = u"Die Option „--speichern“ braucht einen Dateinamen."_qs;
        } else {
            m_result.locale = QLocale(value);
            if (m_result.locale.language() == QLocale::C)
                m_result.fehler = u"Das Gebietsschema „%1“ ist nicht bekannt."_qs.arg(value);
        }
    }

    void prüfe()
    {
        if (m_result.dateien.isEmpty())
            m_result.fehler = u"Es ist keine Datei angegeben."_qs;
        else if (!m_result.speichern.isEmpty() && m_result.dateien.size() > 1)
            m_result.fehler = u"Mit „--speichern“ ist nur eine Datei möglich."_qs;
    }

    QStringList m_words;
    Optionen m_result;
    bool m_onlyFiles = false;
};

} // namespace

Optionen leseOptionen(const QStringList &arguments, const QLocale &userLocale)
{
    return Leser(arguments, userLocale).lies();
}

QString hilfetext()
{
    return u"Aufruf: kalibrierung-auswertung [Optionen] DATEI…\n"
           u"\n"
           u"Wertet Kalibrierdateien (XML) aus und gibt die Ergebnisse aus.\n"
           u"\n"
           u"  --format text|json     Ausgabe als Tabelle (Vorgabe) oder je Datei ein JSON-Objekt\n"
           u"                         in einer Zeile\n"
           u"  --gebietsschema NAME   wie Zahlen in den Dateien stehen und ausgegeben werden,\n"
           u"                         z. B. de_DE oder en_US; Vorgabe ist das Gebietsschema des\n"
           u"                         Benutzers, de_DE, wo keines eingestellt ist\n"
           u"  --speichern ZIEL.xml   die (eine) Datei laden und unter ZIEL.xml wieder speichern\n"
           u"  --help                 diese Hilfe\n"
           u"  --version              Programmversion\n"
           u"\n"
           u"Rückgabewert: 0 alle Dateien gelesen, 1 mindestens eine Datei nicht gelesen oder "
           u"nicht\n"
           u"gespeichert, 2 falscher Aufruf.\n"_qs;
}

QString versionstext()
{
    return u"%1, Auswertung, Version %2.%3.%4\n"_qs.arg(produkt::name())
        .arg(produkt::versionMajor)
        .arg(produkt::versionMinor)
        .arg(produkt::versionRevision);
}
