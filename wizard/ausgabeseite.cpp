#include "wizard/ausgabeseite.h"

#include <QFrame>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

QLabel *wrappedLabel(const QString &text, QWidget *parent)
{
    auto *label = new QLabel(text, parent);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

} // namespace

Ausgabeseite::Ausgabeseite(const Seitenkontext &context, QWidget *parent)
    : AssistentSeite(context, parent)
{
    QVBoxLayout *column = addColumn(
        5, u"Schritt 5: Ausgabe der Ergebnisse"_qs,
        u"Legen Sie die Kalibrierung ab, drucken Sie ihr Protokoll oder geben Sie die Daten weiter."_qs);
    auto *grid = new QGridLayout;
    column->addLayout(grid);
    column->addStretch();
    grid->setColumnStretch(0, 1);
    grid->setHorizontalSpacing(2 * fontMetrics().lineSpacing());
    grid->setVerticalSpacing(fontMetrics().lineSpacing() / 3);
    cmdOutSave = addCommand(
        *grid, QStringLiteral("cmdOutSave"), QStringLiteral("Datei s&peichern"),
        QStringLiteral("Ablage der Daten als Datei"),
        u"Legen Sie Ihre Daten als XML-Datei ab und archivieren Sie diese elektronisch. Die "
        u"XML-Datei kann jederzeit mit diesem Programm geladen und bearbeitet - und von anderen "
        u"Programmen genutzt werden."_qs);
    const QPushButton *protocol =
        addCommand(*grid, QStringLiteral("cmdOutProtocoll"), QStringLiteral("P&rotokoll erzeugen"),
                   QStringLiteral("Anzeige und ggf. Ausdruck eines Berechnungsprotokolls"),
                   u"Lassen Sie ein Berechnungsprotokoll erstellen und drucken Sie dieses bei "
                   u"Bedarf aus."_qs);
    const QPushButton *exporting =
        addCommand(*grid, QStringLiteral("cmdOutExport"), QStringLiteral("Daten &exportieren"),
                   QStringLiteral("Export in dritte Programme"),
                   u"Exportieren Sie die Daten und die Berechnungsergebnisse in Programme von "
                   u"Drittanbietern."_qs);
    connect(cmdOutSave, &QPushButton::clicked, this, &Ausgabeseite::saveClicked);
    connect(protocol, &QPushButton::clicked, this, &Ausgabeseite::protocolClicked);
    connect(exporting, &QPushButton::clicked, this, &Ausgabeseite::exportClicked);
}

QPushButton *Ausgabeseite::addCommand(QGridLayout &grid, const QString &name,
                                      const QString &caption, const QString &heading,
                                      const QString &explanation)
{
    int row = grid.count() == 0 ? 0 : grid.rowCount();
    if (row > 0) {
        auto *line = new QFrame(this);
        line->setFrameStyle(QFrame::HLine | QFrame::Sunken);
        grid.setRowMinimumHeight(row + 1, fontMetrics().lineSpacing());
        grid.addWidget(line, row + 1, 0, 1, 2);
        row += 2;
    }
    QLabel *head = wrappedLabel(heading, this);
    QFont bold = head->font();
    bold.setBold(true);
    head->setFont(bold);
    auto *button = new QPushButton(caption, this);
    button->setAutoDefault(true); // Enter presses it, too
    button->setObjectName(name);
    button->setMinimumWidth(button->sizeHint().width() + 2 * fontMetrics().height());
    button->setAccessibleDescription(explanation);
    grid.addWidget(head, row, 0);
    grid.addWidget(wrappedLabel(explanation, this), row + 1, 0, Qt::AlignTop);
    grid.addWidget(button, row, 1, 2, 1, Qt::AlignVCenter);
    return button;
}

QWidget *Ausgabeseite::firstControl() const
{
    return cmdOutSave;
}
