#include "wizard/diagramme.h"

#include "protocol/windows/diagramwidget.h"

#include <QHBoxLayout>

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

void Diagramme::zeige(Kalibrierung &document)
{
    for (const Diagramm &diagram : m_diagrams)
        diagram.widget->showPair(document, diagram.dependent, diagram.independent);
}
