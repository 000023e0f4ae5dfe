#pragma once

#include "wizard/assistentseite.h"

#include <QHash>

class Bildfeld;
class Lesefeld;
class QSplitter;
class QTreeWidget;

/// Page 4: the list of all results, and the verdict with its image.
class Plausibilitaetsseite : public AssistentSeite
{
    Q_OBJECT

public:
    explicit Plausibilitaetsseite(const Seitenkontext &context, QWidget *parent = nullptr);

    void fill() override;
    QWidget *firstControl() const override;

    /// Shows \a diagramme below the list and takes it over. The user can move the border between.
    void setDiagramme(QWidget *diagramme);

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
    QSplitter *m_splitter;
};
