// Pagination: the walk's blocks on pages, then the page headers and footers.

#include "engine/LayoutRun.h"

#include "MessageError.h"

#include <algorithm>
#include <functional>
#include <cmath>

namespace kb::reports {

namespace {

// Lengths closer than this are equal: label grids are computed from
// fractions of inches that do not add up exactly.
constexpr double Slack = 0.01;

// Texts printed late: what the walk captured, and the page being painted.
class DeferredScope final : public EvalScope
{
public:
    DeferredScope(const ReportDocument& document, const Page& page, const DeferredText& text)
        : m_document(document), m_page(page), m_text(text)
    {
    }
    QVariant field(const Expr& e) override { return captured(e); }
    QVariant parameter(const Expr& e) override { return captured(e); }
    QVariant aggregate(const Expr& e) override { return captured(e); }
    QVariant pageNumber() override { return m_page.number; }
    QVariant pageCount() override
    {
        return size_t(m_page.run) < m_document.runPageCounts.size() ? m_document.runPageCounts[size_t(m_page.run)]
                                                                    : 0;
    }

private:
    QVariant captured(const Expr& e) const
    {
        if (e.captureIndex < 0 || size_t(e.captureIndex) >= m_text.captures.size())
            return {};
        const DeferredText::Capture& c = m_text.captures[size_t(e.captureIndex)];
        return c.late ? c.late->value : c.value;
    }

