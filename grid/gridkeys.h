#pragma once

#include <QString>

#include <optional>

class QKeyEvent;

/// What the editor shows when it opens: the cell's text, all of it selected or with the caret
/// behind it, or a text typed in its place.
struct GridOpening
{
    bool selectAll = true;
    std::optional<QString> typed;
    bool operator==(const GridOpening &) const = default;
};

/// How a key pressed on the grid opens the editor; none where it doesn't. Enter selects all, F2
/// keeps the text with the caret behind it, Backspace opens empty, a character takes the text's
/// place. Keys without a character never open it, nor do combinations with Ctrl, Alt or Meta unless
/// they are AltGr's.
std::optional<GridOpening> openingKey(const QKeyEvent &event);

/// Whether Ctrl is held and no other modifier; the keypad's mark is none.
bool isCtrlAlone(const QKeyEvent &event);
