// Crosstabs: rows by one or more values, columns by others, a sum or count
// in each cell, with totals; a table wider than the page is printed in
// slices of columns, each with the row titles again.

#include "engine/LayoutRun.h"

#include "MessageError.h"

#include <algorithm>
#include <cmath>

namespace kb::reports {

namespace {

// Bounds of one crosstab, far beyond any kitchen sheet, so that a wrong
// column expression (a client number instead of a diet) fails clearly.
constexpr size_t MaxColumns = 2000;
constexpr size_t MaxRows = 200000;

} // namespace

bool CrosstabData::KeyLess::operator()(const Key& a, const Key& b) const
{
    const size_t n = std::min(a.size(), b.size());
    for (size_t i = 0; i < n; ++i) {
        const int c = Evaluator::compare(a[i], b[i]);
        if (c != 0)
            return c < 0;
    }
    return a.size() < b.size();
}

void CrosstabData::reset()
{
    rows.clear();
    columnTotals.clear();
    grand = Accumulator(function);
}

void CrosstabData::add(const Key& row, const Key& column, const QVariant& value)
{
    auto r = rows.find(row);
    if (r == rows.end()) {
        if (rows.size() >= MaxRows)
            throw MessageError(QStringLiteral("The crosstab has more than %1 rows.").arg(MaxRows));
        r = rows.emplace(row, Row{{}, Accumulator(function)}).first;
    }
    auto c = columnTotals.find(column);
    if (c == columnTotals.end()) {
        if (columnTotals.size() >= MaxColumns)
            throw MessageError(QStringLiteral("The crosstab has more than %1 columns.").arg(MaxColumns));
        c = columnTotals.emplace(column, Accumulator(function)).first;
    }
    auto cell = r->second.cells.find(column);
    if (cell == r->second.cells.end())
        cell = r->second.cells.emplace(column, Accumulator(function)).first;
    cell->second.add(value);
    r->second.total.add(value);
    c->second.add(value);
    grand.add(value);
}

void LayoutRun::emitCrosstab(Element& element, int sectionIndex, double x)
{
    Q_UNUSED(sectionIndex);
    const Element::CrosstabDef& def = *element.crosstab;
    CrosstabData* data = nullptr;
    std::unique_ptr<CrosstabData> own;
    if (!def.pipe.isEmpty()) {
        own = std::make_unique<CrosstabData>(Accumulator::functionOf(def.function));
        DataPipe& pipe = *m_pipes[size_t(m_pipeSlots.value(def.pipe.toLower()))];
        RowScope scope(*this);
        const qsizetype n = pipe.rowCount();
        for (qsizetype r = 0; r < n; ++r) {
            pipe.seek(r);
            CrosstabData::Key row, column;
            for (const auto& d : def.rows)
                row.push_back(m_eval->eval(*d.expr, scope));
            for (const auto& d : def.columns)
                column.push_back(m_eval->eval(*d.expr, scope));
            own->add(row, column, def.value ? m_eval->eval(*def.value, scope) : QVariant(1));
        }
        data = own.get();
    } else {
        for (Site& site : m_sites) {
            if (site.crosstab == &element)
                data = site.data;
        }
    }
    if (!data || data->rows.empty())
        return;

    TextStyle plain = m_doc.styles[size_t(element.boundStyle)];
    TextStyle bold = plain;
    bold.bold = true;
    TextStyle number = plain;
    number.align = HAlign::Right;
    TextStyle boldNumber = number;
    boldNumber.bold = true;
    const int plainStyle = styleIndex(plain), boldStyle = styleIndex(bold);
    const int numberStyle = styleIndex(number), boldNumberStyle = styleIndex(boldNumber);
    const double lineHeight = m_measure.lineHeight(plain);
    const double rowHeight = std::ceil(lineHeight + 3);
    const double pad = 2;

    double rowHeaderWidth = 0;
    for (const auto& d : def.rows)
        rowHeaderWidth += d.width;
    std::vector<CrosstabData::Key> columns;
    for (const auto& [key, acc] : data->columnTotals)
        columns.push_back(key);
    const double available = std::max(def.cellWidth, m_report->bodyWidth() - x - rowHeaderWidth);
    const size_t perSlice = std::max<size_t>(1, size_t(std::floor((available + 0.01) / def.cellWidth)));
    // Slices of columns; the total column stands at the end of the last one.
    std::vector<std::pair<size_t, size_t>> slices;
    for (size_t start = 0; start < columns.size(); start += perSlice)
        slices.emplace_back(start, std::min(columns.size(), start + perSlice));
    bool totalOwnSlice = false;
    if (def.rowTotals && slices.back().second - slices.back().first >= perSlice)
        totalOwnSlice = true;
    if (totalOwnSlice)
        slices.emplace_back(columns.size(), columns.size());

    const int levels = int(def.columns.size());
    const double tableRule = 0.5;
    for (size_t s = 0; s < slices.size(); ++s) {
        const auto [from, to] = slices[s];
        const bool withTotal = def.rowTotals && s + 1 == slices.size();
        const double tableWidth =
            rowHeaderWidth + double(to - from) * def.cellWidth + (withTotal ? def.cellWidth : 0);

        OpenInfo open;
        open.reprintHeader = true;
        open.keepHeaderWithNext = true;
        const int openIndex = int(m_opens.size());
        m_opens.push_back(open);
        addEntry(Entry::Kind::Open, openIndex);

        // The header: one line per column level, the row titles on the last.
        Block header;
        header.x = x;
        // The column titles take two lines when one of them needs it.
        const int lastLevelIndex = levels - 1;
        int titleLines = 1;
        for (size_t c = from; c < to; ++c) {
            const QString title = m_formatter->text(columns[c][size_t(lastLevelIndex)],
                                                    def.columns[size_t(lastLevelIndex)].format);
            if (m_measure.width(boldNumber, title) > def.cellWidth - pad)
                titleLines = 2;
        }
        // A title on up to titleLines lines, cut where even they do not hold it.
        auto titleText = [&](const QRectF& rect, int style, const QString& text) {
            if (titleLines == 1)
                return makeText(rect, style, text);
            const TextStyle& s = m_doc.styles[size_t(style)];
            TextItem item;
            item.rect = rect;
            item.style = style;
            item.lines = m_measure.wrap(s, text, rect.width()).mid(0, titleLines);
            for (QString& line : item.lines) {
                line = m_measure.elide(s, line, rect.width());
                item.widths.push_back(m_measure.width(s, line));
            }
            return item;
        };
        header.height = rowHeight * (levels - 1 + titleLines) + tableRule;
        for (int level = 0; level < levels; ++level) {
            const double top = level * rowHeight;
            const bool lastLevel = level == levels - 1;
            const double height = lastLevel ? rowHeight * titleLines : rowHeight;
            if (lastLevel) {
                double left = 0;
                for (const auto& d : def.rows) {
                    header.items.emplace_back(
                        titleText(QRectF(left, top, d.width - pad, height), boldStyle, d.title));
                    left += d.width;
                }
            }
            for (size_t c = from; c < to; ++c) {
                // An outer level's value stands once over the columns it covers.
                if (!lastLevel && c > from && Evaluator::equal(columns[c - 1][size_t(level)], columns[c][size_t(level)]))
                    continue;
                const QString title =
                    m_formatter->text(columns[c][size_t(level)], def.columns[size_t(level)].format);
                const double left = rowHeaderWidth + double(c - from) * def.cellWidth;
                header.items.emplace_back(lastLevel ? titleText(QRectF(left, top, def.cellWidth - pad, height),
                                                                boldNumberStyle, title)
                                                    : makeText(QRectF(left, top, def.cellWidth - pad, rowHeight),
                                                               boldStyle, title));
            }
            if (withTotal && lastLevel)
                header.items.emplace_back(titleText(QRectF(rowHeaderWidth + double(to - from) * def.cellWidth, top,
                                                           def.cellWidth - pad, height),
                                                    boldNumberStyle, def.totalTitle));
        }
        header.items.emplace_back(LineItem{QPointF(0, header.height - tableRule / 2),
                                           QPointF(tableWidth, header.height - tableRule / 2), tableRule, Qt::black});
        m_opens[size_t(openIndex)].headerBlocks.push_back(addBlock(std::move(header)));

        const CrosstabData::Key* previous = nullptr;
        for (const auto& [key, row] : data->rows) {
            Block line;
            line.x = x;
            line.height = rowHeight;
            double left = 0;
            bool sameSoFar = previous != nullptr;
            for (size_t level = 0; level < def.rows.size(); ++level) {
                const auto& d = def.rows[level];
                // Outer row values stand once, on the first row they cover.
                sameSoFar = sameSoFar && level + 1 < def.rows.size() && Evaluator::equal((*previous)[level], key[level]);
                if (!sameSoFar)
                    line.items.emplace_back(makeText(QRectF(left, 0, d.width - pad, rowHeight), plainStyle,
                                                     m_formatter->text(key[level], d.format)));
                left += d.width;
            }
            for (size_t c = from; c < to; ++c) {
                const auto cell = row.cells.find(columns[c]);
                if (cell == row.cells.end())
                    continue;
                line.items.emplace_back(makeText(
                    QRectF(rowHeaderWidth + double(c - from) * def.cellWidth, 0, def.cellWidth - pad, rowHeight),
                    numberStyle, m_formatter->text(cell->second.value(), def.valueFormat)));
            }
            if (withTotal)
                line.items.emplace_back(makeText(QRectF(rowHeaderWidth + double(to - from) * def.cellWidth, 0,
                                                        def.cellWidth - pad, rowHeight),
                                                 boldNumberStyle, m_formatter->text(row.total.value(), def.valueFormat)));
            addBlock(std::move(line));
            previous = &key;
        }
        if (def.columnTotals) {
            Block totals;
            totals.x = x;
            totals.height = rowHeight + tableRule;
            totals.items.emplace_back(
                LineItem{QPointF(0, tableRule / 2), QPointF(tableWidth, tableRule / 2), tableRule, Qt::black});
            totals.items.emplace_back(
                makeText(QRectF(0, tableRule, rowHeaderWidth - pad, rowHeight), boldStyle, def.totalTitle));
            for (size_t c = from; c < to; ++c)
                totals.items.emplace_back(makeText(QRectF(rowHeaderWidth + double(c - from) * def.cellWidth,
                                                          tableRule, def.cellWidth - pad, rowHeight),
                                                   boldNumberStyle,
                                                   m_formatter->text(data->columnTotals.at(columns[c]).value(),
                                                                     def.valueFormat)));
            if (withTotal)
                totals.items.emplace_back(makeText(QRectF(rowHeaderWidth + double(to - from) * def.cellWidth,
                                                          tableRule, def.cellWidth - pad, rowHeight),
                                                   boldNumberStyle, m_formatter->text(data->grand.value(), def.valueFormat)));
            addBlock(std::move(totals));
        }
        addEntry(Entry::Kind::Close);
        // A little air between slices.
        if (s + 1 < slices.size()) {
            Block gap;
            gap.x = x;
            gap.height = rowHeight;
            addBlock(std::move(gap));
        }
    }
}

} // namespace kb::reports
