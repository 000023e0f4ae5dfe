#include "tests/grid/editgridfixture.h"
#include "tests/support/testregistry.h"

#include "grid/gridkeys.h"
#include "grid/gridmodel.h"

#include <QComboBox>
#include <QInputMethodEvent>
#include <QIntValidator>
#include <QTableView>

/// The keys on the grid, with and without their options.
class TestGridKeys : public QObject
{
    Q_OBJECT

private slots:
    void ctrlInsertAddsAsManyRowsAsAreSelected();
    void insertWithoutCtrlAloneDoesNothing_data();
    void insertWithoutCtrlAloneDoesNothing();
    void ctrlDeleteRemovesTheSelectedRows();
    void deleteWithoutCtrlAloneClearsTheSelection_data();
    void deleteWithoutCtrlAloneClearsTheSelection();
    void deleteLeavesFixedCellsAlone();
    void addAndDeleteKeysCanBeIgnored_data();
    void addAndDeleteKeysCanBeIgnored();
    void ctrlCCopies();
    void ctrlXCuts();
    void ctrlVPastes();
    void clipboardKeysCanBeIgnoredButTheMethodsWork();
    void ignoredKeysReachTheOwner_data();
    void ignoredKeysReachTheOwner();
    void keysThatOpenTheEditor_data();
    void keysThatOpenTheEditor();
    void keysThatNeverOpenTheEditor_data();
    void keysThatNeverOpenTheEditor();
    void aKeyUsedByTheOwnerDoesNothingMore();
    void enterOnAVetoedCellIsUsedUp();
    void aComposedCharacterReplacesTheText();
    void aRefusedFirstCharacterKeepsTheText_data();
    void aRefusedFirstCharacterKeepsTheText();
    void aValidatorDecidesAboutTheFirstCharacter();
    void backspaceAndLeavingEmptiesTheCell();
    void aCompositionReplacesTheTextOnceItIsDone();
    void anAbandonedCompositionKeepsTheText();
    void aCompositionCutOffByLeavingKeepsTheText();
    void aRefusedCompositionKeepsTheText();
    void aComposedLetterChoosesAnEntry();
    void theInputMethodIsToldWhereTheCellIs();
    void eachOptionSilencesOnlyItsOwnKeys();
};

void TestGridKeys::ctrlInsertAddsAsManyRowsAsAreSelected()
{
    EditGridFixture f;
    f.show();
    f.grid->setCursorCells({3, 1, 2, 2});
    f.key(Qt::Key_Insert, Qt::ControlModifier);
    QCOMPARE(f.takeEvents(), QStringList({u"BeforeRowAdd 2"_qs, u"RowAdd 2"_qs,
                                          u"BeforeRowAdd 2"_qs, u"RowAdd 2"_qs}));
    QCOMPARE(f.colTexts(0),
             QStringList({u"r1c0"_qs, QString(), QString(), u"r2c0"_qs, u"r3c0"_qs, u"r4c0"_qs}));
    f.key(Qt::Key_Insert, Qt::ControlModifier | Qt::KeypadModifier);
    QCOMPARE(f.grid->rows(), 9);
}

void TestGridKeys::insertWithoutCtrlAloneDoesNothing_data()
{
    QTest::addColumn<int>("modifiers");
    QTest::newRow("plain") << int(Qt::NoModifier);
    QTest::newRow("Shift") << int(Qt::ShiftModifier);
    QTest::newRow("Ctrl+Shift") << int(Qt::ControlModifier | Qt::ShiftModifier);
    QTest::newRow("Ctrl+Alt") << int(Qt::ControlModifier | Qt::AltModifier);
}

void TestGridKeys::insertWithoutCtrlAloneDoesNothing()
{
    QFETCH(const int, modifiers);
    EditGridFixture f;
    f.show();
    const QString before = f.edit->GridText(true);
    f.key(Qt::Key_Insert, Qt::KeyboardModifiers(modifiers));
    QVERIFY(f.takeEvents().isEmpty());
    QCOMPARE(f.edit->GridText(true), before);
}

void TestGridKeys::ctrlDeleteRemovesTheSelectedRows()
{
    EditGridFixture f;
    f.show();
    f.grid->setCursorCells({3, 1, 2, 1});
    f.key(Qt::Key_Delete, Qt::ControlModifier);
    QCOMPARE(f.takeEvents(), QStringList({u"BeforeRowRemove 2"_qs, u"RowRemove 2"_qs,
                                          u"BeforeRowRemove 2"_qs, u"RowRemove 2"_qs}));
    QCOMPARE(f.colTexts(0), QStringList({u"r1c0"_qs, u"r4c0"_qs}));
}

