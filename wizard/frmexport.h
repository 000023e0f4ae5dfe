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
    /// Carries out the export; \a owner is the window to which its own dialogs belong.
    using Exporter = std::function<void(QWidget *owner)>;

    /// \a dialogs is borrowed. A run-time error of \a exporter is shown in a box.
    frmExport(Dialogs &dialogs, Exporter exporter, QWidget *parent = nullptr);

private:
    void runSelected();

    Dialogs &m_dialogs;
    Exporter m_exporter;
    bool m_running = false;
    QListWidget *List1;
};
