#include "protocol/windows/frmprotocollextradata.h"
#include "tests/protocol/documents.h"
#include "tests/support/testregistry.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>

namespace {

const QString prefix = u"Protokoll Verdichtung "_qs;

QTableWidget &tableOf(QWidget &widget)
{
    return *widget.findChild<QTableWidget *>();
}

// Opens the editor of a cell and puts \a text in, without closing it.
QPlainTextEdit &typeInto(QWidget &owner, int row, int column, const QString &text)
{
    QTableWidget &table = tableOf(owner);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); // editors closed before
    table.setCurrentCell(row, column);
    table.editItem(table.item(row, column));
    auto *editor = owner.findChild<QPlainTextEdit *>(u"txtEintrag"_qs);
    Q_ASSERT(editor);
    editor->selectAll();
    QTest::keyClick(editor, Qt::Key_Delete);
    const QStringList lines = text.split(u'\n');
    for (qsizetype i = 0; i < lines.size(); ++i) {
        if (i > 0)
            QTest::keyClick(editor, Qt::Key_Return, Qt::ShiftModifier);
        QTest::keyClicks(editor, lines.at(i));
    }
    return *editor;
}

int rowOf(QWidget &owner, const QString &key)
{
    const QList<QTableWidgetItem *> items = tableOf(owner).findItems(key, Qt::MatchExactly);
    return items.isEmpty() ? -1 : items.first()->row();
}

} // namespace

class TstExtraData : public QObject
{
    Q_OBJECT

private slots:
    void theKeysStandInTheirOrderWithoutTheirPrefix()
    {
        const auto document = documents::grid(4, 3);
        frmProtocollExtraData dialog;
        dialog.setKalibrierung(*document);
        QStringList keys;
        for (const auto &[key, text] : dialog.findChild<DictionaryEdit *>()->dictionary())
            keys.append(key);
        QCOMPARE(keys.size(), 31);
        QCOMPARE(keys.mid(0, 2), (QStringList{u"Unterlage Bodenart DIN 4022"_qs,
                                              u"Unterlage Bodengruppe DIN 18196"_qs}));
        QCOMPARE(keys.mid(7, 2),
                 (QStringList{u"Unterlage Verformungsmodul"_qs, u"Unterlage Bemerkungen"_qs}));
        QCOMPARE(keys.mid(19, 3),
                 (QStringList{u"Kalibrierfeld Verdichtungsfrequenz Walze"_qs,
                              u"Kalibrierfeld Kovariable (Anzahl der Verdichtungsübergänge) - "
                              u"Prüffeld 1"_qs,
                              u"Kalibrierfeld Kovariable (Anzahl der Verdichtungsübergänge) - "
                              u"Prüffeld 2"_qs}));
        QCOMPARE(keys.at(24), u"Kalibrierfeld Datum bei Verdichtung"_qs);
        QCOMPARE(keys.last(), u"Kalibrierfeld Bemerkungen"_qs);
    }

    void textsAreTheDocumentsAndEmptyWhereItHasNone()
    {
        const auto document = documents::good();
        frmProtocollExtraData dialog;
        dialog.setKalibrierung(*document);
        const TextDictionary dictionary = dialog.findChild<DictionaryEdit *>()->dictionary();
        QCOMPARE(dictionary.at(3).second, u"??%"_qs);
        QCOMPARE(dictionary.at(14).second, u"XXX=??%: ??% bzw ??%"_qs);
        QCOMPARE(dictionary.at(7).second, QString());
    }

    void okStoresEveryEntryAndMarksTheDocument()
    {
        const auto document = documents::good();
        frmProtocollExtraData dialog;
        dialog.setKalibrierung(*document);
        dialog.show();
        typeInto(dialog, rowOf(dialog, u"Unterlage Bodenart DIN 4022"_qs), 1, u"G, s"_qs);
        dialog.findChild<QPushButton *>(u"cmdOk"_qs)->click();
        QCOMPARE(dialog.result(), static_cast<int>(QDialog::Accepted));
        const auto &store = document->DataStore();
        QCOMPARE(*store.find(prefix + u"Unterlage Bodenart DIN 4022"_qs), Variant(u"G, s"_qs));
        QVERIFY(store.exists(prefix + u"Unterlage Verformungsmodul"_qs));
        QVERIFY(document->IsDirty());
    }

