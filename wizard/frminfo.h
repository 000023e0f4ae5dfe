#pragma once

#include "core/produkt.h"

#include <QDialog>
#include <QVersionNumber>

/// The about dialog: product, version, and who made it.
class frmInfo : public QDialog
{
    Q_OBJECT

public:
    /// \a version is shown with major, minor and revision, missing ones as 0.
    explicit frmInfo(const QVersionNumber &version = thisVersion(), QWidget *parent = nullptr);

    /// The version of this program.
    static QVersionNumber thisVersion()
    {
        return {produkt::versionMajor, produkt::versionMinor, produkt::versionRevision};
    }
};
