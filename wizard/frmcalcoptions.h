#pragma once

#include <QDialog>

#include <array>
#include <cstddef>
#include <cstdint>

class Dialogs;
class FocusChecks;
class Kalibrierung;
class QCheckBox;
class QGridLayout;
class QVBoxLayout;
class Zahlenfeld;

/// The calculation options of a document: decimal places, rounding, the minimum R2.
///
/// Nothing is written before Ok. A box whose text is still what filling wrote is not written at
/// all, because the text may be a rounded form of the value in the document.
class frmCalcOptions : public QDialog
{
    Q_OBJECT

public:
    /// \a dialogs is borrowed. A document has to follow before the dialog is shown.
    explicit frmCalcOptions(Dialogs &dialogs, QWidget *parent = nullptr);

    /// The document to edit, borrowed; fills the fields. What the document can't give is left
    /// empty, for the user to enter.
    void setKalibrierung(Kalibrierung &document);

private:
    static constexpr std::size_t placesCount = 6;
    static constexpr std::size_t minimumField = placesCount;

    struct Feld
    {
        Zahlenfeld *box = nullptr;
        QString filled; ///< the text that filling wrote
    };

    void buildLayout();
    void addPlaces(QGridLayout &grid, std::size_t field);
    void addRounding(QVBoxLayout &rows);
    void addMinimum(QVBoxLayout &rows);
    void addButtons(QVBoxLayout &rows);
    void addChecks();
    void setFilled(std::size_t field, const QString &text);

    bool isGood(std::size_t field) const;
    bool checkField(std::size_t field);
    bool isChanged(std::size_t field) const;
    QString steppedMinimum(const QString &text, int direction) const;

    void cmdOk_Click();
    void write();

    Dialogs &m_dialogs;
    Kalibrierung *m_document = nullptr;
    FocusChecks *m_focusChecks;
    std::array<Feld, placesCount + 1> m_fields; ///< the places, then the minimum
    QCheckBox *chkRoundIntermediaryResults = nullptr;
    Qt::CheckState m_filledRounding = Qt::PartiallyChecked; ///< partially: the document gave none
};
