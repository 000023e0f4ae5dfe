#pragma once

#include <QColor>
#include <QPalette>
#include <QPointer>

#include <optional>

class QComboBox;
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
    /// Before showing: \a watcher filters its events, texts stand as \a alignment says.
    void prepare(QObject *watcher, Qt::Alignment alignment);
    /// Opens with \a text. A list without it goes to the closest entry.
    void setText(const QString &text);
    void selectAll();
    void caretToEnd();
    /// Puts \a text in the place of all, as if typed: a validator may refuse it, and a list without
    /// a line edit goes to the first entry that begins with it.
    void replaceByTyping(const QString &text);
    /// What a commit writes. A list that can't show a text, or shows another one that nobody has
    /// confirmed, gives back the text that it was opened with as long as nothing is chosen.
    QString text(bool confirmed) const;

    void setColors(std::optional<QColor> back, std::optional<QColor> text);
    void restoreColors();

private:
    QLineEdit *line() const;
    QComboBox *combo() const;
    QLineEdit *typingField() const;

    QPointer<QWidget> m_widget;
    QString m_openedWith;
    int m_openedIndex = -1;
    bool m_chosen = false; ///< the user has picked an entry
    QMetaObject::Connection m_choosing;
    std::optional<QPalette> m_ownPalette;
};
