#include "protocol/windows/dictionaryedit.h"

#include "protocol/windows/dictionarydelegate.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QSignalBlocker>
#include <QTableWidget>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>

DictionaryEdit::DictionaryEdit(QWidget *parent)
    : QWidget(parent)
    , m_table(new QTableWidget(0, 2, this))
    , m_delegate(new DictionaryDelegate(*this))
{
    m_table->setObjectName(u"DictionaryEdit1_Tabelle"_qs);
    m_table->setAccessibleName(u"Protokolldaten"_qs);
    m_table->setHorizontalHeaderLabels({u"Angabe"_qs, u"Text"_qs});
    m_table->horizontalHeader()->setStretchLastSection(true);
    m_table->horizontalHeader()->setHighlightSections(false);
    m_table->verticalHeader()->hide();
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                             QAbstractItemView::AnyKeyPressed);
    m_table->setTabKeyNavigation(false);
    m_table->setItemDelegate(m_delegate);
    m_table->installEventFilter(this);

    auto *hint = new QLabel(u"Neue Zeile in einem Text: Umschalt + Eingabe"_qs, this);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_table);
    layout->addWidget(hint);
    setFocusProxy(m_table);
    connect(m_delegate, &DictionaryDelegate::entered, this, [this] {
        const int next = std::min(m_table->currentRow() + 1, m_table->rowCount() - 1);
        m_table->setCurrentCell(next, m_table->currentColumn());
    });
    // Once for all steps of a column that is being dragged.
    auto *rowHeights = new QTimer(this);
    rowHeights->setSingleShot(true);
    connect(rowHeights, &QTimer::timeout, m_table, &QTableWidget::resizeRowsToContents);
    connect(m_table->horizontalHeader(), &QHeaderView::sectionResized, rowHeights,
            [rowHeights] { rowHeights->start(0); });
    connect(m_table, &QTableWidget::itemChanged, this, &DictionaryEdit::itemChanged);
}

// Where the list left the key to its window, that would be closed by its default button.
bool DictionaryEdit::eventFilter(QObject *object, QEvent *event)
{
    if (object == m_table && event->type() == QEvent::KeyPress) {
        const auto *key = static_cast<QKeyEvent *>(event);
        if ((key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) &&
            !(key->modifiers() & ~Qt::KeypadModifier) && m_table->currentItem()) {
            m_table->editItem(m_table->currentItem());
            return true;
        }
    }
    return QWidget::eventFilter(object, event);
}

void DictionaryEdit::setDictionary(const TextDictionary &dictionary)
{
    const QSignalBlocker blocker(m_table);
    m_table->setRowCount(static_cast<int>(dictionary.size()));
    int row = 0;
    for (const auto &[key, text] : dictionary) {
        auto *keyItem = new QTableWidgetItem(key);
        keyItem->setData(Qt::UserRole, key);
        keyItem->setToolTip(key);
        m_table->setItem(row, 0, keyItem);
        m_table->setItem(row, 1, new QTableWidgetItem(text));
        ++row;
    }
    m_table->resizeColumnToContents(0);
    m_table->resizeRowsToContents();
    if (row > 0)
        m_table->setCurrentCell(0, 1);
}

TextDictionary DictionaryEdit::dictionary()
{
    m_delegate->commit();
    TextDictionary result;
    for (int row = 0; row < m_table->rowCount(); ++row)
        result.emplace_back(m_table->item(row, 0)->text(), m_table->item(row, 1)->text());
    return result;
}

// The key that a row had last is kept beside it, so that a change that can't be is taken back.
void DictionaryEdit::itemChanged(QTableWidgetItem *item)
{
    const QSignalBlocker blocker(m_table);
    if (item->column() == 0) {
        const QString key = item->text().simplified();
        const bool isPossible = !key.isEmpty() && !isKeyUsed(key, item->row());
        item->setText(isPossible ? key : item->data(Qt::UserRole).toString());
        item->setData(Qt::UserRole, item->text());
    }
    m_table->resizeRowToContents(item->row());
}

bool DictionaryEdit::isKeyUsed(const QString &key, int exceptRow) const
{
    for (int row = 0; row < m_table->rowCount(); ++row) {
        if (row != exceptRow && m_table->item(row, 0)->text() == key)
            return true;
    }
    return false;
}
