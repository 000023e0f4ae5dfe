#pragma once

#include <QObject>
#include <QString>

class QAction;
class QComboBox;
class QLabel;
class QMainWindow;
class QProgressBar;
class QPushButton;
class QToolBar;

/// Toolbar and status bar of the preview. They belong to the window.
class PreviewControls : public QObject
{
    Q_OBJECT

public:
    explicit PreviewControls(QMainWindow &window);

    int protocolType() const;
    QString zoomText() const;
    void setZoomText(const QString &text);
    void setPageText(const QString &text);
    /// Shows what is going on, with a button to cancel it; an empty text ends that. \a locked keeps
    /// the commands from being given meanwhile.
    void setProgress(const QString &text, bool locked = false);

signals:
    void buttonClicked(const QString &key);
    void typeChanged();
    void zoomChanged();
    void cancelled();

private:
    void addButton(const QString &key, const QString &toolTip, const QString &caption);
    void addTypeBox();
    void addZoomBox();
    void fillStatusBar(QMainWindow &window);

    QToolBar *m_toolbar;
    QComboBox *m_type;
    QComboBox *m_zoom;
    QLabel *m_pages;
    QLabel *m_progressText;
    QProgressBar *m_progress;
    QPushButton *m_cancel;
};