void TestGridKeys::deleteWithoutCtrlAloneClearsTheSelection_data()
{
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<bool>("ignoreAddDel");
    QTest::newRow("plain") << int(Qt::NoModifier) << false;
    QTest::newRow("plain, row keys ignored") << int(Qt::NoModifier) << true;
    QTest::newRow("Shift") << int(Qt::ShiftModifier) << false;
    QTest::newRow("Ctrl+Shift") << int(Qt::ControlModifier | Qt::ShiftModifier) << false;
    QTest::newRow("Ctrl+Shift, row keys ignored")
        << int(Qt::ControlModifier | Qt::ShiftModifier) << true;
}

void TestGridKeys::deleteWithoutCtrlAloneClearsTheSelection()
{
    QFETCH(const int, modifiers);
    QFETCH(const bool, ignoreAddDel);
    EditGridFixture f;
    f.edit->setGridIgnoreAddDelKeys(ignoreAddDel);
    f.show();
    f.grid->setCursorCells({2, 2, 1, 1});
    f.key(Qt::Key_Delete, Qt::KeyboardModifiers(modifiers));
    QCOMPARE(f.takeEvents(), QStringList({u"CellClear 1,1"_qs, u"CellClear 1,2"_qs,
                                          u"CellClear 2,1"_qs, u"CellClear 2,2"_qs}));
    QCOMPARE(f.rowTexts(1), QStringList({u"r1c0"_qs, QString(), QString(), u"r1c3"_qs}));
    QCOMPARE(f.rowTexts(2), QStringList({u"r2c0"_qs, QString(), QString(), u"r2c3"_qs}));
    QCOMPARE(f.grid->rows(), 5);
    QVERIFY(!f.edit->isEditing());
}

void TestGridKeys::deleteLeavesFixedCellsAlone()
{
    EditGridFixture f(5, 4, 2);
    f.show();
    f.grid->setCursorCells({0, 0, 1, 2});
    f.key(Qt::Key_Delete);
    QCOMPARE(f.takeEvents(), QStringList(u"CellClear 1,2"_qs));
    QCOMPARE(f.grid->textMatrix(0, 2), u"r0c2"_qs);
    QCOMPARE(f.grid->textMatrix(1, 1), u"r1c1"_qs);
}

void TestGridKeys::addAndDeleteKeysCanBeIgnored_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("Insert") << int(Qt::Key_Insert);
    QTest::newRow("Delete") << int(Qt::Key_Delete);
}

void TestGridKeys::addAndDeleteKeysCanBeIgnored()
{
    QFETCH(const int, key);
    EditGridFixture f;
    f.edit->setGridIgnoreAddDelKeys(true);
    f.show();
    const QString before = f.edit->GridText(true);
    f.key(Qt::Key(key), Qt::ControlModifier);
    QVERIFY(f.takeEvents().isEmpty());
    QVERIFY(!f.edit->isEditing());
    QCOMPARE(f.edit->GridText(true), before);
}

