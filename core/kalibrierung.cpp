#include "core/kalibrierung.h"

#include "core/baskalibrierungwendral.h"
#include "core/kalibrierungsdatei.h"
#include "core/propertybag.h"
#include "core/runtimeerror.h"

#include <array>
#include <cmath>
#include <limits>
#include <new>
#include <utility>
#include <vector>

namespace {

const QString isDirtyKey = QStringLiteral("IsDirty");
const QString fieldCountKey = u"Anzahl Prüffelder"_qs;
const QString pointCountKey = u"Prüffeld Prüfpunktanzahl "_qs;
const QString directValueKey = u"Messwert direktes Prüfmerkmal "_qs;
const QString indirectValueKey = u"Messwert indirektes Prüfmerkmal "_qs;
const QString errorText = QStringLiteral("(Fehler)");

constexpr std::int32_t minimumCount = 3; // fields, and points of a field
constexpr std::int32_t defaultPoints = 4;

// Descriptive data of the protocol and the template of each; "??" is for the user to fill in.
const std::array<std::pair<QStringView, QStringView>, 24> protocolDefaults{{
    {u"Unterlage Bodenart DIN 4022", u""},
    {u"Unterlage Bodengruppe DIN 18196", u""},
    {u"Unterlage Anzahl Verdichtungsübergänge", u""},
    {u"Unterlage Wassergehalt", u"??%"},
    {u"Unterlage Trockendichte", u"?? g/cm³"},
    {u"Unterlage Proctordichte", u"?? g/cm³"},
    {u"Unterlage Verdichtungsgrad", u"??%"},
    {u"Kalibrierfeld Bodenart DIN 4022", u""},
    {u"Kalibrierfeld Bodengruppe DIN 18196", u""},
    {u"Kalibrierfeld Geometrie", u"?? m x ?? m"},
    {u"Kalibrierfeld Schütthöhe", u"?? m"},
    {u"Kalibrierfeld Proctordichte", u"?? g/cm³ bis ?? g/cm³"},
    {u"Kalibrierfeld Grenzwassergehalt", u"XXX=??%: ??% bzw ??%"},
    {u"Kalibrierfeld optimaler Wassergehalt", u"??% bis ??%"},
    {u"Kalibrierfeld Walzentyp", u""},
    {u"Kalibrierfeld Fahrgeschwindigkeit Walze", u"?? km/h"},
    {u"Kalibrierfeld Verdichtungsamplitude Walze", u"?? mm"},
    {u"Kalibrierfeld Verdichtungsfrequenz Walze", u"?? Hz"},
    {u"Kalibrierfeld Datum bei Verdichtung", u"??.??.????"},
    {u"Kalibrierfeld Witterung bei Verdichtung", u""},
    {u"Kalibrierfeld Temperatur bei Verdichtung", u"??°C"},
    {u"Kalibrierfeld Datum bei Prüfung", u"??.??.????"},
    {u"Kalibrierfeld Witterung bei Prüfung", u""},
    {u"Kalibrierfeld Temperatur bei Prüfung", u"??°C"},
}};

QString withNumber(const QString &prefix, std::int32_t number)
{
    return prefix + QString::number(number);
}

} // namespace

Kalibrierung::Kalibrierung(const QLocale &locale, WindowService *windows, QObject *parent)
    : QObject(parent), m_values(locale), m_windows(windows), m_auswertung(*this)
{
    const auto prepare = [this](Prüfmerkmal &merkmal, const QString &prefix) {
        merkmal.attach(*this);
        merkmal.setKeys(prefix + u" Name"_qs, prefix + u" Formelzeichen"_qs,
                        prefix + u" Einheit"_qs, prefix + u" Nachkommastellen"_qs);
    };
    prepare(m_direkt, u"Direktes Prüfmerkmal"_qs);
    prepare(m_indirekt, u"Indirektes Prüfmerkmal"_qs);
    prepare(m_kovariable, u"Kovariable"_qs);
    Reset();
}

Kalibrierung::~Kalibrierung() = default;

