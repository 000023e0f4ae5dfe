#pragma once

#include "protocol/pages/drawing.h"

#include <QObject>

#include <cstdint>

/// The events of clsBander. A base class of their own, because one of them has the name of a
/// method.
class clsBanderEvents : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

signals:
    /// A page has to be made: put its drawing into Target and set height and margins. PageCount has
    /// not grown yet.
    void NewPage();
    /// The current page, number PageCount, is finished.
    void CompletePage();
    /// The new page is counted and empty.
    void PageStarted();
};

/// Lays bands out as a vertical stack on pages; knows nothing of their content.
///
/// Lengths are those of the drawings. One composer serves one composition.
class clsBander : public clsBanderEvents
{
    Q_OBJECT

public:
    Drawing *Target = nullptr; ///< borrowed: the page that bands are copied into
    double PageHeight = 0.0;
    double TopMargin = 0.0;
    double BottomMargin = 0.0;
    std::int32_t PageCount = 0; ///< pages begun so far
    bool PageEmpty = false;     ///< from NewPage() until the first band
    double UsedHeight = 0.0;    ///< of the bands on the current page

    using clsBanderEvents::clsBanderEvents;

    /// Places \a band at Target's insertion point, on a new page when it does not fit the current
    /// one. A band taller than an empty page overruns it. Raises 5 without a Target, and what
    /// NewPage() raises.
    void DrawBand(const Drawing &band);

    /// Completes the current page, if there is one, and begins the next; leaves UsedHeight alone.
    /// Raises 6 when the pages can't be counted any more.
    void NewPage();

    /// Room for bands on an empty page.
    double space() const { return PageHeight - TopMargin - BottomMargin; }
};
