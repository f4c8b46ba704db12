#pragma once

// The inside of layoutReport: one run of a template over its data.
//
// It works in two passes. The walk visits the rows of the main pipe (and of
// the subreports' pipes within them), evaluates each band and makes it a
// Block of a fixed height, and writes a stream of blocks with markers where
// groups (and details kept together) open and close. Pagination then puts
// the blocks on pages, knowing each group's whole height in advance, so
// that it can keep a group together, repeat its header on the next page or
// start it on a new page; it places the labels of a grid and finally prints
// the page headers and footers. Texts that need the page count or a sum not
// yet known are captured during the walk and printed when painted.

#include "data/DataPipe.h"
#include "data/StatementPipe.h"
#include "engine/Accumulator.h"
#include "engine/Evaluator.h"
#include "engine/ReportLayout.h"
#include "engine/TextMeasure.h"

#include <QHash>
#include <QImage>

#include <map>

namespace kb::reports {

class LayoutRun
{
public:
    LayoutRun(std::shared_ptr<ReportTemplate> report, const ReportInputs& inputs);
    ReportDocument run();

private:
    // ---- the stream the walk writes and pagination reads ----
    struct Entry
    {
        enum class Kind { Block, Open, Close, PageBreak };
        Kind kind;
        int index = 0; // the block or the OpenInfo
    };
    struct OpenInfo
    {
        bool keepTogether = false;
        bool reprintHeader = false;
        bool newPage = false;
        bool resetPageNumber = false;
        bool keepHeaderWithNext = false;
        std::vector<int> headerBlocks;
        double height = 0; // of everything up to its close
    };
    struct BlockExtra
    {
        int pageValues = -1;
        std::vector<std::pair<int, QVariant>> contributions; // page sums: site, value
    };

    // ---- binding ----
    struct SectionInfo
    {
        Section* section = nullptr;
        int parent = -1;
        int pipe = -1; // slot in m_pipes
    };
    struct Scope
    {
        enum class Kind { Page, Run, Group };
        Kind kind = Kind::Run;
        int section = 0;
        int group = -1;
        bool operator==(const Scope&) const = default;
    };
    struct BindContext
    {
        int section = 0;
        Band::Role role = Band::Role::Detail;
        int group = -1;        // the group whose header or footer this is
        bool pageBand = false;
        bool allowPages = false; // page and pages may stand here
        bool inAggregate = false;
        int crosstabPipe = -1; // the crosstab's own pipe, searched first
        int line = 0;
    };
    struct Site
    {
        Expr* node = nullptr;     // the aggregate; null for a crosstab
        const Expr* arg = nullptr; // the value; null counts rows
        Accumulator acc;
        Scope scope;
        int accumulateIn = 0; // the section at whose rows it gathers
        bool late = false;    // printed before its scope ends
        std::shared_ptr<LateValue> pending;
        Element* crosstab = nullptr;
        struct CrosstabData* data = nullptr;
    };

    void bindAll();
    void registerSections(Section& section, int parent);
    void bindSection(Section& section);
    void bindBand(Band& band, BindContext context);
    void bindElement(Element& element, const BindContext& context);
    void bindText(TextTemplate& text, Element& element, const BindContext& context, bool allowLate);
    void bindExpr(Expr& e, const BindContext& context);
    void bindAggregate(Expr& e, const BindContext& context);
    Scope defaultScope(const BindContext& context) const;
    int accumulationSection(const Expr* arg, const Scope& scope) const;
    void collectPipes(const Expr& e, std::vector<int>& pipes) const;
    bool containsKind(const Expr& e, Expr::Kind kind) const;
    bool containsLate(const Expr& e) const;
    void assignCaptures(Expr& e, int& next) const;
    int pipeSlot(const QString& name, int line);
    int styleIndex(const TextStyle& style);
    [[noreturn]] void fail(int line, const QString& what) const;

