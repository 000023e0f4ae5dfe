#pragma once

#include "core/kalibrierung.h"
#include "wizard/assistentdienste.h"
#include "wizard/dialogs.h"
#include "wizard/frmassistent.h"

#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

#include <deque>
#include <functional>
#include <memory>
#include <vector>

/// Answers as scripted and keeps what was shown. A question without an answer left is cancelled.
class FakeDialogs : public Dialogs
{
public:
    struct Shown
    {
        Icon icon;
        QString title;
        QString text;
        bool operator==(const Shown &) const = default;
    };

    void message(QWidget *, Icon icon, const QString &title, const QString &text) override
    {
        shown.push_back({icon, title, text});
        if (whileShown)
            whileShown();
    }
    Answer question(QWidget *, const QString &title, const QString &text) override
    {
        questions.append(title + u": "_qs + text);
        return next(answers, Answer::Cancel);
    }
    Conflict conflict(QWidget *, const QString &title, const QString &text) override
    {
        conflicts.append(title + u": "_qs + text);
        return next(conflictAnswers, Conflict::Cancel);
    }
    std::optional<QString> openFileName(QWidget *, const QString &startAt) override
    {
        openedAt.append(startAt);
        return next(openNames, std::optional<QString>());
    }
    std::optional<QString> saveFileName(QWidget *, const QString &preset) override
    {
        savedAt.append(preset);
        return next(saveNames, std::optional<QString>());
    }

    std::vector<Shown> shown;
    std::function<void()> whileShown; ///< what goes on while a message waits
    QStringList questions;
    QStringList conflicts;
    QStringList openedAt;
    QStringList savedAt;
    std::deque<Answer> answers;
    std::deque<Conflict> conflictAnswers;
    std::deque<std::optional<QString>> openNames;
    std::deque<std::optional<QString>> saveNames;

private:
    template <typename T>
    static T next(std::deque<T> &script, T fallback)
    {
        if (script.empty())
            return fallback;
        T first = script.front();
        script.pop_front();
        return first;
    }
};

class FakeHelp : public Hilfe
{
public:
    void setHelpFile(const QString &path) override { file = path; }
    void showHelp() override { ++times; }

    QString file;
    int times = 0;
};

/// Counts what the document asks for and opens nothing.
class FakeWindows : public WindowService
{
public:
    QObject *createAssistent(Kalibrierung &) override { return make(QStringLiteral("assistent")); }
    QObject *createInfo() override { return make(QStringLiteral("info")); }
    QObject *createCalcOptions(Kalibrierung &) override { return make(QStringLiteral("options")); }
    QObject *createProtocollExtraData(Kalibrierung &) override
    {
        return make(QStringLiteral("extra data"));
    }
    void showForm(QObject *, bool modal, QObject *parentForm) override
    {
        calls.append(modal ? u"modal"_qs : u"modeless"_qs);
        owner = parentForm;
        if (whileShown)
            whileShown();
    }

    QStringList calls;
    QObject *owner = nullptr;
    std::function<void()> whileShown; ///< what the user does in the window

private:
    QObject *make(const QString &name)
    {
        calls.append(name);
        return &m_form;
    }
    QObject m_form;
};

/// A main window on a document, with everything around it faked; shown and active.
class WizardFixture
{
public:
    explicit WizardFixture(const QLocale &locale = QLocale(QLocale::German, QLocale::Germany),
                           bool dontShowPage0 = true)
        : settings(folder.filePath(QStringLiteral("settings.ini")), QSettings::IniFormat)
        , document(locale, &windows)
    {
        settings.setValue(QStringLiteral("Main/DontShowPage0"), dontShowPage0 ? 1 : 0);
    }

    frmAssistent &open()
    {
        AssistentDienste services{dialogs, settings, help, folder.path()};
        services.showProtocol = showProtocol;
        services.showExport = showExport;
        window = std::make_unique<frmAssistent>(document, services);
        window->show();
        window->activateWindow();
        if (!QTest::qWaitForWindowActive(window.get()))
            qFatal("the window did not become active");
        QCoreApplication::processEvents();
        return *window;
    }

    template <typename T>
    T *find(const QString &name) const
    {
        T *found = window->findChild<T *>(name);
        if (!found)
            qFatal("no control %s", qPrintable(name));
        return found;
    }

    int activePage() const
    {
        return window->findChild<QWidget *>(u"ctlAssistent1"_qs)->property("Tag").toInt();
    }

    QString path(const QString &name) const { return folder.filePath(name); }

    QTemporaryDir folder;
    QSettings settings;
    FakeDialogs dialogs;
    FakeHelp help;
    FakeWindows windows;
    Kalibrierung document;
    AssistentDienste::OpenWindow showProtocol;
    AssistentDienste::OpenWindow showExport;
    std::unique_ptr<frmAssistent> window;
};

/// The box of a refused entry.
inline FakeDialogs::Shown informationBox(const QString &text)
{
    return {Dialogs::Icon::Information, u"Kalibrierung nach Wendral"_qs, text};
}

inline FakeDialogs::Shown exclamationBox(const QString &text)
{
    return {Dialogs::Icon::Exclamation, u"Kalibrierung nach Wendral"_qs, text};
}
