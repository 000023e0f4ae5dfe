#include "core/runtimeerror.h"
#include "tests/support/testregistry.h"
#include "tests/wizard/dialoge/controls.h"
#include "tests/wizard/fakes.h"
#include "wizard/frmexport.h"

#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTest>

class TestFrmExport : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_messages.emplace();
        m_owners.clear();
        m_whileRunning = [] {};
        m_window = new frmExport(*m_messages, [this](frmExport *owner) {
            m_owners.push_back(owner);
            m_whileRunning();
        });
        m_window->show();
        QVERIFY(QTest::qWaitForWindowActive(m_window));
    }

    void cleanup() { delete m_window; }

    void showsItsOneAction()
    {
        QCOMPARE(m_window->windowTitle(), u"Export in dritte Programme"_qs);
        bool labelled = false;
        for (const QLabel *label : m_window->findChildren<QLabel *>())
            labelled |= label->text() == u"wählen Sie eine Aktion aus:" && label->buddy() == list();
        QVERIFY(labelled);
        QCOMPARE(list()->count(), 1);
        QCOMPARE(list()->item(0)->text(), u"Export der Messwerte und Ergebnisse nach MS Excel"_qs);
        QCOMPARE(button(u"cmdOk"_qs)->text(), u"&Ok"_qs);
        QCOMPARE(button(u"cmdClose"_qs)->text(), u"&Abbruch"_qs);
        QVERIFY(list()->sizeHintForColumn(0) <= list()->viewport()->width());
    }

    void okWithoutSelectionDoesNothing()
    {
        QTest::mouseClick(button(u"cmdOk"_qs), Qt::LeftButton);
        list()->setFocus();
        QTest::keyClick(list(), Qt::Key_Return);
        QVERIFY(m_owners.empty());
        QVERIFY(m_window->isVisible());
    }

    void okRunsTheSelectedActionAndStaysOpen()
    {
        select();
        QTest::mouseClick(button(u"cmdOk"_qs), Qt::LeftButton);
        QCOMPARE(m_owners, std::vector<QWidget *>{m_window});
        QTest::keyClick(list(), Qt::Key_Return);
        QCOMPARE(m_owners.size(), std::size_t{2});
        QVERIFY(m_window->isVisible());
        QVERIFY(m_messages->shown.empty());
    }

    void actionIsChosenAndRunByKeyboard()
    {
        list()->setFocus();
        QTest::keyClick(list(), Qt::Key_Space);
        QTest::keyClick(list(), Qt::Key_Return);
        QCOMPARE(m_owners.size(), std::size_t{1});
    }

    void aFailureIsShownInOneBox()
    {
        m_whileRunning = [] { throw RunTimeError(ErrorNumber::DiskFull); };
        select();
        button(u"cmdOk"_qs)->click();
        const std::vector<FakeDialogs::Shown> expected{
            {Dialogs::Icon::Exclamation, u"Kalibrierung nach Wendral"_qs,
             u"Beim Exportieren der Daten ist ein Fehler aufgetreten:\r\nDatenträger voll (61)"_qs}};
        QCOMPARE(m_messages->shown, expected);
        QVERIFY(m_window->isVisible());
        m_whileRunning = [] {};
        button(u"cmdOk"_qs)->click();
        QCOMPARE(m_owners.size(), std::size_t{2});
    }

    void noSecondExportStartsBesideARunningOne()
    {
        m_whileRunning = [this] { button(u"cmdOk"_qs)->click(); };
        select();
        button(u"cmdOk"_qs)->click();
        QCOMPARE(m_owners.size(), std::size_t{1});
    }

    void closingDuringAnExportOnlyCancels_data()
    {
        QTest::addColumn<std::function<void(frmExport &)>>("close");
        using Close = std::function<void(frmExport &)>;
        QTest::newRow("Esc") << Close(
            [](frmExport &window) { QTest::keyClick(&window, Qt::Key_Escape); });
        QTest::newRow("the button") << Close(
            [](frmExport &window) { control<QPushButton>(window, u"cmdClose"_qs)->click(); });
        QTest::newRow("the window's own") << Close([](frmExport &window) { window.close(); });
        QTest::newRow("its owner")
            << Close([](frmExport &window) { window.parentWidget()->close(); });
        QTest::newRow("the session") << Close([](frmExport &) {
            QEvent quit(QEvent::Quit);
            QCoreApplication::sendEvent(qApp, &quit);
        });
    }

    void closingDuringAnExportOnlyCancels()
    {
        QFETCH(std::function<void(frmExport &)>, close);
        delete m_window;
        auto *owner = new QWidget;
        owner->setAttribute(Qt::WA_DeleteOnClose);
        owner->show();
        const QPointer<QWidget> ownerAlive(owner);
        int cancelled = 0;
        m_window = new frmExport(
            *m_messages,
            [&](frmExport *running) {
                close(*running);
                QCoreApplication::processEvents();
                QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
                QVERIFY(m_window && ownerAlive);
                QVERIFY(m_window->isVisible() && owner->isVisible());
            },
            owner);
        connect(m_window, &frmExport::cancelRequested, m_window, [&cancelled] { ++cancelled; });
        m_window->setWindowModality(Qt::WindowModal);
        m_window->show();
        QVERIFY(QTest::qWaitForWindowActive(m_window));
        select();
        button(u"cmdOk"_qs)->click();
        QCOMPARE(cancelled, 1);
        QVERIFY(m_window);
        close(*m_window); // as before
        QTRY_VERIFY(!m_window);
        delete ownerAlive;
    }

    void abbruchClosesAndUnloads()
    {
        QTest::mouseClick(button(u"cmdClose"_qs), Qt::LeftButton);
        QTRY_VERIFY(!m_window);
        QVERIFY(m_owners.empty());
    }

private:
    QListWidget *list() const { return control<QListWidget>(*m_window, u"List1"_qs); }
    QPushButton *button(const QString &name) const { return control<QPushButton>(*m_window, name); }
    void select()
    {
        QTest::mouseClick(list()->viewport(), Qt::LeftButton, {},
                          list()->visualItemRect(list()->item(0)).center());
    }

    std::optional<FakeDialogs> m_messages;
    std::vector<QWidget *> m_owners;
    std::function<void()> m_whileRunning;
    QPointer<frmExport> m_window;
};

Q_DECLARE_METATYPE(std::function<void(frmExport &)>)
REGISTER_TEST(TestFrmExport)
#include "tst_frmexport.moc"
