#pragma once

class Kalibrierung;
class QObject;

/// What the document needs of the windows that it opens: making one and showing it. The application
/// fulfils this, tests hand in a fake, programs without windows hand in none.
///
/// Forms are passed as QObject because the document knows no widgets. The caller of a create
/// function owns nothing: a form belongs to its owner window or, without one, deletes itself when
/// closed.
class WindowService
{
public:
    virtual ~WindowService() = default;

    /// A new wizard window that already works on \a document. Not shown yet.
    virtual QObject *createAssistent(Kalibrierung &document) = 0;
    virtual QObject *createInfo() = 0;
    virtual QObject *createCalcOptions(Kalibrierung &document) = 0;
    virtual QObject *createProtocollExtraData(Kalibrierung &document) = 0;

    /// Shows \a form, blocking until it is closed when \a modal, owned by \a parentForm unless that
    /// is null.
    virtual void showForm(QObject *form, bool modal, QObject *parentForm) = 0;
};
