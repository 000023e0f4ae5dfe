#pragma once

#include <QString>

#include <functional>

/// Plain text out of and into a clipboard. Handed in, so that tests leave the user's clipboard
/// alone.
struct TextClipboard
{
    std::function<QString()> text;
    /// Empties the clipboard before.
    std::function<void(const QString &)> setText;

    /// The clipboard of the desktop.
    static TextClipboard system();
};
