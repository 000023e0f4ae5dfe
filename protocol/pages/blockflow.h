#pragma once

#include "protocol/pages/clsbander.h"
#include "protocol/pages/drawing.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

/// A place in the rows of a table; what the numbers mean is the source's affair.
struct RowPosition
{
    std::int32_t row = 0;
    std::int32_t part = 0;

    bool operator==(const RowPosition &) const = default;
};

/// Rows that stay together on a page.
struct RowGroup
{
    Drawing drawing; ///< its top at 0
    int rows = 1;
    RowPosition next;
};

/// Makes the rows of a table when they are asked for, so that a table of any length costs what is
/// being composed.
class RowSource
{
public:
    virtual ~RowSource() = default;
    virtual bool atEnd(const RowPosition &position) const = 0;
    /// The group at \a position, at most \a mostHeight centimetres high if that is possible;
    /// \a first below a header.
    virtual RowGroup group(const RowPosition &position, bool first, double mostHeight) = 0;
};

/// A table with what belongs to it.
struct Block
{
    Drawing lead;   ///< heading or caption, stands once
    Drawing header; ///< header rows, repeated on every page
    std::unique_ptr<RowSource> rows;
    Drawing tail; ///< what follows the table in the same band where there is room
};

/// Hands a block to the composer: as one band where it fits an empty page, else in pieces cut
/// between rows, each with the header rows. The first piece fills the rest of the page if its
/// header and three rows fit there. Below the title of the document a block is cut, too, rather
/// than moved to the next page: the title would stand alone.
class BlockFlow
{
public:
    BlockFlow(clsBander &bander, Block block, bool belowTitle = false);

    /// Height that has to be free so that the block's beginning comes on the current page.
    double leastHeight();

    /// Draws the next band. \returns whether there is more.
    bool step();

private:
    struct Piece
    {
        std::vector<RowGroup> groups;
        double height = 0.0;
        int rows = 0;
        RowPosition next;
        bool complete = false; ///< reaches the last row
    };

    Piece collected(double height, const RowPosition &from, bool withLead);
    const Piece &wholePage();
    Piece firstRowsIn(double height);
    Drawing band(const Piece &piece, bool withLead, bool withTail) const;
    bool fitsOnePage();
    bool staysWhole();
    void drawFirst();
    void drawNext();

    clsBander &m_bander; ///< borrowed
    Block m_block;
    std::optional<Piece> m_wholePage; ///< what fits an empty page, from the first row on
    RowPosition m_position;
    bool m_belowTitle;
    bool m_started = false;
    bool m_rowsDone = false;
    bool m_tailDone = false;
};
