#pragma once

#include "protocol/windows/dictionaryedit.h"

#include <QDialog>

class Kalibrierung;
class QPushButton;

/// Fills in the descriptive data of the protocol. Works on a copy; the document changes on OK only.
class frmProtocollExtraData : public QDialog
{
    Q_OBJECT

public:
    explicit frmProtocollExtraData(QWidget *parent = nullptr);

    /// Fills the list from \a document, which is borrowed. Adds nothing to its store. Raises 13 or
    /// 6 where the number of fields can't be read.
    void setKalibrierung(Kalibrierung &document);

    void accept() override;

private:
    Kalibrierung *m_document = nullptr;
    DictionaryEdit *m_dictionary;
    QPushButton *m_ok;
    QPushButton *m_cancel;
};
