#pragma once

#include "protocol/windows/protocolservices.h"

#include <QPrinter>
#include <QStringList>

#include <functional>

/// Answers what a test has put in, and keeps what was asked.
struct FakeServices : ProtocolServices
{
    struct Message
    {
        Icon icon;
        QString title;
        QString text;
    };

    std::vector<Message> messages;
    std::function<void()> whileMessage; ///< runs while a box is open
    bool hasPrinter = true;
    int printerQuestions = 0;
    std::function<bool(QPrinter &)> onChoosePrinter = [](QPrinter &) { return false; };
    std::vector<QAbstractPrintDialog::PrintDialogOptions> printOptions;
    std::function<bool(QPrinter &)> onSetUp = [](QPrinter &) { return false; };
    QString pdfTarget;
    std::function<void()> whilePdfDialog; ///< runs while it is open
    QStringList pdfSuggestions;

    void message(QWidget *, Icon icon, const QString &title, const QString &text) override
    {
        messages.push_back({icon, title, text});
        if (whileMessage)
            whileMessage();
    }
    bool isPrinterInstalled() override
    {
        ++printerQuestions;
        return hasPrinter;
    }
    bool choosePrinter(QPrinter &printer, QAbstractPrintDialog::PrintDialogOptions options,
                       QWidget *) override
    {
        printOptions.push_back(options);
        return onChoosePrinter(printer);
    }
    bool setUpPrinter(QPrinter &printer, QWidget *) override { return onSetUp(printer); }
    QString choosePdfTarget(const QString &suggestion, QWidget *) override
    {
        pdfSuggestions.append(suggestion);
        if (whilePdfDialog)
            whilePdfDialog();
        return pdfTarget;
    }

    QStringList texts() const
    {
        QStringList result;
        for (const Message &message : messages)
            result.append(message.text);
        return result;
    }
};
