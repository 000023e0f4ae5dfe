#pragma once

#include <QIcon>
#include <QPixmap>
#include <QString>

/// The program's own images: vector drawings that can be told apart without colour, on light and
/// dark ground.
namespace bilder {

/// Resource paths of the drawings, each square.
QString info();
QString examination();
QString programm();

/// The drawing at \a path, \a side logical pixels wide and high, sharp at \a devicePixelRatio.
QPixmap pixmap(const QString &path, int side, qreal devicePixelRatio);

/// The program's icon in every size that window systems ask for.
QIcon programmsymbol();

} // namespace bilder
