#include "wizard/frmcalcoptions.h"

#include "core/kalibrierung.h"
#include "core/produkt.h"
#include "core/runtimeerror.h"
#include "wizard/fehlerbericht.h"
#include "wizard/focuschecks.h"
#include "wizard/stellenoptionen.h"
#include "wizard/zahlen.h"
#include "wizard/zahlenfeld.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace {

// What the arrows of the minimum keep to; typing may leave it.
constexpr double smallestMinimum = 0.25;
constexpr double largestMinimum = 1.0;
constexpr double minimumStep = 0.01;
constexpr std::int32_t minimumDecimals = 2;

// The format "0.00": as displayed, but without grouping.
QString minimumText(double value, const Values &values)
{
    return values.display(value, minimumDecimals).remove(values.locale().groupSeparator());
}

// Whether the leading number of a text can be stored as a whole number.
bool hasWholeNumber(const QString &text)
{
    try {
        toWhole(leadingNumber(text));
        return true;
    } catch (const RunTimeError &) {
        return false;
    }
}

// What get() gives as text, or the empty text where it raises an error.
template <typename Get>
QString textOrEmpty(Get get)
{
    try {
        return get();
    } catch (const RunTimeError &) {
        return {};
    }
}

} // namespace

frmCalcOptions::frmCalcOptions(Dialogs &dialogs, QWidget *parent)
    : QDialog(parent), m_dialogs(dialogs), m_focusChecks(new FocusChecks(this))
{
    setObjectName(QStringLiteral("frmCalcOptions"));
    setWindowTitle(QStringLiteral("Berechnungsoptionen"));
    setAttribute(Qt::WA_DeleteOnClose);
    setModal(true);
    buildLayout();
    addChecks();
}

void frmCalcOptions::buildLayout()
{
    auto *rows = new QVBoxLayout(this);
    rows->setSpacing(fontMetrics().height() * 2 / 3);
    auto *explanation =
        new QLabel(u"Legen Sie hier fest, mit welchen Einstellungen die Berechnung der "
                   u"Korrelationsgeradengleichung vorgenommen werden soll."_qs,
                   this);
    explanation->setWordWrap(true);
    rows->addWidget(explanation);

    auto *frame = new QGroupBox(u"Nachkommastellen für Anzeige"_qs, this);
    auto *places = new QGridLayout(frame);
    places->setColumnStretch(0, 1);
    for (std::size_t field = 0; field < placesCount; ++field)
        addPlaces(*places, field);
    rows->addWidget(frame);
    addRounding(*rows);
    addMinimum(*rows);
    rows->addStretch();
    rows->addSpacing(fontMetrics().height() / 2);
    addButtons(*rows);
}

void frmCalcOptions::addPlaces(QGridLayout &grid, std::size_t field)
{
    const Stellenoption &texts = stellenoptionen()[field];
    const auto step = [this](const QString &text, int direction) {
        return placesStep(m_document->values())(text, direction);
    };
    auto *box = new Zahlenfeld(texts.textName, texts.arrowsName, step, this);
    box->setAccessibleTexts(texts.accessibleName);
    m_fields[field].box = box;
    auto *label = new QLabel(texts.caption, this);
    label->setBuddy(box->box());
    const int row = static_cast<int>(field);
    grid.addWidget(label, row, 0);
    grid.addWidget(box, row, 1);
}

void frmCalcOptions::addRounding(QVBoxLayout &rows)
{
    chkRoundIntermediaryResults = new QCheckBox(this);
    chkRoundIntermediaryResults->setObjectName(QStringLiteral("chkRoundIntermediaryResults"));
    chkRoundIntermediaryResults->setText(
        u"&Zwischenergebnisse der Berechung runden (auf\nangezeigte Werte)"_qs);
    chkRoundIntermediaryResults->setAccessibleName(
        u"Zwischenergebnisse der Berechung runden (auf angezeigte Werte)"_qs);
    rows.addWidget(chkRoundIntermediaryResults);
}

void frmCalcOptions::addMinimum(QVBoxLayout &rows)
{
    const auto step = [this](const QString &text, int direction) {
        return steppedMinimum(text, direction);
    };
    auto *box = new Zahlenfeld(u"txtMinBestimmtheitsmaßIndirektDirekt"_qs,
                               u"udMinBestimmtheitsmaßIndirektDirekt"_qs, step, this);
    box->setAccessibleTexts(u"Minimales Bestimmtheitsmaß"_qs);
    m_fields[minimumField].box = box;
    auto *label =
        new QLabel(u"m&inimales Bestimmtheitsmaß (indirekes, direktes Prüfmerkmal)"_qs, this);
    label->setBuddy(box->box());
    auto *row = new QHBoxLayout;
    row->addWidget(label, 1);
    row->addWidget(box);
    rows.addLayout(row);
}

