#pragma once

#include "tests/wizard/dialoge/controls.h"
#include "tests/wizard/fakes.h"
#include "wizard/frmcalcoptions.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>

inline const QString minimumBox = u"txtMinBestimmtheitsmaßIndirektDirekt"_qs;

/// The six boxes of decimal places from top to bottom, then the minimum.
inline const QStringList allBoxes{u"txtMittelwerteStellen"_qs,
                                  u"txtVarianzenStellen"_qs,
                                  u"txtKovarianzenStellen"_qs,
                                  u"txtBestimmtheitsmaßeStellen"_qs,
                                  u"txtAnstiegStellen"_qs,
                                  u"txtNullwertStellen"_qs,
                                  minimumBox};

/// The options dialog on a document, shown and active.
class Optionendialog
{
public:
    explicit Optionendialog(Kalibrierung &document) : m_window(new frmCalcOptions(messages))
    {
        m_window->setKalibrierung(document);
        m_window->show();
        if (!QTest::qWaitForWindowActive(m_window))
            qFatal("the dialog did not become active");
        QCoreApplication::processEvents();
    }
    ~Optionendialog() { delete m_window; }
    Optionendialog(const Optionendialog &) = delete;
    Optionendialog &operator=(const Optionendialog &) = delete;

    frmCalcOptions *operator->() const { return m_window; }
    frmCalcOptions &operator*() const { return *m_window; }
    bool isGone() const { return !m_window; }

    QLineEdit *box(const QString &name) const { return control<QLineEdit>(*m_window, name); }
    QCheckBox *rounding() const
    {
        return control<QCheckBox>(*m_window, u"chkRoundIntermediaryResults"_qs);
    }
    void click(const QString &button) const
    {
        QTest::mouseClick(control<QPushButton>(*m_window, button), Qt::LeftButton);
        QCoreApplication::processEvents();
    }
    void ok() const { click(u"cmdOk"_qs); }

    /// 11 to 16 places, the check box turned, a minimum of 0,81.
    void enterEverywhere() const
    {
        int places = 11;
        for (const QString &name : allBoxes)
            box(name)->setText(name == minimumBox ? u"0,81"_qs : QString::number(places++));
        rounding()->click();
    }

    FakeDialogs messages;

private:
    QPointer<frmCalcOptions> m_window;
};
