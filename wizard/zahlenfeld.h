#pragma once

#include <QWidget>

#include <functional>

class QLineEdit;
class QToolButton;

/// A text box with a pair of arrows beside it. Any text can be typed; what it is worth is for its
/// owner to say, the arrows and the arrow keys only count up and down.
class Zahlenfeld : public QWidget
{
public:
    /// The text after one step up (+1) or down (-1) from \a text.
    using Step = std::function<QString(const QString &text, int direction)>;

    /// \a textName and \a arrowsName are the object names of the two parts.
    Zahlenfeld(const QString &textName, const QString &arrowsName, Step step,
               QWidget *parent = nullptr);

    QLineEdit *box() const { return m_box; }
    QString text() const;
    void setText(const QString &text);

    void setAccessibleTexts(const QString &name);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void step(int direction);

    QLineEdit *m_box;
    QToolButton *m_up;
    QToolButton *m_down;
    Step m_step;
};
