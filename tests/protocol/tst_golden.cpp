// The composed pages, primitive by primitive, against files that an inspection has approved.
// WENDRAL_WRITE_GOLDEN=1 writes them anew.
#include "tests/protocol/composed.h"
#include "tests/protocol/documents.h"
#include "tests/support/testregistry.h"

#include <QFile>
#include <QFontInfo>
#include <QTest>

#include <functional>

namespace {

using Make = std::function<std::unique_ptr<Kalibrierung>()>;

QString cm(double value)
{
    return QString::number(value + 0.0, 'f', 2);
}

QString place(const QPointF &at)
{
    return cm(at.x()) + u' ' + cm(at.y());
}

QString lineOf(const Primitive &primitive)
{
    if (const auto *text = std::get_if<PlacedText>(&primitive)) {
        QString style = QString::number(text->style.pixelSize);
        style += text->style.bold ? u"b"_qs : QString();
        style += text->style.underlined ? u"u"_qs : QString();
        style += text->upward ? u"^"_qs : QString();
        return u"text "_qs + place(text->at) + u' ' + cm(text->width) + u' ' + style + u" |"_qs +
               text->text + u'|';
    }
    if (const auto *line = std::get_if<PlacedLine>(&primitive))
        return u"line "_qs + place(line->from) + u' ' + place(line->to) + u' ' +
               QString::number(line->width);
    const auto &point = std::get<PlacedPoint>(primitive);
    return u"point "_qs + place(point.at) + u' ' + cm(point.diameter);
}

QStringList linesOf(const Composed &protocol)
{
    QStringList lines;
    for (const auto &page : protocol.pages) {
        lines.append(u"page "_qs + QString::number(page->number));
        for (const Primitive &primitive : page->drawing.primitives())
            lines.append(lineOf(primitive));
    }
    if (protocol.error)
        lines.append(u"error "_qs + QString::number(protocol.error->number()));
    return lines;
}

// Numbers may differ by the last digit written, everything else may not.
bool alike(const QString &a, const QString &b)
{
    const QString textA = a.section(u'|', 1);
    const QStringList wordsA = a.section(u'|', 0, 0).split(u' ');
    const QStringList wordsB = b.section(u'|', 0, 0).split(u' ');
    if (textA != b.section(u'|', 1) || wordsA.size() != wordsB.size())
        return false;
    for (qsizetype i = 0; i < wordsA.size(); ++i) {
        bool isA = false;
        bool isB = false;
        const double numberA = wordsA[i].toDouble(&isA);
        const double numberB = wordsB[i].toDouble(&isB);
        if (isA && isB ? std::abs(numberA - numberB) > 0.011 : wordsA[i] != wordsB[i])
            return false;
    }
    return true;
}

} // namespace

class TstGolden : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        if (QFontInfo(protocolFont(styleOfPoints(12))).family() != u"Liberation Serif"_qs)
            QSKIP("The places were approved with Liberation Serif, which is not installed here.");
    }

    void pagesAreThoseThatWereApproved_data()
    {
        QTest::addColumn<Make>("make");
        QTest::addColumn<ProtocolType>("type");
        const std::pair<const char *, Make> documents[] = {
            {"good", documents::good},
            {"critical", documents::critical},
            {"negative_slope", documents::negativeSlope},
            {"without_unit", documents::withoutUnit},
            {"empty", documents::fresh},
            {"12x20", [] { return documents::grid(12, 20); }},
            {"long_texts", documents::longTexts}};
        for (const auto &[name, make] : documents) {
            QTest::addRow("%s-0", name) << make << ProtocolType::WithCalibrationField;
            QTest::addRow("%s-1", name) << make << ProtocolType::ResultsOnly;
        }
    }
    void pagesAreThoseThatWereApproved()
    {
        QFETCH(Make, make);
        QFETCH(ProtocolType, type);
        const auto document = make();
        const QStringList lines = linesOf(composed(*document, type));
        QFile file(QStringLiteral(PROJECT_DIR "/tests/protocol/golden/") +
                   QString::fromLatin1(QTest::currentDataTag()) + u".txt"_qs);
        if (qEnvironmentVariableIsSet("WENDRAL_WRITE_GOLDEN")) {
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write(lines.join(u'\n').toUtf8() + '\n');
            QSKIP("written anew");
        }
        QVERIFY2(file.open(QIODevice::ReadOnly), qPrintable(file.fileName()));
        const QStringList approved =
            QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
        for (qsizetype i = 0; i < std::min(lines.size(), approved.size()); ++i)
            QVERIFY2(alike(lines.at(i), approved.at(i)),
                     qPrintable(u"line %1: %2\napproved: %3"_qs.arg(i + 1).arg(lines.at(i),
                                                                               approved.at(i))));
        QCOMPARE(lines.size(), approved.size());
    }
};

REGISTER_TEST(TstGolden)
#include "tst_golden.moc"
