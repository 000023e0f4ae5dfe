#pragma once

#include "protocol/pages/page.h"

#include <QWidget>

#include <memory>
#include <vector>

class PagePicture;

/// The pages of a protocol below each other. Only those that are visible have a widget and are
/// painted, so that neither hundreds of pages nor a large zoom cost memory.
class PageStack : public QWidget
{
    Q_OBJECT

public:
    explicit PageStack(QWidget *parent = nullptr);
    ~PageStack() override;

    /// Removes all pages.
    void clear();
    /// Adds a page below the others; it may still be filled.
    void append(std::shared_ptr<const Page> page);
    /// Shows page number \a number as it is now.
    void refresh(std::int32_t number);
    const std::vector<std::shared_ptr<const Page>> &pages() const { return m_pages; }

    double zoom() const { return m_zoom; }
    void setZoom(double factor);

    /// Size of the whole stack in pixels.
    QSize stackSize() const;
    /// Shows the part of the stack that begins at \a offset.
    void scrollTo(const QPoint &offset);
    /// Number of the page in the middle of what is visible; 0 without pages.
    std::int32_t currentPage() const;

signals:
    void keyPressed(int key);
    /// Wheel turns in eighths of a degree, away from the user positive.
    void wheelTurned(int horizontal, int vertical);
    void wheelZoomed(int steps);
    void resized();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    QSize pageSize() const;
    double pixelsPerCm() const;
    qint64 pageTop(std::size_t index) const;
    std::size_t indexAt(qint64 y) const;
    void placePictures();
    PagePicture *pictureOf(std::size_t index);

    std::vector<std::shared_ptr<const Page>> m_pages;
    std::vector<std::unique_ptr<PagePicture>> m_pictures; ///< of the visible pages
    double m_zoom = 1.0;
    QPoint m_offset;
    int m_zoomTurn = 0; ///< wheel turns that do not make a step yet
};
