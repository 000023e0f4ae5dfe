#pragma once

#include <QByteArray>

/// \a value with a point and 17 significant digits, which give the same double back. \a value is
/// finite.
QByteArray zahlentext(double value);
