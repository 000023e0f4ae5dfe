#pragma once

#include <QString>

#include <cstdint>
#include <functional>
#include <map>

/// Bytes that have been read, and all that are to be read.
using Prueffortschritt = std::function<bool(std::uint64_t gelesen, std::uint64_t gesamt)>;

/// What a sheet's file must hold.
struct Blattumfang
{
    int zeilen = 0;
    std::int64_t textbytes = 0; ///< of its texts and formulas in UTF-8, each reference as one byte

    bool operator==(const Blattumfang &) const = default;
};

/// Opens the workbook at \a path again and reads all of it. \a sheets names the sheets' files in it
/// ("xl/worksheets/sheet1.xml") and what each must hold.
///
/// The library writes sheets into temporary files first and does not notice when those are cut
/// short by a full disk: it packs what is there, and the end of the sheet behind it. Where room
/// comes and goes, a piece can be missing anywhere. \a progress is told now and then how many bytes
/// of how many are read; false ends the reading.
///
/// \returns false when \a progress has cancelled. Raises 57, 70, 75 or 76 where something can't be
/// read, 61 where something is missing.
bool pruefeMappe(const QString &path, const std::map<QString, Blattumfang> &sheets,
                 const Prueffortschritt &progress);
