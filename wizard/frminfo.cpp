#include "wizard/frminfo.h"

#include "core/baskalibrierungwendral.h"
#include "core/produkt.h"
#include "wizard/bilder.h"
#include "wizard/bildfeld.h"
#include "wizard/produkttexte.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextEdit>
#include <QVBoxLayout>

namespace {

constexpr qreal imageLines = 5.0;
constexpr qreal headingSize = 1.5; // times the dialog's font

const QString lineBreak = QStringLiteral("\r\n");

QString versionText(const QVersionNumber &version)
{
    return QStringLiteral("Version %1.%2.%3")
        .arg(QString::number(version.majorVersion()), QString::number(version.minorVersion()),
             QString::number(version.microVersion()));
}

// Blocks of lines, each below its heading, with an empty line between two blocks.
QString contactText()
{
    const QStringList blocks[] = {
        {QStringLiteral("Herstellung Vertrieb"), produkt::name(),
         u"Auswertung von Kalibrierungen nach dem Regelwerk Wendral, Ausgabe 2003"_qs},
        {QStringLiteral("Support und programmtechnische Umsetzung"),
         u"Hilfethemen: Menü Hilfe oder Taste F1"_qs},
        {QStringLiteral("Technik"),
         u"Programmiert in C++ mit Qt "_qs + QString::fromLatin1(qVersion())},
    };
    QStringList texts;
    for (const QStringList &block : blocks)
        texts += block.join(lineBreak);
    return texts.join(lineBreak + lineBreak);
}

// The first line of each block stands out.
void emphasizeHeadings(QTextDocument &document)
{
    QTextCharFormat bold;
    bold.setFontWeight(QFont::Bold);
    bool heading = true;
    for (QTextBlock line = document.begin(); line.isValid(); line = line.next()) {
        if (heading) {
            QTextCursor cursor(line);
            cursor.select(QTextCursor::BlockUnderCursor);
            cursor.mergeCharFormat(bold);
        }
        heading = line.text().isEmpty();
    }
}

QLabel *addLabel(QVBoxLayout &column, const QString &name, const QString &text)
{
    auto *label = new QLabel(shownLines(text), column.parentWidget());
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    column.addWidget(label);
    return label;
}

QTextEdit *contactBox(QWidget *parent)
{
    auto *box = new QTextEdit(parent);
    box->setObjectName(QStringLiteral("rtfKontakt"));
    box->setAccessibleName(QStringLiteral("Kontakt"));
    box->setReadOnly(true);
    box->setTabChangesFocus(true);
    box->setPlainText(contactText());
    emphasizeHeadings(*box->document());
    return box;
}

} // namespace

frmInfo::frmInfo(const QVersionNumber &version, QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmInfo"));
    setWindowTitle(QStringLiteral("Info"));
    setAttribute(Qt::WA_DeleteOnClose);
    auto *image = new Bildfeld(imageLines, this);
    image->setObjectName(QStringLiteral("imgProgramm"));
    image->setBild(bilder::programm(), u"Programmsymbol"_qs);

    auto *row = new QHBoxLayout(this);
    const int em = fontMetrics().height();
    row->setContentsMargins(em, em, em, em);
    row->setSpacing(em);
    row->addWidget(image, 0, Qt::AlignTop);
    auto *column = new QVBoxLayout;
    row->addLayout(column, 1);
    QLabel *heading =
        addLabel(*column, QStringLiteral("labInfo"), u"Info über "_qs + produkt::name());
    QFont large = heading->font();
    large.setPointSizeF(large.pointSizeF() * headingSize);
    large.setBold(true);
    heading->setFont(large);
    heading->setWordWrap(false); // gives the dialog its width
    addLabel(*column, QStringLiteral("labProductName"), produkt::name());
    addLabel(*column, QStringLiteral("labVersion"), versionText(version));
    addLabel(*column, QStringLiteral("labFirma"), basKalibrierungWendral::TitleText(0));
    addLabel(*column, QStringLiteral("labThema"), basKalibrierungWendral::TitleText(1));
    column->addWidget(contactBox(this), 1);
    addLabel(*column, QStringLiteral("labWarnung"),
             u"Warnung: Dieses Programm ist urheberrechtlich geschützt. Unbefugtes "
             u"Vervielfältigen oder Weitergeben des Programms oder eines Teils davon ist nicht "
             u"erlaubt."_qs);

    auto *cmdClose = new QPushButton(u"&Schließen"_qs, this);
    cmdClose->setObjectName(QStringLiteral("cmdClose"));
    cmdClose->setDefault(true);
    cmdClose->setFocus();
    connect(cmdClose, &QPushButton::clicked, this, &QDialog::reject);
    column->addWidget(cmdClose, 0, Qt::AlignRight);
}
