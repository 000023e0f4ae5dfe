#pragma once

#include <QLocale>
#include <QString>

class Dialogs;
class QCoreApplication;
class WindowService;

/// The start of the program.
namespace basKalibrierungWendral {

/// Whether the program runs in debug mode. Written once, by Main; the protocol shows where its
/// pages and extents lie when it is set.
bool debugMode();

/// Whether \a commandLine, all that follows the program's name, holds the debug word in any case.
bool asksForDebugMode(const QString &commandLine);

/// Creates a document and its wizard window, shows the window, then reads \a commandLine and tells
/// about debug mode. The document belongs to the window from then on.
void Main(const QString &commandLine, const QLocale &locale, WindowService &windows,
          Dialogs &dialogs);

} // namespace basKalibrierungWendral

/// A file that may not grow any further is an error of the command that writes it from now on, and
/// not the end of the program.
void takeFileSizeLimitAsError();

/// Qt's own buttons and dialogs speak German from now on. \returns whether the texts were found.
bool installGermanTexts(QCoreApplication &application);
