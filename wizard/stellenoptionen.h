#pragma once

#include <QString>

#include <array>
#include <cstdint>

class Kalibrierung;

/// One of the numbers of decimal places that the options dialog edits: its captions and names, and
/// where the document keeps it.
struct Stellenoption
{
    QString caption; ///< with the mark of its key
    QString accessibleName;
    QString textName;   ///< object name of the box
    QString arrowsName; ///< object name of the arrows
    std::int32_t (Kalibrierung::*get)();
    void (Kalibrierung::*set)(std::int32_t);
};

/// From top to bottom. The places of the standard deviation are not among them on purpose.
const std::array<Stellenoption, 6> &stellenoptionen();
