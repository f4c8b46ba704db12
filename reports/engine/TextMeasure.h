#pragma once

#include "model/ReportTemplate.h"

#include <QFont>
#include <QFontMetricsF>
#include <QHash>
#include <QImage>
#include <QStringList>

#include <memory>
#include <vector>

namespace kb::reports {

// The font of a style on a device: its point size is the style's, so the
// device's resolution decides how many pixels it takes.
QFont fontFor(const TextStyle& style);

// Measures texts for layout, in points, on a fixed fine resolution of its
// own (1440 dots per inch): layout does not depend on the screen or printer
// that later shows the pages, so the preview and the paper break lines at
// the same words.
class TextMeasure
{
public:
    // At most this many lines of one wrapped text are laid out.
    static constexpr int MaxLines = 400;

    TextMeasure();

    double lineHeight(const TextStyle& style);
    double ascent(const TextStyle& style);
    double width(const TextStyle& style, const QString& text);
    // Breaks at blanks (and within a word longer than the width) and at
    // line breaks of the text.
    QStringList wrap(const TextStyle& style, const QString& text, double width);
    // The text cut to the width, with an ellipsis where it was cut.
    QString elide(const TextStyle& style, const QString& text, double width);

private:
    struct Metrics
    {
        QFont font;
        std::unique_ptr<QFontMetricsF> metrics;
        QHash<QString, double> widths; // a cache of the texts met most
    };
    Metrics& metricsFor(const TextStyle& style);

    QImage m_device;
    std::vector<std::pair<TextStyle, std::unique_ptr<Metrics>>> m_metrics;
    const TextStyle* m_lastStyle = nullptr;
    Metrics* m_last = nullptr;
};

} // namespace kb::reports
