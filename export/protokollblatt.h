#pragma once

class Blatt;
class Kalibrierung;

/// Writes the sheet "Protokolldaten": the descriptive data of \a document in its order. A text
/// longer than a cell goes on in the next row.
void schreibeProtokolldaten(Blatt &sheet, const Kalibrierung &document);
