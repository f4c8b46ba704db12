#pragma once

#include "model/Expression.h"

#include <QColor>
#include <QRectF>
#include <QSizeF>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>
#include <vector>

namespace kb::reports {

// All lengths of the model are in points (1/72 inch), measured from the
// top left corner of the band, the page or the label they belong to.

enum class HAlign { Left, Center, Right };
enum class VAlign { Top, Middle, Bottom };

// How a text looks. Named styles are defined once in a template; an element
// starts from the report's default style or a named one and may change any
// part of it.
struct TextStyle
{
    QString family = QStringLiteral("DejaVu Sans");
    double size = 9;
    bool bold = false;
    bool italic = false;
    bool underline = false;
    QColor color = Qt::black;
    std::optional<QColor> fill;
    double border = 0; // width of a frame around the element, 0 for none
    HAlign align = HAlign::Left;
    VAlign valign = VAlign::Top;

    bool operator==(const TextStyle&) const = default;
};

struct Section;

// What can stand in a band.
struct Element
{
    enum class Kind { Text, Line, Box, Image, Barcode, Subreport, Crosstab };

    Kind kind = Kind::Text;
    int line = 0; // of the template, for messages
    QRectF rect;  // Line: from topLeft to bottomRight
    ExprPtr visible;

    // Text
    TextTemplate text;
    TextStyle style;
    bool wrap = false;    // breaks into lines within its width
    bool stretch = false; // and grows downwards to show them all

    // Line and Box
    double penWidth = 0.5;
    QColor penColor = Qt::black;
    std::optional<QColor> boxFill;

    // Image: a file (relative to the template's folder) or a value that is
    // the picture's bytes or a file name.
    QString imageFile;
    TextTemplate imageValue;
    bool keepAspect = true;

    // Barcode: the symbology's name as the template gives it, and whether
    // the human-readable text stands under the bars.
    QString symbology;
    TextTemplate barcodeData;
    bool barcodeText = true;

    // Subreport and Crosstab: what flows at this place of the band, pushing
    // what stands below it down and breaking across pages. An inline
    // subreport instead prints its rows inside the band at its place, beside
    // the band's other elements, and grows the band like a stretching text:
    // the items of a delivery beside its address.
    std::unique_ptr<Section> section;
    bool inlineRows = false;
    struct CrosstabDef;
    std::unique_ptr<CrosstabDef> crosstab;

    // Set before each run: the element's style in the document's style
    // table, and how many values its late pieces capture.
    int boundStyle = -1;
    bool late = false; // a text with a piece printed late
    int captureCount = 0;
};

struct Band
{
    enum class Role { Title, Summary, PageHeader, PageFooter, GroupHeader, GroupFooter, Detail, NoData };

    Role role = Role::Detail;
    int line = 0;
    double height = 0;
    bool stretch = false;      // grows with wrapped texts
    bool keepTogether = false; // a detail with its subreports stays on one page if it can
    bool newPageAfter = false;
    ExprPtr visible;
    std::vector<Element> elements;
};

struct Group
{
    QString name;
    int line = 0;
    ExprPtr key;
    std::unique_ptr<Band> header;
    std::unique_ptr<Band> footer;
    bool keepTogether = false;  // starts on a new page when the whole group would fit there
    bool reprintHeader = false; // the header stands again at the top of each page the group continues on
    bool newPage = false;       // each group starts a page
    bool resetPageNumber = false; // page numbers count from 1 for each group
};

// One level of data: the report itself over its main pipe, or a subreport
// over a detail pipe. The title and summary of the report are the header
// and footer of its top section.
struct Section
{
    QString pipe; // empty: one pass without rows
    int line = 0;
    std::unique_ptr<Band> header;
    std::unique_ptr<Band> footer;
    std::unique_ptr<Band> detail;
    std::unique_ptr<Band> noData; // printed instead when the pipe has no rows
    std::vector<Group> groups;
};

struct Element::CrosstabDef
{
    struct Dimension
    {
        ExprPtr expr;
        QString title;
        double width = 72;
        QString format;
    };
    QString pipe; // empty: the rows of the section it stands in, gathered as they pass
    std::vector<Dimension> rows;
    std::vector<Dimension> columns;
    QString function = QStringLiteral("sum"); // sum, count, min, max, avg, distinct
    ExprPtr value;
    QString valueFormat;
    double cellWidth = 54;
    bool rowTotals = true;    // a total column at the right
    bool columnTotals = true; // a total row at the foot
    QString totalTitle = QStringLiteral("Total");
    TextStyle style;
};

// Several labels on a sheet: the detail of the report is printed in a grid.
struct ColumnLayout
{
    int count = 1;
    double width = 0;  // of one column (label)
    double gap = 0;    // between columns
    double rowPitch = 0; // from one label's top to the next one's; 0: the detail's height
    bool acrossFirst = true;
    int rows = 0; // the rows of a sheet of labels; 0: as many as the page holds

    // The labels of one sheet; 0 when the rows are not fixed.
    int labelsPerSheet() const { return rows > 0 ? count * rows : 0; }
};

// A data set the template defines itself, for reports that bring their own
// data: its statement, run with the report's parameters and, for a detail,
// the master's fields of the same names.
struct DataDef
{
    QString pipe;
    int line = 0;
    QString sql;
    QString master;
};

struct ParameterDef
{
    QString name;
    QVariant defaultValue;
};

// How the labels of a template fit the stock they print on: the label the
// template's detail band was laid out for, and the label of the stock. On a
// stock of another size the label's content is scaled, keeping its
// proportions, to fill the stock's label as far as it can, and centred in
// it; on its own stock it prints as it stands.
struct LabelFit
{
    QSizeF design; // empty: not a label report
    QSizeF label;

    double scale() const;
    QPointF offset() const; // of the scaled content inside the stock's label
    bool identity() const;
};

struct ReportTemplate
{
    QString fileName; // where it was read from, for messages and relative files
    QString title;    // the document's name
    QSizeF pageSize{612, 792}; // Letter
    double marginLeft = 36, marginTop = 36, marginRight = 36, marginBottom = 36;
    ColumnLayout columns;
    LabelFit labelFit;
    QString locale = QStringLiteral("en_US");
    QString dateFormat = QStringLiteral("MM/dd/yyyy");
    QString dateTimeFormat = QStringLiteral("MM/dd/yyyy h:mm AP");
    TextStyle defaultStyle;
    std::vector<ParameterDef> parameters;
    std::vector<DataDef> data;
    Section body;
    std::unique_ptr<Band> pageHeader;
    std::unique_ptr<Band> pageFooter;

    double bodyWidth() const { return pageSize.width() - marginLeft - marginRight; }
};

} // namespace kb::reports
