#pragma once

#include <QDateTime>
#include <QString>

#include <chrono>
#include <functional>

class Dialogs;
class Kalibrierung;
class ProtocolServices;
class QWidget;

/// The windows that the output page opens.
namespace ausgabe {

/// Asks for the file of the spreadsheet; empty when cancelled.
using ChooseTarget = std::function<QString(QWidget *owner, const QString &suggestion)>;

/// What the windows are given; the references outlive them.
struct Dienste
{
    ProtocolServices &protocol;
    Dialogs &dialogs;
    ChooseTarget chooseSpreadsheet;
    std::function<QDateTime()> now;
    /// How long an export takes before its progress is shown.
    std::chrono::milliseconds showProgressAfter{500};
};

/// Opens the preview of the protocol of \a document, modal to \a owner.
void showProtocol(const Dienste &services, Kalibrierung &document, QWidget *owner);

/// Opens the list of exports, modal to \a owner.
void showExport(const Dienste &services, Kalibrierung &document, QWidget *owner);

/// The platform's file dialog for a spreadsheet. A name chosen as a spreadsheet ends in ".xlsx";
/// the user is asked before a file is replaced.
QString chooseSpreadsheet(QWidget *owner, const QString &suggestion);

} // namespace ausgabe
