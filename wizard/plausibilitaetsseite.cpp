#include "wizard/plausibilitaetsseite.h"

#include "wizard/bilder.h"
#include "wizard/bildfeld.h"
#include "wizard/diagramme.h"
#include "wizard/lesefeld.h"
#include "wizard/plausibilitaet.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QSplitter>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

enum Spalte { Groesse, Wert, Wertung };

// The image's height in lines of text: the verdict mostly takes as many.
constexpr qreal imageLines = 3.0;
// The list and the diagrams below it share the height.
constexpr int listShare = 3;
constexpr int diagramShare = 2;
constexpr int narrowestColumn = 4; // times the font's height

// Numbers end at one edge; the rating keeps its distance from them.
void align(QTreeWidgetItem &item)
{
    item.setTextAlignment(Wert, Qt::AlignRight | Qt::AlignVCenter);
    item.setTextAlignment(Wertung, Qt::AlignCenter);
}

} // namespace

Plausibilitaetsseite::Plausibilitaetsseite(const Seitenkontext &context, QWidget *parent)
    : AssistentSeite(context, parent)
    , lvPlausibilität(new QTreeWidget(this))
    , ilPlausibilität({{QStringLiteral("Info"), bilder::info()},
                       {QStringLiteral("Examination"), bilder::examination()}})
    , imgPlausibilität(new Bildfeld(imageLines, this))
    , labPlausibilität(new Lesefeld(this))
    , m_diagrams(new Diagramme(this))
{
    setUpList();
    auto *splitter = new QSplitter(Qt::Vertical, this);
    splitter->setChildrenCollapsible(false);
    // It takes what room there is; what it would like to have must not make the page scroll.
    splitter->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
    splitter->addWidget(lvPlausibilität);
    splitter->addWidget(m_diagrams);
    splitter->setStretchFactor(0, listShare);
    splitter->setStretchFactor(1, diagramShare);
    QVBoxLayout *column = addColumn(
        4, u"Schritt 4: Plausibilitätsprüfung"_qs,
        u"Prüfen Sie die Auswertung. Ein Strich steht, wo Messwerte fehlen oder ein Ergebnis sich "
        u"nicht berechnen lässt."_qs);
    column->addWidget(splitter, 1);
    column->addWidget(verdict());
}

QWidget *Plausibilitaetsseite::verdict()
{
    imgPlausibilität->setObjectName(u"imgPlausibilität"_qs);
    labPlausibilität->setObjectName(u"labPlausibilität"_qs);
    labPlausibilität->setAccessibleName(QStringLiteral("Urteil"));
    auto *cmdPlausibilitätOptionen = new QPushButton(QStringLiteral("&Optionen..."), this);
    cmdPlausibilitätOptionen->setAutoDefault(true); // Enter presses it, too
    cmdPlausibilitätOptionen->setObjectName(u"cmdPlausibilitätOptionen"_qs);
    connect(cmdPlausibilitätOptionen, &QPushButton::clicked, this,
            &Plausibilitaetsseite::optionsClicked);

    auto *area = new QWidget(this);
    auto *row = new QHBoxLayout(area);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(fontMetrics().height());
    row->addWidget(imgPlausibilität);
    row->addWidget(labPlausibilität, 1);
    row->addWidget(cmdPlausibilitätOptionen);
    return area;
}

void Plausibilitaetsseite::setUpList()
{
    lvPlausibilität->setObjectName(u"lvPlausibilität"_qs);
    lvPlausibilität->setAccessibleName(u"Plausibilitätsprüfung"_qs);
    lvPlausibilität->setHeaderLabels(
        {u"Statistische Größe"_qs, QStringLiteral("Wert"), QStringLiteral("Wertung")});
    align(*lvPlausibilität->headerItem());
    lvPlausibilität->setRootIsDecorated(false);
    lvPlausibilität->setUniformRowHeights(true);
    lvPlausibilität->setAllColumnsShowFocus(true);
    lvPlausibilität->setEditTriggers(QAbstractItemView::NoEditTriggers);
    QHeaderView *header = lvPlausibilität->header();
    header->setStretchLastSection(false);
    header->setSectionsMovable(false);
    header->setMinimumSectionSize(narrowestColumn * fontMetrics().height());
    header->setSectionResizeMode(Groesse, QHeaderView::Stretch);
    header->setSectionResizeMode(Wert, QHeaderView::ResizeToContents);
    header->setSectionResizeMode(Wertung, QHeaderView::ResizeToContents);
}

void Plausibilitaetsseite::fill()
{
    using plausibilitaet::Zeile;
    lvPlausibilität->clear();
    for (const Zeile &row : plausibilitaet::zeilen(document()))
        addRow(row.groesse, row.wert, row.wertung, row.art == Zeile::Art::Gruppe);
    // All of it: the list lays itself out in its next paint event, and what it then asks to be
    // painted beyond that event's part is lost. Old numbers would stay in sight.
    lvPlausibilität->viewport()->update();

    const Urteil result = plausibilitaet::urteil(document());
    const QString key = result.gut ? QStringLiteral("Info") : QStringLiteral("Examination");
    imgPlausibilität->setBild(ilPlausibilität.value(key), u"Wertung: "_qs + result.wertung);
    labPlausibilität->setText(result.satz);
    m_diagrams->zeige(document());
}

void Plausibilitaetsseite::addRow(const QString &groesse, const QString &wert,
                                  const QString &wertung, bool heading)
{
    auto *item = new QTreeWidgetItem(lvPlausibilität, {groesse, wert, wertung});
    align(*item);
    // A long name may be cut in its column; a name is never markup.
    item->setToolTip(Groesse, u"<span>"_qs + groesse.trimmed().toHtmlEscaped() + u"</span>"_qs);
    if (!heading && wertung.isEmpty())
        return;
    QFont bold = lvPlausibilität->font();
    bold.setBold(true);
    item->setFont(heading ? Groesse : Wertung, bold);
}

QWidget *Plausibilitaetsseite::firstControl() const
{
    return lvPlausibilität;
}