    void okWithoutAChangeLeavesTheDocumentClean()
    {
        const auto document = documents::good();
        frmProtocollExtraData dialog;
        dialog.setKalibrierung(*document);
        dialog.findChild<QPushButton *>(u"cmdOk"_qs)->click();
        QVERIFY(!document->IsDirty());
    }

    void cancelLeavesTheStoreAsItWas()
    {
        const auto document = documents::good();
        const QByteArray before = document->ContentString();
        frmProtocollExtraData dialog;
        dialog.setKalibrierung(*document);
        dialog.show();
        typeInto(dialog, 0, 1, u"verworfen"_qs);
        dialog.findChild<QPushButton *>(u"cmdCancel"_qs)->click();
        QCOMPARE(dialog.result(), static_cast<int>(QDialog::Rejected));
        QCOMPARE(document->ContentString(), before);
    }

    void aChangedKeyIsStoredUnderThatKey()
    {
        const auto document = documents::good();
        frmProtocollExtraData dialog;
        dialog.setKalibrierung(*document);
        dialog.show();
        const int row = rowOf(dialog, u"Kalibrierfeld Walzentyp"_qs);
        QTest::keyClick(&typeInto(dialog, row, 0, u"Kalibrierfeld Fertiger"_qs), Qt::Key_Return);
        QTest::keyClick(&typeInto(dialog, row, 1, u"Walzenzug"_qs), Qt::Key_Return);
        dialog.findChild<QPushButton *>(u"cmdOk"_qs)->click();
        const auto &store = document->DataStore();
        QCOMPARE(*store.find(prefix + u"Kalibrierfeld Fertiger"_qs), Variant(u"Walzenzug"_qs));
        QCOMPARE(document->values().text(*store.find(prefix + u"Kalibrierfeld Walzentyp"_qs)),
                 QString());
    }

    void aKeyCanNeitherBeEmptyNorTwice_data()
    {
        QTest::addColumn<QString>("key");
        QTest::newRow("empty") << QString();
        QTest::newRow("blank") << u"   "_qs;
        QTest::newRow("twice") << u"zwei"_qs;
    }
    void aKeyCanNeitherBeEmptyNorTwice()
    {
        QFETCH(QString, key);
        DictionaryEdit edit;
        edit.setDictionary({{u"eins"_qs, u"1"_qs}, {u"zwei"_qs, u"2"_qs}});
        tableOf(edit).item(0, 0)->setText(key);
        QCOMPARE(edit.dictionary(), (TextDictionary{{u"eins"_qs, u"1"_qs}, {u"zwei"_qs, u"2"_qs}}));
    }

    void remarksOfSeveralLinesCanBeTyped()
    {
        const auto document = documents::good();
        frmProtocollExtraData dialog;
        dialog.setKalibrierung(*document);
        dialog.show();
        const int row = rowOf(dialog, u"Kalibrierfeld Bemerkungen"_qs);
        const int height = tableOf(dialog).rowHeight(row);
        QTest::keyClick(&typeInto(dialog, row, 1, u"erste\nzweite\ndritte"_qs), Qt::Key_Return);
        QVERIFY(tableOf(dialog).rowHeight(row) > 2 * height);
        dialog.findChild<QPushButton *>(u"cmdOk"_qs)->click();
        QCOMPARE(*document->DataStore().find(prefix + u"Kalibrierfeld Bemerkungen"_qs),
                 Variant(u"erste\nzweite\ndritte"_qs));
    }

    void enterTakesTheTextOverAndGoesOnInTheList()
    {
        DictionaryEdit edit;
        edit.setDictionary({{u"eins"_qs, u"1"_qs}, {u"zwei"_qs, u"2"_qs}});
        edit.show();
        QTest::keyClick(&typeInto(edit, 0, 1, u"neu"_qs), Qt::Key_Return);
        QCOMPARE(edit.dictionary().at(0).second, u"neu"_qs);
        QCOMPARE(tableOf(edit).currentRow(), 1);
        QCOMPARE(tableOf(edit).currentColumn(), 1);
    }

