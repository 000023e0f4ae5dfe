// The order of the pages: making, leaving, changing and entering them.

#include "core/kalibrierung.h"
#include "wizard/ausgabeseite.h"
#include "wizard/ctlassistent.h"
#include "wizard/frmassistent.h"
#include "wizard/plausibilitaetsseite.h"
#include "wizard/schrittanzeige.h"
#include "wizard/seitemesswerte.h"
#include "wizard/seiteparameter.h"
#include "wizard/seiteprueffelder.h"
#include "wizard/seitewillkommen.h"

#include <QPushButton>
#include <QScrollArea>
#include <QStackedLayout>

namespace {

constexpr int fieldsPageNumber = 2;
constexpr int valuesPageNumber = 3;
constexpr const char *pageTag = "Tag"; // property of the frame in which its host keeps the page

QString pageKey(int page)
{
    return QStringLiteral("Page") + QString::number(page);
}

} // namespace

AssistentSeite *frmAssistent::page(int number)
{
    const auto index = static_cast<std::size_t>(number);
    if (!m_pages[index]) {
        m_pages[index] = makePage(number);
        picContainer[index]->setWidget(m_pages[index]);
    }
    return m_pages[index];
}

AssistentSeite *frmAssistent::makePage(int number)
{
    const Seitenkontext context{m_document, m_services.dialogs, m_services.grid};
    switch (number) {
    case 0:
        return makeWelcomePage(context);
    case 1:
        return new SeiteParameter(context);
    case 2:
        m_fieldsPage = new SeitePrueffelder(context);
        connect(m_fieldsPage, &SeitePrueffelder::fieldEdited, this,
                &frmAssistent::egKeysMessreihen_AfterCellEdit);
        return m_fieldsPage;
    case 3:
        m_valuesPage = new SeiteMesswerte(context);
        connect(m_valuesPage, &SeiteMesswerte::valueEdited, this,
                &frmAssistent::egMesswerte_AfterCellEdit);
        return m_valuesPage;
    case 4: {
        auto *results = new Plausibilitaetsseite(context);
        connect(results, &Plausibilitaetsseite::optionsClicked, this,
                &frmAssistent::cmdPlausibilitaetOptionen_Click);
        return results;
    }
    default:
        return makeOutputPage(context);
    }
}

AssistentSeite *frmAssistent::makeWelcomePage(const Seitenkontext &context)
{
    auto *welcome = new SeiteWillkommen(context);
    welcome->setDontShowAgain(m_settings.dontShowPage0());
    connect(welcome, &SeiteWillkommen::infoClicked, this, &frmAssistent::mh_Info_Click);
    connect(welcome, &SeiteWillkommen::dontShowAgainClicked, this,
            &frmAssistent::chkDontShowPage0_Click);
    return welcome;
}

AssistentSeite *frmAssistent::makeOutputPage(const Seitenkontext &context)
{
    auto *output = new Ausgabeseite(context);
    connect(output, &Ausgabeseite::saveClicked, this, [this] { m_files.save(); });
    connect(output, &Ausgabeseite::protocolClicked, this, &frmAssistent::cmdOutProtocoll_Click);
    connect(output, &Ausgabeseite::exportClicked, this, &frmAssistent::cmdOutExport_Click);
    const auto offer = [output](const QString &name, bool available) {
        auto *button = output->findChild<QPushButton *>(name);
        button->setEnabled(available);
        if (!available)
            button->setToolTip(u"In dieser Fassung des Programms noch nicht enthalten."_qs);
    };
    offer(u"cmdOutProtocoll"_qs, static_cast<bool>(m_services.showProtocol));
    offer(u"cmdOutExport"_qs, static_cast<bool>(m_services.showExport));
    return output;
}

bool frmAssistent::PageShowable(int pageIndex) const
{
    return pageIndex >= 0 && pageIndex < pageCount && m_showable.value(pageKey(pageIndex), true);
}

void frmAssistent::setPageShowable(int pageIndex, bool showable)
{
    if (pageIndex >= 0 && pageIndex < pageCount)
        m_showable.insert(pageKey(pageIndex), showable);
}

int frmAssistent::activePage() const
{
    return ctlAssistent1->property(pageTag).toInt();
}

void frmAssistent::setActivePage(int number)
{
    ctlAssistent1->setProperty(pageTag, number);
}

int frmAssistent::startPage() const
{
    return m_settings.dontShowPage0() ? 1 : 0;
}

void frmAssistent::enterFirstPage()
{
    enterPage(startPage());
}

void frmAssistent::enterPage(std::optional<int> number)
{
    // The page that is shown still, which need not be the one to be entered.
    if (AssistentSeite *left = m_pages[static_cast<std::size_t>(activePage())])
        left->finishEditing();
    if (number && PageShowable(*number))
        setActivePage(*number);
    ctlAssistent1->GoToPage(0);
}

void frmAssistent::ctlAssistent1_LeavePage(int direction, bool &cancel)
{
    AssistentSeite *left = visiblePage();
    left->finishEditing(); // an open editor must not outlive what it edits
    if (direction == 0)
        return; // the document is newer than what the page still shows
    if (direction > 0 && !left->check()) {
        cancel = true;
        return;
    }
    cancel = !left->takeOver(direction > 0 ? AssistentSeite::Anlass::Vor
                                           : AssistentSeite::Anlass::Zurück);
}

void frmAssistent::ctlAssistent1_ChangePage(int direction, bool &cancel)
{
    const int target = activePage() + direction;
    if (!PageShowable(target)) {
        cancel = true;
        return;
    }
    setActivePage(target);
    page(target);
    m_panels->setCurrentIndex(target);
    m_steps->setCurrent(target);
    m_steps->setVisible(target > 0);
}

void frmAssistent::ctlAssistent1_EnterPage(bool &newNextEnabled, bool &newPreviousEnabled,
                                           bool &newCancelEnabled)
{
    newNextEnabled = PageShowable(activePage() + 1);
    newPreviousEnabled = activePage() > 0;
    newCancelEnabled = true;
    AssistentSeite *entered = visiblePage();
    entered->fill();
    if (QWidget *first = entered->firstControl())
        entered->moveFocus(first);
    else
        QMetaObject::invokeMethod(ctlAssistent1, &ctlAssistent::focusNextButton,
                                  Qt::QueuedConnection); // the button is still disabled
}

void frmAssistent::chkDontShowPage0_Click(bool checked)
{
    m_settings.setDontShowPage0(checked);
}

void frmAssistent::egKeysMessreihen_AfterCellEdit(int row, int col, QString &newText, bool &)
{
    page(fieldsPageNumber);
    m_fieldsPage->formatEdited(row, col, newText);
}

void frmAssistent::egMesswerte_AfterCellEdit(int row, int col, QString &newText, bool &)
{
    page(valuesPageNumber);
    m_valuesPage->formatEdited(row, col, newText);
}
