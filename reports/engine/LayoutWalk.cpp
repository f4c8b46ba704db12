// The walk: rows into bands, bands into blocks, with the group markers that
// pagination needs.

#include "engine/LayoutRun.h"

#include "MessageError.h"
#include "template/TemplateError.h"

#include <QBuffer>
#include <QDir>
#include <QFileInfo>
#include <QImageReader>

#include <algorithm>
#include <cmath>
#include <map>

namespace kb::reports {

namespace {

// The largest picture file a template may print.
constexpr qint64 MaxImageBytes = 20 * 1024 * 1024;

double topOf(const Element& e) { return std::min(e.rect.top(), e.rect.bottom()); }

void translateItem(TextItem& i, QPointF d) { i.rect.translate(d); }
void translateItem(LineItem& i, QPointF d)
{
    i.from += d;
    i.to += d;
}
void translateItem(BoxItem& i, QPointF d) { i.rect.translate(d); }
void translateItem(ImageItem& i, QPointF d) { i.rect.translate(d); }
void translateItem(BarcodeItem& i, QPointF d) { i.rect.translate(d); }

} // namespace

ReportDocument layoutReport(std::shared_ptr<ReportTemplate> report, const ReportInputs& inputs)
{
    return LayoutRun(std::move(report), inputs).run();
}

ReportDocument LayoutRun::run()
{
    bindAll();
    m_doc.report = m_report;
    m_doc.title = m_report->title;
    m_doc.pageSize = m_report->pageSize;
    walkSection(0, 0);
    if (!m_pendingContributions.empty() && !m_extra.empty()) {
        auto& last = m_extra.back().contributions;
        last.insert(last.end(), m_pendingContributions.begin(), m_pendingContributions.end());
    }
    fitLabels();
    computeGroupHeights();
    paginate();
    layoutPageBands();
    if (m_inputs.progress)
        m_inputs.progress(100);
    m_doc.formatter = std::move(m_formatter);
    return std::move(m_doc);
}

void LayoutRun::fitLabels()
{
    const LabelFit& fit = m_report->labelFit;
    if (fit.design.isEmpty() || fit.identity()) return;
    const double s = fit.scale();
    const QPointF offset = fit.offset();
    auto point = [&](QPointF p) { return p * s + offset; };
    auto rect = [&](const QRectF& r) { return QRectF(point(r.topLeft()), r.size() * s); };
    // Each style once in its scaled form.
    std::map<int, int> scaled;
    auto style = [&](int index) {
        const auto it = scaled.find(index);
        if (it != scaled.end()) return it->second;
        TextStyle st = m_doc.styles[size_t(index)];
        st.size *= s;
        st.border *= s;
        const int made = styleIndex(st);
        scaled.emplace(index, made);
        return made;
    };
    struct Scale
    {
        decltype(point)& p;
        decltype(rect)& r;
        decltype(style)& st;
        double s;
        void operator()(TextItem& i) const
        {
            i.rect = r(i.rect);
            i.style = st(i.style);
            for (double& w : i.widths)
                w *= s;
        }
        void operator()(LineItem& i) const
        {
            i.from = p(i.from);
            i.to = p(i.to);
            i.width *= s;
        }
        void operator()(BoxItem& i) const
        {
            i.rect = r(i.rect);
            i.width *= s;
        }
        void operator()(ImageItem& i) const { i.rect = r(i.rect); }
        void operator()(BarcodeItem& i) const
        {
            i.rect = r(i.rect);
            i.style = st(i.style);
        }
    };
    const Scale scale{point, rect, style, s};
    for (Block& block : m_doc.blocks) {
        if (!block.columnar) continue;
        for (Item& item : block.items)
            std::visit(scale, item);
        block.height = fit.label.height();
    }
}

void LayoutRun::walkSection(int sectionIndex, double x)
{
    const SectionInfo& info = m_sections[size_t(sectionIndex)];
    Section& section = *info.section;
    DataPipe* pipe = info.pipe >= 0 ? m_pipes[size_t(info.pipe)] : nullptr;
    const qsizetype rows = pipe ? pipe->rowCount() : 1;
    const bool main = sectionIndex == 0;
    if (main)
        m_mainRows = rows;
    const Scope run{Scope::Kind::Run, sectionIndex, -1};
    openScope(run);
    if (rows == 0) {
        if (main && section.header)
            emitBand(*section.header, sectionIndex, x, false);
        if (section.noData)
            emitBand(*section.noData, sectionIndex, x, false);
        if (main && section.footer)
            emitBand(*section.footer, sectionIndex, x, false);
        closeScope(run);
        return;
    }
    if (pipe)
        pipe->seek(0);
    if (section.header)
        emitBand(*section.header, sectionIndex, x, false);

    RowScope scope(*this);
    const int groups = int(section.groups.size());
    std::vector<QVariant> keys(static_cast<size_t>(groups)), previous(static_cast<size_t>(groups));
    for (qsizetype row = 0; row < rows; ++row) {
        if (pipe)
            pipe->seek(row);
        for (int g = 0; g < groups; ++g)
            keys[size_t(g)] = m_eval->eval(*section.groups[size_t(g)].key, scope);
        int changed = row == 0 ? 0 : -1;
        for (int g = 0; row > 0 && g < groups; ++g) {
            if (!Evaluator::equal(keys[size_t(g)], previous[size_t(g)])) {
                changed = g;
                break;
            }
        }
        if (row > 0 && changed >= 0) {
            // Footers print with the last row of their group.
            if (pipe)
                pipe->seek(row - 1);
            closeGroups(sectionIndex, changed, x);
            if (pipe)
                pipe->seek(row);
        }
        if (changed >= 0)
            openGroups(sectionIndex, changed, x);
        accumulate(sectionIndex);
        if (section.detail)
            emitBand(*section.detail, sectionIndex, x, main && m_columns);
        std::swap(keys, previous);
        if (main && m_inputs.progress) {
            const int percent = int(90 * (row + 1) / rows);
            if (percent != m_lastProgress) {
                m_lastProgress = percent;
                m_inputs.progress(percent);
            }
        }
    }
    closeGroups(sectionIndex, 0, x);
    if (section.footer)
        emitBand(*section.footer, sectionIndex, x, false);
    closeScope(run);
}

void LayoutRun::openGroups(int sectionIndex, int from, double x)
{
    Section& section = *m_sections[size_t(sectionIndex)].section;
    for (int g = from; g < int(section.groups.size()); ++g) {
        Group& group = section.groups[size_t(g)];
        openScope(Scope{Scope::Kind::Group, sectionIndex, g});
        OpenInfo open;
        open.keepTogether = group.keepTogether;
        open.reprintHeader = group.reprintHeader;
        open.newPage = group.newPage;
        open.resetPageNumber = group.resetPageNumber;
        open.keepHeaderWithNext = true;
        const int openIndex = int(m_opens.size());
        m_opens.push_back(open);
        addEntry(Entry::Kind::Open, openIndex);
        const size_t before = m_doc.blocks.size();
        if (group.header)
            emitBand(*group.header, sectionIndex, x, false);
        for (size_t b = before; b < m_doc.blocks.size(); ++b)
            m_opens[size_t(openIndex)].headerBlocks.push_back(int(b));
    }
}

void LayoutRun::closeGroups(int sectionIndex, int from, double x)
{
    Section& section = *m_sections[size_t(sectionIndex)].section;
    for (int g = int(section.groups.size()) - 1; g >= from; --g) {
        Group& group = section.groups[size_t(g)];
        if (group.footer)
            emitBand(*group.footer, sectionIndex, x, false);
        closeScope(Scope{Scope::Kind::Group, sectionIndex, g});
        addEntry(Entry::Kind::Close);
    }
}

void LayoutRun::openScope(const Scope& scope)
{
    for (Site& site : m_sites) {
        if (!(site.scope == scope))
            continue;
        if (site.data)
            site.data->reset();
        else
            site.acc.reset();
        if (site.late)
            site.pending = std::make_shared<LateValue>();
    }
}

void LayoutRun::closeScope(const Scope& scope)
{
    for (Site& site : m_sites) {
        if (site.scope == scope && site.late && site.pending)
            site.pending->value = site.acc.value();
    }
}

void LayoutRun::accumulate(int sectionIndex)
{
    const std::vector<int>& sites = m_sitesIn[size_t(sectionIndex)];
    if (sites.empty())
        return;
    RowScope scope(*this);
    for (int index : sites) {
        Site& site = m_sites[size_t(index)];
        if (site.data) {
            const Element::CrosstabDef& x = *site.crosstab->crosstab;
            CrosstabData::Key row, column;
            for (const auto& d : x.rows)
                row.push_back(m_eval->eval(*d.expr, scope));
            for (const auto& d : x.columns)
                column.push_back(m_eval->eval(*d.expr, scope));
            site.data->add(row, column, x.value ? m_eval->eval(*x.value, scope) : QVariant(1));
            continue;
        }
        const QVariant value = site.arg ? m_eval->eval(*site.arg, scope) : QVariant(qlonglong(1));
        if (site.scope.kind == Scope::Kind::Page)
            m_pendingContributions.emplace_back(index, value);
        else
            site.acc.add(value);
    }
}

void LayoutRun::addEntry(Entry::Kind kind, int index) { m_stream.push_back(Entry{kind, index}); }

int LayoutRun::addBlock(Block block)
{
    const int index = int(m_doc.blocks.size());
    m_doc.blocks.push_back(std::move(block));
    BlockExtra extra;
    extra.contributions = std::move(m_pendingContributions);
    m_pendingContributions.clear();
    if (!m_pageFields.empty()) {
        std::vector<QVariant> values;
        values.reserve(m_pageFields.size());
        for (const auto& [pipe, field] : m_pageFields)
            values.push_back(m_pipes[size_t(pipe)]->value(field));
        if (m_pageValues.empty() || m_pageValues.back() != values)
            m_pageValues.push_back(std::move(values));
        extra.pageValues = int(m_pageValues.size() - 1);
    }
    m_extra.push_back(std::move(extra));
    addEntry(Entry::Kind::Block, index);
    return index;
}

void LayoutRun::emitBand(Band& band, int sectionIndex, double x, bool columnar)
{
    RowScope scope(*this);
    if (band.visible && !m_eval->truth(*band.visible, scope))
        return;
    if (band.keepTogether) {
        OpenInfo open;
        open.keepTogether = true;
        m_opens.push_back(open);
        addEntry(Entry::Kind::Open, int(m_opens.size() - 1));
    }
    std::vector<Element*> statics, flows;
    for (Element& e : band.elements) {
        if ((e.kind == Element::Kind::Subreport && !e.inlineRows) || e.kind == Element::Kind::Crosstab)
            flows.push_back(&e);
        else
            statics.push_back(&e);
    }
    std::stable_sort(statics.begin(), statics.end(),
                     [](const Element* a, const Element* b) { return topOf(*a) < topOf(*b); });
    std::stable_sort(flows.begin(), flows.end(),
                     [](const Element* a, const Element* b) { return a->rect.top() < b->rect.top(); });
    double from = 0;
    for (Element* flow : flows) {
        emitPiece(band, statics, from, flow->rect.top(), false, sectionIndex, x, columnar);
        from = flow->rect.top();
        if (flow->visible && !m_eval->truth(*flow->visible, scope))
            continue;
        if (flow->kind == Element::Kind::Subreport)
            walkSection(m_sectionIndex.value(flow->section.get()), x + flow->rect.left());
        else
            emitCrosstab(*flow, sectionIndex, x + flow->rect.left());
    }
    emitPiece(band, statics, from, std::max(from, band.height), true, sectionIndex, x, columnar);
    if (band.keepTogether)
        addEntry(Entry::Kind::Close);
    if (band.newPageAfter)
        addEntry(Entry::Kind::PageBreak);
}

void LayoutRun::emitPiece(Band& band, const std::vector<Element*>& elements, double from, double to, bool last,
                          int sectionIndex, double x, bool columnar)
{
    Q_UNUSED(sectionIndex);
    RowScope scope(*this);
    Block block;
    block.x = x;
    block.columnar = columnar;
    // Texts that grow push down what stands below them.
    std::vector<std::pair<double, double>> pushes; // original bottom, how far it moved
    double grown = 0;
    for (Element* e : elements) {
        const double top = topOf(*e);
        const bool inPiece = (top >= from || from == 0) && (last || top < to);
        if (!inPiece)
            continue;
        if (e->visible && !m_eval->truth(*e->visible, scope))
            continue;
        double shift = 0;
        for (const auto& [bottom, moved] : pushes) {
            if (top >= bottom - 0.01)
                shift = std::max(shift, moved);
        }
        const double growth = layoutElement(*e, e->rect.translated(0, shift - from), block.items, scope, band.stretch);
        if (shift > 0 || growth > 0) {
            pushes.emplace_back(std::max(e->rect.top(), e->rect.bottom()), shift + growth);
            grown = std::max(grown, shift + growth);
        }
    }
    block.height = std::max(0.0, to - from) + (band.stretch ? grown : 0);
    if (block.items.empty() && block.height <= 0.001)
        return;
    addBlock(std::move(block));
}

TextItem LayoutRun::makeText(const QRectF& rect, int style, const QString& text)
{
    const TextStyle& s = m_doc.styles[size_t(style)];
    TextItem item;
    item.rect = rect;
    item.style = style;
    QString line = text;
    line.replace(u'\n', u' ');
    line = m_measure.elide(s, line, rect.width());
    if (s.align != HAlign::Left)
        item.widths.push_back(m_measure.width(s, line));
    item.lines << line;
    return item;
}

std::shared_ptr<DeferredText> LayoutRun::captureText(const Element& element, EvalScope& scope)
{
    auto deferred = std::make_shared<DeferredText>();
    deferred->text = &element.text;
    deferred->captures.resize(size_t(element.captureCount));
    for (const TextPiece& piece : element.text.pieces) {
        if (piece.deferred) {
            deferred->resolved << QString();
            captureNode(*piece.expr, *deferred, scope);
        } else {
            deferred->resolved << m_eval->text(piece, scope);
        }
    }
    return deferred;
}

void LayoutRun::captureNode(const Expr& e, DeferredText& text, EvalScope& scope)
{
    if (e.captureIndex >= 0) {
        DeferredText::Capture& capture = text.captures[size_t(e.captureIndex)];
        if (e.kind == Expr::Kind::Aggregate && m_sites[size_t(e.site)].late)
            capture.late = m_sites[size_t(e.site)].pending;
        else
            capture.value = m_eval->eval(e, scope);
        return;
    }
    for (const auto& arg : e.args)
        captureNode(*arg, text, scope);
}

double LayoutRun::layoutElement(Element& element, const QRectF& rect, std::vector<Item>& items, EvalScope& scope,
                                bool allowGrow)
{
    switch (element.kind) {
    case Element::Kind::Text: {
        const TextStyle& style = m_doc.styles[size_t(element.boundStyle)];
        const bool framed = style.border > 0 || style.fill.has_value();
        const double inset = framed ? 1.5 : 0;
        if (element.late) {
            TextItem item;
            item.rect = rect;
            item.style = element.boundStyle;
            item.deferred = captureText(element, scope);
            items.emplace_back(std::move(item));
            return 0;
        }
        QString text;
        for (const TextPiece& piece : element.text.pieces)
            text += m_eval->text(piece, scope);
        if (text.isEmpty() && !framed)
            return 0;
        TextItem item;
        item.rect = rect;
        item.style = element.boundStyle;
        const double width = std::max(1.0, rect.width() - 2 * inset);
        double growth = 0;
        if (element.wrap) {
            item.lines = m_measure.wrap(style, text, width);
            const double lineHeight = m_measure.lineHeight(style);
            const double needed = item.lines.size() * lineHeight;
            if (element.stretch && allowGrow) {
                growth = std::max(0.0, needed - rect.height());
                item.rect.setHeight(rect.height() + growth);
            } else {
                const int fit = std::max(1, int(std::floor((rect.height() + 0.01) / lineHeight)));
                if (item.lines.size() > fit) {
                    item.lines = item.lines.mid(0, fit);
                    item.lines.last() = m_measure.elide(style, item.lines.last() + QChar(0x2026), width);
                }
            }
            for (QString& line : item.lines)
                line = m_measure.elide(style, line, width);
        } else {
            text.replace(u'\n', u' ');
            item.lines << m_measure.elide(style, text, width);
        }
        if (style.align != HAlign::Left) {
            for (const QString& line : item.lines)
                item.widths.push_back(m_measure.width(style, line));
        }
        items.emplace_back(std::move(item));
        return growth;
    }
    case Element::Kind::Line:
        items.emplace_back(LineItem{rect.topLeft(), rect.bottomRight(), element.penWidth, element.penColor});
        return 0;
    case Element::Kind::Box:
        items.emplace_back(BoxItem{rect, element.penWidth, element.penColor, element.boxFill});
        return 0;
    case Element::Kind::Image: {
        QImage image;
        if (!element.imageFile.isEmpty()) {
            image = loadImage(QFileInfo(m_report->fileName).dir().filePath(element.imageFile), element.line);
        } else if (element.imageValue.pieces.size() == 1 && element.imageValue.pieces[0].expr &&
                   element.imageValue.pieces[0].format.isEmpty()) {
            image = imageFromValue(m_eval->eval(*element.imageValue.pieces[0].expr, scope));
        } else {
            QString text;
            for (const TextPiece& piece : element.imageValue.pieces)
                text += m_eval->text(piece, scope);
            image = imageFromValue(text);
        }
        if (!image.isNull())
            items.emplace_back(ImageItem{rect, image, element.keepAspect});
        return 0;
    }
    case Element::Kind::Barcode: {
        QString data;
        for (const TextPiece& piece : element.barcodeData.pieces)
            data += m_eval->text(piece, scope);
        data = data.trimmed();
        if (data.isEmpty())
            return 0;
        try {
            items.emplace_back(
                BarcodeItem{rect, Barcode::encode(element.symbology, data, element.barcodeText), element.boundStyle});
        } catch (const MessageError& e) {
            fail(element.line, e.message());
        }
        return 0;
    }
    case Element::Kind::Subreport: {
        // Walk the rows as usual, then take the blocks back out of the
        // stream and stack their items at the element's place.
        const size_t streamMark = m_stream.size();
        const size_t blockMark = m_doc.blocks.size();
        walkSection(m_sectionIndex.value(element.section.get()), 0);
        double y = 0;
        std::vector<std::pair<int, QVariant>> contributions;
        for (size_t b = blockMark; b < m_doc.blocks.size(); ++b) {
            Block& block = m_doc.blocks[b];
            const QPointF offset(rect.left() + block.x, rect.top() + y);
            for (Item& item : block.items) {
                std::visit([&](auto& i) { translateItem(i, offset); }, item);
                items.push_back(std::move(item));
            }
            y += block.height;
            auto& c = m_extra[b].contributions;
            contributions.insert(contributions.end(), c.begin(), c.end());
        }
        m_doc.blocks.resize(blockMark);
        m_extra.resize(blockMark);
        m_stream.resize(streamMark);
        m_pendingContributions.insert(m_pendingContributions.end(), contributions.begin(), contributions.end());
        return std::max(0.0, y - rect.height());
    }
    case Element::Kind::Crosstab:
        return 0;
    }
    return 0;
}

QImage LayoutRun::loadImage(const QString& path, int line)
{
    const auto it = m_images.constFind(path);
    if (it != m_images.constEnd())
        return it.value();
    const QFileInfo info(path);
    QImage image;
    if (info.isFile() && info.size() <= MaxImageBytes) {
        QImageReader reader(path);
        image = reader.read();
    }
    if (image.isNull() && line > 0)
        fail(line, QStringLiteral("the picture %1 cannot be read").arg(path));
    m_images.insert(path, image);
    return image;
}

QImage LayoutRun::imageFromValue(const QVariant& value)
{
    if (!value.isValid() || value.isNull())
        return {};
    if (value.typeId() == QMetaType::QByteArray) {
        QByteArray bytes = value.toByteArray();
        if (bytes.isEmpty() || bytes.size() > MaxImageBytes)
            return {};
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::ReadOnly);
        QImageReader reader(&buffer);
        return reader.read();
    }
    const QString name = value.toString().trimmed();
    if (name.isEmpty())
        return {};
    const QString path = QFileInfo(name).isAbsolute() ? name : QFileInfo(m_report->fileName).dir().filePath(name);
    // A picture named by the data that is not there prints as nothing: the
    // rest of the page is still worth printing.
    return loadImage(path, 0);
}

} // namespace kb::reports
