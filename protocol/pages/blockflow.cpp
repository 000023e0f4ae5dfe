#include "protocol/pages/blockflow.h"

#include "protocol/pages/cells.h"
#include "protocol/pages/pageformat.h"

#include <utility>

namespace {

constexpr int fewestRows = 3; // of a piece that only fills the rest of a page

double freeHeight(const clsBander &bander)
{
    return bander.PageEmpty ? bander.space() : bander.space() - bander.UsedHeight;
}

} // namespace

BlockFlow::BlockFlow(clsBander &bander, Block block, bool belowTitle)
    : m_bander(bander), m_block(std::move(block)), m_belowTitle(belowTitle)
{
    m_tailDone = m_block.tail.primitives().empty();
}

// The groups that fit \a height, but at least one, so that every piece makes progress.
BlockFlow::Piece BlockFlow::collected(double height, const RowPosition &from, bool withLead)
{
    Piece piece;
    piece.next = from;
    piece.height = m_block.header.extents().height();
    if (withLead)
        piece.height += m_block.lead.extents().height();
    const double most = m_bander.space() - piece.height;
    while (!m_block.rows->atEnd(piece.next)) {
        RowGroup group = m_block.rows->group(piece.next, piece.groups.empty(), most);
        const double grown = piece.height + group.drawing.extents().height();
        if (grown > height && !piece.groups.empty())
            return piece;
        piece.height = grown;
        piece.rows += group.rows;
        piece.next = group.next;
        piece.groups.push_back(std::move(group));
    }
    piece.complete = true;
    return piece;
}

const BlockFlow::Piece &BlockFlow::wholePage()
{
    if (!m_wholePage)
        m_wholePage = collected(m_bander.space(), m_position, true);
    return *m_wholePage;
}

// What fits a lower height of what fits a page, without making the rows again.
BlockFlow::Piece BlockFlow::firstRowsIn(double height)
{
    const Piece &whole = wholePage();
    Piece piece = whole;
    while (piece.height > height && piece.groups.size() > 1) {
        piece.height -= piece.groups.back().drawing.extents().height();
        piece.rows -= piece.groups.back().rows;
        piece.groups.pop_back();
        piece.next = piece.groups.back().next;
        piece.complete = false;
    }
    return piece;
}

bool BlockFlow::fitsOnePage()
{
    const Piece &piece = wholePage();
    return piece.complete && piece.height + m_block.tail.extents().height() <= m_bander.space();
}

bool BlockFlow::staysWhole()
{
    return fitsOnePage() && (!m_belowTitle || wholePage().height <= freeHeight(m_bander));
}

double BlockFlow::leastHeight()
{
    const Piece &piece = wholePage();
    if (fitsOnePage() && !m_belowTitle)
        return piece.height + m_block.tail.extents().height();
    double height = m_block.lead.extents().height() + m_block.header.extents().height();
    int rows = 0;
    for (const RowGroup &group : piece.groups) {
        height += group.drawing.extents().height();
        rows += group.rows;
        if (rows >= fewestRows)
            break;
    }
    return height;
}

Drawing BlockFlow::band(const Piece &piece, bool withLead, bool withTail) const
{
    Drawing band;
    const auto append = [&band](const Drawing &part) {
        band.insert(part);
        band.offsetInsertionPoint(0.0, -part.extents().height());
    };
    if (withLead)
        append(m_block.lead);
    const double top = band.insertionPoint().y();
    append(m_block.header);
    for (const RowGroup &group : piece.groups)
        append(group.drawing);
    if (!piece.groups.empty()) {
        if (m_block.header.primitives().empty())
            drawRule(band, 0.0, contentWidthCm, top, strongRuleCm);
        drawRule(band, 0.0, contentWidthCm, band.insertionPoint().y(), strongRuleCm);
    }
    if (withTail)
        append(m_block.tail);
    return band;
}

void BlockFlow::drawFirst()
{
    if (staysWhole()) {
        m_bander.DrawBand(band(wholePage(), true, true));
        m_rowsDone = true;
        m_tailDone = true;
        return;
    }
    Piece piece = firstRowsIn(freeHeight(m_bander));
    if ((piece.rows < fewestRows && !piece.complete) || piece.height > freeHeight(m_bander))
        piece = wholePage();
    m_bander.DrawBand(band(piece, true, false));
    m_position = piece.next;
    m_rowsDone = piece.complete;
}

void BlockFlow::drawNext()
{
    if (m_rowsDone) {
        m_bander.DrawBand(m_block.tail);
        m_tailDone = true;
        return;
    }
    const Piece piece = collected(m_bander.space(), m_position, false);
    m_bander.DrawBand(band(piece, false, false));
    m_position = piece.next;
    m_rowsDone = piece.complete;
}

bool BlockFlow::step()
{
    if (!m_started)
        drawFirst();
    else
        drawNext();
    m_started = true;
    m_wholePage.reset();
    return !m_rowsDone || !m_tailDone;
}
