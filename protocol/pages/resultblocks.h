#pragma once

#include "core/merkmal.h"
#include "protocol/pages/blockflow.h"
#include "protocol/pages/textmeasure.h"

#include <QString>

class Kalibrierung;

/// Two characteristics that a calibration line connects.
struct MerkmalPair
{
    MerkmalEnum first;
    MerkmalEnum second;
};

/// The pairs in the protocol's order.
inline constexpr MerkmalPair protocolPairs[] = {
    {mDirekt, mIndirekt}, {mDirekt, mZ}, {mIndirekt, mZ}};

/// The unit of a characteristic as protocols show it: empty for "-", which stands for a quantity
/// without dimension.
QString shownUnit(Kalibrierung &document, MerkmalEnum merkmal);

// The statistics tables below their captions, in the protocol's order. They raise what the
// document's display members raise. \a measure is borrowed by the block's rows.
Block mittelwerteBlock(Kalibrierung &document, const TextMeasure &measure);
Block varianzenBlock(Kalibrierung &document, const TextMeasure &measure);
Block standardabweichungenBlock(Kalibrierung &document, const TextMeasure &measure);
Block kovarianzenBlock(Kalibrierung &document, const TextMeasure &measure);
Block bestimmtheitsmasseBlock(Kalibrierung &document, const TextMeasure &measure);

/// The equation of a line as its table shows it: \a dependent = a + b * \a independent, with the
/// slope's sign between the parts; "(Fehler)" where one of them could not be computed.
QString equationText(const QString &dependent, const QString &intercept, const QString &slope,
                     const QString &independent);

/// Title, table and diagram of one calibration line. Raises what diagramData() raises.
Block kalibriergeradeBlock(Kalibrierung &document, const TextMeasure &measure,
                           const MerkmalPair &pair);
