#include "tests/support/testregistry.h"
#include "tests/wizard/fakes.h"

#include <QAbstractButton>
#include <QAction>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>

/// The window as a whole: place, names for people who can't see it, keys, sizes.
class TestHauptfenster : public QObject
{
    Q_OBJECT

private slots:
    void firstStartIsCentred();
    void sizeAndPlaceComeBack();
    void placeThatNoScreenShowsIsNotRestored();
    void accessibleNamesAreUniqueAndGerman();
    void mnemonicsDoNotClash();
    void menuCaptionsStandAsGiven();
    void everyLabelLeadsToItsBox();
    void tabOrderFollowsThePage();
    void smallestWindowCutsNothing();
    void smallScreenScrolls();
    void helpAndInfoHaveTheirMenus();
};

namespace {

// The letter behind the first single '&', or nothing.
QChar mnemonic(const QString &text)
{
    for (qsizetype i = 0; i + 1 < text.size(); ++i) {
        if (text[i] != u'&')
            continue;
        if (text[i + 1] != u'&')
            return text[i + 1].toUpper();
        ++i;
    }
    return {};
}

} // namespace

void TestHauptfenster::firstStartIsCentred()
{
    WizardFixture f;
    f.open();
    const QPoint centre = f.window->screen()->availableGeometry().center();
    const QPoint offset = f.window->geometry().center() - centre;
    QVERIFY2(qAbs(offset.x()) < 20 && qAbs(offset.y()) < 40, "not in the middle");
}

void TestHauptfenster::sizeAndPlaceComeBack()
{
    WizardFixture f;
    f.open();
    f.window->setGeometry(30, 40, 720, 520);
    QCoreApplication::processEvents();
    const QRect left = f.window->geometry();
    f.window->close();
    f.open();
    QCOMPARE(f.window->geometry(), left);
}

void TestHauptfenster::placeThatNoScreenShowsIsNotRestored()
{
    WizardFixture f;
    f.open();
    f.window->setGeometry(90000, 90000, 720, 520);
    f.window->close();
    f.open();
    QVERIFY(f.window->screen()->geometry().intersects(f.window->geometry()));
}

void TestHauptfenster::accessibleNamesAreUniqueAndGerman()
{
    WizardFixture f({QLocale::German}, false);
    f.open();
    f.find<QPushButton>(u"cmdNext"_qs)->click();
    QStringList names;
    for (const auto *widget : f.window->findChildren<QWidget *>()) {
        if (!widget->accessibleName().isEmpty())
            names.append(widget->accessibleName());
        if (qobject_cast<const QLineEdit *>(widget))
            QVERIFY2(!widget->accessibleName().isEmpty(), qPrintable(widget->objectName()));
    }
    names.sort();
    QStringList unique = names;
    unique.removeDuplicates();
    QCOMPARE(names, unique);
    for (const QString &group :
         {u"Direktes Prüfmerkmal: "_qs, u"Indirektes Prüfmerkmal: "_qs, u"Kovariable: "_qs}) {
        for (const QString &box :
             {u"Name"_qs, u"Formelzeichen"_qs, u"Einheit"_qs, u"Nachkommastellen"_qs})
            QVERIFY2(names.contains(group + box), qPrintable(group + box));
    }
    QVERIFY(names.contains(u"Anzahl der Prüffelder"_qs));
    QCOMPARE(f.find<QComboBox>(u"cboMessreihe"_qs)->lineEdit()->accessibleName(),
             u"Kovariable: Name"_qs);
    QCOMPARE(f.find<QComboBox>(u"cboMessreihe"_qs)->accessibleDescription(),
             u"Kovariable: Name"_qs);
}

void TestHauptfenster::mnemonicsDoNotClash()
{
    WizardFixture f({QLocale::German}, false);
    f.open();
    for (int page = 0; page < 2; ++page) {
        QString taken;
        const auto take = [&taken](const QString &text) {
            const QChar letter = mnemonic(text);
            if (letter.isNull())
                return true;
            const bool free = !taken.contains(letter);
            taken.append(letter);
            return free;
        };
        for (const QAction *menu : f.window->menuBar()->actions())
            QVERIFY2(take(menu->text()), qPrintable(menu->text()));
        for (const auto *button : f.window->findChildren<QAbstractButton *>()) {
            if (button->isVisible())
                QVERIFY2(take(button->text()), qPrintable(button->text()));
        }
        for (const auto *label : f.window->findChildren<QLabel *>()) {
            if (label->isVisible() && label->buddy())
                QVERIFY2(take(label->text()), qPrintable(label->text()));
        }
        f.find<QPushButton>(u"cmdNext"_qs)->click();
    }
    for (const auto *menu : f.window->findChildren<QMenu *>()) {
        QString taken;
        for (const QAction *action : menu->actions()) {
            const QChar letter = mnemonic(action->text());
            QVERIFY(letter.isNull() || !taken.contains(letter));
            taken.append(letter);
        }
    }
}

void TestHauptfenster::menuCaptionsStandAsGiven()
{
    WizardFixture f;
    f.open();
    const auto caption = [&](const QString &name) {
        return f.find<QAction>(name)->text().remove(u'&');
    };
    QCOMPARE(caption(u"mf_new"_qs), u"Neu"_qs);
    QCOMPARE(caption(u"mf_open"_qs), u"Öffnen..."_qs);
    QCOMPARE(caption(u"mf_save"_qs), u"Speichern"_qs);
    QCOMPARE(caption(u"mf_saveas"_qs), u"Speichern unter..."_qs);
    QCOMPARE(caption(u"mf_exit"_qs), u"Beenden"_qs);
    QCOMPARE(caption(u"mh_Helpthemes"_qs), u"Hilfethemen"_qs);
    QCOMPARE(caption(u"mh_Info"_qs), u"Info..."_qs);
    QVERIFY(f.find<QAction>(u"mf_save"_qs)->isEnabled()); // also on a clean document
}

