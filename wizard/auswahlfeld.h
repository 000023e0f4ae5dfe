#pragma once

#include <QComboBox>

/// An editable combo box that only its user changes: not the mouse wheel, not an automatic
/// completion, not the first entry of its list.
class Auswahlfeld : public QComboBox
{
public:
    explicit Auswahlfeld(QWidget *parent = nullptr);

    /// Adds \a entry to the list and leaves the text as it is.
    void addPreset(const QString &entry);
    /// Shows \a text, whether it is one of the list or not.
    void setText(const QString &text);
    /// The text, what was typed or pasted without characters that can't be seen: no file could
    /// hold them.
    QString text() const;

    /// Assistive technology reads a combo box's text as its name, so the line edit carries \a name.
    void setAccessibleTexts(const QString &name);

protected:
    void wheelEvent(QWheelEvent *event) override;

private:
    QString m_set;         ///< the last text that was set
    bool m_edited = false; ///< by hand, since then
};
