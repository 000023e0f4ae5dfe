#pragma once

#include "grid/gridenvironment.h"
#include "wizard/dialogs.h"
#include "wizard/eingaben.h"

#include <QWidget>

class FocusChecks;
class Kalibrierung;
class QVBoxLayout;

/// What a page works on and talks through; both outlive it.
struct Seitenkontext
{
    Kalibrierung &document;
    Dialogs &dialogs;
    GridEnvironment grid = GridEnvironment::system(); ///< clipboard and clock of the tables
};

/// One page of the wizard. The main window knows pages by these members only.
///
/// Text that is still what fill() has written is never written back, because it may be a rounded
/// form of the value in the document.
class AssistentSeite : public QWidget
{
public:
    /// Why entries are taken over into the document.
    enum class Anlass { Vor, Zurück, Befehl };

    explicit AssistentSeite(const Seitenkontext &context, QWidget *parent = nullptr);

    /// Checks the entries before a step forward; tells the user what is wrong. \returns whether the
    /// step may go on.
    virtual bool check() { return true; }
    /// Takes the entries over into the document. \returns false after a message about one that
    /// can't be stored; all others are stored then as well.
    virtual bool takeOver(Anlass) { return true; }
    /// Shows what the document holds.
    virtual void fill() {}

    /// Closes an editor that is open on the page and keeps its text.
    virtual void finishEditing() {}
    /// The entries that differ from what fill() or takeOver() last left there, and the text of an
    /// open editor. Changes nothing, raises no event and leaves the editor open.
    virtual Eingaben entries() const { return {}; }
    bool hasChanges() const { return !entries().isEmpty(); }
    /// Types \a entries, those of such a page on the same document, once more after fill(). An
    /// editor that was open opens again; what has no place is left out.
    virtual void restoreEntries(const Eingaben & /*entries*/) {}

    /// The control that has the focus on a page just entered; null leaves it with the buttons.
    virtual QWidget *firstControl() const { return nullptr; }

    /// Moves the focus without setting off the checks of the box that loses it.
    void moveFocus(QWidget *control);

protected:
    Kalibrierung &document() const { return m_context.document; }
    Dialogs &dialogs() const { return m_context.dialogs; }
    FocusChecks &focusChecks() const { return *m_focusChecks; }

    /// A column that holds the page's caption, an explanation and then what the page adds.
    QVBoxLayout *addColumn(int page, const QString &caption, const QString &explanation);

    /// Shows \a text, titled with the product's name.
    void tell(Dialogs::Icon icon, const QString &text);
    /// Shows it, and returns the focus to \a control. \returns false.
    bool refuse(Dialogs::Icon icon, const QString &text, QWidget *control);
    /// Tells that \a cells pasted cells had no place in a table.
    void reportLeftOut(int cells);

private:
    Seitenkontext m_context;
    FocusChecks *m_focusChecks;
};
