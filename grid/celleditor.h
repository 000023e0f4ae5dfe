#pragma once

#include <QColor>
#include <QPalette>
#include <QPointer>

#include <optional>

class QComboBox;
class QInputMethodEvent;
class QLineEdit;
class QWidget;

/// The place in \a entries of the one to select for \a text: the equal one, else the one with the
/// longest common beginning, the earliest in a tie; -1 when nothing is shared or \a text is empty.
int closestEntry(const QStringList &entries, const QString &text);

/// A line edit or a combo box on loan, spoken to in one way.
class CellEditor
{
public:
    CellEditor() = default;
    ~CellEditor();
    Q_DISABLE_COPY_MOVE(CellEditor)

    /// Borrows \a widget; false, and empty, for any other kind.
    bool take(QWidget *widget);
    void release();
    QWidget *widget() const { return m_widget; }
    /// Whether there is an editor; false already inside the editor's destructor.
    explicit operator bool() const { return line() || combo(); }
    /// Whether \a object is the editor or the line edit inside its combo box.
    bool isPartOfIt(const QObject *object) const;

    /// How far inside a cell's frame of \a frame pixels the editor lies; a list has one of its own.
    int inset(int frame) const { return line() ? frame : frame / 2; }
    /// Before showing: \a watcher filters its events, texts stand as \a alignment says and where a
    /// cell of \a cellHeight pixels shows them.
    void prepare(QObject *watcher, Qt::Alignment alignment, int cellHeight);
    /// Opens with \a text. A list without it goes to the closest entry.
    void setText(const QString &text);
    void selectAll();
    void caretToEnd();
    /// Puts \a text in the place of all, as if typed. A text that the editor does not take, or that
    /// begins no entry of a list without a line edit, leaves all as it was.
    void replaceByTyping(const QString &text);
    /// Whether texts can be typed into it; a list can only be chosen from.
    bool isTyped() const { return typingField() != nullptr; }

    /// What the line edit held before an input method began to compose.
    struct Composition
    {
        QString text;
        qsizetype selectionStart = -1;
        qsizetype selectionLength = 0;
        bool begun = false; ///< something is being composed, and the selected text is gone

        QString rest() const;
    };
    /// Before an event of the input method: what it can be taken back to.
    Composition composition() const;
    /// After the event: a composition that came to nothing brings back the text that it replaced.
    void composed(const QInputMethodEvent &event, const Composition &before);
    /// What a commit writes: the text that it was opened with as long as nobody changed what is
    /// shown. A list that shows another entry than that text counts as changed by confirming it.
    QString text(bool confirmed) const;

    void setColors(std::optional<QColor> back, std::optional<QColor> text);
    void restoreColors();

private:
    QLineEdit *line() const;
    QComboBox *combo() const;
    QLineEdit *typingField() const;

    QString typedText() const;

    QPointer<QWidget> m_widget;
    QString m_openedWith;
    QString m_shown; ///< what the line edit made of that
    std::optional<Composition> m_composition;
    int m_openedIndex = -1;
    bool m_chosen = false; ///< the user has picked an entry
    QMetaObject::Connection m_choosing;
    std::optional<QPalette> m_ownPalette;
};