void TestGridKeys::ctrlCCopies()
{
    EditGridFixture f(3, 2);
    f.show();
    f.key(Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(f.clipboard, QString());
    f.key(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(f.clipboard, u"r1c0\tr1c1\r\n"_qs);
    QVERIFY(f.takeEvents().isEmpty());
}

void TestGridKeys::ctrlXCuts()
{
    EditGridFixture f(4, 2);
    f.show();
    f.key(Qt::Key_X, Qt::ControlModifier);
    QCOMPARE(f.clipboard, u"r1c0\tr1c1\r\n"_qs);
    QCOMPARE(f.takeEvents(), QStringList({u"BeforeRowRemove 1"_qs, u"RowRemove 1"_qs}));
    QCOMPARE(f.colTexts(0), QStringList({u"r2c0"_qs, u"r3c0"_qs}));
}

void TestGridKeys::ctrlVPastes()
{
    EditGridFixture f(3, 2);
    f.clipboard = u"a\tb\r\n"_qs;
    f.show();
    f.key(Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(f.colTexts(0), QStringList({u"a"_qs, u"r1c0"_qs, u"r2c0"_qs}));
}

void TestGridKeys::clipboardKeysCanBeIgnoredButTheMethodsWork()
{
    EditGridFixture f(3, 2);
    f.edit->setGridIgnoreClipboardKeys(true);
    f.clipboard = u"a\tb"_qs;
    f.show();
    for (const Qt::Key key : {Qt::Key_C, Qt::Key_X, Qt::Key_V})
        f.key(key, Qt::ControlModifier);
    QCOMPARE(f.clipboard, u"a\tb"_qs);
    QCOMPARE(f.grid->rows(), 3);
    QVERIFY(f.takeEvents().isEmpty());
    f.edit->ClipboardCopy();
    QCOMPARE(f.clipboard, u"r1c0\tr1c1\r\n"_qs);
    f.edit->ClipboardCut();
    QCOMPARE(f.grid->rows(), 2);
    f.edit->ClipboardPaste();
    QCOMPARE(f.grid->rows(), 3);
}

void TestGridKeys::ignoredKeysReachTheOwner_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    QTest::newRow("Ctrl+C") << int(Qt::Key_C) << int(Qt::ControlModifier);
    QTest::newRow("Ctrl+V") << int(Qt::Key_V) << int(Qt::ControlModifier);
    QTest::newRow("Ctrl+Insert") << int(Qt::Key_Insert) << int(Qt::ControlModifier);
    QTest::newRow("Esc") << int(Qt::Key_Escape) << int(Qt::NoModifier);
    QTest::newRow("F1") << int(Qt::Key_F1) << int(Qt::NoModifier);
    QTest::newRow("Ctrl+PageDown") << int(Qt::Key_PageDown) << int(Qt::ControlModifier);
}

void TestGridKeys::ignoredKeysReachTheOwner()
{
    QFETCH(const int, key);
    QFETCH(const int, modifiers);
    EditGridFixture f;
    f.edit->setGridIgnoreClipboardKeys(true);
    f.edit->setGridIgnoreAddDelKeys(true);
    f.show();
    struct Watcher : QObject
    {
        bool eventFilter(QObject *, QEvent *event) override
        {
            if (event->type() == QEvent::KeyPress)
                seen += static_cast<QKeyEvent *>(event)->key() == wanted ? 1 : 0;
            return false;
        }
        int wanted = 0;
        int seen = 0;
    } watcher;
    watcher.wanted = key;
    f.window->installEventFilter(&watcher);
    f.key(Qt::Key(key), Qt::KeyboardModifiers(modifiers));
    QCOMPARE(watcher.seen, 1);
}

void TestGridKeys::keysThatOpenTheEditor_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<QString>("character");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QString>("selected");
    const QString cell = u"r1c0"_qs;
    const QString none;
    const int plain = int(Qt::NoModifier);
    QTest::newRow("Return") << int(Qt::Key_Return) << plain << u"\r"_qs << cell << cell;
    QTest::newRow("Enter") << int(Qt::Key_Enter) << int(Qt::KeypadModifier) << u"\r"_qs << cell
                           << cell;
    QTest::newRow("F2 keeps the text") << int(Qt::Key_F2) << plain << none << cell << none;
    QTest::newRow("a letter replaces") << int(Qt::Key_X) << plain << u"x"_qs << u"x"_qs << none;
    QTest::newRow("Shift and a letter")
        << int(Qt::Key_X) << int(Qt::ShiftModifier) << u"X"_qs << u"X"_qs << none;
    QTest::newRow("a digit of the keypad")
        << int(Qt::Key_7) << int(Qt::KeypadModifier) << u"7"_qs << u"7"_qs << none;
    QTest::newRow("comma") << int(Qt::Key_Comma) << plain << u","_qs << u","_qs << none;
    QTest::newRow("minus") << int(Qt::Key_Minus) << plain << u"-"_qs << u"-"_qs << none;
    QTest::newRow("blank") << int(Qt::Key_Space) << plain << u" "_qs << u" "_qs << none;
    QTest::newRow("umlaut") << int(Qt::Key_Udiaeresis) << plain << u"ü"_qs << u"ü"_qs << none;
    QTest::newRow("Backspace opens empty")
        << int(Qt::Key_Backspace) << plain << u"\b"_qs << none << none;
    QTest::newRow("AltGr as Ctrl+Alt")
        << int(Qt::Key_At) << int(Qt::ControlModifier | Qt::AltModifier) << u"@"_qs << u"@"_qs
        << none;
    QTest::newRow("AltGr of its own")
        << int(Qt::Key_At) << int(Qt::GroupSwitchModifier) << u"@"_qs << u"@"_qs << none;
}

void TestGridKeys::keysThatOpenTheEditor()
{
    QFETCH(const int, key);
    QFETCH(const int, modifiers);
    QFETCH(const QString, character);
    QFETCH(const QString, shown);
    QFETCH(const QString, selected);
    EditGridFixture f;
    f.show();
    QTest::sendKeyEvent(QTest::Click, f.grid->table(), Qt::Key(key), character,
                        Qt::KeyboardModifiers(modifiers));
    QVERIFY(f.editor->isVisible());
    QVERIFY(f.editor->hasFocus());
    QCOMPARE(f.editor->text(), shown);
    QCOMPARE(f.editor->selectedText(), selected);
    QCOMPARE(f.editor->cursorPosition(), int(shown.size()));
    QCOMPARE(f.takeEvents(), QStringList(u"BeforeCellEdit 1,0 r1c0"_qs));
    QCOMPARE(f.grid->textMatrix(1, 0), u"r1c0"_qs);
}

void TestGridKeys::keysThatNeverOpenTheEditor_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<QString>("character");
    const QString none;
    const auto plain = [&](const char *name, int key) {
        QTest::newRow(name) << key << int(Qt::NoModifier) << none;
    };
    plain("no key", 0);
    plain("Shift", Qt::Key_Shift);
    plain("Ctrl", Qt::Key_Control);
    plain("Alt", Qt::Key_Alt);
    plain("AltGr", Qt::Key_AltGr);
    plain("Meta", Qt::Key_Meta);
    plain("Pause", Qt::Key_Pause);
    plain("Caps Lock", Qt::Key_CapsLock);
    plain("Num Lock", Qt::Key_NumLock);
    plain("Scroll Lock", Qt::Key_ScrollLock);
    QTest::newRow("Esc") << int(Qt::Key_Escape) << int(Qt::NoModifier) << u"\x1b"_qs;
    QTest::newRow("Tab") << int(Qt::Key_Tab) << int(Qt::NoModifier) << u"\t"_qs;
    plain("F1", Qt::Key_F1);
    for (int i = 3; i <= 16; ++i)
        plain(qPrintable(u"F%1"_qs.arg(i)), Qt::Key_F1 + i - 1);
    plain("Left", Qt::Key_Left);
    plain("Right", Qt::Key_Right);
    plain("Up", Qt::Key_Up);
    plain("Down", Qt::Key_Down);
    plain("PageUp", Qt::Key_PageUp);
    plain("PageDown", Qt::Key_PageDown);
    plain("Home", Qt::Key_Home);
    plain("End", Qt::Key_End);
    plain("Menu", Qt::Key_Menu);
    plain("play", Qt::Key_MediaPlay);
    plain("louder", Qt::Key_VolumeUp);
    QTest::newRow("Ctrl+S") << int(Qt::Key_S) << int(Qt::ControlModifier) << u"\x13"_qs;
    QTest::newRow("Ctrl+Shift+S") << int(Qt::Key_S) << int(Qt::ControlModifier | Qt::ShiftModifier)
                                  << u"\x13"_qs;
    QTest::newRow("Alt+D") << int(Qt::Key_D) << int(Qt::AltModifier) << u"d"_qs;
    QTest::newRow("Meta+D") << int(Qt::Key_D) << int(Qt::MetaModifier) << u"d"_qs;
    QTest::newRow("Ctrl+F2") << int(Qt::Key_F2) << int(Qt::ControlModifier) << none;
    QTest::newRow("Ctrl+Alt+S without a character")
        << int(Qt::Key_S) << int(Qt::ControlModifier | Qt::AltModifier) << u"\x13"_qs;
    QTest::newRow("Alt+Backspace") << int(Qt::Key_Backspace) << int(Qt::AltModifier) << u"\b"_qs;
}

