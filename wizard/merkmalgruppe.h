#pragma once

#include "wizard/eingaben.h"
#include "wizard/vorgaben.h"

#include <QGroupBox>

#include <array>
#include <cstdint>
#include <optional>

class Auswahlfeld;
class Prüfmerkmal;
class QGridLayout;
class QLineEdit;
class Values;
class Zahlenfeld;

/// How the boxes of one characteristic are called.
struct MerkmalTexte
{
    QString title;
    QString boxName;    ///< object name of the name box, and what symbol's and unit's begin with
    QString placesName; ///< object names of the places: the text box and its arrows
    QString arrowsName;
    std::array<QString, 4> labels;  ///< with mnemonics: name, symbol, unit, places
    std::array<QString, 3> missing; ///< what is said where name, symbol or unit is empty
};

/// The boxes of one test characteristic: name, formula symbol, unit and decimal places.
class Merkmalgruppe : public QGroupBox
{
public:
    Merkmalgruppe(const MerkmalTexte &texts, const Values &values, QWidget *parent = nullptr);

    void fill(Prüfmerkmal &merkmal);
    /// Writes what was changed; places that are no number keep their old value.
    void takeOver(Prüfmerkmal &merkmal);
    /// The changed boxes among the entries of the page.
    void addEntries(Eingaben &entries) const;
    void restoreEntries(const Eingaben &entries);

    void addPreset(const Vorgabe &vorgabe);
    /// Fills the two other boxes where one alone holds a text that \a presets know.
    void complete(const Vorgabentabelle &presets);

    /// Name, symbol and unit in this order; each may not be empty.
    const std::array<Auswahlfeld *, 3> &boxes() const { return m_boxes; }
    const QString &missingText(std::size_t box) const { return m_texts.missing.at(box); }
    QLineEdit *placesBox() const;
    /// Whether the text of the places can be stored, or stands there unchanged and is readable.
    bool placesAreGood() const;
    bool placesAreChanged() const;

private:
    void addBox(QGridLayout &grid, std::size_t column, QWidget *box);
    std::optional<std::int32_t> places() const;

    MerkmalTexte m_texts;
    const Values &m_values; ///< the document's
    std::array<Auswahlfeld *, 3> m_boxes;
    Zahlenfeld *m_places;
    std::array<QString, 3> m_filled;
    QString m_filledPlaces;
    bool m_placesReadable = true; ///< whether the document's own places were, when filled
};
