#pragma once

#include <QDialog>

/// The about dialog: product, version, contact blocks.
class frmInfo : public QDialog
{
    Q_OBJECT

public:
    explicit frmInfo(QWidget *parent = nullptr);
};