void TestGridKeys::keysThatNeverOpenTheEditor()
{
    QFETCH(const int, key);
    QFETCH(const int, modifiers);
    QFETCH(const QString, character);
    EditGridFixture f;
    f.show();
    f.grid->setCell(2, 1);
    const QString before = f.edit->GridText(true);
    QTest::sendKeyEvent(QTest::Click, f.grid->table(), Qt::Key(key), character,
                        Qt::KeyboardModifiers(modifiers));
    QVERIFY(f.takeEvents().isEmpty());
    QVERIFY(!f.editor->isVisible());
    QCOMPARE(f.edit->GridText(true), before);
    QVERIFY(
        !openingKey(QKeyEvent(QEvent::KeyPress, key, Qt::KeyboardModifiers(modifiers), character)));
}

void TestGridKeys::aKeyUsedByTheOwnerDoesNothingMore()
{
    EditGridFixture f;
    QWidget other;
    f.edit->setMSFlexGrid(nullptr);
    connect(f.grid, &GridControl::keyPressed, &other, [](QKeyEvent *event) { event->accept(); });
    f.edit->setMSFlexGrid(f.grid);
    f.show();
    f.type(u"x"_qs);
    f.key(Qt::Key_Down);
    f.key(Qt::Key_Delete);
    QVERIFY(f.takeEvents().isEmpty());
    QCOMPARE(f.grid->cursorCells(), GridCursor::at(1, 0));
}

