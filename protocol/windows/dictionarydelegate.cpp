#include "protocol/windows/dictionarydelegate.h"

#include "core/xmlpruefung.h"

#include <QKeyEvent>
#include <QMimeData>
#include <QPlainTextEdit>

#include <algorithm>
#include <cmath>

namespace {

// What a file can't hold is left out, so that saving doesn't fail later. Word processors break
// lines and pages with some of these characters.
QString storable(const QString &text)
{
    QList<char32_t> result;
    for (const char32_t c : text.toUcs4()) {
        if (c == U'\v' || c == U'\f' || c == U'\u0085')
            result.append(U'\n');
        else if (c == U'\t' || c == U'\n' || c == U'\r' ||
                 (isXmlCharacter(c) && QChar::category(c) != QChar::Other_Control))
            result.append(c);
    }
    return QString::fromUcs4(result.constData(), result.size());
}

// Takes nothing but text. Qt's own asks for the first of the formats also where there is none, as
// in a clipboard whose program has ended, and dies of it; and it takes one of them for markup.
class EntryEdit : public QPlainTextEdit
{
public:
    using QPlainTextEdit::QPlainTextEdit;

protected:
    void insertFromMimeData(const QMimeData *source) override
    {
        if (source && source->hasText())
            insertPlainText(storable(source->text()));
        ensureCursorVisible();
    }
};

} // namespace

DictionaryDelegate::DictionaryDelegate(QWidget &frame) : QStyledItemDelegate(&frame), m_frame(frame)
{
}

void DictionaryDelegate::commit()
{
    if (!m_editor)
        return;
    emit commitData(m_editor);
    emit closeEditor(m_editor, NoHint);
}

QWidget *DictionaryDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &,
                                          const QModelIndex &index) const
{
    auto *editor = new EntryEdit(&m_frame);
    editor->setObjectName(u"txtEintrag"_qs);
    editor->setAccessibleName(index.siblingAtColumn(0).data().toString());
    editor->setTabChangesFocus(true);
    editor->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    editor->setProperty("viewport", QVariant::fromValue(parent));
    m_editor = editor;
    connect(editor, &QPlainTextEdit::textChanged, this, [this, editor] { grow(*editor); });
    return editor;
}

void DictionaryDelegate::setEditorData(QWidget *editor, const QModelIndex &index) const
{
    auto *edit = static_cast<QPlainTextEdit *>(editor);
    edit->setPlainText(index.data(Qt::EditRole).toString());
    edit->selectAll();
}

// A text that was opened and left as it was keeps its line breaks, whatever kind they are.
void DictionaryDelegate::setModelData(QWidget *editor, QAbstractItemModel *model,
                                      const QModelIndex &index) const
{
    const auto *edit = static_cast<QPlainTextEdit *>(editor);
    if (edit->document()->isModified())
        model->setData(index, edit->toPlainText(), Qt::EditRole);
}

void DictionaryDelegate::updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &option,
                                              const QModelIndex &) const
{
    const auto *viewport = editor->property("viewport").value<QWidget *>();
    const QPoint corner = viewport->mapTo(&m_frame, option.rect.topLeft());
    editor->setGeometry(QRect(corner, option.rect.size()));
    grow(*static_cast<QPlainTextEdit *>(editor));
    editor->raise();
}

void DictionaryDelegate::destroyEditor(QWidget *editor, const QModelIndex &index) const
{
    m_editor = nullptr; // it lives on until the event loop deletes it
    QStyledItemDelegate::destroyEditor(editor, index);
}

void DictionaryDelegate::grow(QPlainTextEdit &editor) const
{
    constexpr int mostLines = 8;
    // The layout of a plain text counts its height in lines, wrapped ones included.
    const int all = std::max(static_cast<int>(std::ceil(editor.document()->size().height())), 1);
    const int lines = std::min(all, mostLines);
    const int borders =
        2 * editor.frameWidth() + static_cast<int>(2 * editor.document()->documentMargin());
    const int wanted = lines * editor.fontMetrics().lineSpacing() + borders;
    // Always over the rows, also where the row itself has been scrolled away.
    const auto *viewport = editor.property("viewport").value<QWidget *>();
    const QRect inside(viewport->mapTo(&m_frame, QPoint()), viewport->size());
    const int height = std::min(std::max(editor.height(), wanted), inside.height());
    editor.setVerticalScrollBarPolicy(all > lines || height < wanted ? Qt::ScrollBarAsNeeded
                                                                     : Qt::ScrollBarAlwaysOff);
    const int top = std::min(editor.y(), inside.bottom() + 1 - height);
    editor.setGeometry(editor.x(), std::max(top, inside.top()), editor.width(), height);
}

bool DictionaryDelegate::eventFilter(QObject *object, QEvent *event)
{
    auto *editor = qobject_cast<QPlainTextEdit *>(object);
    if (editor && event->type() == QEvent::KeyPress) {
        const auto *key = static_cast<QKeyEvent *>(event);
        const bool isEnter = key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter;
        if (isEnter && key->modifiers().testFlag(Qt::ShiftModifier)) {
            editor->insertPlainText(u"\n"_qs);
            return true;
        }
        if (isEnter) {
            emit commitData(editor);
            emit closeEditor(editor, NoHint);
            emit entered();
            return true;
        }
    }
    return QStyledItemDelegate::eventFilter(object, event);
}