void frmCalcOptions::addButtons(QVBoxLayout &rows)
{
    auto *cmdOk = new QPushButton(QStringLiteral("&Ok"), this);
    cmdOk->setObjectName(QStringLiteral("cmdOk"));
    cmdOk->setDefault(true);
    // A click leaves the focus in the box: Ok checks all boxes itself, with one message.
    cmdOk->setFocusPolicy(Qt::TabFocus);
    connect(cmdOk, &QPushButton::clicked, this, &frmCalcOptions::cmdOk_Click);
    auto *cmdCancel = new QPushButton(QStringLiteral("&Abbruch"), this);
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    m_focusChecks->exempt(cmdCancel);
    auto *row = new QHBoxLayout;
    row->addStretch();
    row->addWidget(cmdOk);
    row->addWidget(cmdCancel);
    rows.addLayout(row);
}

void frmCalcOptions::addChecks()
{
    for (std::size_t field = 0; field < m_fields.size(); ++field)
        m_focusChecks->add(m_fields[field].box->box(), [this, field] { return checkField(field); });
}

void frmCalcOptions::setKalibrierung(Kalibrierung &document)
{
    m_document = &document;
    const Values &values = document.values();
    for (std::size_t field = 0; field < placesCount; ++field) {
        setFilled(field, textOrEmpty([&] {
                      return values.text(Variant((document.*stellenoptionen()[field].get)()));
                  }));
    }
    setFilled(minimumField, textOrEmpty([&] {
                  return minimumText(document.MinBestimmtheitsmaßIndirektDirekt(), values);
              }));
    try {
        m_filledRounding = document.ZwischenergebnisseRunden() ? Qt::Checked : Qt::Unchecked;
    } catch (const RunTimeError &) {
        m_filledRounding = Qt::PartiallyChecked;
    }
    chkRoundIntermediaryResults->setChecked(m_filledRounding == Qt::Checked);
}

void frmCalcOptions::setFilled(std::size_t field, const QString &text)
{
    m_fields[field].box->setText(text);
    m_fields[field].filled = m_fields[field].box->text();
}

bool frmCalcOptions::isGood(std::size_t field) const
{
    const QString text = m_fields[field].box->text();
    const Values &values = m_document->values();
    if (field == minimumField)
        return values.isNumeric(text);
    return isNumberOrPointNumber(text, values) && hasWholeNumber(text);
}

bool frmCalcOptions::isChanged(std::size_t field) const
{
    return m_fields[field].box->text() != m_fields[field].filled;
}

bool frmCalcOptions::checkField(std::size_t field)
{
    if (isGood(field))
        return true;
    m_dialogs.message(this, Dialogs::Icon::Information, produkt::name(),
                      field == minimumField
                          ? u"Bitte geben Sie ein gültiges minimales Bestimmtheitsmaß ein."_qs
                          : u"Bitte geben Sie eine gültige Anzahl von Nachkommastellen an."_qs);
    return false;
}

QString frmCalcOptions::steppedMinimum(const QString &text, int direction) const
{
    const Values &values = m_document->values();
    const Values::Reading reading = values.read(text);
    const double start = reading.status == Values::Reading::Status::Number ? reading.value : 0.0;
    return minimumText(std::clamp(start + direction * minimumStep, smallestMinimum, largestMinimum),
                       values);
}

void frmCalcOptions::cmdOk_Click()
{
    for (std::size_t field = 0; field < m_fields.size(); ++field) {
        if (checkField(field))
            continue;
        QLineEdit *box = m_fields[field].box->box();
        m_focusChecks->moveFocus(box);
        box->selectAll();
        return;
    }
    const fehlerbericht::Rahmen frame{
        this, Dialogs::Icon::Exclamation, produkt::name(),
        u"Beim Speichern der Optionen ist ein Fehler aufgetreten:"_qs};
    if (fehlerbericht::guarded(m_dialogs, frame, [this] { write(); }))
        accept();
}

void frmCalcOptions::write()
{
    for (std::size_t field = 0; field < placesCount; ++field) {
        if (isChanged(field))
            (m_document->*stellenoptionen()[field].set)(
                toWhole(leadingNumber(m_fields[field].box->text())));
    }
    if (chkRoundIntermediaryResults->checkState() != m_filledRounding)
        m_document->setZwischenergebnisseRunden(chkRoundIntermediaryResults->isChecked());
    if (isChanged(minimumField))
        m_document->setMinBestimmtheitsmaßIndirektDirekt(
            m_document->values().number(QStringView(m_fields[minimumField].box->text())));
}
