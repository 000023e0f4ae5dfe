#pragma once

#include "wizard/assistentseite.h"

#include <QHash>

class Bildfeld;
class Diagramme;
class Lesefeld;
class QTreeWidget;

/// Page 4: the list of all results, the diagrams below it, and the verdict with its image. The user
/// can move the border between list and diagrams.
class Plausibilitaetsseite : public AssistentSeite
{
    Q_OBJECT

public:
    explicit Plausibilitaetsseite(const Seitenkontext &context, QWidget *parent = nullptr);

    void fill() override;
    QWidget *firstControl() const override;

signals:
    void optionsClicked();

private:
    QWidget *verdict();
    void addRow(const QString &groesse, const QString &wert, const QString &wertung, bool heading);
    void setUpList();

    QTreeWidget *lvPlausibilität;
    QHash<QString, QString> ilPlausibilität; ///< resource paths of the images by their keys
    Bildfeld *imgPlausibilität;
    Lesefeld *labPlausibilität;
    Diagramme *m_diagrams;
};
