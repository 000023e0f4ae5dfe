#pragma once

#include <QWidget>

class QFrame;
class QPushButton;

/// The wizard frame: the three navigation buttons, and the events of a page change in their order.
///
/// It knows no pages. Its host keeps the page number, and decides in its handlers whether a step is
/// allowed and what the page shows.
class ctlAssistent : public QWidget
{
    Q_OBJECT

public:
    explicit ctlAssistent(QWidget *parent = nullptr);

    /// Spacing of the buttons in twips; ten screen pixels at first.
    float Margin() const { return m_margin; }
    /// Stores the spacing and lays the buttons out at once.
    void setMargin(float twips);

    bool CancelEnabled() const;
    void setCancelEnabled(bool enabled);
    bool NextEnabled() const;
    void setNextEnabled(bool enabled);
    bool PreviousEnabled() const;
    void setPreviousEnabled(bool enabled);

    /// One step: \a direction is +1 forward, -1 back, 0 enters the current page again. A veto
    /// changes nothing. While the page is entered, all three buttons are disabled.
    void GoToPage(int direction);

    void focusNextButton();

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

signals:
    /// The close button was clicked.
    void Cancel();
    /// First in a step. A handler sets \a Cancel to stay on the page.
    void LeavePage(int Direction, bool &Cancel);
    /// Second. The handler switches the visible page, or sets \a Cancel where there is none to go
    /// to.
    void ChangePage(int Direction, bool &Cancel);
    /// Last. The handler fills the page and may change the three states, which come as they were
    /// before the step.
    void EnterPage(bool &NewNextEnabled, bool &NewPreviousEnabled, bool &NewCancelEnabled);

protected:
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    int marginPixels() const;
    QSize buttonSize() const;
    int neededHeight() const;
    void layoutButtons();

    float m_margin;
    QPushButton *cmdPrevious;
    QPushButton *cmdNext;
    QPushButton *cmdCancel;
    QFrame *linTop;
};
