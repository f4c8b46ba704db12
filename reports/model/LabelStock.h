#pragma once

#include <QSizeF>
#include <QString>

#include <vector>

namespace kb::reports {

struct ReportTemplate;

// A kind of label stock: a sheet of labels in rows and columns, or a roll
// of single labels for a label printer (one label to a page). Lengths in
// points.
struct LabelStock
{
    QString name;        // "Avery 5160"
    QString description; // "Address labels, 1 x 2-5/8 in, 30 to a Letter sheet"
    QSizeF page;
    double marginLeft = 0;
    double marginTop = 0;
    int columns = 1;
    int rows = 1;
    QSizeF label;
    double columnGap = 0;
    double rowGap = 0;

    int labelsPerPage() const { return columns * rows; }
    bool singleLabel() const { return columns == 1 && rows == 1; }

    // The stocks the settings offer, sheets first.
    static const std::vector<LabelStock>& catalogue();
    // Compared without case; null when the catalogue has no such stock.
    static const LabelStock* find(const QString& name);
};

// Sets the page, margins and grid of the template to the stock's; the
// detail band is one label. A template laid out for another label is
// fitted to this one (see LabelFit).
void applyLabelStock(ReportTemplate& report, const LabelStock& stock);

} // namespace kb::reports
