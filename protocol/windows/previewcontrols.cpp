#include "protocol/windows/previewcontrols.h"

#include "protocol/windows/zoom.h"

#include <QAction>
#include <QComboBox>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QProgressBar>
#include <QPushButton>
#include <QStatusBar>
#include <QToolBar>
#include <QToolButton>

// A static library's resources have to be asked for, from outside of any namespace.
static void initialiseIcons()
{
    Q_INIT_RESOURCE(protokoll);
}

PreviewControls::PreviewControls(QMainWindow &window)
    : QObject(&window)
    , m_toolbar(new QToolBar(u"Protokoll"_qs, &window))
    , m_type(new QComboBox(m_toolbar))
    , m_zoom(new QComboBox(m_toolbar))
    , m_pages(new QLabel(&window))
    , m_progressText(new QLabel(&window))
    , m_progress(new QProgressBar(&window))
    , m_cancel(new QPushButton(u"Abbrechen"_qs, &window))
{
    initialiseIcons();
    constexpr int iconPixels = 24;
    m_toolbar->setObjectName(u"tbProtokoll"_qs);
    m_toolbar->setMovable(false);
    m_toolbar->setContextMenuPolicy(Qt::PreventContextMenu);
    m_toolbar->setIconSize({iconPixels, iconPixels});
    m_toolbar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    window.addToolBar(m_toolbar);

    addButton(u"refresh"_qs, u"Dokument neu aufbauen"_qs, u"Aktualisieren"_qs);
    addButton(u"print"_qs, u"Drucken ..."_qs, u"Drucken"_qs);
    addButton(u"printersetup"_qs, u"Drucker einrichten ..."_qs, u"Drucker"_qs);
    m_toolbar->addSeparator()->setObjectName(u"tr1"_qs);
    addButton(u"edit"_qs, u"Protokolldaten bearbeiten"_qs, u"Daten"_qs);
    addButton(u"pdf"_qs, u"Als PDF speichern ..."_qs, u"PDF"_qs);
    m_toolbar->addSeparator();
    addTypeBox();
    addZoomBox();
    fillStatusBar(window);
}

void PreviewControls::addButton(const QString &key, const QString &toolTip, const QString &caption)
{
    QAction *action = m_toolbar->addAction(QIcon(u":/protokoll/"_qs + key + u".svg"_qs), toolTip);
    action->setObjectName(key);
    action->setIconText(caption);
    action->setToolTip(toolTip);
    QWidget *button = m_toolbar->widgetForAction(action);
    button->setObjectName(key);
    button->setAccessibleName(toolTip);
    button->setFocusPolicy(Qt::TabFocus);
    connect(action, &QAction::triggered, this, [this, key] { emit buttonClicked(key); });
}

void PreviewControls::addTypeBox()
{
    m_type->setObjectName(u"cboTyp"_qs);
    m_type->addItems(
        {u"Kalibrierfeldprotokoll mit Berechnungsergebnissen"_qs, u"Berechnungsergebnisse"_qs});
    m_type->setAccessibleName(u"Protokolltyp"_qs);
    m_type->setAccessibleDescription(u"Protokolltyp"_qs);
    m_type->setToolTip(u"Protokolltyp"_qs);
    m_toolbar->addWidget(m_type);
    connect(m_type, &QComboBox::currentIndexChanged, this, &PreviewControls::typeChanged);
}

void PreviewControls::addZoomBox()
{
    auto *label = new QLabel(u" &Zoom: "_qs, m_toolbar);
    label->setBuddy(m_zoom);
    m_toolbar->addWidget(label);
    m_zoom->setObjectName(u"cboZoom"_qs);
    m_zoom->setEditable(true);
    m_zoom->setInsertPolicy(QComboBox::NoInsert);
    m_zoom->setCompleter(nullptr); // would turn a typed "2" into "200%"
    m_zoom->addItems(zoom::listed());
    m_zoom->setCurrentIndex(m_zoom->findText(u"100%"_qs));
    m_zoom->setAccessibleDescription(u"Zoom"_qs);
    m_zoom->lineEdit()->setAccessibleName(u"Zoom"_qs);
    m_zoom->setToolTip(u"Zoom"_qs);
    m_toolbar->addWidget(m_zoom);
    connect(m_zoom, &QComboBox::activated, this, &PreviewControls::zoomChanged);
    connect(m_zoom->lineEdit(), &QLineEdit::editingFinished, this, &PreviewControls::zoomChanged);
}

void PreviewControls::fillStatusBar(QMainWindow &window)
{
    QStatusBar *bar = window.statusBar();
    bar->setObjectName(u"StatusBar1"_qs);
    m_pages->setObjectName(u"labSeiten"_qs);
    m_progressText->setObjectName(u"labFortschritt"_qs);
    m_cancel->setObjectName(u"cmdAbbrechen"_qs);
    m_progress->setAccessibleName(u"Fortschritt"_qs);
    m_progress->setRange(0, 0); // how much there is to do shows only at the end
    m_progress->setMaximumWidth(120);
    m_progress->setTextVisible(false);
    bar->addWidget(m_pages, 1);
    bar->addPermanentWidget(m_progressText);
    bar->addPermanentWidget(m_progress);
    bar->addPermanentWidget(m_cancel);
    setProgress({});
    connect(m_cancel, &QPushButton::clicked, this, &PreviewControls::cancelled);
}

int PreviewControls::protocolType() const
{
    return m_type->currentIndex();
}

QString PreviewControls::zoomText() const
{
    return m_zoom->currentText();
}

void PreviewControls::setZoomText(const QString &text)
{
    m_zoom->setEditText(text);
}

void PreviewControls::setPageText(const QString &text)
{
    m_pages->setText(text);
}

void PreviewControls::setProgress(const QString &text, bool locked)
{
    m_progressText->setText(text);
    m_progressText->setVisible(!text.isEmpty());
    m_progress->setVisible(!text.isEmpty());
    m_cancel->setVisible(!text.isEmpty());
    m_toolbar->setEnabled(!locked);
}
