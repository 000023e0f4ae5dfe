#pragma once

#include <QAbstractPrintDialog>
#include <QString>

class QPrinter;
class QWidget;

/// What the preview asks of the world around it, so that tests can answer: message boxes, dialogs,
/// the list of printers.
class ProtocolServices
{
public:
    enum class Icon { Information, Exclamation };

    virtual ~ProtocolServices() = default;

    /// Shows a message box with a single button.
    virtual void message(QWidget *parent, Icon icon, const QString &title, const QString &text) = 0;
    virtual bool isPrinterInstalled() = 0;
    /// Shows the print dialog. \returns false when it was cancelled.
    virtual bool choosePrinter(QPrinter &printer, QAbstractPrintDialog::PrintDialogOptions options,
                               QWidget *parent) = 0;
    /// Shows the printer set-up. \returns false when it was cancelled.
    virtual bool setUpPrinter(QPrinter &printer, QWidget *parent) = 0;
    /// Asks where to save a PDF; \a suggestion is a file name or a path. Empty when cancelled.
    virtual QString choosePdfTarget(const QString &suggestion, QWidget *parent) = 0;
};

/// Answers with the platform's own dialogs.
class PlatformProtocolServices : public ProtocolServices
{
public:
    void message(QWidget *parent, Icon icon, const QString &title, const QString &text) override;
    bool isPrinterInstalled() override;
    bool choosePrinter(QPrinter &printer, QAbstractPrintDialog::PrintDialogOptions options,
                       QWidget *parent) override;
    bool setUpPrinter(QPrinter &printer, QWidget *parent) override;
    QString choosePdfTarget(const QString &suggestion, QWidget *parent) override;
};
