#pragma once

#include "core/kalibrierung.h"
#include "protocol/pages/protocolrun.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <optional>
#include <vector>

/// What composing a document gave.
struct Composed : PageSink
{
    std::vector<std::shared_ptr<Page>> pages;
    std::vector<double> usedHeights; ///< of each page
    std::optional<RunTimeError> error;

    void pageCompleted(const std::shared_ptr<Page> &page) override { pages.push_back(page); }

    /// All texts in the order in which they were drawn; page numbers come first on each page.
    QStringList texts() const
    {
        QStringList result;
        for (const auto &page : pages)
            result += textsOf(page->drawing);
        return result;
    }

    static QStringList textsOf(const Drawing &drawing)
    {
        QStringList result;
        for (const Primitive &primitive : drawing.primitives()) {
            if (const auto *text = std::get_if<PlacedText>(&primitive))
                result.append(text->text);
        }
        return result;
    }
};

inline Composed composed(Kalibrierung &document,
                         ProtocolType type = ProtocolType::WithCalibrationField,
                         const PageFormat &format = {})
{
    Composed result;
    ProtocolRun run(document, {type, format, false, {}}, result);
    try {
        while (run.step()) {
        }
    } catch (const RunTimeError &error) {
        result.error = error;
    }
    return result;
}

/// All texts of a drawing with their places, in reading order: from top to bottom, then from left.
struct FoundText
{
    QString text;
    QPointF at;
    TextStyle style;
    double width = 0.0;
    bool upward = false;
};

inline std::vector<FoundText> found(const Drawing &drawing)
{
    std::vector<FoundText> result;
    for (const Primitive &primitive : drawing.primitives()) {
        if (const auto *text = std::get_if<PlacedText>(&primitive))
            result.push_back({text->text, text->at, text->style, text->width, text->upward});
    }
    std::stable_sort(result.begin(), result.end(), [](const FoundText &a, const FoundText &b) {
        return std::abs(a.at.y() - b.at.y()) > 1e-6 ? a.at.y() > b.at.y() : a.at.x() < b.at.x();
    });
    return result;
}

/// The text that stands right of \a label on the same baseline; null where there is none.
inline QString besides(const Composed &protocol, const QString &label, int occurrence = 1)
{
    for (const auto &page : protocol.pages) {
        const std::vector<FoundText> texts = found(page->drawing);
        for (std::size_t i = 0; i < texts.size(); ++i) {
            if (texts[i].text != label || --occurrence > 0)
                continue;
            const bool sameRow =
                i + 1 < texts.size() && std::abs(texts[i + 1].at.y() - texts[i].at.y()) < 1e-6;
            return sameRow ? texts[i + 1].text : QString();
        }
    }
    return {};
}