void TestGridKeys::enterOnAVetoedCellIsUsedUp()
{
    EditGridFixture f;
    connect(f.edit.get(), &clsEditGrid::BeforeCellEdit, this,
            [](int, int, QString &, bool &cancel) { cancel = true; });
    f.show();
    QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QCoreApplication::sendEvent(f.grid->table(), &enter);
    QVERIFY(enter.isAccepted());
}

void TestGridKeys::aComposedCharacterReplacesTheText()
{
    EditGridFixture f;
    f.show();
    QInputMethodEvent composed;
    composed.setCommitString(u"é"_qs);
    QCoreApplication::sendEvent(f.grid->table(), &composed);
    QVERIFY(f.editor->hasFocus());
    QCOMPARE(f.editor->text(), u"é"_qs);
    f.key(Qt::Key_Return);
    QCOMPARE(f.grid->textMatrix(1, 0), u"é"_qs);
}

void TestGridKeys::aRefusedFirstCharacterKeepsTheText_data()
{
    QTest::addColumn<QString>("cell");
    QTest::addColumn<bool>("masked");
    QTest::newRow("a text that the validator takes") << u"12"_qs << false;
    QTest::newRow("a text that it would not take") << u"etwa 12"_qs << false;
    QTest::newRow("an input mask") << u"12"_qs << true;
}

void TestGridKeys::aRefusedFirstCharacterKeepsTheText()
{
    QFETCH(const QString, cell);
    QFETCH(const bool, masked);
    EditGridFixture f;
    QIntValidator digits(0, 99, nullptr);
    if (masked)
        f.editor->setInputMask(u"99"_qs);
    else
        f.editor->setValidator(&digits);
    f.grid->setTextMatrix(1, 0, cell);
    f.show();
    f.type(u"x"_qs);
    QVERIFY(f.edit->isEditing());
    QCOMPARE(f.editor->text(), cell);
    QCOMPARE(f.editor->selectedText(), cell);
    f.behind->setFocus();
    QVERIFY(!f.edit->isEditing());
    QCOMPARE(f.grid->textMatrix(1, 0), cell);
    f.editor->setValidator(nullptr);
}

void TestGridKeys::aValidatorDecidesAboutTheFirstCharacter()
{
    EditGridFixture f;
    QIntValidator digits(0, 99, nullptr);
    f.editor->setValidator(&digits);
    f.show();
    f.type(u"x"_qs);
    QCOMPARE(f.editor->text(), u"r1c0"_qs);
    f.type(u"7"_qs);
    QCOMPARE(f.editor->text(), u"7"_qs);
    f.key(Qt::Key_Return);
    QCOMPARE(f.grid->textMatrix(1, 0), u"7"_qs);
    f.type(u"8x"_qs);
    QCOMPARE(f.editor->text(), u"8"_qs);
    f.editor->setValidator(nullptr);
}

void TestGridKeys::backspaceAndLeavingEmptiesTheCell()
{
    EditGridFixture f;
    f.show();
    f.key(Qt::Key_Backspace);
    f.behind->setFocus();
    QCOMPARE(f.grid->textMatrix(1, 0), QString());
    QVERIFY(f.events.contains(u"AfterCellEdit 1,0 "_qs));
}

namespace {

void compose(const QString &preedit, const QString &commit = QString())
{
    QInputMethodEvent event(preedit, {});
    event.setCommitString(commit);
    QCoreApplication::sendEvent(QApplication::focusWidget(), &event);
}

} // namespace

