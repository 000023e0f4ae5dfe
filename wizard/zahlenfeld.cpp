#include "wizard/zahlenfeld.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

QToolButton *arrow(Qt::ArrowType type, QWidget *parent)
{
    auto *made = new QToolButton(parent);
    made->setArrowType(type);
    made->setFocusPolicy(Qt::NoFocus); // the arrow keys do the same in the box
    made->setAutoRepeat(true);
    made->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Ignored);
    made->setFixedWidth(made->fontMetrics().height() + 2);
    return made;
}

} // namespace

Zahlenfeld::Zahlenfeld(const QString &textName, const QString &arrowsName, Step step,
                       QWidget *parent)
    : QWidget(parent), m_box(new QLineEdit(this)), m_step(std::move(step))
{
    auto *arrows = new QWidget(this);
    arrows->setObjectName(arrowsName);
    m_up = arrow(Qt::UpArrow, arrows);
    m_down = arrow(Qt::DownArrow, arrows);
    connect(m_up, &QToolButton::clicked, this, [this] { this->step(1); });
    connect(m_down, &QToolButton::clicked, this, [this] { this->step(-1); });
    auto *column = new QVBoxLayout(arrows);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_up);
    column->addWidget(m_down);

    m_box->setObjectName(textName);
    m_box->setAlignment(Qt::AlignRight);
    m_box->setAcceptDrops(false); // a file that is dropped here is for the window
    m_box->installEventFilter(this);
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(1);
    row->addWidget(m_box);
    row->addWidget(arrows);
    m_box->setMinimumWidth(m_box->fontMetrics().horizontalAdvance(u'0') * 8);
    m_box->setMaximumWidth(m_box->fontMetrics().horizontalAdvance(u'0') * 14);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    setFocusProxy(m_box);
}

QString Zahlenfeld::text() const
{
    return m_box->text();
}

void Zahlenfeld::setText(const QString &text)
{
    m_box->setText(text);
}

void Zahlenfeld::setAccessibleTexts(const QString &name)
{
    m_box->setAccessibleName(name);
    m_up->setAccessibleName(name + u" erhöhen"_qs);
    m_down->setAccessibleName(name + u" verringern"_qs);
}

void Zahlenfeld::step(int direction)
{
    m_box->setFocus(Qt::MouseFocusReason);
    const QString next = m_step(m_box->text(), direction);
    if (next == m_box->text())
        return;
    m_box->setText(next);
    m_box->selectAll();
}

bool Zahlenfeld::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_box && event->type() == QEvent::KeyPress) {
        const auto *key = static_cast<QKeyEvent *>(event);
        const bool plain = (key->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
        if (plain && (key->key() == Qt::Key_Up || key->key() == Qt::Key_Down)) {
            step(key->key() == Qt::Key_Up ? 1 : -1);
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}
