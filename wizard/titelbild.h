#pragma once

#include <QWidget>

/// The picture of the welcome page: a roller on layers of soil, above them measured points and
/// their line. Drawn, so that it is sharp at every size.
class Titelbild : public QWidget
{
public:
    explicit Titelbild(QWidget *parent = nullptr);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
};
