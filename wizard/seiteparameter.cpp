#include "wizard/seiteparameter.h"

#include "core/kalibrierung.h"
#include "core/runtimeerror.h"
#include "wizard/auswahlfeld.h"
#include "wizard/focuschecks.h"
#include "wizard/merkmaltexte.h"
#include "wizard/zahlen.h"
#include "wizard/zahlenfeld.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace {

constexpr auto information = Dialogs::Icon::Information;

const QString fieldCountName = QStringLiteral("txtMessreihen");

Prüfmerkmal &characteristic(Kalibrierung &document, std::size_t group)
{
    switch (group) {
    case 0:
        return document.DirektesPrüfmerkmal();
    case 1:
        return document.IndirektesPrüfmerkmal();
    default:
        return document.Kovariable();
    }
}

} // namespace

SeiteParameter::SeiteParameter(const Seitenkontext &context, QWidget *parent)
    : AssistentSeite(context, parent)
{
    auto *column = addColumn(1, u"Schritt 1: Festlegen der Eingangsparameter"_qs,
                             u"Welche Prüfmerkmale werden miteinander verglichen, und auf wie "
                             u"vielen Prüffeldern wurde gemessen?"_qs);
    for (std::size_t g = 0; g < m_groups.size(); ++g) {
        auto *group = new Merkmalgruppe(merkmalTexte().at(g), document().values(), this);
        m_groups[g] = group;
        column->addWidget(group);
        for (std::size_t b = 0; b < group->boxes().size(); ++b)
            focusChecks().add(group->boxes()[b], [this, g, b] { return checkText(g, b); });
        focusChecks().add(group->placesBox(), [this, g] { return checkPlaces(g); });
    }

    m_fieldCount = new Zahlenfeld(fieldCountName, QStringLiteral("udMessreihen"),
                                  countStep(document().values()), this);
    m_fieldCount->setAccessibleTexts(u"Anzahl der Prüffelder"_qs);
    focusChecks().add(m_fieldCount->box(), [this] { return checkFieldCount(); });
    auto *label = new QLabel(u"Anzahl der &Prüffelder:"_qs, this);
    label->setBuddy(m_fieldCount->box());
    auto *row = new QHBoxLayout;
    row->addWidget(label);
    row->addWidget(m_fieldCount);
    row->addStretch();
    column->addLayout(row);
    column->addStretch();
    connect(qApp, &QApplication::focusChanged, this, &SeiteParameter::completeLeft);
}

void SeiteParameter::addPresets()
{
    const auto add = [this](std::size_t group, const Vorgabe &vorgabe) {
        m_presets.add(vorgabe);
        m_groups.at(group)->addPreset(vorgabe);
    };
    const Vorgabe degree{u"Verdichtungsgrad"_qs, u"%"_qs, u"DPr"_qs};
    const Vorgabe modulus{u"Verformungsmodul"_qs, u"MN/m²"_qs, u"EV2"_qs};
    add(0, degree);
    add(0, modulus);
    add(1, degree);
    add(1, modulus);
    add(1, {u"Dynamischer Verformungsmodul"_qs, u"MN/m²"_qs, u"EVD"_qs});
    add(1, {u"Messwert Flächendeckende Dynamische Verdichtungskontrolle"_qs, u"-"_qs, u"F"_qs});
    add(2, {u"Anzahl der Übergänge"_qs, u"-"_qs, u"Z"_qs});
}

void SeiteParameter::completeLeft(const QWidget *old, const QWidget *now)
{
    // Menus take the focus for a moment only, and another window does not take it from this one.
    if (!old || !now || now->window() != window() || qobject_cast<const QMenuBar *>(now))
        return;
    for (Merkmalgruppe *group : m_groups) {
        for (const Auswahlfeld *box : group->boxes()) {
            if (box == old)
                group->complete(m_presets);
        }
    }
}

// A step by a shortcut leaves the focus in its box, and is a leaving of it all the same.
void SeiteParameter::completeFocused()
{
    if (const QWidget *focus = QApplication::focusWidget())
        completeLeft(focus, this);
}