void Kalibrierung::Reset()
{
    m_store.clear();
    m_direkt.setNachkommastellen(2);
    m_indirekt.setNachkommastellen(2);
    m_kovariable.setNachkommastellen(0);
    setPrüffelderAnzahl(minimumCount);
    m_kovariable.setName(u"Anzahl der Übergänge"_qs);
    m_kovariable.setEinheit(QStringLiteral("-"));
    m_kovariable.setFormelzeichen(QStringLiteral("Z"));
    setNachkommastellenMittelwerte(1);
    setNachkommastellenVarianzen(2);
    setNachkommastellenStandardabweichung(2);
    setNachkommastellenKovarianzen(2);
    setNachkommastellenBestimmtheitsmaße(2);
    setNachkommastellenAnstieg(4);
    setNachkommastellenAchsenabschnitt(2);
    setZwischenergebnisseRunden(false);
    setMinBestimmtheitsmaßIndirektDirekt(0.65);
    for (const auto &[key, text] : protocolDefaults)
        DataStoreLet(u"Protokoll Verdichtung "_qs + key.toString(), text.toString());
    setIsDirty(false);
}

QByteArray Kalibrierung::ContentString() const
{
    PropertyBag bag;
    std::int32_t count = 0;
    m_store.forEach([&](const QString &key, const Variant &value) {
        ++count;
        bag.writeProperty(withNumber(QStringLiteral("Key"), count), key);
        bag.writeProperty(withNumber(QStringLiteral("Val"), count), value);
    });
    bag.writeProperty(QStringLiteral("Count"), count);
    return bag.contents();
}

void Kalibrierung::setContentString(const QByteArray &blob)
{
    const PropertyBag bag = PropertyBag::fromContents(blob);
    const std::int32_t count =
        m_values.whole(bag.readProperty(QStringLiteral("Count"), std::int32_t{0}));
    if (count > bag.size())
        throw RunTimeError(ErrorNumber::InvalidFileFormat);
    // Everything that can fail comes before the reset.
    std::vector<std::pair<QString, Variant>> entries;
    for (std::int32_t i = 1; i <= count; ++i) {
        QString key = m_values.text(bag.readProperty(withNumber(QStringLiteral("Key"), i)));
        if (!key.isEmpty())
            entries.emplace_back(std::move(key),
                                 bag.readProperty(withNumber(QStringLiteral("Val"), i)));
    }
    replaceStore([&] {
        for (auto &[key, value] : entries)
            m_store.set(std::move(key), std::move(value));
    });
}

void Kalibrierung::LoadFile(const QString &path)
{
    const Kalibrierungsdatei file = Kalibrierungsdatei::read(path);
    replaceStore([&] { file.storeRows(m_store); });
}

// Where memory ends on the way the document is what it was.
void Kalibrierung::replaceStore(const std::function<void()> &fill)
try {
    KeyedStore before = m_store;
    try {
        Reset();
        fill();
    } catch (...) {
        m_store.restore(std::move(before));
        throw;
    }
} catch (const std::bad_alloc &) {
    throw RunTimeError(ErrorNumber::OutOfMemory);
}

void Kalibrierung::SaveFile(const QString &path) const
{
    Kalibrierungsdatei::write(path, m_store, m_values);
}

WindowService &Kalibrierung::windows() const
{
    if (!m_windows)
        throw RunTimeError(ErrorNumber::InvalidProcedureCall);
    return *m_windows;
}

void Kalibrierung::ShowAssistent(bool modal, QObject *parentForm)
{
    QObject *form = windows().createAssistent(*this);
    emit BeforeShowAssistent(form);
    windows().showForm(form, modal, parentForm);
}

void Kalibrierung::ShowInfo(bool modal, QObject *parentForm)
{
    windows().showForm(windows().createInfo(), modal, parentForm);
}

void Kalibrierung::ShowCalcOptions(bool modal, QObject *parentForm)
{
    windows().showForm(windows().createCalcOptions(*this), modal, parentForm);
}

void Kalibrierung::ShowProtocollExtraData(bool modal, QObject *parentForm)
{
    windows().showForm(windows().createProtocollExtraData(*this), modal, parentForm);
}

void Kalibrierung::DataStoreLet(QString key, Variant value)
{
    const QString stored = m_values.text(m_store.item(key));
    if (stored == m_values.text(value))
        return;
    m_store.set(std::move(key), std::move(value));
    setIsDirty(true);
}

