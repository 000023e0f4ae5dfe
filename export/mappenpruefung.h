#pragma once

#include <QString>

#include <functional>
#include <map>

/// Opens the workbook at \a path again and reads all of it. \a rowsOfSheets names the sheets' files
/// in it ("xl/worksheets/sheet1.xml") and how many rows each must have.
///
/// The library writes sheets into temporary files first and does not notice when those are cut
/// short by a full disk: it packs what is there. \a progress is called now and then; false ends the
/// reading.
///
/// \returns false when \a progress has cancelled. Raises 57 where something can't be read, 61 where
/// something is missing.
bool pruefeMappe(const QString &path, const std::map<QString, int> &rowsOfSheets,
                 const std::function<bool()> &progress);
