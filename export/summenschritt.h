#pragma once

#include "export/messwerteblatt.h"

#include <QString>
#include <QStringList>

#include <initializer_list>

// Sums over samples as the formulas form them: in two parts, see formeln::genaueSumme().

/// The step for terms whose size is at most the product of \a sizes: a power of two. 1 where there
/// is none, all terms being 0 or the product too large for a double.
double schritt(std::initializer_list<double> sizes);

/// The same as a formula over \a sizes, which are formulas themselves.
QString schrittformel(const QStringList &sizes);

/// How far the values of \a sample lie from \a mean at most; 0 without values.
double abstand(const Stichprobe &sample, double mean);

/// The same as a formula, where \a mean is a cell.
QString abstandsformel(const Stichprobe &sample, const QString &mean);

/// The terms of a variance or covariance. A point whose row has been emptied counts as none.
QString abweichungsprodukte(const Stichprobe &x, const QString &meanX, const Stichprobe &y,
                            const QString &meanY);