bool Kalibrierung::IsDirty() const
{
    const Variant *stored = m_store.find(isDirtyKey);
    try {
        return stored && m_values.boolean(*stored);
    } catch (const RunTimeError &) {
        return false; // a flag that can't be read counts as clean
    }
}

void Kalibrierung::setIsDirty(bool dirty)
{
    // After loading the stored flag is text, so it is compared as a boolean: an empty one is false,
    // any other text that is none differs.
    const Variant *stored = m_store.find(isDirtyKey);
    try {
        const bool isEmpty = !stored || *stored == Variant(QString());
        if ((!isEmpty && m_values.boolean(*stored)) == dirty)
            return;
    } catch (const RunTimeError &) {
        // Falls through to storing the new value.
    }
    m_store.set(isDirtyKey, dirty);
    emit IsDirtyChanged();
}

std::int32_t Kalibrierung::PrüffelderAnzahl()
{
    return m_values.whole(m_store.item(fieldCountKey));
}

void Kalibrierung::setPrüffelderAnzahl(std::int32_t count)
{
    if (count < minimumCount)
        throw RunTimeError(ErrorNumber::InvalidPropertyValue);
    DataStoreLet(fieldCountKey, count);
}

std::int32_t Kalibrierung::PrüffeldPrüfpunkte(std::int32_t prüffeld) const
{
    const Variant *stored = m_store.find(withNumber(pointCountKey, prüffeld));
    return stored ? m_values.whole(*stored) : defaultPoints;
}

void Kalibrierung::setPrüffeldPrüfpunkte(std::int32_t prüffeld, std::int32_t count)
{
    if (count < minimumCount)
        throw RunTimeError(ErrorNumber::InvalidPropertyValue);
    DataStoreLet(withNumber(pointCountKey, prüffeld), count);
}

std::int32_t Kalibrierung::PrüfpunkteTotal()
{
    const std::int32_t fields = PrüffelderAnzahl();
    std::int64_t total = 0;
    if (fields > 0 && static_cast<std::size_t>(fields) > m_store.size()) {
        // A file can ask for more fields than anybody wants to walk: most of them have the default.
        total = std::int64_t{fields} * defaultPoints;
        m_store.forEach([&](const QString &key, const Variant &value) {
            if (!key.startsWith(pointCountKey))
                return;
            bool isNumber = false;
            const std::int32_t field =
                QStringView(key).sliced(pointCountKey.size()).toInt(&isNumber);
            if (isNumber && field >= 1 && field <= fields &&
                key == withNumber(pointCountKey, field))
                total += std::int64_t{m_values.whole(value)} - defaultPoints;
        });
    } else {
        for (std::int32_t field = 1; field <= fields; ++field)
            total += PrüffeldPrüfpunkte(field);
    }
    if (total > std::numeric_limits<std::int32_t>::max() ||
        total < std::numeric_limits<std::int32_t>::min())
        throw RunTimeError(ErrorNumber::Overflow);
    return static_cast<std::int32_t>(total);
}

double Kalibrierung::PrüffeldWert(std::int32_t prüffeld) const
{
    const Variant *stored = m_store.find(withNumber(u"Name Prüffeld "_qs, prüffeld));
    return stored ? m_values.number(*stored) : static_cast<double>(prüffeld);
}

void Kalibrierung::setPrüffeldWert(std::int32_t prüffeld, double value)
{
    DataStoreLet(withNumber(u"Name Prüffeld "_qs, prüffeld), value);
}

QString Kalibrierung::nameOr(const QString &key, const QString &fallback) const
{
    const Variant *stored = m_store.find(key);
    return stored ? basKalibrierungWendral::VarToString(*stored, m_values) : fallback;
}

void Kalibrierung::storeName(const QString &key, const QString &name, const QString &fallback)
{
    if (m_store.exists(key)) {
        DataStoreLet(key, name);
    } else if (name != fallback) {
        // An empty name, too, is a change here, though its entry would read the same.
        m_store.set(key, name);
        setIsDirty(true);
    }
}

QString Kalibrierung::PrüffeldName(std::int32_t prüffeld) const
{
    return nameOr(withNumber(u"Bezeichnung Prüffeld "_qs, prüffeld),
                  withNumber(u"Prüffeld "_qs, prüffeld));
}

void Kalibrierung::setPrüffeldName(std::int32_t prüffeld, const QString &name)
{
    storeName(withNumber(u"Bezeichnung Prüffeld "_qs, prüffeld), name,
              withNumber(u"Prüffeld "_qs, prüffeld));
}

