#include "wizard/assistentseite.h"

#include "core/produkt.h"
#include "wizard/focuschecks.h"

#include <QLabel>
#include <QScrollArea>
#include <QVBoxLayout>

AssistentSeite::AssistentSeite(const Seitenkontext &context, QWidget *parent)
    : QWidget(parent), m_context(context), m_focusChecks(new FocusChecks(this))
{
}

QVBoxLayout *AssistentSeite::addColumn(int page, const QString &caption, const QString &explanation)
{
    const int em = fontMetrics().height();
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(em, em, em, em);
    column->setSpacing(em * 3 / 4);

    auto *heading = new QLabel(caption, this);
    heading->setObjectName(u"labPageCaption"_qs + QString::number(page));
    QFont font = heading->font();
    font.setPointSizeF(font.pointSizeF() * 1.5);
    font.setBold(true);
    heading->setFont(font);
    heading->setWordWrap(true);
    auto *hint = new QLabel(explanation, this);
    hint->setWordWrap(true);

    auto *head = new QVBoxLayout;
    head->setSpacing(em / 4);
    head->addWidget(heading);
    head->addWidget(hint);
    column->addLayout(head);
    return column;
}

void AssistentSeite::moveFocus(QWidget *control)
{
    m_focusChecks->moveFocus(control);
    for (QWidget *above = parentWidget(); above; above = above->parentWidget()) {
        if (auto *area = qobject_cast<QScrollArea *>(above))
            area->ensureWidgetVisible(control);
    }
}

void AssistentSeite::tell(Dialogs::Icon icon, const QString &text)
{
    dialogs().message(window(), icon, produkt::name(), text);
}

bool AssistentSeite::refuse(Dialogs::Icon icon, const QString &text, QWidget *control)
{
    tell(icon, text);
    moveFocus(control);
    return false;
}

void AssistentSeite::reportLeftOut(int cells)
{
    tell(Dialogs::Icon::Information,
         cells == 1
             ? u"Ein eingefügter Wert hatte keinen Platz in der Tabelle und wurde weggelassen."_qs
             : u"%1 eingefügte Werte hatten keinen Platz in der Tabelle und wurden weggelassen."_qs
                   .arg(cells));
}
