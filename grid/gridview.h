#pragma once

#include <QBasicTimer>
#include <QTableView>

class GridControl;

/// The table inside a grid control: turns mouse and keys into moves of the control's current cell
/// and selection. Its own editing, searching and copying by keys are off.
class GridView : public QTableView
{
    Q_OBJECT

public:
    /// \a grid is borrowed and owns this.
    explicit GridView(GridControl &grid);

signals:
    /// The view's inner size has changed, or what it shows has moved.
    void resized();
    void scrolled();

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void inputMethodEvent(QInputMethodEvent *event) override;
    QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void timerEvent(QTimerEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    bool isLeavingByCtrlTab(const QKeyEvent &event);
    void dragTo(QPoint position);
    void endDrag();
    int pageRows() const;

    GridControl &m_grid;
    QBasicTimer m_autoScroll; ///< runs while the mouse drags a selection outside of the view
    bool m_dragging = false;
    bool m_draggingRows = false;
};
