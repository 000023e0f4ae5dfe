#include "wizard/merkmalgruppe.h"

#include "core/pruefmerkmal.h"
#include "core/runtimeerror.h"
#include "core/values.h"
#include "wizard/auswahlfeld.h"
#include "wizard/zahlen.h"
#include "wizard/zahlenfeld.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>

namespace {

enum Box : std::size_t { NameBox, SymbolBox, UnitBox, PlacesBox };

// What the captions are called without a group around them.
const std::array<QString, 4> plainLabels{QStringLiteral("Name"), QStringLiteral("Formelzeichen"),
                                         QStringLiteral("Einheit"),
                                         QStringLiteral("Nachkommastellen")};

} // namespace

Merkmalgruppe::Merkmalgruppe(const MerkmalTexte &texts, const Values &values, QWidget *parent)
    : QGroupBox(texts.title, parent), m_texts(texts), m_values(values)
{
    auto *grid = new QGridLayout(this);
    grid->setHorizontalSpacing(fontMetrics().height());
    grid->setVerticalSpacing(fontMetrics().height() / 4);
    const std::array<QString, 3> suffixes{QString(), QStringLiteral("Zeichen"),
                                          QStringLiteral("Einheit")};
    const std::array<int, 3> widths{32, 8, 8}; // characters that every box shows
    for (std::size_t i = 0; i < m_boxes.size(); ++i) {
        m_boxes[i] = new Auswahlfeld(this);
        m_boxes[i]->setObjectName(texts.boxName + suffixes[i]);
        m_boxes[i]->setMinimumContentsLength(widths[i]);
        m_boxes[i]->setAccessibleTexts(texts.title + u": "_qs + plainLabels[i]);
        addBox(*grid, i, m_boxes[i]);
    }
    m_places = new Zahlenfeld(texts.placesName, texts.arrowsName, placesStep(values), this);
    m_places->setAccessibleTexts(texts.title + u": "_qs + plainLabels[PlacesBox]);
    addBox(*grid, PlacesBox, m_places);
    grid->setColumnStretch(NameBox, 1); // names are long, the rest is short
}

void Merkmalgruppe::addBox(QGridLayout &grid, std::size_t column, QWidget *box)
{
    auto *label = new QLabel(m_texts.labels.at(column), this);
    label->setBuddy(box->focusProxy() ? box->focusProxy() : box);
    grid.addWidget(label, 0, static_cast<int>(column));
    grid.addWidget(box, 1, static_cast<int>(column));
}

void Merkmalgruppe::fill(Prüfmerkmal &merkmal)
{
    const std::array<QString, 3> texts{merkmal.Name(), merkmal.Formelzeichen(), merkmal.Einheit()};
    for (std::size_t i = 0; i < m_boxes.size(); ++i) {
        m_boxes[i]->setText(texts[i]);
        m_filled[i] = m_boxes[i]->text();
    }
    try {
        m_places->setText(m_values.text(Variant(merkmal.Nachkommastellen())));
        m_placesReadable = true;
    } catch (const RunTimeError &) {
        m_places->setText({}); // what stands there can't be shown as a number of places
        m_placesReadable = false;
    }
    m_filledPlaces = m_places->text();
}

void Merkmalgruppe::takeOver(Prüfmerkmal &merkmal)
{
    const auto takeText = [this](std::size_t i, auto store) {
        if (m_boxes[i]->text() == m_filled[i])
            return;
        store(m_boxes[i]->text());
        m_filled[i] = m_boxes[i]->text();
    };
    takeText(NameBox, [&](const QString &text) { merkmal.setName(text); });
    takeText(SymbolBox, [&](const QString &text) { merkmal.setFormelzeichen(text); });
    takeText(UnitBox, [&](const QString &text) { merkmal.setEinheit(text); });
    if (!placesAreChanged())
        return;
    if (const std::optional<std::int32_t> count = places()) {
        merkmal.setNachkommastellen(*count);
        m_filledPlaces = m_places->text();
        m_placesReadable = true;
    }
}

void Merkmalgruppe::addEntries(Eingaben &entries) const
{
    for (std::size_t i = 0; i < m_boxes.size(); ++i) {
        if (m_boxes[i]->text() != m_filled[i])
            entries.insert(m_boxes[i]->objectName(), m_boxes[i]->text());
    }
    if (placesAreChanged())
        entries.insert(m_texts.placesName, m_places->text());
}

void Merkmalgruppe::restoreEntries(const Eingaben &entries)
{
    for (Auswahlfeld *box : m_boxes) {
        if (entries.contains(box->objectName()))
            box->setText(entries.value(box->objectName()));
    }
    if (entries.contains(m_texts.placesName))
        m_places->setText(entries.value(m_texts.placesName));
}

void Merkmalgruppe::addPreset(const Vorgabe &vorgabe)
{
    m_boxes[NameBox]->addPreset(vorgabe.name);
    m_boxes[SymbolBox]->addPreset(vorgabe.formelzeichen);
    m_boxes[UnitBox]->addPreset(vorgabe.einheit);
}

void Merkmalgruppe::complete(const Vorgabentabelle &presets)
{
    const std::optional<Vorgabe> found = presets.completion(
        {m_boxes[NameBox]->text(), m_boxes[UnitBox]->text(), m_boxes[SymbolBox]->text()});
    if (!found)
        return;
    const std::array<QString, 3> texts{found->name, found->formelzeichen, found->einheit};
    for (std::size_t i = 0; i < m_boxes.size(); ++i) {
        if (m_boxes[i]->text().isEmpty())
            m_boxes[i]->setText(texts[i]);
    }
}

QLineEdit *Merkmalgruppe::placesBox() const
{
    return m_places->box();
}

bool Merkmalgruppe::placesAreGood() const
{
    return placesAreChanged() ? places().has_value() : m_placesReadable;
}

bool Merkmalgruppe::placesAreChanged() const
{
    return m_places->text() != m_filledPlaces;
}

std::optional<std::int32_t> Merkmalgruppe::places() const
{
    return readPlaces(m_places->text(), m_values);
}