void TestGridKeys::aCompositionReplacesTheTextOnceItIsDone()
{
    EditGridFixture f;
    f.show();
    compose(u"´"_qs);
    QVERIFY(f.editor->hasFocus());
    compose(QString(), u"é"_qs);
    QCOMPARE(f.editor->text(), u"é"_qs);
    f.key(Qt::Key_Return);
    QCOMPARE(f.grid->textMatrix(1, 0), u"é"_qs);
}

void TestGridKeys::anAbandonedCompositionKeepsTheText()
{
    EditGridFixture f;
    f.show();
    compose(u"´"_qs);
    compose(u"´´"_qs);
    compose(QString());
    QVERIFY(f.editor->hasFocus());
    QCOMPARE(f.editor->text(), u"r1c0"_qs);
    QCOMPARE(f.editor->selectedText(), u"r1c0"_qs);
    f.behind->setFocus();
    QCOMPARE(f.grid->textMatrix(1, 0), u"r1c0"_qs);
}

void TestGridKeys::aCompositionCutOffByLeavingKeepsTheText()
{
    EditGridFixture f;
    f.show();
    compose(u"´"_qs);
    f.behind->setFocus();
    QVERIFY(!f.edit->isEditing());
    QCOMPARE(f.grid->textMatrix(1, 0), u"r1c0"_qs);
}

void TestGridKeys::aRefusedCompositionKeepsTheText()
{
    EditGridFixture f;
    QIntValidator digits(0, 99, nullptr);
    f.editor->setValidator(&digits);
    f.grid->setTextMatrix(1, 0, u"12"_qs);
    f.show();
    compose(u"´"_qs);
    compose(QString(), u"é"_qs);
    QCOMPARE(f.editor->text(), u"12"_qs);
    f.behind->setFocus();
    QCOMPARE(f.grid->textMatrix(1, 0), u"12"_qs);
    f.editor->setValidator(nullptr);
}

void TestGridKeys::aComposedLetterChoosesAnEntry()
{
    EditGridFixture f;
    auto *combo = new QComboBox(f.window.get());
    combo->addItems({u"Kies"_qs, u"Élan"_qs});
    f.edit->setInputObject(combo);
    f.grid->setTextMatrix(1, 0, u"Kies"_qs);
    f.show();
    compose(QString(), u"É"_qs);
    QCOMPARE(combo->currentText(), u"Élan"_qs);
    f.key(Qt::Key_Escape);
    compose(QString(), u"ñ"_qs);
    f.behind->setFocus();
    QCOMPARE(f.grid->textMatrix(1, 0), u"Kies"_qs);
}

void TestGridKeys::theInputMethodIsToldWhereTheCellIs()
{
    EditGridFixture f;
    f.show();
    f.grid->setCell(3, 2);
    QInputMethodQueryEvent query(Qt::ImCursorRectangle);
    QCoreApplication::sendEvent(f.grid->table(), &query);
    const QRect told = query.value(Qt::ImCursorRectangle).toRect();
    const QWidget *viewport = f.grid->table()->viewport();
    const QRect cell = f.grid->table()->visualRect(f.grid->model()->cell(3, 2));
    QCOMPARE(told, cell.translated(viewport->mapTo(f.grid->table(), QPoint(0, 0))));
}

void TestGridKeys::eachOptionSilencesOnlyItsOwnKeys()
{
    EditGridFixture f(4, 2);
    f.edit->setGridIgnoreAddDelKeys(true);
    f.show();
    f.key(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(f.clipboard, u"r1c0\tr1c1\r\n"_qs);
    f.key(Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(f.grid->rows(), 5);
    f.key(Qt::Key_X, Qt::ControlModifier);
    QCOMPARE(f.grid->rows(), 4);
    f.edit->setGridIgnoreAddDelKeys(false);
    f.edit->setGridIgnoreClipboardKeys(true);
    f.key(Qt::Key_Insert, Qt::ControlModifier);
    QCOMPARE(f.grid->rows(), 5);
    f.key(Qt::Key_Delete, Qt::ControlModifier);
    QCOMPARE(f.grid->rows(), 4);
    f.key(Qt::Key_Delete);
    QCOMPARE(f.grid->textMatrix(1, 0), QString());
}

REGISTER_TEST(TestGridKeys)
#include "tst_gridkeys.moc"