void TestHauptfenster::everyLabelLeadsToItsBox()
{
    WizardFixture f;
    f.open();
    int boxes = 0;
    for (const auto *label : f.window->findChildren<QLabel *>()) {
        if (!label->text().endsWith(u':') || !label->isVisible())
            continue;
        QVERIFY2(label->buddy(), qPrintable(label->text()));
        QVERIFY2(label->buddy()->focusPolicy() != Qt::NoFocus, qPrintable(label->text()));
        ++boxes;
    }
    QCOMPARE(boxes, 13);
}

void TestHauptfenster::tabOrderFollowsThePage()
{
    WizardFixture f;
    f.document.DirektesPrüfmerkmal().setName(u"a"_qs);
    f.document.DirektesPrüfmerkmal().setFormelzeichen(u"a"_qs);
    f.document.DirektesPrüfmerkmal().setEinheit(u"a"_qs);
    f.document.IndirektesPrüfmerkmal().setName(u"a"_qs);
    f.document.IndirektesPrüfmerkmal().setFormelzeichen(u"a"_qs);
    f.document.IndirektesPrüfmerkmal().setEinheit(u"a"_qs);
    f.open();
    const QStringList order{u"cboDirektesPrüfmerkmal"_qs,
                            u"cboDirektesPrüfmerkmalZeichen"_qs,
                            u"cboDirektesPrüfmerkmalEinheit"_qs,
                            u"txtDirektesPrüfmerkmalStellen"_qs,
                            u"cboIndirektesPrüfmerkmal"_qs,
                            u"cboIndirektesPrüfmerkmalZeichen"_qs,
                            u"cboIndirektesPrüfmerkmalEinheit"_qs,
                            u"txtIndirektesPrüfmerkmalStellen"_qs,
                            u"cboMessreihe"_qs,
                            u"cboMessreiheZeichen"_qs,
                            u"cboMessreiheEinheit"_qs,
                            u"txtMessreiheStellen"_qs,
                            u"txtMessreihen"_qs,
                            u"cmdPrevious"_qs,
                            u"cmdNext"_qs,
                            u"cmdCancel"_qs};
    for (const QString &name : order) {
        QCOMPARE(QApplication::focusWidget()->objectName(), name);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QCoreApplication::processEvents();
    }
    QCOMPARE(QApplication::focusWidget()->objectName(), order.front());
    QVERIFY(f.dialogs.shown.empty());
}

void TestHauptfenster::smallestWindowCutsNothing()
{
    for (const QSize size : {QSize(900, 650), QSize(1920, 1080)}) {
        WizardFixture f({QLocale::German}, false);
        f.open();
        for (int page = 0; page < 2; ++page) {
            f.window->resize(size);
            QCoreApplication::processEvents();
            QCOMPARE(f.window->size(), size);
            auto *panel = f.find<QScrollArea>(u"picContainer"_qs + QString::number(page));
            QCOMPARE(panel->verticalScrollBar()->maximum(), 0);
            QCOMPARE(panel->horizontalScrollBar()->maximum(), 0);
            for (const auto *child : panel->widget()->findChildren<QWidget *>()) {
                if (child->isVisible() && !child->isWindow())
                    QVERIFY2(child->parentWidget()->rect().contains(child->geometry()),
                             qPrintable(child->objectName()));
            }
            f.find<QPushButton>(u"cmdNext"_qs)->click();
        }
    }
}

void TestHauptfenster::smallScreenScrolls()
{
    WizardFixture f;
    f.open();
    f.window->resize(500, 380);
    QCoreApplication::processEvents();
    auto *panel = f.find<QScrollArea>(u"picContainer1"_qs);
    QVERIFY(panel->verticalScrollBar()->maximum() > 0);
    QVERIFY(f.find<QPushButton>(u"cmdNext"_qs)->isVisible());
    // A refused box is brought into view.
    for (const auto *name : {"cboDirektesPrüfmerkmal", "cboIndirektesPrüfmerkmal"}) {
        for (const auto *part : {"", "Zeichen", "Einheit"})
            f.find<QComboBox>(QString::fromUtf8(name) + QString::fromUtf8(part))
                ->setEditText(u"x"_qs);
    }
    auto *count = f.find<QLineEdit>(u"txtMessreihen"_qs);
    count->setText(u"1"_qs);
    panel->verticalScrollBar()->setValue(0);
    f.find<QPushButton>(u"cmdNext"_qs)->click();
    QVERIFY(count->hasFocus());
    QVERIFY(panel->viewport()->rect().contains(
        count->mapTo(panel->viewport(), count->rect().center())));
}

void TestHauptfenster::helpAndInfoHaveTheirMenus()
{
    WizardFixture f;
    f.open();
    f.find<QAction>(u"mh_Helpthemes"_qs)->trigger();
    QCOMPARE(f.help.times, 1);
    f.find<QAction>(u"mh_Info"_qs)->trigger();
    QCOMPARE(f.windows.calls, QStringList({u"info"_qs, u"modal"_qs}));
}

REGISTER_TEST(TestHauptfenster)
#include "tst_hauptfenster.moc"
