#pragma once

#include "core/merkmal.h"

#include <QWidget>

#include <array>

class DiagramWidget;
class Kalibrierung;

/// The three diagrams of a calibration beside each other, never much higher than wide.
class Diagramme : public QWidget
{
public:
    explicit Diagramme(QWidget *parent = nullptr);

    /// Shows the points and lines as \a document has them now.
    void zeige(Kalibrierung &document);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    struct Diagramm
    {
        MerkmalEnum dependent;
        MerkmalEnum independent;
        DiagramWidget *widget;
    };

    std::array<Diagramm, 3> m_diagrams;
};