bool SeiteParameter::checkText(std::size_t group, std::size_t box)
{
    Auswahlfeld *field = m_groups.at(group)->boxes().at(box);
    if (!field->text().trimmed().isEmpty())
        return true;
    return refuse(information, m_groups.at(group)->missingText(box), field);
}

bool SeiteParameter::checkPlaces(std::size_t group)
{
    if (m_groups.at(group)->placesAreGood())
        return true;
    return refuse(information, u"Bitte geben Sie eine gültige Stellenanzahl an."_qs,
                  m_groups.at(group)->placesBox());
}

bool SeiteParameter::checkFieldCount()
{
    const bool changed = fieldCountIsChanged();
    if (changed ? leadingNumber(m_fieldCount->text()) < minimumCount : !m_fieldCountGood)
        return refuse(information,
                      u"Bitte geben Sie eine gültige Anzahl der Messreihen an "
                      u"(Mindeswert: 3 Messreihen)."_qs,
                      m_fieldCount->box());
    if (changed && readCount(m_fieldCount->text()) > maximumCount)
        return refuse(information,
                      u"Bitte geben Sie eine gültige Anzahl der Messreihen an "
                      u"(Höchstwert: 9999 Messreihen)."_qs,
                      m_fieldCount->box());
    return true;
}

bool SeiteParameter::check()
{
    completeFocused();
    for (std::size_t group = 0; group < m_groups.size(); ++group) {
        for (std::size_t box = 0; box < m_groups[group]->boxes().size(); ++box) {
            if (!checkText(group, box))
                return false;
        }
    }
    if (!checkFieldCount())
        return false;
    for (std::size_t group = 0; group < m_groups.size(); ++group) {
        if (!checkPlaces(group))
            return false;
    }
    return true;
}

bool SeiteParameter::takeOver(Anlass anlass)
{
    if (anlass == Anlass::Zurück)
        completeFocused();
    for (std::size_t group = 0; group < m_groups.size(); ++group)
        m_groups[group]->takeOver(characteristic(document(), group));
    const std::int32_t count = readCount(m_fieldCount->text());
    if (fieldCountIsChanged() && leadingNumber(m_fieldCount->text()) >= minimumCount &&
        count <= maximumCount) {
        document().setPrüffelderAnzahl(count);
        m_filledFieldCount = m_fieldCount->text();
        m_fieldCountGood = true;
    }
    if (anlass != Anlass::Befehl)
        return true; // forward everything was checked before, and back asks no questions

    if (fieldCountIsChanged() && !checkFieldCount())
        return false;
    for (std::size_t group = 0; group < m_groups.size(); ++group) {
        if (m_groups[group]->placesAreChanged() && !checkPlaces(group))
            return false;
    }
    return true;
}

void SeiteParameter::fill()
{
    for (std::size_t group = 0; group < m_groups.size(); ++group)
        m_groups[group]->fill(characteristic(document(), group));
    try {
        const std::int32_t count = document().PrüffelderAnzahl();
        m_fieldCount->setText(document().values().text(Variant(count)));
        m_fieldCountGood = count >= minimumCount;
    } catch (const RunTimeError &) {
        m_fieldCount->setText({}); // a file may hold anything
        m_fieldCountGood = false;
    }
    m_filledFieldCount = m_fieldCount->text();
    if (!std::exchange(m_hasPresets, true))
        addPresets();
}

Eingaben SeiteParameter::entries() const
{
    Eingaben entries;
    for (const Merkmalgruppe *group : m_groups)
        group->addEntries(entries);
    if (fieldCountIsChanged())
        entries.insert(fieldCountName, m_fieldCount->text());
    return entries;
}

void SeiteParameter::restoreEntries(const Eingaben &entries)
{
    for (Merkmalgruppe *group : m_groups)
        group->restoreEntries(entries);
    if (entries.contains(fieldCountName))
        m_fieldCount->setText(entries.value(fieldCountName));
}

bool SeiteParameter::fieldCountIsChanged() const
{
    return m_fieldCount->text() != m_filledFieldCount;
}

QWidget *SeiteParameter::firstControl() const
{
    return m_groups.front()->boxes().front();
}
