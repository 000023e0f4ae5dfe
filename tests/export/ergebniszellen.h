#pragma once

#include <QString>

#include <functional>
#include <optional>
#include <utility>
#include <vector>

class Kalibrierung;

/// A result cell and the document's own result, which may raise an error.
struct Ergebniswert
{
    QString zelle;
    std::function<double()> wert;
};

/// Every result cell of a sheet, for each sheet that has some.
std::vector<std::pair<QString, std::vector<Ergebniswert>>> ergebniszellen(Kalibrierung &d);

/// Nothing where \a result raises an error.
std::optional<double> wertOderNichts(const std::function<double()> &result);
