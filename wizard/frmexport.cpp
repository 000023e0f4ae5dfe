#include "wizard/frmexport.h"

#include "core/produkt.h"
#include "wizard/fehlerbericht.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr int shownRows = 6; // the list's height in rows, though it has one

} // namespace

frmExport::frmExport(Dialogs &dialogs, Exporter exporter, QWidget *parent)
    : QDialog(parent)
    , m_dialogs(dialogs)
    , m_exporter(std::move(exporter))
    , List1(new QListWidget(this))
{
    setObjectName(QStringLiteral("frmExport"));
    setWindowTitle(QStringLiteral("Export in dritte Programme"));
    setAttribute(Qt::WA_DeleteOnClose);
    auto *label = new QLabel(u"wählen Sie eine Aktion aus:"_qs, this);
    label->setBuddy(List1);
    List1->setObjectName(QStringLiteral("List1"));
    List1->setAccessibleName(QStringLiteral("Aktionen"));
    List1->addItem(QStringLiteral("Export der Messwerte und Ergebnisse nach MS Excel"));
    const int em = fontMetrics().height();
    List1->setMinimumSize(List1->sizeHintForColumn(0) + 4 * em, shownRows * em);
    List1->setSizeAdjustPolicy(QAbstractScrollArea::AdjustToContents);

    auto *cmdOk = new QPushButton(QStringLiteral("&Ok"), this);
    cmdOk->setObjectName(QStringLiteral("cmdOk"));
    cmdOk->setDefault(true);
    cmdOk->setFocus(); // in the list the frame of the focus would look like a selection
    connect(cmdOk, &QPushButton::clicked, this, &frmExport::runSelected);
    auto *cmdClose = new QPushButton(QStringLiteral("&Abbruch"), this);
    cmdClose->setObjectName(QStringLiteral("cmdClose"));
    connect(cmdClose, &QPushButton::clicked, this, &QDialog::reject);

    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdOk);
    buttons->addWidget(cmdClose);
    auto *rows = new QVBoxLayout(this);
    rows->addWidget(label);
    rows->addWidget(List1);
    rows->addLayout(buttons);
    if (parent)
        parent->window()->installEventFilter(this);
}

void frmExport::reject()
{
    if (m_running)
        emit cancelRequested();
    else
        QDialog::reject();
}

// The end of the session closes the main window, modal dialogs or not, and this one and the
// document would go with it, under the hands of the export.
bool frmExport::eventFilter(QObject *watched, QEvent *event)
{
    if (!m_running || event->type() != QEvent::Close)
        return QDialog::eventFilter(watched, event);
    event->ignore();
    emit cancelRequested();
    return true;
}

void frmExport::runSelected()
{
    // An export that shows its progress lets events through: no second one beside it.
    if (m_running || List1->selectedItems().isEmpty())
        return;
    m_running = true;
    fehlerbericht::guarded(m_dialogs,
                           {this, Dialogs::Icon::Exclamation, produkt::name(),
                            u"Beim Exportieren der Daten ist ein Fehler aufgetreten:"_qs},
                           [this] { m_exporter(this); });
    m_running = false;
}
