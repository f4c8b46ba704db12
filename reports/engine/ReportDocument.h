#pragma once

#include "engine/Formatter.h"
#include "model/ReportTemplate.h"
#include "render/Barcode.h"

#include <QDateTime>
#include <QImage>
#include <QPointF>
#include <QRectF>
#include <QStringList>

#include <memory>
#include <variant>
#include <vector>

namespace kb::reports {

// A value that is known only when a group or the report has ended: the
// sum of a route printed in the route's header, for example.
struct LateValue
{
    QVariant value;
};

// A text whose value is known only after layout: it holds page numbers or
// a late aggregate. What it needs from the rows is captured when the text
// is laid out; it is evaluated when its page is painted.
struct DeferredText
{
    const TextTemplate* text = nullptr; // owned by the document's template
    QStringList resolved;               // the pieces known at layout ("" for a deferred one)
    struct Capture
    {
        QVariant value;
        std::shared_ptr<const LateValue> late;
    };
    std::vector<Capture> captures; // by Expr::captureIndex
};

struct TextItem
{
    QRectF rect;
    int style = 0;
    QStringList lines;
    std::vector<double> widths; // of each line, for alignment
    std::shared_ptr<const DeferredText> deferred;
};

struct LineItem
{
    QPointF from;
    QPointF to;
    double width = 0.5;
    QColor color;
};

struct BoxItem
{
    QRectF rect;
    double width = 0.5;
    QColor color;
    std::optional<QColor> fill;
};

struct ImageItem
{
    QRectF rect;
    QImage image;
    bool keepAspect = true;
};

struct BarcodeItem
{
    QRectF rect;
    std::shared_ptr<const BarcodeShape> shape;
    int style = 0; // the font of the readable text under a linear code
};

using Item = std::variant<TextItem, LineItem, BoxItem, ImageItem, BarcodeItem>;

// One band as printed, or one piece of a band that a subreport cut: never
// split across pages.
struct Block
{
    double height = 0;
    double x = 0; // from the left margin (subreports stand indented)
    std::vector<Item> items;
    bool columnar = false; // a label of a grid
};

struct Placement
{
    int block = 0;
    QPointF at; // of the block's top left corner on the page
    bool repeated = false; // a group header printed again at the top of a page
};

struct Page
{
    int run = 0;    // pages are numbered within runs (a group may restart them)
    int number = 1; // within the run
    std::vector<Placement> blocks;
    std::vector<Item> items; // the page header and footer, placed
};

// A laid-out report: everything the painter needs to draw any page on any
// device, in points from each page's top left corner.
struct ReportDocument
{
    std::shared_ptr<const ReportTemplate> report; // keeps the expressions of late texts alive
    QString title;
    QSizeF pageSize;
    std::vector<TextStyle> styles;
    std::vector<Block> blocks;
    std::vector<Page> pages;
    std::vector<int> runPageCounts;
    std::unique_ptr<Formatter> formatter;
    QDateTime now;

    int pageCount() const { return int(pages.size()); }
};

} // namespace kb::reports
