#include "wizard/bildfeld.h"

#include "wizard/bilder.h"

#include <QEvent>

Bildfeld::Bildfeld(qreal textLines, QWidget *parent) : QLabel(parent), m_textLines(textLines)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void Bildfeld::setBild(const QString &path, const QString &name)
{
    m_path = path;
    setAccessibleName(name);
    redraw();
}

bool Bildfeld::event(QEvent *event)
{
    const bool handled = QLabel::event(event);
    switch (event->type()) {
    case QEvent::FontChange:
    case QEvent::Show:
    case QEvent::ScreenChangeInternal: // the new screen may have other pixels
        redraw();
        break;
    default:
        break;
    }
    return handled;
}

void Bildfeld::redraw()
{
    if (m_path.isEmpty())
        return;
    const int side = qRound(m_textLines * fontMetrics().lineSpacing());
    setPixmap(bilder::pixmap(m_path, side, devicePixelRatioF()));
}
