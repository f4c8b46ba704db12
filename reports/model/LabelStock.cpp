#include "model/LabelStock.h"

#include "model/ReportTemplate.h"

#include <algorithm>
#include <cmath>

namespace kb::reports {

namespace {

constexpr double Inch = 72.0;
constexpr double Mm = 72.0 / 25.4;

const QSizeF Letter(8.5 * Inch, 11 * Inch);
const QSizeF A4(210 * Mm, 297 * Mm);

LabelStock sheet(const char* name, const char* description, QSizeF page, double left, double top, int columns,
                 int rows, QSizeF label, double columnGap, double rowGap = 0)
{
    return LabelStock{QString::fromLatin1(name), QString::fromLatin1(description), page, left, top, columns, rows,
                      label, columnGap, rowGap};
}

LabelStock single(const char* name, const char* description, QSizeF label)
{
    return LabelStock{QString::fromLatin1(name), QString::fromLatin1(description), label, 0, 0, 1, 1, label, 0, 0};
}

} // namespace

const std::vector<LabelStock>& LabelStock::catalogue()
{
    static const std::vector<LabelStock> stocks{
        sheet("Avery 5160", "Address labels, 1 x 2-5/8 in, 30 to a Letter sheet", Letter, 0.1875 * Inch, 0.5 * Inch,
              3, 10, QSizeF(2.625 * Inch, 1 * Inch), 0.125 * Inch),
        sheet("Avery 5161", "Address labels, 1 x 4 in, 20 to a Letter sheet", Letter, 0.15625 * Inch, 0.5 * Inch, 2,
              10, QSizeF(4 * Inch, 1 * Inch), 0.1875 * Inch),
        sheet("Avery 5163", "Shipping labels, 2 x 4 in, 10 to a Letter sheet", Letter, 0.15625 * Inch, 0.5 * Inch, 2,
              5, QSizeF(4 * Inch, 2 * Inch), 0.1875 * Inch),
        sheet("Avery 5164", "Shipping labels, 3-1/3 x 4 in, 6 to a Letter sheet", Letter, 0.15625 * Inch,
              0.5 * Inch, 2, 3, QSizeF(4 * Inch, 3.3333 * Inch), 0.1875 * Inch),
        sheet("Avery L7160", "Address labels, 63.5 x 38.1 mm, 21 to an A4 sheet", A4, 7.25 * Mm, 15.15 * Mm, 3, 7,
              QSizeF(63.5 * Mm, 38.1 * Mm), 2.54 * Mm),
        sheet("Avery L7161", "Address labels, 63.5 x 46.6 mm, 18 to an A4 sheet", A4, 7.25 * Mm, 8.7 * Mm, 3, 6,
              QSizeF(63.5 * Mm, 46.6 * Mm), 2.54 * Mm),
        sheet("Avery L7163", "Address labels, 99.1 x 38.1 mm, 14 to an A4 sheet", A4, 4.65 * Mm, 15.15 * Mm, 2, 7,
              QSizeF(99.1 * Mm, 38.1 * Mm), 2.5 * Mm),
        single("Label printer 1-1/8 x 3-1/2 in", "One address label to a page, for a label printer",
               QSizeF(3.5 * Inch, 1.125 * Inch)),
        single("Label printer 2-5/16 x 4 in", "One shipping label to a page, for a label printer",
               QSizeF(4 * Inch, 2.3125 * Inch)),
        single("Label printer 4 x 6 in", "One 4 x 6 in label to a page, for a label printer",
               QSizeF(4 * Inch, 6 * Inch)),
    };
    return stocks;
}

const LabelStock* LabelStock::find(const QString& name)
{
    for (const LabelStock& stock : catalogue()) {
        if (stock.name.compare(name.trimmed(), Qt::CaseInsensitive) == 0)
            return &stock;
    }
    return nullptr;
}

double LabelFit::scale() const
{
    if (design.isEmpty() || label.isEmpty())
        return 1;
    return std::min(label.width() / design.width(), label.height() / design.height());
}

QPointF LabelFit::offset() const
{
    const double s = scale();
    return design.isEmpty() || label.isEmpty()
               ? QPointF()
               : QPointF((label.width() - design.width() * s) / 2, (label.height() - design.height() * s) / 2);
}

bool LabelFit::identity() const
{
    // Within a hundredth of a point the stock is the template's own.
    const QPointF o = offset();
    return std::abs(scale() - 1) < 1e-4 && std::abs(o.x()) < 0.01 && std::abs(o.y()) < 0.01;
}

void applyLabelStock(ReportTemplate& report, const LabelStock& stock)
{
    // The first stock a template meets is the label its detail band is laid
    // out for, unless its own stock statement said so already.
    if (report.labelFit.design.isEmpty())
        report.labelFit.design =
            QSizeF(report.columns.width > 0 ? report.columns.width : report.bodyWidth(),
                   report.body.detail ? report.body.detail->height : stock.label.height());
    report.labelFit.label = stock.label;
    report.pageSize = stock.page;
    report.marginLeft = stock.marginLeft;
    report.marginTop = stock.marginTop;
    // What is left beside and below the grid; the grid itself decides
    // where each label stands.
    report.marginRight = std::max(0.0, stock.page.width() - stock.marginLeft - stock.columns * stock.label.width() -
                                           (stock.columns - 1) * stock.columnGap);
    report.marginBottom = std::max(0.0, stock.page.height() - stock.marginTop - stock.rows * stock.label.height() -
                                            (stock.rows - 1) * stock.rowGap);
    report.columns.count = stock.columns;
    report.columns.width = stock.label.width();
    report.columns.gap = stock.columnGap;
    report.columns.rowPitch = stock.label.height() + stock.rowGap;
    report.columns.acrossFirst = true;
    report.columns.rows = stock.rows;
    // The band keeps the height it is laid out at; the layout fits each
    // label to the stock's.
    if (report.body.detail)
        report.body.detail->height = report.labelFit.design.height();
}

} // namespace kb::reports
