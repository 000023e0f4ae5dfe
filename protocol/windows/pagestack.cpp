#include "protocol/windows/pagestack.h"

#include "protocol/pages/textmeasure.h"
#include "protocol/windows/pagepicture.h"

#include <QKeyEvent>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace {

constexpr int gapPixels = 12;

int saturated(qint64 value)
{
    return static_cast<int>(std::min(value, static_cast<qint64>(std::numeric_limits<int>::max())));
}

} // namespace

PageStack::PageStack(QWidget *parent) : QWidget(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setBackgroundRole(QPalette::Mid);
    setAutoFillBackground(true);
    setMinimumSize(120, 120);
}

PageStack::~PageStack() = default;

void PageStack::clear()
{
    m_pages.clear();
    placePictures();
}

void PageStack::append(std::shared_ptr<const Page> page)
{
    m_pages.push_back(std::move(page));
    placePictures();
}

void PageStack::refresh(std::int32_t number)
{
    for (const auto &picture : m_pictures) {
        if (picture->page().number == number)
            picture->refresh();
    }
}

void PageStack::setZoom(double factor)
{
    m_zoom = factor;
    placePictures();
}

// All pages of one protocol have the same sheet.
QSize PageStack::pageSize() const
{
    if (m_pages.empty())
        return {};
    const PageFormat &format = m_pages.front()->format;
    const double pixels = pixelsPerCm();
    return {static_cast<int>(std::ceil(format.sheetWidth * pixels)),
            static_cast<int>(std::ceil(format.sheetHeight * pixels))};
}

double PageStack::pixelsPerCm() const
{
    return logicalDpiX() / centimetresPerInch * m_zoom;
}

qint64 PageStack::pageTop(std::size_t index) const
{
    return gapPixels + static_cast<qint64>(index) * (pageSize().height() + gapPixels);
}

std::size_t PageStack::indexAt(qint64 y) const
{
    const qint64 index = std::max<qint64>(y - gapPixels, 0) / (pageSize().height() + gapPixels);
    return std::min(static_cast<std::size_t>(index), m_pages.size() - 1);
}

QSize PageStack::stackSize() const
{
    return {pageSize().width() + 2 * gapPixels, saturated(pageTop(m_pages.size()))};
}

void PageStack::scrollTo(const QPoint &offset)
{
    m_offset = offset;
    placePictures();
}

std::int32_t PageStack::currentPage() const
{
    if (m_pages.empty())
        return 0;
    return m_pages[indexAt(qint64{m_offset.y()} + height() / 2)]->number;
}

void PageStack::placePictures()
{
    if (m_pages.empty()) {
        m_pictures.clear();
        return;
    }
    const QSize size = pageSize();
    const std::size_t first = indexAt(m_offset.y());
    const std::size_t last = indexAt(qint64{m_offset.y()} + height());
    std::erase_if(m_pictures, [&](const auto &picture) {
        const auto index = static_cast<std::size_t>(picture->page().number - 1);
        return index < first || index > last || &picture->page() != m_pages[index].get();
    });
    const int room = width() - size.width();
    const int x = room > 2 * gapPixels ? room / 2 : gapPixels - m_offset.x();
    for (std::size_t index = first; index <= last; ++index) {
        PagePicture *picture = pictureOf(index);
        picture->setPixelsPerCm(pixelsPerCm());
        picture->setGeometry(QRect(QPoint(x, saturated(pageTop(index) - m_offset.y())), size));
        picture->show();
    }
}

PagePicture *PageStack::pictureOf(std::size_t index)
{
    for (const auto &picture : m_pictures) {
        if (&picture->page() == m_pages[index].get())
            return picture.get();
    }
    return m_pictures.emplace_back(std::make_unique<PagePicture>(m_pages[index], this)).get();
}

void PageStack::keyPressEvent(QKeyEvent *event)
{
    emit keyPressed(event->key());
    QWidget::keyPressEvent(event); // what nobody here wants goes on to the window
}

void PageStack::wheelEvent(QWheelEvent *event)
{
    constexpr int oneStep = 120; // eighths of a degree
    event->accept();
    if (!event->modifiers().testFlag(Qt::ControlModifier)) {
        emit wheelTurned(event->angleDelta().x(), event->angleDelta().y());
        return;
    }
    m_zoomTurn += event->angleDelta().y();
    const int steps = m_zoomTurn / oneStep;
    m_zoomTurn -= steps * oneStep;
    if (steps != 0)
        emit wheelZoomed(steps);
}

void PageStack::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    placePictures();
    emit resized();
}
