#pragma once

#include <QLabel>

/// Shows one of the program's drawings, a given number of text lines high, sharp on every screen.
class Bildfeld : public QLabel
{
public:
    explicit Bildfeld(qreal textLines, QWidget *parent = nullptr);

    /// Shows the drawing at the resource \a path; \a name is what assistive technology reads.
    void setBild(const QString &path, const QString &name);
    QString path() const { return m_path; }

protected:
    bool event(QEvent *event) override;

private:
    void redraw();

    qreal m_textLines;
    QString m_path;
};
