#pragma once

#include "core/kalibrierung.h"

#include <functional>
#include <memory>
#include <vector>

/// A document that tests export, and what is particular about it.
struct Beispiel
{
    const char *name;
    std::function<void(Kalibrierung &)> bereite;
};

/// Documents of every kind: rounded and not, gaps, nothing to divide by, few points, odd names.
std::vector<Beispiel> beispiele();

/// A German document prepared by \a example.
std::unique_ptr<Kalibrierung> dokument(const Beispiel &example);
/// The document of the example called \a name.
std::unique_ptr<Kalibrierung> dokument(const char *name);

/// Stores the values of field after field: three or more points each.
void setzeWerte(Kalibrierung &document, const std::vector<std::vector<double>> &direct,
                const std::vector<std::vector<double>> &indirect);
