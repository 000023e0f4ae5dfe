#pragma once

#include <QDialog>

#include <functional>

class Dialogs;
class QListWidget;

/// The exports to other programs as a list of actions.
class frmExport : public QDialog
{
    Q_OBJECT

public:
    /// Carries out the export; \a owner is the window to which its own dialogs belong, and which
    /// stays until it has returned.
    using Exporter = std::function<void(frmExport *owner)>;

    /// \a dialogs is borrowed. A run-time error of \a exporter is shown in a box.
    frmExport(Dialogs &dialogs, Exporter exporter, QWidget *parent = nullptr);

    /// While an export runs, whatever would close the window asks for its end instead.
    void reject() override;

signals:
    /// The running export is to be cancelled.
    void cancelRequested();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void runSelected();

    Dialogs &m_dialogs;
    Exporter m_exporter;
    bool m_running = false;
    QListWidget *List1;
};