    const ReportDocument& m_document;
    const Page& m_page;
    const DeferredText& m_text;
};

} // namespace

QString resolveDeferred(const ReportDocument& document, const Page& page, const DeferredText& text)
{
    Evaluator evaluator(*document.formatter, document.now);
    DeferredScope scope(document, page, text);
    QString result;
    for (size_t i = 0; i < text.text->pieces.size(); ++i) {
        const TextPiece& piece = text.text->pieces[i];
        result += piece.deferred ? evaluator.text(piece, scope) : text.resolved.value(qsizetype(i));
    }
    return result;
}

QStringList pageTexts(const ReportDocument& document, int pageIndex)
{
    QStringList texts;
    if (pageIndex < 0 || pageIndex >= document.pageCount())
        return texts;
    const Page& page = document.pages[size_t(pageIndex)];
    auto add = [&](const std::vector<Item>& items) {
        for (const Item& item : items) {
            if (const auto* text = std::get_if<TextItem>(&item)) {
                if (text->deferred)
                    texts << resolveDeferred(document, page, *text->deferred);
                else
                    texts << text->lines.join(u'\n');
            }
        }
    };
    for (const Placement& p : page.blocks)
        add(document.blocks[size_t(p.block)].items);
    add(page.items);
    return texts;
}

// The page bands' view of the data: the values kept with the first (for
// the header) or last (for the footer) block of the page, and the page's
// own sums.
class LayoutRun::PageScope final : public EvalScope
{
public:
    PageScope(LayoutRun& run, const Page& page) : m_run(run), m_page(page) {}
    void setValues(int index) { m_values = index; }
    QVariant field(const Expr& e) override
    {
        if (m_values < 0 || e.pageIndex < 0)
            return {};
        const auto& values = m_run.m_pageValues[size_t(m_values)];
        return size_t(e.pageIndex) < values.size() ? values[size_t(e.pageIndex)] : QVariant();
    }
    QVariant parameter(const Expr& e) override
    {
        return e.boundField >= 0 ? m_run.m_params[size_t(e.boundField)] : QVariant();
    }
    QVariant pageNumber() override { return m_page.number; }
    QVariant pageCount() override { return {}; }
    QVariant aggregate(const Expr& e) override
    {
        const auto it = m_sums.find(e.site);
        return it == m_sums.end() ? Accumulator(Accumulator::functionOf(e.name)).value() : it->second.value();
    }
    std::map<int, Accumulator> m_sums;

private:
    LayoutRun& m_run;
    const Page& m_page;
    int m_values = -1;
};

void LayoutRun::computeGroupHeights()
{
    const ColumnLayout& columns = m_report->columns;
    std::vector<int> open;
    for (const Entry& entry : m_stream) {
        switch (entry.kind) {
        case Entry::Kind::Open:
            open.push_back(entry.index);
            break;
        case Entry::Kind::Close:
            if (!open.empty())
                open.pop_back();
            break;
        case Entry::Kind::Block: {
            const Block& b = m_doc.blocks[size_t(entry.index)];
            double h = b.height;
            if (b.columnar) {
                const double pitch = columns.rowPitch > 0 ? columns.rowPitch : b.height;
                h = pitch / std::max(1, columns.count);
            }
            for (int o : open)
                m_opens[size_t(o)].height += h;
            break;
        }
        case Entry::Kind::PageBreak:
            break;
        }
    }
}

void LayoutRun::paginate()
{
    const ReportTemplate& t = *m_report;
    const double headerHeight = t.pageHeader ? t.pageHeader->height : 0;
    const double footerHeight = t.pageFooter ? t.pageFooter->height : 0;
    const double top = t.marginTop + headerHeight;
    const double bottom = t.pageSize.height() - t.marginBottom - footerHeight;
    const double left = t.marginLeft;
    if (bottom - top < 1)
        throw MessageError(QStringLiteral("The page header and footer of the report %1 leave no room on the page.")
                               .arg(t.title));
    const ColumnLayout& columns = t.columns;
    const int columnCount = std::max(1, columns.count);
    const double columnWidth = columns.width > 0 ? columns.width : t.bodyWidth();

    struct OpenState
    {
        int open;
        size_t headerPlaced = 0;
    };
    std::vector<OpenState> stack;
    int run = 0;
    int numberInRun = 0;
    double y = top;
    bool content = false;
    // The grid of labels: the column of the next label, the top of its row
    // (across) or the top of the grid on this page (down).
    int column = 0;
    double rowTop = top;
    double gridTop = top;
    double gridBottom = top;
    bool inGrid = false;
    int skip = std::max(0, m_inputs.labelStartPosition - 1);
    // A page break waits for something to print after it, so that the
    // report does not end on a blank page.
    bool breakPending = false;

    auto startPage = [&] {
        if (int(m_doc.pages.size()) >= MaxPages)
            throw MessageError(QStringLiteral("The report would print more than %1 pages.").arg(MaxPages));
        Page page;
        page.run = run;
        page.number = ++numberInRun;
        m_doc.pages.push_back(std::move(page));
        y = top;
        content = false;
        column = 0;
        rowTop = gridTop = gridBottom = top;
        inGrid = false;
    };
    auto put = [&](int block, QPointF at, bool repeated) {
        m_doc.pages.back().blocks.push_back(Placement{block, at, repeated});
    };
    // Leaves the grid: what follows stands below its lowest label.
    auto endGrid = [&] {
        if (!inGrid)
            return;
        y = std::max(y, gridBottom);
        inGrid = false;
        column = 0;
    };
    std::function<void(bool)> newPage;
    auto reprintHeaders = [&] {
        for (const OpenState& s : stack) {
            const OpenInfo& info = m_opens[size_t(s.open)];
            if (!info.reprintHeader || info.headerBlocks.empty() || s.headerPlaced < info.headerBlocks.size())
                continue;
            for (int b : info.headerBlocks) {
                put(b, QPointF(left + m_doc.blocks[size_t(b)].x, y), true);
                y += m_doc.blocks[size_t(b)].height;
            }
        }
    };
    newPage = [&](bool newRun) {
        if (newRun) {
            ++run;
            numberInRun = 0;
        }
        startPage();
        reprintHeaders();
    };
    auto fits = [&](double height) { return y + height <= bottom + Slack; };
    auto noteHeader = [&](int block) {
        if (stack.empty())
            return;
        OpenState& s = stack.back();
        const OpenInfo& info = m_opens[size_t(s.open)];
        if (s.headerPlaced < info.headerBlocks.size() && info.headerBlocks[s.headerPlaced] == block)
            ++s.headerPlaced;
    };
    // The next place of the grid, moving on to the next row, column or page.
    auto gridSlot = [&](double height, bool placing) -> QPointF {
        const double pitch = columns.rowPitch > 0 ? columns.rowPitch : height;
        if (!inGrid) {
            inGrid = true;
            column = 0;
            rowTop = gridTop = gridBottom = y;
        }
        if (columns.acrossFirst) {
            if (column >= columnCount) {
                column = 0;
                rowTop += pitch;
            }
            if (column == 0 && rowTop + height > bottom + Slack && (content || !placing)) {
                newPage(false);
                inGrid = true;
                rowTop = gridTop = gridBottom = y;
            }
            const QPointF at(left + column * (columnWidth + columns.gap), rowTop);
            ++column;
            gridBottom = std::max(gridBottom, rowTop + pitch);
            return at;
        }
        if (rowTop + height > bottom + Slack) {
            ++column;
            rowTop = gridTop;
            if (column >= columnCount) {
                newPage(false);
                inGrid = true;
                column = 0;
                rowTop = gridTop = gridBottom = y;
            }
        }
        const QPointF at(left + column * (columnWidth + columns.gap), rowTop);
        rowTop += pitch;
        gridBottom = std::max(gridBottom, at.y() + pitch);
        return at;
    };

    startPage();
    for (size_t i = 0; i < m_stream.size(); ++i) {
        const Entry& entry = m_stream[i];
        switch (entry.kind) {
        case Entry::Kind::Open: {
            const OpenInfo& info = m_opens[size_t(entry.index)];
            endGrid();
            if (breakPending) {
                breakPending = false;
                newPage(info.resetPageNumber);
            } else if (info.resetPageNumber && (content || numberInRun > 1 || !m_doc.pages.back().blocks.empty())) {
                newPage(true);
            } else if (info.resetPageNumber) {
                // The first group starts the first run: nothing to do.
            } else if (info.newPage && content) {
                newPage(false);
            } else if (content) {
                const double room = bottom - top;
                double needed = 0;
                if (info.keepTogether && info.height <= room + Slack)
                    needed = info.height;
                if (info.keepHeaderWithNext && !info.headerBlocks.empty()) {
                    double header = 0;
                    for (int b : info.headerBlocks)
                        header += m_doc.blocks[size_t(b)].height;
                    // The header and the first block after it.
                    for (size_t j = i + 1; j < m_stream.size(); ++j) {
                        if (m_stream[j].kind != Entry::Kind::Block)
                            continue;
                        const int b = m_stream[j].index;
                        if (std::find(info.headerBlocks.begin(), info.headerBlocks.end(), b) !=
                            info.headerBlocks.end())
                            continue;
                        header += m_doc.blocks[size_t(b)].height;
                        break;
                    }
                    if (header <= room + Slack)
                        needed = std::max(needed, header);
                }
                if (!fits(needed))
                    newPage(false);
            }
            stack.push_back(OpenState{entry.index});
            break;
        }
        case Entry::Kind::Close:
            if (!stack.empty())
                stack.pop_back();
            break;
        case Entry::Kind::PageBreak:
            endGrid();
            breakPending = content;
            break;
        case Entry::Kind::Block: {
            const Block& b = m_doc.blocks[size_t(entry.index)];
            if (breakPending) {
                breakPending = false;
                endGrid();
                newPage(false);
            }
            if (b.columnar) {
                while (skip > 0) {
                    gridSlot(b.height, false);
                    --skip;
                }
                put(entry.index, gridSlot(b.height, true), false);
                content = true;
            } else {
                endGrid();
                if (!fits(b.height) && content)
                    newPage(false);
                put(entry.index, QPointF(left + b.x, y), false);
                y += b.height;
                content = true;
            }
            noteHeader(entry.index);
            break;
        }
        }
    }
    m_doc.runPageCounts.assign(size_t(run + 1), 0);
    for (const Page& page : m_doc.pages)
        m_doc.runPageCounts[size_t(page.run)] = std::max(m_doc.runPageCounts[size_t(page.run)], page.number);
}

void LayoutRun::layoutPageBands()
{
    const ReportTemplate& t = *m_report;
    if (!t.pageHeader && !t.pageFooter)
        return;
    int lastValues = -1;
    for (Page& page : m_doc.pages) {
        PageScope scope(*this, page);
        for (const Placement& p : page.blocks) {
            if (p.repeated)
                continue;
            for (const auto& [site, value] : m_extra[size_t(p.block)].contributions) {
                auto it = scope.m_sums.find(site);
                if (it == scope.m_sums.end())
                    it = scope.m_sums
                             .emplace(site, Accumulator(Accumulator::functionOf(m_sites[size_t(site)].node->name)))
                             .first;
                it->second.add(value);
            }
        }
        int first = lastValues, last = lastValues;
        if (!page.blocks.empty()) {
            first = m_extra[size_t(page.blocks.front().block)].pageValues;
            last = m_extra[size_t(page.blocks.back().block)].pageValues;
        }
        if (t.pageHeader) {
            scope.setValues(first);
            layoutPageBand(*t.pageHeader, page, t.marginTop, scope);
        }
        if (t.pageFooter) {
            scope.setValues(last);
            layoutPageBand(*t.pageFooter, page, t.pageSize.height() - t.marginBottom - t.pageFooter->height, scope);
        }
        lastValues = last;
    }
}

void LayoutRun::layoutPageBand(Band& band, Page& page, double top, PageScope& scope)
{
    if (band.visible && !m_eval->truth(*band.visible, scope))
        return;
    for (Element& e : band.elements) {
        if (e.visible && !m_eval->truth(*e.visible, scope))
            continue;
        layoutElement(e, e.rect.translated(m_report->marginLeft, top), page.items, scope, false);
    }
}

} // namespace kb::reports