    // ---- the walk ----
    class RowScope;
    void walkSection(int section, double x);
    void openGroups(int section, int from, double x);
    void closeGroups(int section, int from, double x);
    void openScope(const Scope& scope);
    void closeScope(const Scope& scope);
    void accumulate(int section);
    void emitBand(Band& band, int section, double x, bool columnar);
    void emitPiece(Band& band, const std::vector<Element*>& elements, double from, double to, bool last, int section,
                   double x, bool columnar);
    double layoutElement(Element& element, const QRectF& rect, std::vector<Item>& items, EvalScope& scope,
                         bool allowGrow);
    std::shared_ptr<DeferredText> captureText(const Element& element, EvalScope& scope);
    void captureNode(const Expr& e, DeferredText& text, EvalScope& scope);
    TextItem makeText(const QRectF& rect, int style, const QString& text);
    int addBlock(Block block);
    void addEntry(Entry::Kind kind, int index = 0);
    void emitCrosstab(Element& element, int section, double x);
    QImage loadImage(const QString& path, int line);
    QImage imageFromValue(const QVariant& value);

    // Scales and centres each label's content on a stock other than the
    // one the template is laid out for.
    void fitLabels();

    // ---- pagination ----
    class PageScope;
    void computeGroupHeights();
    void paginate();
    void layoutPageBands();
    void layoutPageBand(Band& band, Page& page, double top, PageScope& scope);

    std::shared_ptr<ReportTemplate> m_report;
    const ReportInputs& m_inputs;
    std::unique_ptr<Formatter> m_formatter;
    std::unique_ptr<Evaluator> m_eval;
    TextMeasure m_measure;
    ReportDocument m_doc;

    std::vector<DataPipe*> m_pipes;
    QHash<QString, int> m_pipeSlots; // by lower-case name
    std::vector<std::unique_ptr<StatementPipe>> m_ownPipes;
    std::vector<QVariant> m_params;
    QHash<QString, int> m_paramSlots; // by lower-case name
    std::vector<SectionInfo> m_sections;
    QHash<const Section*, int> m_sectionIndex;
    std::vector<Site> m_sites;
    std::vector<std::vector<int>> m_sitesIn; // by accumulation section
    std::vector<std::unique_ptr<struct CrosstabData>> m_crosstabs;
    std::vector<std::pair<int, int>> m_pageFields; // pipe, field of fields in page bands
    bool m_columns = false;

    std::vector<Entry> m_stream;
    std::vector<OpenInfo> m_opens;
    std::vector<BlockExtra> m_extra;
    std::vector<std::pair<int, QVariant>> m_pendingContributions;
    std::vector<std::vector<QVariant>> m_pageValues;
    QHash<QString, QImage> m_images;
    qsizetype m_mainRows = 0;
    int m_lastProgress = -1;
};

// The values of the rows the pipes stand on.
class LayoutRun::RowScope final : public EvalScope
{
public:
    explicit RowScope(LayoutRun& run) : m_run(run) {}
    QVariant field(const Expr& e) override { return m_run.m_pipes[size_t(e.boundPipe)]->value(e.boundField); }
    QVariant parameter(const Expr& e) override
    {
        return e.boundField >= 0 ? m_run.m_params[size_t(e.boundField)] : QVariant();
    }
    QVariant pageNumber() override { return {}; }
    QVariant pageCount() override { return {}; }
    QVariant aggregate(const Expr& e) override { return m_run.m_sites[size_t(e.site)].acc.value(); }

private:
    LayoutRun& m_run;
};

// The cells of a crosstab, gathered row by row.
struct CrosstabData
{
    using Key = std::vector<QVariant>;
    struct KeyLess
    {
        bool operator()(const Key& a, const Key& b) const;
    };
    struct Row
    {
        std::map<Key, Accumulator, KeyLess> cells;
        Accumulator total;
    };

    explicit CrosstabData(Accumulator::Function function) : function(function), grand(function) {}
    void reset();
    void add(const Key& row, const Key& column, const QVariant& value);

    Accumulator::Function function;
    std::map<Key, Row, KeyLess> rows;
    std::map<Key, Accumulator, KeyLess> columnTotals;
    Accumulator grand;
};

} // namespace kb::reports
