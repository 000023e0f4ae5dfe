// The results, their display texts and the calculation options of the document.

#include "core/baskalibrierungwendral.h"
#include "core/kalibrierung.h"
#include "core/runtimeerror.h"

#include <cmath>
#include <limits>

namespace {

const QString meansKey = QStringLiteral("Nachkommastellen Mittelwerte");
const QString variancesKey = QStringLiteral("Nachkommastellen Varianzen");
const QString deviationsKey = QStringLiteral("Nachkommastellen Standardabweichung");
const QString covariancesKey = QStringLiteral("Nachkommastellen Kovarianzen");
const QString determinationsKey = u"Nachkommastellen Bestimmtheitsmaße"_qs;
const QString slopesKey = QStringLiteral("Nachkommastellen Anstieg");
const QString interceptsKey = QStringLiteral("Nachkommastellen Achsenabschnitt");
const QString roundKey = QStringLiteral("Zwischenergebnisse runden");
const QString minimumKey =
    u"minimales Bestimmtheitsmaß Indirektes Prüfmerkmal, Direktes Prüfmerkmal"_qs;

// The text that result() gives, or "(Fehler)" where it raises an error.
template <typename Result>
QString orErrorText(Result result)
{
    try {
        return result();
    } catch (const RunTimeError &) {
        return QStringLiteral("(Fehler)");
    }
}

} // namespace

std::int32_t Kalibrierung::StatistikPrüfpunkte()
{
    return m_auswertung.pointCount();
}

double Kalibrierung::StatistikMittelwert(MerkmalEnum merkmal)
{
    return m_auswertung.mittelwert(merkmal);
}

double Kalibrierung::StatistikVarianz(MerkmalEnum merkmal)
{
    return m_auswertung.varianz(merkmal);
}

double Kalibrierung::StatistikStandardabweichung(MerkmalEnum merkmal)
{
    return std::sqrt(m_auswertung.varianz(merkmal));
}

double Kalibrierung::StatistikKovarianz(MerkmalEnum x, MerkmalEnum y)
{
    return m_auswertung.kovarianz(x, y);
}

double Kalibrierung::StatistikBestimmtheitsmaß(MerkmalEnum x, MerkmalEnum y)
{
    return m_auswertung.bestimmtheitsmass(x, y);
}

double Kalibrierung::StatistikKalibriergeradeAnstieg(MerkmalEnum x, MerkmalEnum y)
{
    return m_auswertung.anstieg(x, y);
}

double Kalibrierung::StatistikKalibriergeradeAchsenabschnitt(MerkmalEnum x, MerkmalEnum y)
{
    return m_auswertung.achsenabschnitt(x, y);
}

// In each of these the result comes before its places: both can fail, and both can add keys.

QString Kalibrierung::StatistikMittelwertString(MerkmalEnum merkmal)
{
    const double result = StatistikMittelwert(merkmal);
    return m_values.display(result, NachkommastellenMittelwerte());
}

QString Kalibrierung::StatistikVarianzString(MerkmalEnum merkmal)
{
    const double result = StatistikVarianz(merkmal);
    return m_values.display(result, NachkommastellenVarianzen());
}

QString Kalibrierung::StatistikStandardabweichungString(MerkmalEnum merkmal)
{
    const double result = StatistikStandardabweichung(merkmal);
    return m_values.display(result, NachkommastellenStandardabweichung());
}

QString Kalibrierung::StatistikKovarianzString(MerkmalEnum x, MerkmalEnum y)
{
    const double result = StatistikKovarianz(x, y);
    return m_values.display(result, NachkommastellenKovarianzen());
}

QString Kalibrierung::StatistikBestimmtheitsmaßString(MerkmalEnum x, MerkmalEnum y)
{
    return orErrorText([&] {
        const double result = StatistikBestimmtheitsmaß(x, y);
        return m_values.display(result, NachkommastellenBestimmtheitsmaße());
    });
}

QString Kalibrierung::StatistikKalibriergeradeAnstiegString(MerkmalEnum x, MerkmalEnum y)
{
    return orErrorText([&] {
        const double result = StatistikKalibriergeradeAnstieg(x, y);
        return m_values.display(result, NachkommastellenAnstieg());
    });
}

QString Kalibrierung::StatistikKalibriergeradeAchsenabschnittString(MerkmalEnum x, MerkmalEnum y)
{
    return orErrorText([&] {
        const double result = StatistikKalibriergeradeAchsenabschnitt(x, y);
        return m_values.display(result, NachkommastellenAchsenabschnitt());
    });
}

bool Kalibrierung::StatistikBestimmtheitsmaßIndirektDirektOk()
{
    try {
        const double reached = StatistikBestimmtheitsmaß(mIndirekt, mDirekt);
        const double minimum = MinBestimmtheitsmaßIndirektDirekt();
        // A value that equals the minimum but for its last bits passes.
        return reached >= minimum - 8 * std::numeric_limits<double>::epsilon() * minimum;
    } catch (const RunTimeError &) {
        return false;
    }
}

std::int32_t Kalibrierung::places(const QString &key)
{
    return toWhole(leadingNumber(m_values.text(m_store.item(key))));
}

std::int32_t Kalibrierung::NachkommastellenMittelwerte()
{
    return places(meansKey);
}
void Kalibrierung::setNachkommastellenMittelwerte(std::int32_t count)
{
    DataStoreLet(meansKey, count);
}

std::int32_t Kalibrierung::NachkommastellenVarianzen()
{
    return places(variancesKey);
}
void Kalibrierung::setNachkommastellenVarianzen(std::int32_t count)
{
    DataStoreLet(variancesKey, count);
}

std::int32_t Kalibrierung::NachkommastellenStandardabweichung()
{
    return places(deviationsKey);
}
void Kalibrierung::setNachkommastellenStandardabweichung(std::int32_t count)
{
    DataStoreLet(deviationsKey, count);
}

std::int32_t Kalibrierung::NachkommastellenKovarianzen()
{
    return places(covariancesKey);
}
void Kalibrierung::setNachkommastellenKovarianzen(std::int32_t count)
{
    DataStoreLet(covariancesKey, count);
}

std::int32_t Kalibrierung::NachkommastellenBestimmtheitsmaße()
{
    return places(determinationsKey);
}
void Kalibrierung::setNachkommastellenBestimmtheitsmaße(std::int32_t count)
{
    DataStoreLet(determinationsKey, count);
}

std::int32_t Kalibrierung::NachkommastellenAnstieg()
{
    return places(slopesKey);
}
void Kalibrierung::setNachkommastellenAnstieg(std::int32_t count)
{
    DataStoreLet(slopesKey, count);
}

std::int32_t Kalibrierung::NachkommastellenAchsenabschnitt()
{
    return places(interceptsKey);
}
void Kalibrierung::setNachkommastellenAchsenabschnitt(std::int32_t count)
{
    DataStoreLet(interceptsKey, count);
}

bool Kalibrierung::ZwischenergebnisseRunden()
{
    return m_values.boolean(m_store.item(roundKey));
}
void Kalibrierung::setZwischenergebnisseRunden(bool round)
{
    DataStoreLet(roundKey, round);
}

double Kalibrierung::MinBestimmtheitsmaßIndirektDirekt()
{
    const Variant &stored = m_store.item(minimumKey);
    if (std::holds_alternative<Null>(stored))
        throw RunTimeError(ErrorNumber::TypeMismatch);
    return m_values.number(stored);
}

void Kalibrierung::setMinBestimmtheitsmaßIndirektDirekt(double minimum)
{
    DataStoreLet(minimumKey, minimum);
}
