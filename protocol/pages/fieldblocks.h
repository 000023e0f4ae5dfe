#pragma once

#include "protocol/pages/blockflow.h"
#include "protocol/pages/textmeasure.h"

#include <QString>

class Kalibrierung;

// The descriptive sections: how the sub-base and the calibration field were laid out. Their values
// are the texts that the document's store holds; what is missing stays empty. \a document and
// \a measure are borrowed by the block's rows.

/// The sub-base table below the heading \a number and ".1 Unterlage".
Block unterlageBlock(Kalibrierung &document, const TextMeasure &measure, const QString &number);

/// The calibration-field table below the heading \a number and ".2 Kalibrierfeld". Raises 13 or 6
/// where the number of fields can't be read, 6 where there are more than are evaluated.
Block kalibrierfeldBlock(Kalibrierung &document, const TextMeasure &measure, const QString &number);
