#include "bench/core/sampledocument.h"

#include <algorithm>
#include <cmath>

std::unique_ptr<Kalibrierung> sampleDocument(int points)
{
    constexpr int fieldSize = 100;
    auto document = std::make_unique<Kalibrierung>(benchLocale);
    const int fields = std::max(3, points / fieldSize);
    document->setPrüffelderAnzahl(fields);
    int left = points;
    for (int field = 1; field <= fields; ++field) {
        const int size = std::max(3, left / (fields - field + 1));
        left -= size;
        document->setPrüffeldPrüfpunkte(field, size);
        document->setPrüffeldWert(field, field % 12 + 1);
        for (int point = 1; point <= size; ++point) {
            const int noise = (field * 7919 + point * 104729) % 2003;
            const double value = 90.0 + field % 12 + std::round(noise) / 1000.0;
            document->setMesswert(pmDirekt, field, point, value);
            document->setMesswert(pmIndirekt, field, point, std::round(value * 437.0) / 1000.0);
        }
    }
    document->setIsDirty(false);
    return document;
}

double allResults(Auswertung &evaluation)
{
    double sum = 0.0;
    for (const MerkmalEnum merkmal : {mDirekt, mIndirekt, mZ}) {
        sum += evaluation.mittelwert(merkmal) + evaluation.varianz(merkmal) +
               std::sqrt(evaluation.varianz(merkmal));
    }
    for (const auto &[x, y] : {std::pair(mDirekt, mIndirekt), {mDirekt, mZ}, {mIndirekt, mZ}}) {
        sum += evaluation.kovarianz(x, y) + evaluation.bestimmtheitsmass(x, y);
        sum += evaluation.anstieg(x, y) + evaluation.achsenabschnitt(x, y);
        sum += evaluation.anstieg(y, x) + evaluation.achsenabschnitt(y, x);
    }
    return sum;
}
