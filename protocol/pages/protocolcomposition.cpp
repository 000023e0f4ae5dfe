#include "protocol/pages/protocolcomposition.h"

#include "core/kalibrierung.h"
#include "protocol/pages/bands.h"
#include "protocol/pages/fieldblocks.h"
#include "protocol/pages/resultblocks.h"
#include "protocol/pages/valuerows.h"

#include <algorithm>

namespace {

constexpr double belowHeadingCm = 0.25;
constexpr double belowTableCm = 0.5;
constexpr double belowStatisticCm = 0.25;
constexpr double belowLineCm = 0.2;

} // namespace

ProtocolComposition::ProtocolComposition(Kalibrierung &document, ProtocolType type,
                                         clsBander &bander, const TextMeasure &measure)
    : m_document(document), m_bander(bander), m_measure(measure)
{
    if (type == ProtocolType::WithCalibrationField)
        addFieldSections();
    const QString values = nextNumber() + u" Messergebnisse im Kalibrierfeld"_qs;
    m_sections.push_back(
        {{}, [=, this] { return messwerteBlock(m_document, m_measure, values); }, belowTableCm});
    addResultSections();
}

QString ProtocolComposition::nextNumber()
{
    return QString::number(++m_counter);
}

void ProtocolComposition::addFieldSections()
{
    const QString number = nextNumber();
    m_sections.push_back({number + u" Protokoll zur Anlage des Kalibrierfeldes"_qs,
                          [=, this] { return unterlageBlock(m_document, m_measure, number); },
                          belowTableCm});
    m_sections.push_back({{},
                          [=, this] { return kalibrierfeldBlock(m_document, m_measure, number); },
                          belowTableCm});
}

void ProtocolComposition::addResultSections()
{
    QString heading = nextNumber() + u" Statistische Auswertung"_qs;
    for (const auto block : {&mittelwerteBlock, &varianzenBlock, &standardabweichungenBlock,
                             &kovarianzenBlock, &bestimmtheitsmasseBlock}) {
        m_sections.push_back(
            {heading, [=, this] { return block(m_document, m_measure); }, belowStatisticCm});
        heading.clear();
    }
    for (const MerkmalPair &pair : protocolPairs)
        m_sections.push_back(
            {{},
             [=, this] { return kalibriergeradeBlock(m_document, m_measure, pair); },
             belowLineCm});
}

bool ProtocolComposition::step()
{
    if (!m_titleDrawn) {
        m_titleDrawn = true;
        drawTitle();
    } else if (m_flow) {
        if (!m_flow->step()) {
            m_flow.reset();
            drawSpacer(m_sections[m_next - 1].spaceBelow);
        }
    } else if (m_next < m_sections.size()) {
        begin(m_sections[m_next++]);
    }
    return m_flow || m_next < m_sections.size();
}

void ProtocolComposition::drawTitle()
{
    m_bander.NewPage();
    m_bander.DrawBand(textBand(m_measure,
                               u"Kalibrierung eines direkten und eines indirekten Prüfmerkmals \r\n"
                               u"nach Wendral (Ausgabe 2003)"_qs,
                               true, 0));
    drawSpacer(belowHeadingCm);
}

void ProtocolComposition::begin(const Section &section)
{
    std::unique_ptr<BlockFlow> flow;
    try {
        const bool belowTitle = m_next == 1;
        flow = std::make_unique<BlockFlow>(m_bander, section.block(), belowTitle);
    } catch (...) {
        drawHeading(section.heading); // what comes before the failure is composed
        throw;
    }
    if (!section.heading.isEmpty()) {
        const double needed = textBand(m_measure, section.heading, true, 1).extents().height() +
                              belowHeadingCm + flow->leastHeight();
        if (!m_bander.PageEmpty && m_bander.UsedHeight + needed > m_bander.space() &&
            needed <= m_bander.space()) {
            m_bander.NewPage();
            m_bander.UsedHeight = 0.0;
        }
    }
    drawHeading(section.heading);
    m_flow = std::move(flow);
}

void ProtocolComposition::drawHeading(const QString &heading)
{
    if (heading.isEmpty())
        return;
    m_bander.DrawBand(textBand(m_measure, heading, true, 1));
    drawSpacer(belowHeadingCm);
}

void ProtocolComposition::drawSpacer(double height)
{
    const double room = m_bander.space() - m_bander.UsedHeight;
    if (room > 0.0)
        m_bander.DrawBand(spacerBand(std::min(height, room)));
}
