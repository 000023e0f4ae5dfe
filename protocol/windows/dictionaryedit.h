#pragma once

#include <QString>
#include <QWidget>

#include <utility>
#include <vector>

class DictionaryDelegate;
class QTableWidget;
class QTableWidgetItem;

/// Texts under text keys, in their order.
using TextDictionary = std::vector<std::pair<QString, QString>>;

/// Edits a dictionary of texts as a list of two columns. Texts may have several lines; keys can be
/// changed, but not to nothing or to one that is there already. Enter opens a cell's editor, and in
/// the editor takes the text over and goes on to the next row.
class DictionaryEdit : public QWidget
{
    Q_OBJECT

public:
    explicit DictionaryEdit(QWidget *parent = nullptr);

    void setDictionary(const TextDictionary &dictionary);
    /// The dictionary as it stands, with what is being typed.
    TextDictionary dictionary();

protected:
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    void itemChanged(QTableWidgetItem *item);
    bool isKeyUsed(const QString &key, int exceptRow) const;

    QTableWidget *m_table;
    DictionaryDelegate *m_delegate;
};
