#include "protocol/windows/frmprotocollextradata.h"

#include "core/auswertung.h"
#include "core/baskalibrierungwendral.h"
#include "core/kalibrierung.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include <array>

namespace {

const QString prefix = QStringLiteral("Protokoll Verdichtung ");

constexpr std::array keysAboveFields{
    u"Unterlage Bodenart DIN 4022",
    u"Unterlage Bodengruppe DIN 18196",
    u"Unterlage Anzahl Verdichtungsübergänge",
    u"Unterlage Wassergehalt",
    u"Unterlage Trockendichte",
    u"Unterlage Proctordichte",
    u"Unterlage Verdichtungsgrad",
    u"Unterlage Verformungsmodul",
    u"Unterlage Bemerkungen",
    u"Kalibrierfeld Bodenart DIN 4022",
    u"Kalibrierfeld Bodengruppe DIN 18196",
    u"Kalibrierfeld Geometrie",
    u"Kalibrierfeld Schütthöhe",
    u"Kalibrierfeld Proctordichte",
    u"Kalibrierfeld Grenzwassergehalt",
    u"Kalibrierfeld optimaler Wassergehalt",
    u"Kalibrierfeld Walzentyp",
    u"Kalibrierfeld Fahrgeschwindigkeit Walze",
    u"Kalibrierfeld Verdichtungsamplitude Walze",
    u"Kalibrierfeld Verdichtungsfrequenz Walze",
};

constexpr std::array keysBelowFields{
    u"Kalibrierfeld Datum bei Verdichtung",
    u"Kalibrierfeld Witterung bei Verdichtung",
    u"Kalibrierfeld Temperatur bei Verdichtung",
    u"Kalibrierfeld Datum bei Prüfung",
    u"Kalibrierfeld Witterung bei Prüfung",
    u"Kalibrierfeld Temperatur bei Prüfung",
    u"Kalibrierfeld Bemerkungen",
};

QString storedText(const Kalibrierung &document, const QString &key)
{
    const Variant *value = document.DataStore().find(prefix + key);
    return value ? basKalibrierungWendral::VarToString(*value, document.values()) : QString();
}

} // namespace

frmProtocollExtraData::frmProtocollExtraData(QWidget *parent)
    : QDialog(parent)
    , m_dictionary(new DictionaryEdit(this))
    , m_ok(new QPushButton(u"OK"_qs, this))
    , m_cancel(new QPushButton(u"Abbrechen"_qs, this))
{
    constexpr int margin = 5;
    setObjectName(u"frmProtocollExtraData"_qs);
    setWindowTitle(u"Protokolldaten"_qs);
    m_dictionary->setObjectName(u"DictionaryEdit1"_qs);
    m_ok->setObjectName(u"cmdOk"_qs);
    m_cancel->setObjectName(u"cmdCancel"_qs);
    m_ok->setDefault(true);

    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(margin);
    buttons->addStretch();
    buttons->addWidget(m_ok);
    buttons->addWidget(m_cancel);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(margin, margin, margin, margin);
    layout->setSpacing(margin);
    layout->addWidget(m_dictionary);
    layout->addLayout(buttons);
    resize(760, 640);

    connect(m_ok, &QPushButton::clicked, this, &frmProtocollExtraData::accept);
    connect(m_cancel, &QPushButton::clicked, this, &frmProtocollExtraData::reject);
}

void frmProtocollExtraData::setKalibrierung(Kalibrierung &document)
{
    m_document = &document;
    TextDictionary dictionary;
    const auto add = [&](const QString &key) {
        dictionary.emplace_back(key, storedText(document, key));
    };
    for (const auto *key : keysAboveFields)
        add(QString::fromUtf16(key));
    const std::int32_t fields = document.PrüffelderAnzahl();
    if (fields > Auswertung::maximumPoints)
        throw RunTimeError(ErrorNumber::Overflow); // a file can ask for more than any list holds
    for (std::int32_t field = 1; field <= fields; ++field)
        add(u"Kalibrierfeld Kovariable (Anzahl der Verdichtungsübergänge) - Prüffeld "_qs +
            QString::number(field));
    for (const auto *key : keysBelowFields)
        add(QString::fromUtf16(key));
    m_dictionary->setDictionary(dictionary);
}

void frmProtocollExtraData::accept()
{
    if (m_document) {
        for (const auto &[key, text] : m_dictionary->dictionary())
            m_document->DataStoreLet(prefix + key, text);
    }
    QDialog::accept();
}