QString Kalibrierung::PrüfpunktName(std::int32_t prüfpunkt) const
{
    return nameOr(withNumber(u"Bezeichnung Prüfpunkt "_qs, prüfpunkt), PrüfpunktKey(prüfpunkt));
}

void Kalibrierung::setPrüfpunktName(std::int32_t prüfpunkt, const QString &name)
{
    storeName(withNumber(u"Bezeichnung Prüfpunkt "_qs, prüfpunkt), name, PrüfpunktKey(prüfpunkt));
}

QString Kalibrierung::PrüfpunktKey(std::int32_t prüfpunkt) const
{
    return withNumber(u"Prüfpunkt "_qs, prüfpunkt);
}

Variant Kalibrierung::Messwert(PrüfmerkmalEnum merkmal, std::int32_t messreihe,
                               std::int32_t prüfpunkt) const
{
    const Variant *stored = m_store.find(MesswertKey(merkmal, messreihe, prüfpunkt));
    return stored ? *stored : Variant(Null{});
}

void Kalibrierung::setMesswert(PrüfmerkmalEnum merkmal, std::int32_t messreihe,
                               std::int32_t prüfpunkt, const Variant &value)
{
    double number = 0.0;
    if (const auto *text = std::get_if<QString>(&value)) {
        const Values::Reading reading = m_values.read(*text);
        if (reading.status != Values::Reading::Status::Number)
            throw RunTimeError(ErrorNumber::TypeMismatch);
        number = reading.value;
    } else if (std::holds_alternative<Null>(value) || std::holds_alternative<bool>(value)) {
        throw RunTimeError(ErrorNumber::TypeMismatch);
    } else {
        number = m_values.number(value);
    }
    if (!std::isfinite(number))
        throw RunTimeError(ErrorNumber::TypeMismatch);
    DataStoreLet(MesswertKey(merkmal, messreihe, prüfpunkt), number);
}

void Kalibrierung::removeMesswert(PrüfmerkmalEnum merkmal, std::int32_t messreihe,
                                  std::int32_t prüfpunkt)
{
    if (m_store.remove(MesswertKey(merkmal, messreihe, prüfpunkt)))
        setIsDirty(true);
}

QString Kalibrierung::MesswertString(PrüfmerkmalEnum merkmal, std::int32_t messreihe,
                                     std::int32_t prüfpunkt)
{
    try {
        std::int32_t decimals = 0;
        if (merkmal == pmDirekt)
            decimals = m_direkt.Nachkommastellen();
        else if (merkmal == pmIndirekt)
            decimals = m_indirekt.Nachkommastellen();
        return basKalibrierungWendral::NumberFormatString(Messwert(merkmal, messreihe, prüfpunkt),
                                                          decimals, m_values);
    } catch (const RunTimeError &) {
        return errorText;
    }
}

QString Kalibrierung::MesswertKey(PrüfmerkmalEnum merkmal, std::int32_t messreihe,
                                  std::int32_t prüfpunkt) const
{
    const QString &prefix = merkmal == pmDirekt ? directValueKey : indirectValueKey;
    QString key;
    key.reserve(prefix.size() + 24);
    return key.append(prefix)
        .append(QString::number(messreihe))
        .append(u'.')
        .append(QString::number(prüfpunkt));
}

QString Kalibrierung::MerkmalNumberFormat(MerkmalEnum merkmal)
{
    switch (merkmal) {
    case mDirekt:
        return basKalibrierungWendral::NumberFormat(m_direkt.Nachkommastellen());
    case mIndirekt:
        return basKalibrierungWendral::NumberFormat(m_indirekt.Nachkommastellen());
    case mZ:
        return basKalibrierungWendral::NumberFormat(m_kovariable.Nachkommastellen());
    }
    return basKalibrierungWendral::NumberFormat(0);
}

Prüfmerkmal &merkmalOf(Kalibrierung &document, MerkmalEnum merkmal)
{
    switch (merkmal) {
    case mDirekt:
        return document.DirektesPrüfmerkmal();
    case mIndirekt:
        return document.IndirektesPrüfmerkmal();
    case mZ:
        break;
    }
    return document.Kovariable();
}
