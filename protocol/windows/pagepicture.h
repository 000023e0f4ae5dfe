#pragma once

#include "protocol/pages/page.h"

#include <QWidget>

#include <memory>

/// Paints one page on its sheet of paper.
class PagePicture : public QWidget
{
    Q_OBJECT

public:
    PagePicture(std::shared_ptr<const Page> page, QWidget *parent);

    const Page &page() const { return *m_page; }
    void setPixelsPerCm(double pixels);
    /// The page has changed.
    void refresh();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    std::shared_ptr<const Page> m_page;
    double m_pixelsPerCm = 1.0;
};
