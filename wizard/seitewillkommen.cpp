#include "wizard/seitewillkommen.h"

#include "core/baskalibrierungwendral.h"
#include "core/produkt.h"
#include "wizard/produkttexte.h"
#include "wizard/titelbild.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

// Not wrapped: this page is in sight when the program starts, and wrapping costs time.
QLabel *label(const QString &name, const QString &text, qreal scale, bool bold, QWidget *parent)
{
    auto *made = new QLabel(text, parent);
    made->setObjectName(name);
    made->setTextFormat(Qt::PlainText);
    QFont font = made->font();
    font.setPointSizeF(font.pointSizeF() * scale);
    font.setBold(bold);
    made->setFont(font);
    return made;
}

} // namespace

SeiteWillkommen::SeiteWillkommen(const Seitenkontext &context, QWidget *parent)
    : AssistentSeite(context, parent), chkDontShowPage0(new QCheckBox(this))
{
    chkDontShowPage0->setObjectName(QStringLiteral("chkDontShowPage0"));
    chkDontShowPage0->setText(u"Diese Seite &nicht mehr anzeigen."_qs);
    connect(chkDontShowPage0, &QCheckBox::clicked, this, &SeiteWillkommen::dontShowAgainClicked);

    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(new Titelbild(this), 2);
    row->addWidget(texts(), 3);
}

QWidget *SeiteWillkommen::texts()
{
    const int em = fontMetrics().height();
    auto *area = new QWidget(this);
    auto *column = new QVBoxLayout(area);
    column->setContentsMargins(em * 2, em * 2, em * 2, em);
    column->setSpacing(em);

    auto *cmdInfo = new QPushButton(u"&Info..."_qs, area);
    cmdInfo->setAutoDefault(true); // Enter presses it, too
    cmdInfo->setObjectName(QStringLiteral("cmdInfo"));
    connect(cmdInfo, &QPushButton::clicked, this, &SeiteWillkommen::infoClicked);

    column->addStretch(1);
    column->addWidget(label(QStringLiteral("labProdukt"), produkt::name(), 2.0, true, area));
    column->addWidget(label(QStringLiteral("labThema"),
                            shownLines(basKalibrierungWendral::TitleText(1)), 1.25, false, area));
    column->addWidget(label(QStringLiteral("labFirma"),
                            shownLines(basKalibrierungWendral::TitleText(0)), 1.0, false, area));
    column->addStretch(1);
    column->addWidget(label(QStringLiteral("labAblauf"),
                            u"Der Assistent führt Sie in fünf Schritten\n"
                            u"von den Prüfmerkmalen über die Messwerte bis zum Protokoll."_qs,
                            1.0, false, area));
    column->addStretch(2);
    auto *foot = new QHBoxLayout;
    foot->addWidget(label(QStringLiteral("labVersion"), versionText(), 1.0, false, area), 1);
    foot->addWidget(cmdInfo);
    column->addLayout(foot);
    column->addWidget(chkDontShowPage0);
    return area;
}

bool SeiteWillkommen::dontShowAgain() const
{
    return chkDontShowPage0->isChecked();
}

void SeiteWillkommen::setDontShowAgain(bool dontShow)
{
    chkDontShowPage0->setChecked(dontShow);
}
