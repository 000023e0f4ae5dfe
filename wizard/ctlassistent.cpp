#include "wizard/ctlassistent.h"

#include <QEvent>
#include <QFrame>
#include <QPushButton>
#include <QScopeGuard>
#include <QStyle>

namespace {

constexpr float twipsPerInch = 1440.0F;
constexpr float defaultMarginPixels = 10.0F;

float twipsPerPixel(const QWidget &widget)
{
    return twipsPerInch / static_cast<float>(widget.logicalDpiX());
}

QPushButton *button(QWidget *parent, const QString &name, const QString &caption)
{
    auto *made = new QPushButton(caption, parent);
    made->setAutoDefault(true); // Enter presses it, too
    made->setObjectName(name);
    return made;
}

} // namespace

ctlAssistent::ctlAssistent(QWidget *parent)
    : QWidget(parent)
    , m_margin(defaultMarginPixels * twipsPerPixel(*this))
    , cmdPrevious(button(this, QStringLiteral("cmdPrevious"), u"< &zurück"_qs))
    , cmdNext(button(this, QStringLiteral("cmdNext"), QStringLiteral("&weiter >")))
    , cmdCancel(button(this, QStringLiteral("cmdCancel"), u"&Schließen"_qs))
    , linTop(new QFrame(this))
{
    linTop->setObjectName(QStringLiteral("linTop"));
    linTop->setFrameStyle(static_cast<int>(QFrame::HLine) | static_cast<int>(QFrame::Sunken));
    connect(cmdPrevious, &QPushButton::clicked, this, [this] { GoToPage(-1); });
    connect(cmdNext, &QPushButton::clicked, this, [this] { GoToPage(1); });
    connect(cmdCancel, &QPushButton::clicked, this, &ctlAssistent::Cancel);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    layoutButtons();
}

void ctlAssistent::setMargin(float twips)
{
    m_margin = twips;
    layoutButtons();
}

bool ctlAssistent::CancelEnabled() const
{
    return cmdCancel->isEnabled();
}
void ctlAssistent::setCancelEnabled(bool enabled)
{
    cmdCancel->setEnabled(enabled);
}

bool ctlAssistent::NextEnabled() const
{
    return cmdNext->isEnabled();
}
void ctlAssistent::setNextEnabled(bool enabled)
{
    cmdNext->setEnabled(enabled);
}

bool ctlAssistent::PreviousEnabled() const
{
    return cmdPrevious->isEnabled();
}
void ctlAssistent::setPreviousEnabled(bool enabled)
{
    cmdPrevious->setEnabled(enabled);
}

void ctlAssistent::GoToPage(int direction)
{
    bool cancel = false; // one flag for both events
    emit LeavePage(direction, cancel);
    if (cancel)
        return;
    emit ChangePage(direction, cancel);
    if (cancel)
        return;

    bool next = NextEnabled();
    bool previous = PreviousEnabled();
    bool close = CancelEnabled();
    setNextEnabled(false);
    setPreviousEnabled(false);
    setCancelEnabled(false);
    repaint(); // the page may take a while to fill

    // Also when filling the page fails: buttons that stay disabled would be a dead end.
    const auto enable = qScopeGuard([&] {
        setNextEnabled(next);
        setPreviousEnabled(previous);
        setCancelEnabled(close);
    });
    emit EnterPage(next, previous, close);
}

void ctlAssistent::focusNextButton()
{
    cmdNext->setFocus();
}

int ctlAssistent::marginPixels() const
{
    return qRound(m_margin / twipsPerPixel(*this));
}

QSize ctlAssistent::buttonSize() const
{
    const QSize widest =
        cmdPrevious->sizeHint().expandedTo(cmdNext->sizeHint()).expandedTo(cmdCancel->sizeHint());
    return widest + QSize(fontMetrics().horizontalAdvance(u'n') * 2, 0);
}

int ctlAssistent::neededHeight() const
{
    return linTop->sizeHint().height() + marginPixels() + buttonSize().height() + marginPixels();
}

QSize ctlAssistent::sizeHint() const
{
    return {buttonSize().width() * 3 + marginPixels() * 4, neededHeight()};
}

void ctlAssistent::layoutButtons()
{
    const int margin = marginPixels();
    const int spacing = qMax(0, style()->pixelMetric(QStyle::PM_LayoutHorizontalSpacing));
    const QSize size = buttonSize();
    const int top = linTop->sizeHint().height() + margin;

    linTop->setGeometry(0, 0, width(), linTop->sizeHint().height());
    const int cancelLeft = width() - margin - size.width();
    const int nextLeft = cancelLeft - margin - size.width();
    cmdCancel->setGeometry(QRect(QPoint(cancelLeft, top), size));
    cmdNext->setGeometry(QRect(QPoint(nextLeft, top), size));
    cmdPrevious->setGeometry(QRect(QPoint(nextLeft - spacing - size.width(), top), size));

    if (minimumHeight() != neededHeight() || maximumHeight() != neededHeight())
        setFixedHeight(neededHeight());
}

void ctlAssistent::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    layoutButtons();
}

void ctlAssistent::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        layoutButtons();
}
