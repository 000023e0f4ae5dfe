#include "wizard/frminfo.h"

#include "core/baskalibrierungwendral.h"
#include "core/produkt.h"
#include "wizard/produkttexte.h"
#include "wizard/titelbild.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTextEdit>
#include <QVBoxLayout>

namespace {

QLabel *label(QWidget *parent, const QString &name, const QString &text, qreal scale = 1.0)
{
    auto *made = new QLabel(text, parent);
    made->setObjectName(name);
    made->setTextFormat(Qt::PlainText);
    made->setWordWrap(true);
    if (scale != 1.0) {
        QFont font = made->font();
        font.setPointSizeF(font.pointSizeF() * scale);
        font.setBold(true);
        made->setFont(font);
    }
    return made;
}

// Blocks of lines, an empty line between them.
QString contacts()
{
    const QStringList lines{
        u"Herstellung Vertrieb"_qs,
        produkt::name(),
        versionText(),
        u""_qs,
        u"Support und programmtechnische Umsetzung"_qs,
        u"Hilfethemen: Menü Hilfe oder Taste F1"_qs,
        u""_qs,
        u"Das Programm wertet Kalibrierungen nach dem Regelwerk Wendral, Ausgabe 2003, aus."_qs,
    };
    return lines.join(u"\r\n"_qs);
}

} // namespace

frmInfo::frmInfo(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmInfo"));
    setWindowTitle(QStringLiteral("Info"));
    const int em = fontMetrics().height();

    auto *texts = new QVBoxLayout;
    texts->setContentsMargins(em, em, em, em);
    texts->setSpacing(em / 2);
    texts->addWidget(
        label(this, QStringLiteral("labInfo"), u"Info über "_qs + produkt::name(), 1.4));
    texts->addWidget(label(this, QStringLiteral("labProductName"), produkt::name()));
    texts->addWidget(label(this, QStringLiteral("labVersion"), versionText()));
    texts->addWidget(
        label(this, QStringLiteral("labThema"), shownLines(basKalibrierungWendral::TitleText(1))));
    texts->addWidget(
        label(this, QStringLiteral("labFirma"), shownLines(basKalibrierungWendral::TitleText(0))));

    auto *contact = new QTextEdit(this);
    contact->setObjectName(QStringLiteral("rtfKontakt"));
    contact->setAccessibleName(QStringLiteral("Kontakt"));
    contact->setPlainText(contacts());
    contact->setReadOnly(true);
    contact->setTabChangesFocus(true);
    contact->setMinimumHeight(em * 9);
    texts->addWidget(contact, 1);
    texts->addWidget(label(this, QStringLiteral("labWarnung"),
                           u"Warnung: Dieses Programm ist urheberrechtlich geschützt. Es darf "
                           u"nicht unbefugt vervielfältigt oder verbreitet werden."_qs));

    auto *cmdClose = new QPushButton(u"Schließen"_qs, this);
    cmdClose->setObjectName(QStringLiteral("cmdClose"));
    cmdClose->setDefault(true);
    connect(cmdClose, &QPushButton::clicked, this, &QWidget::close);
    auto *foot = new QHBoxLayout;
    foot->addStretch();
    foot->addWidget(cmdClose);
    texts->addLayout(foot);

    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    auto *picture = new Titelbild(this);
    picture->setMinimumWidth(em * 12);
    row->addWidget(picture, 2);
    row->addLayout(texts, 3);
    resize(em * 40, em * 28);
    cmdClose->setFocus();
}
