#pragma once

#include "core/merkmal.h"
#include "protocol/pages/diagram.h"
#include "protocol/pages/drawing.h"
#include "protocol/pages/textmeasure.h"

#include <QString>
#include <QWidget>

#include <optional>

class Kalibrierung;

/// Shows the diagram of one pair with the means of the protocol, its frame as large as there is
/// room. Screen readers get it as text.
class DiagramWidget : public QWidget
{
    Q_OBJECT

public:
    explicit DiagramWidget(QWidget *parent = nullptr);

    /// Shows the pair's points and line as \a document has them now; call it again after a change.
    /// Where there is no diagram, the reason is shown in its place; raises nothing.
    void showPair(Kalibrierung &document, MerkmalEnum dependent, MerkmalEnum independent);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    double pixelsPerCm() const;
    void layOut();

    TextMeasure m_measure;
    std::optional<DiagramData> m_diagram;
    Drawing m_drawing; ///< of the diagram at the widget's size
    QString m_reason;  ///< why there is no diagram
};
