#pragma once

#include "protocol/pages/blockflow.h"
#include "protocol/pages/clsbander.h"
#include "protocol/pages/textmeasure.h"

#include <QString>

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

class Kalibrierung;

/// What a protocol contains; the numbers are the places in the window's list.
enum class ProtocolType : std::int32_t {
    WithCalibrationField = 0, ///< all sections
    ResultsOnly = 1           ///< without the record of laying out the calibration field
};

/// Hands the protocol of one document to a composer, band by band. Reads the document only.
///
/// A heading that would stand alone at the foot of a page begins the next one, and the blank room
/// between bands never begins a page.
class ProtocolComposition
{
public:
    /// All are borrowed; \a bander is a new one whose events are already handled.
    ProtocolComposition(Kalibrierung &document, ProtocolType type, clsBander &bander,
                        const TextMeasure &measure);

    /// Composes the next band or two. \returns whether there is more; raises what reading the
    /// document raises, and the composition has ended then.
    bool step();

private:
    struct Section
    {
        QString heading; ///< a band of its own above the block; none where empty
        std::function<Block()> block;
        double spaceBelow;
    };

    void addFieldSections();
    void addResultSections();
    QString nextNumber();
    void drawTitle();
    void begin(const Section &section);
    void drawHeading(const QString &heading);
    void drawSpacer(double height);

    Kalibrierung &m_document;
    clsBander &m_bander;
    const TextMeasure &m_measure;
    int m_counter = 0;
    std::vector<Section> m_sections;
    std::size_t m_next = 0;
    bool m_titleDrawn = false;
    std::unique_ptr<BlockFlow> m_flow; ///< of the section before m_next
};