    void enterOnACellOpensItAndNeverClosesTheWindow()
    {
        const auto document = documents::good();
        frmProtocollExtraData dialog;
        dialog.setKalibrierung(*document);
        dialog.show();
        QTableWidget &table = tableOf(dialog);
        table.setCurrentCell(0, 1);
        table.setFocus();
        QTest::keyClick(&table, Qt::Key_Return);
        auto *editor = dialog.findChild<QPlainTextEdit *>(u"txtEintrag"_qs);
        QVERIFY(editor);
        QTest::keyClick(editor, Qt::Key_Return);
        QCOMPARE(table.currentRow(), 1);
        QTest::keyClick(&table, Qt::Key_Enter, Qt::KeypadModifier);
        QVERIFY(dialog.isVisible());
    }

    void escapeGivesTheTypedTextUp()
    {
        DictionaryEdit edit;
        edit.setDictionary({{u"eins"_qs, u"1"_qs}});
        edit.show();
        QTest::keyClick(&typeInto(edit, 0, 1, u"neu"_qs), Qt::Key_Escape);
        QCOMPARE(edit.dictionary().at(0).second, u"1"_qs);
    }

    void openingAndClosingAnEditorKeepsForeignLineBreaks()
    {
        DictionaryEdit edit;
        edit.setDictionary({{u"eins"_qs, u"a\r\nb\tc"_qs}});
        edit.show();
        tableOf(edit).editItem(tableOf(edit).item(0, 1));
        QTest::keyClick(edit.findChild<QPlainTextEdit *>(u"txtEintrag"_qs), Qt::Key_Return);
        QCOMPARE(edit.dictionary().at(0).second, u"a\r\nb\tc"_qs);
    }

