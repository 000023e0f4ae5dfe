#include "wizard/diagramme.h"

#include "protocol/windows/diagramwidget.h"

#include <QHBoxLayout>

#include <algorithm>

Diagramme::Diagramme(QWidget *parent)
    : QWidget(parent)
    , m_diagrams{{{mDirekt, mIndirekt, new DiagramWidget(this)},
                  {mDirekt, mZ, new DiagramWidget(this)},
                  {mIndirekt, mZ, new DiagramWidget(this)}}}
{
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    for (const Diagramm &diagram : m_diagrams)
        row->addWidget(diagram.widget);
}

void Diagramme::resizeEvent(QResizeEvent *)
{
    // What a high window has beyond that is better used by what stands above.
    // Afterwards: a size that changes within its own event is laid out twice, the old one last.
    const auto limit = [this] {
        const int each = width() / static_cast<int>(m_diagrams.size());
        setMaximumHeight(std::max(minimumSizeHint().height(), each));
    };
    QMetaObject::invokeMethod(this, limit, Qt::QueuedConnection);
}

void Diagramme::zeige(Kalibrierung &document)
{
    for (const Diagramm &diagram : m_diagrams)
        diagram.widget->showPair(document, diagram.dependent, diagram.independent);
}
