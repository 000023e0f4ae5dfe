#pragma once

#include "wizard/assistentseite.h"

class QGridLayout;
class QPushButton;

/// Page 5: three commands, each with what it is good for.
class Ausgabeseite : public AssistentSeite
{
    Q_OBJECT

public:
    explicit Ausgabeseite(const Seitenkontext &context, QWidget *parent = nullptr);

    QWidget *firstControl() const override;

signals:
    void saveClicked();
    void protocolClicked();
    void exportClicked();

private:
    QPushButton *addCommand(QGridLayout &grid, const QString &name, const QString &caption,
                            const QString &heading, const QString &explanation);

    QPushButton *cmdOutSave;
};
