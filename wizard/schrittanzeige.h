#pragma once

#include <QStringList>
#include <QWidget>

/// Shows how far the user has come: the numbered steps with their names, the current one marked.
class Schrittanzeige : public QWidget
{
public:
    explicit Schrittanzeige(const QStringList &steps, QWidget *parent = nullptr);

    /// \a step counts from 1; 0 stands before the first.
    void setCurrent(int step);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    int circleSize() const;
    void drawCircle(QPainter &painter, const QRectF &circle, int step) const;

    QStringList m_steps;
    int m_current = 0;
};
