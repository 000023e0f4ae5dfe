#include "protocol/windows/pagepicture.h"

#include "protocol/pages/painting.h"

#include <QPaintEvent>
#include <QPainter>
#include <QStringList>

#include <utility>

PagePicture::PagePicture(std::shared_ptr<const Page> page, QWidget *parent)
    : QWidget(parent), m_page(std::move(page))
{
    setObjectName(u"picPage"_qs + QString::number(m_page->number));
    setAccessibleName(u"Seite "_qs + QString::number(m_page->number));
    setAttribute(Qt::WA_OpaquePaintEvent);
    refresh();
}

void PagePicture::setPixelsPerCm(double pixels)
{
    if (pixels == m_pixelsPerCm)
        return;
    m_pixelsPerCm = pixels;
    update();
}

void PagePicture::refresh()
{
    QStringList texts;
    for (const Primitive &primitive : m_page->drawing.primitives()) {
        if (const auto *text = std::get_if<PlacedText>(&primitive))
            texts.append(text->text.trimmed());
    }
    setAccessibleDescription(texts.join(u' '));
    update();
}

void PagePicture::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    painter.fillRect(event->rect(), Qt::white);
    paintPage(painter, *m_page, m_pixelsPerCm, event->rect());
    painter.setPen(QColor(110, 110, 110));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}
