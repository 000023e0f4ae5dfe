#pragma once

#include <QPointer>
#include <QStyledItemDelegate>

class QPlainTextEdit;

/// The in-place editor of DictionaryEdit: Enter takes the text over, Shift+Enter begins a new line,
/// Escape gives up. It grows with its text.
class DictionaryDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    /// Editors become children of \a frame and not of the table inside it, where screen readers
    /// would not find them.
    explicit DictionaryDelegate(QWidget &frame);

    /// Takes over what is being typed.
    void commit();

    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option,
                          const QModelIndex &index) const override;
    void setEditorData(QWidget *editor, const QModelIndex &index) const override;
    void setModelData(QWidget *editor, QAbstractItemModel *model,
                      const QModelIndex &index) const override;
    void updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &option,
                              const QModelIndex &index) const override;
    void destroyEditor(QWidget *editor, const QModelIndex &index) const override;

signals:
    /// Enter has closed the editor.
    void entered();

protected:
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    void grow(QPlainTextEdit &editor) const;

    QWidget &m_frame;
    mutable QPointer<QPlainTextEdit> m_editor; ///< the open one
};
