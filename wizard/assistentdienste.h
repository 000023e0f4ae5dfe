#pragma once

#include "grid/gridenvironment.h"

#include <QString>

#include <functional>

class Dialogs;
class Kalibrierung;
class QSettings;
class QWidget;

/// The help system, as far as a window needs it.
class Hilfe
{
public:
    virtual ~Hilfe() = default;

    virtual void setHelpFile(const QString &path) = 0;
    /// Opens the help file at its table of contents; without the file nothing happens.
    virtual void showHelp() = 0;
};

/// What the wizard is given by the program that opens it. All references outlive the wizard.
struct AssistentDienste
{
    /// Opens a window for a document that belongs to a wizard window; may raise a RunTimeError.
    using OpenWindow = std::function<void(Kalibrierung &document, QWidget *owner)>;

    Dialogs &dialogs;
    QSettings &settings;
    Hilfe &help;
    /// The folder that the help file lies in.
    QString programFolder;
    /// Without a function its command is disabled and says so.
    OpenWindow showProtocol = {};
    OpenWindow showExport = {};
    /// Clipboard and clock of the tables.
    GridEnvironment grid = GridEnvironment::system();
};