    void pastingFromAnEmptyClipboardChangesNothing()
    {
        DictionaryEdit edit;
        edit.setDictionary({{u"eins"_qs, u"1"_qs}});
        edit.show();
        QPlainTextEdit &editor = typeInto(edit, 0, 1, u"neu"_qs);
        QGuiApplication::clipboard()->setMimeData(new QMimeData); // as X has it without an owner
        QTest::keyClick(&editor, Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(editor.toPlainText(), u"neu"_qs);
    }

    void pastedTextIsTakenAsItStands_data()
    {
        QTest::addColumn<QString>("format");
        QTest::addColumn<QString>("pasted");
        QTest::addColumn<QString>("expected");
        QTest::newRow("lines") << u"text/plain"_qs << u"a\r\nb\nc"_qs << u"a\nb\nc"_qs;
        QTest::newRow("markup as well") << u"text/markdown"_qs << u"*a* # b"_qs << u"*a* # b"_qs;
    }
    void pastedTextIsTakenAsItStands()
    {
        QFETCH(QString, format);
        QFETCH(QString, pasted);
        QFETCH(QString, expected);
        DictionaryEdit edit;
        edit.setDictionary({{u"eins"_qs, u"1"_qs}});
        edit.show();
        QPlainTextEdit &editor = typeInto(edit, 0, 1, {});
        auto *data = new QMimeData;
        data->setData(format, pasted.toUtf8()); // the first of the formats
        data->setText(pasted);
        QGuiApplication::clipboard()->setMimeData(data);
        QTest::keyClick(&editor, Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(editor.toPlainText(), expected);
    }

    void pastedControlCharactersBreakTheLineOrAreLeftOut_data()
    {
        QTest::addColumn<QString>("pasted");
        QTest::addColumn<QString>("expected");
        QTest::newRow("line and page") << u"a\vb\fc"_qs << u"a\nb\nc"_qs;
        QTest::newRow("next line") << u"a\u0085b"_qs << u"a\nb"_qs;
        QTest::newRow("separators") << u"a\u2028b\u2029c"_qs << u"a\nb\nc"_qs;
        QTest::newRow("tab and lines") << u"a\tb\r\nc"_qs << u"a\tb\nc"_qs;
        QTest::newRow("others") << u"a\x0001\x001b\x007f\x0090"
                                   u"b"_qs
                                << u"ab"_qs;
        QTest::newRow("null") << u"a"_qs + QChar(u'\0') + u"b"_qs << u"ab"_qs;
        QTest::newRow("no characters") << u"a\xffff\xfffe"
                                          u"b"_qs
                                       << u"ab"_qs;
        QTest::newRow("beyond 16 bits") << u"a\U0001F69Cb"_qs << u"a\U0001F69Cb"_qs;
    }
    void pastedControlCharactersBreakTheLineOrAreLeftOut()
    {
        QFETCH(QString, pasted);
        QFETCH(QString, expected);
        const auto document = documents::good();
        frmProtocollExtraData dialog;
        dialog.setKalibrierung(*document);
        dialog.show();
        const QString key = u"Unterlage Bemerkungen"_qs;
        QPlainTextEdit &editor = typeInto(dialog, rowOf(dialog, key), 1, {});
        QGuiApplication::clipboard()->setText(pasted);
        QTest::keyClick(&editor, Qt::Key_V, Qt::ControlModifier);
        QTest::keyClick(&editor, Qt::Key_Return);
        dialog.findChild<QPushButton *>(u"cmdOk"_qs)->click();
        QCOMPARE(*document->DataStore().find(prefix + key), Variant(expected));
        document->ContentString(); // raises 321 for what a file can't hold
    }

    void theEditorIsFoundByItsKeyAndLiesOverItsCell()
    {
        frmProtocollExtraData dialog;
        const auto document = documents::good();
        dialog.setKalibrierung(*document);
        dialog.show();
        const int row = rowOf(dialog, u"Unterlage Wassergehalt"_qs);
        const QPlainTextEdit &editor = typeInto(dialog, row, 1, u"x"_qs);
        QCOMPARE(editor.accessibleName(), u"Unterlage Wassergehalt"_qs);
        QCOMPARE(editor.parentWidget(), dialog.findChild<DictionaryEdit *>());
        const QTableWidget &table = tableOf(dialog);
        const QRect cell = table.visualItemRect(table.item(row, 1));
        QCOMPARE(editor.geometry().topLeft(),
                 table.viewport()->mapTo(editor.parentWidget(), cell.topLeft()));
    }

    void buttonsStandInTheLowerRightCornerFivePixelsFromTheEdges()
    {
        frmProtocollExtraData dialog;
        dialog.resize(500, 400);
        dialog.show();
        const QSize ok = dialog.findChild<QPushButton *>(u"cmdOk"_qs)->size();
        for (const QSize &size : {QSize(500, 400), QSize(700, 300)}) {
            dialog.resize(size);
            QCoreApplication::processEvents();
            const auto *cmdOk = dialog.findChild<QPushButton *>(u"cmdOk"_qs);
            const auto *cmdCancel = dialog.findChild<QPushButton *>(u"cmdCancel"_qs);
            const auto *list = dialog.findChild<DictionaryEdit *>(u"DictionaryEdit1"_qs);
            QCOMPARE(cmdCancel->geometry().bottomRight(),
                     QPoint(size.width() - 6, size.height() - 6));
            QCOMPARE(cmdOk->geometry().right(), cmdCancel->geometry().left() - 6);
            QCOMPARE(cmdOk->size(), ok);
            QCOMPARE(list->geometry().topLeft(), QPoint(5, 5));
            QCOMPARE(list->width(), size.width() - 10);
            QCOMPARE(list->geometry().bottom(), cmdOk->geometry().top() - 6);
        }
    }

    void removedFieldsAreNoLongerListed()
    {
        const auto document = documents::grid(5, 3);
        document->setPrüffelderAnzahl(3);
        frmProtocollExtraData dialog;
        dialog.setKalibrierung(*document);
        QVERIFY(rowOf(dialog, u"Kalibrierfeld Kovariable (Anzahl der Verdichtungsübergänge) - "
                              u"Prüffeld 3"_qs) > 0);
        QCOMPARE(rowOf(dialog, u"Kalibrierfeld Kovariable (Anzahl der Verdichtungsübergänge) - "
                               u"Prüffeld 4"_qs),
                 -1);
    }

    void aFieldCountThatNoListHoldsIsRefused()
    {
        const auto document = documents::good();
        document->DataStore().set(u"Anzahl Prüffelder"_qs, u"2000000000"_qs);
        frmProtocollExtraData dialog;
        QVERIFY_THROWS_EXCEPTION(RunTimeError, dialog.setKalibrierung(*document));
    }
};

REGISTER_TEST(TstExtraData)
#include "tst_extradata.moc"
