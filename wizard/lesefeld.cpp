#include "wizard/lesefeld.h"

#include <QEvent>
#include <QTextDocument>

#include <memory>

namespace {

// Characters in a line that read well.
constexpr int readableLine = 60;

} // namespace

Lesefeld::Lesefeld(QWidget *parent) : QTextEdit(parent)
{
    setReadOnly(true);
    setTabChangesFocus(true);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Minimum);
    document()->setDocumentMargin(0);
    blendIn();
}

void Lesefeld::setText(const QString &text)
{
    QString shown = text;
    setPlainText(shown.replace(u"\r\n"_qs, u"\n"_qs));
    updateGeometry();
}

int Lesefeld::heightForWidth(int width) const
{
    // A copy: the document itself is laid out for the width that the widget has now.
    const std::unique_ptr<QTextDocument> copy(document()->clone());
    copy->setDefaultFont(font());
    copy->setTextWidth(qMax(1, width - 2 * frameWidth()));
    return qCeil(copy->size().height()) + 2 * frameWidth();
}

QSize Lesefeld::sizeHint() const
{
    const int width = fontMetrics().averageCharWidth() * readableLine;
    return {width, heightForWidth(width)};
}

QSize Lesefeld::minimumSizeHint() const
{
    return {fontMetrics().averageCharWidth() * readableLine / 2, fontMetrics().lineSpacing()};
}

void Lesefeld::changeEvent(QEvent *event)
{
    QTextEdit::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        updateGeometry();
    if (event->type() == QEvent::ParentChange)
        blendIn();
}

void Lesefeld::blendIn()
{
    // The page's own colours instead of those of an entry field, in light and in dark.
    viewport()->setAutoFillBackground(false);
    viewport()->setForegroundRole(QPalette::WindowText);
}
