#pragma once

#include "wizard/assistentseite.h"

class QCheckBox;

/// Page 0: what the program is, and whether this page is to be shown again.
class SeiteWillkommen : public AssistentSeite
{
    Q_OBJECT

public:
    explicit SeiteWillkommen(const Seitenkontext &context, QWidget *parent = nullptr);

    bool dontShowAgain() const;
    void setDontShowAgain(bool dontShow);

signals:
    void infoClicked();
    void dontShowAgainClicked(bool checked);

private:
    QWidget *texts();

    QCheckBox *chkDontShowPage0;
};
