// Binding: before a run, every name of the template is tied to a pipe's
// field or a parameter, every aggregate to the rows it gathers, and every
// text that can only be printed late is marked, so that the walk evaluates
// without look-ups and a wrong name is reported with its line before any
// row is read.

#include "engine/LayoutRun.h"

#include "template/TemplateError.h"

#include <QFileInfo>

namespace kb::reports {

LayoutRun::LayoutRun(std::shared_ptr<ReportTemplate> report, const ReportInputs& inputs)
    : m_report(std::move(report)), m_inputs(inputs)
{
    m_formatter = std::make_unique<Formatter>(m_report->locale, m_report->dateFormat, m_report->dateTimeFormat);
    const QDateTime now = inputs.now.isValid() ? inputs.now : QDateTime::currentDateTime();
    m_eval = std::make_unique<Evaluator>(*m_formatter, now);
    m_doc.now = now;
    for (DataPipe* pipe : inputs.pipes) {
        if (!pipe)
            continue;
        const QString key = pipe->name().toLower();
        if (m_pipeSlots.contains(key)) {
            m_pipes[size_t(m_pipeSlots.value(key))] = pipe;
        } else {
            m_pipeSlots.insert(key, int(m_pipes.size()));
            m_pipes.push_back(pipe);
        }
    }
    auto setParam = [this](const QString& name, const QVariant& value) {
        const QString key = name.toLower();
        if (m_paramSlots.contains(key)) {
            m_params[size_t(m_paramSlots.value(key))] = value;
        } else {
            m_paramSlots.insert(key, int(m_params.size()));
            m_params.push_back(value);
        }
    };
    for (const ParameterDef& p : m_report->parameters)
        setParam(p.name, p.defaultValue);
    for (const auto& [name, value] : inputs.parameters)
        setParam(name, value);
}

void LayoutRun::fail(int line, const QString& what) const
{
    if (line > 0)
        throw TemplateError(QStringLiteral("Error in the report template %1, line %2: %3")
                                .arg(QFileInfo(m_report->fileName).fileName())
                                .arg(line)
                                .arg(what));
    throw TemplateError(
        QStringLiteral("Error in the report template %1: %2").arg(QFileInfo(m_report->fileName).fileName(), what));
}

int LayoutRun::pipeSlot(const QString& name, int line)
{
    const auto it = m_pipeSlots.constFind(name.toLower());
    if (it == m_pipeSlots.constEnd()) {
        QStringList given;
        for (DataPipe* p : m_pipes)
            given << p->name();
        fail(line, QStringLiteral("the report needs the data pipe %1, which it was not given (given: %2)")
                       .arg(name, given.isEmpty() ? QStringLiteral("none") : given.join(QStringLiteral(", "))));
    }
    return it.value();
}

int LayoutRun::styleIndex(const TextStyle& style)
{
    for (size_t i = 0; i < m_doc.styles.size(); ++i) {
        if (m_doc.styles[i] == style)
            return int(i);
    }
    m_doc.styles.push_back(style);
    return int(m_doc.styles.size() - 1);
}

void LayoutRun::bindAll()
{
    ReportTemplate& report = *m_report;
    Params reportParams;
    for (auto it = m_paramSlots.constBegin(); it != m_paramSlots.constEnd(); ++it)
        reportParams.emplace_back(it.key(), m_params[size_t(it.value())]);
    for (const DataDef& def : report.data) {
        if (!m_inputs.database)
            fail(def.line, QStringLiteral("the template brings its own data (%1), which needs the agency's data")
                               .arg(def.pipe));
        auto pipe = std::make_unique<StatementPipe>(def.pipe, *m_inputs.database, def.sql);
        pipe->setReportParameters(reportParams);
        if (!def.master.isEmpty())
            pipe->follow(*m_pipes[size_t(pipeSlot(def.master, def.line))]);
        const QString key = def.pipe.toLower();
        // The template's own data stands in for a pipe of the same name.
        if (m_pipeSlots.contains(key)) {
            m_pipes[size_t(m_pipeSlots.value(key))] = pipe.get();
        } else {
            m_pipeSlots.insert(key, int(m_pipes.size()));
            m_pipes.push_back(pipe.get());
        }
        m_ownPipes.push_back(std::move(pipe));
    }
    // Every run reads the data as it stands now.
    for (DataPipe* pipe : m_pipes)
        pipe->invalidate();

    m_columns = report.columns.count > 1 || report.columns.rowPitch > 0;
    registerSections(report.body, -1);
    m_sitesIn.assign(m_sections.size(), {});
    m_pageFields.clear();
    for (const SectionInfo& info : m_sections)
        bindSection(*info.section);
    for (Band* band : {report.pageHeader.get(), report.pageFooter.get()}) {
        if (!band)
            continue;
        BindContext context;
        context.role = band->role;
        context.pageBand = true;
        context.allowPages = true;
        context.line = band->line;
        bindBand(*band, context);
    }
}

void LayoutRun::registerSections(Section& section, int parent)
{
    const int index = int(m_sections.size());
    SectionInfo info;
    info.section = &section;
    info.parent = parent;
    if (!section.pipe.isEmpty())
        info.pipe = pipeSlot(section.pipe, section.line);
    else if (parent >= 0)
        fail(section.line, QStringLiteral("a subreport needs a pipe: subreport X Y pipe NAME"));
    m_sections.push_back(info);
    m_sectionIndex.insert(&section, index);
    auto visit = [&](Band* band) {
        if (!band)
            return;
        for (Element& e : band->elements) {
            if (e.kind == Element::Kind::Subreport && e.section)
                registerSections(*e.section, index);
        }
    };
    visit(section.header.get());
    visit(section.footer.get());
    visit(section.detail.get());
    visit(section.noData.get());
    for (Group& g : section.groups) {
        visit(g.header.get());
        visit(g.footer.get());
    }
}

void LayoutRun::bindSection(Section& section)
{
    const int index = m_sectionIndex.value(&section);
    for (Group& g : section.groups) {
        BindContext context;
        context.section = index;
        context.line = g.line;
        bindExpr(*g.key, context);
        if (containsKind(*g.key, Expr::Kind::Aggregate))
            fail(g.line, QStringLiteral("a group's key cannot hold a sum or count"));
    }
    auto bind = [&](Band* band, int group) {
        if (!band)
            return;
        BindContext context;
        context.section = index;
        context.role = band->role;
        context.group = group;
        context.line = band->line;
        bindBand(*band, context);
    };
    bind(section.header.get(), -1);
    bind(section.footer.get(), -1);
    bind(section.noData.get(), -1);
    bind(section.detail.get(), -1);
    for (size_t g = 0; g < section.groups.size(); ++g) {
        bind(section.groups[g].header.get(), int(g));
        bind(section.groups[g].footer.get(), int(g));
    }
}

void LayoutRun::bindBand(Band& band, BindContext context)
{
    if (band.visible) {
        BindContext condition = context;
        condition.line = band.line;
        condition.allowPages = false;
        bindExpr(*band.visible, condition);
        if (containsLate(*band.visible))
            fail(band.line, QStringLiteral("a band's condition cannot use a sum known only at the end of its group"));
    }
    for (Element& e : band.elements) {
        BindContext elementContext = context;
        elementContext.line = e.line;
        bindElement(e, elementContext);
    }
}

void LayoutRun::bindElement(Element& element, const BindContext& context)
{
    element.captureCount = 0;
    element.late = false;
    element.boundStyle = styleIndex(element.style);
    if (element.visible) {
        BindContext condition = context;
        condition.allowPages = false;
        bindExpr(*element.visible, condition);
        if (containsLate(*element.visible))
            fail(element.line,
                 QStringLiteral("an element's condition cannot use a sum known only at the end of its group"));
    }
    switch (element.kind) {
    case Element::Kind::Text:
        bindText(element.text, element, context, true);
        break;
    case Element::Kind::Image:
        bindText(element.imageValue, element, context, false);
        break;
    case Element::Kind::Barcode:
        bindText(element.barcodeData, element, context, false);
        break;
    case Element::Kind::Crosstab: {
        Element::CrosstabDef& x = *element.crosstab;
        x.style.size = std::max(2.0, x.style.size);
        element.boundStyle = styleIndex(x.style);
        BindContext inner = context;
        inner.allowPages = false;
        inner.inAggregate = true; // no sums inside a crosstab's values
        if (!x.pipe.isEmpty())
            inner.crosstabPipe = pipeSlot(x.pipe, element.line);
        for (auto* dims : {&x.rows, &x.columns}) {
            for (auto& d : *dims)
                bindExpr(*d.expr, inner);
        }
        if (x.value)
            bindExpr(*x.value, inner);
        if (x.pipe.isEmpty()) {
            if (context.role != Band::Role::GroupFooter && context.role != Band::Role::Summary)
                fail(element.line, QStringLiteral("a crosstab without a pipe of its own gathers the rows of its "
                                                  "group, so it stands in a group footer or the summary"));
            auto data = std::make_unique<CrosstabData>(Accumulator::functionOf(x.function));
            Site site;
            site.crosstab = &element;
            site.data = data.get();
            site.scope = defaultScope(context);
            site.accumulateIn = accumulationSection(nullptr, site.scope);
            m_crosstabs.push_back(std::move(data));
            m_sites.push_back(std::move(site));
            m_sitesIn[size_t(m_sites.back().accumulateIn)].push_back(int(m_sites.size() - 1));
        }
        break;
    }
    default:
        break;
    }
}

void LayoutRun::bindText(TextTemplate& text, Element& element, const BindContext& context, bool allowLate)
{
    for (TextPiece& piece : text.pieces) {
        if (!piece.expr)
            continue;
        BindContext inner = context;
        inner.allowPages = allowLate;
        bindExpr(*piece.expr, inner);
        const bool late = containsKind(*piece.expr, Expr::Kind::PageCount) ||
                          (!context.pageBand && containsKind(*piece.expr, Expr::Kind::PageNumber)) ||
                          containsLate(*piece.expr);
        if (late && !allowLate)
            fail(element.line, QStringLiteral("a picture or barcode cannot use page numbers or sums known only "
                                              "later"));
        piece.deferred = late;
        if (late) {
            element.late = true;
            assignCaptures(*piece.expr, element.captureCount);
        }
    }
}

void LayoutRun::bindExpr(Expr& e, const BindContext& context)
{
    e.captureIndex = -1;
    e.pageIndex = -1;
    switch (e.kind) {
    case Expr::Kind::Literal:
        return;
    case Expr::Kind::Name:
    case Expr::Kind::Field: {
        e.boundPipe = -1;
        e.boundField = -1;
        if (e.kind == Expr::Kind::Field) {
            e.boundPipe = pipeSlot(e.pipe, context.line);
            e.boundField = m_pipes[size_t(e.boundPipe)]->fieldIndex(e.name);
            if (e.boundField < 0)
                fail(context.line, QStringLiteral("the pipe %1 has no field %2 (its fields: %3)")
                                       .arg(e.pipe, e.name,
                                            m_pipes[size_t(e.boundPipe)]->fieldNames().join(QStringLiteral(", "))));
        } else {
            // The nearest pipe first: a crosstab's own, then the section's, then the enclosing ones.
            std::vector<int> chain;
            if (context.crosstabPipe >= 0)
                chain.push_back(context.crosstabPipe);
            for (int s = context.pageBand ? 0 : context.section; s >= 0; s = m_sections[size_t(s)].parent) {
                if (m_sections[size_t(s)].pipe >= 0)
                    chain.push_back(m_sections[size_t(s)].pipe);
            }
            for (int p : chain) {
                const int f = m_pipes[size_t(p)]->fieldIndex(e.name);
                if (f >= 0) {
                    e.boundPipe = p;
                    e.boundField = f;
                    break;
                }
            }
            if (e.boundPipe < 0) {
                const auto it = m_paramSlots.constFind(e.name.toLower());
                if (it == m_paramSlots.constEnd()) {
                    QStringList pipes;
                    for (int p : chain)
                        pipes << m_pipes[size_t(p)]->name();
                    fail(context.line, QStringLiteral("there is no field or parameter named %1 here (%2)")
                                           .arg(e.name, pipes.isEmpty()
                                                            ? QStringLiteral("no pipe is read here")
                                                            : QStringLiteral("the fields come from ") +
                                                                  pipes.join(QStringLiteral(", "))));
                }
                e.boundField = it.value();
                return;
            }
        }
        if (context.pageBand && !context.inAggregate) {
            const std::pair<int, int> key(e.boundPipe, e.boundField);
            const auto found = std::find(m_pageFields.begin(), m_pageFields.end(), key);
            e.pageIndex = int(found - m_pageFields.begin());
            if (found == m_pageFields.end())
                m_pageFields.push_back(key);
        }
        return;
    }
    case Expr::Kind::Parameter: {
        const auto it = m_paramSlots.constFind(e.name.toLower());
        if (it == m_paramSlots.constEnd())
            fail(context.line, QStringLiteral("the report was given no parameter named %1").arg(e.name));
        e.boundPipe = -1;
        e.boundField = it.value();
        return;
    }
    case Expr::Kind::PageNumber:
    case Expr::Kind::PageCount:
        if (!context.allowPages || context.inAggregate)
            fail(context.line, QStringLiteral("page and pages can only be printed in a text"));
        return;
    case Expr::Kind::Call:
        e.function = Evaluator::functionIndex(e.name);
        if (e.function < 0)
            fail(context.line,
                 QStringLiteral("unknown function %1 (the functions: %2)").arg(e.name, Evaluator::functionNames()));
        if (!Evaluator::acceptsArguments(e.function, int(e.args.size())))
            fail(context.line, QStringLiteral("%1 does not take %2 values").arg(e.name).arg(e.args.size()));
        break;
    case Expr::Kind::Aggregate:
        bindAggregate(e, context);
        return;
    case Expr::Kind::Unary:
    case Expr::Kind::Binary:
        break;
    }
    for (auto& arg : e.args)
        bindExpr(*arg, context);
}

LayoutRun::Scope LayoutRun::defaultScope(const BindContext& context) const
{
    if (context.pageBand)
        return Scope{Scope::Kind::Page, 0, -1};
    const Section& section = *m_sections[size_t(context.section)].section;
    switch (context.role) {
    case Band::Role::GroupHeader:
    case Band::Role::GroupFooter:
        return Scope{Scope::Kind::Group, context.section, context.group};
    case Band::Role::Detail:
        if (!section.groups.empty())
            return Scope{Scope::Kind::Group, context.section, int(section.groups.size()) - 1};
        return Scope{Scope::Kind::Run, context.section, -1};
    default:
        return Scope{Scope::Kind::Run, context.section, -1};
    }
}

void LayoutRun::collectPipes(const Expr& e, std::vector<int>& pipes) const
{
    if ((e.kind == Expr::Kind::Field || e.kind == Expr::Kind::Name) && e.boundPipe >= 0)
        pipes.push_back(e.boundPipe);
    for (const auto& arg : e.args)
        collectPipes(*arg, pipes);
}

int LayoutRun::accumulationSection(const Expr* arg, const Scope& scope) const
{
    const int base = scope.kind == Scope::Kind::Page ? 0 : scope.section;
    if (!arg)
        return base;
    std::vector<int> pipes;
    collectPipes(*arg, pipes);
    int best = base;
    int bestDepth = -1;
    for (size_t s = 0; s < m_sections.size(); ++s) {
        int depth = 0;
        bool inside = false;
        for (int p = int(s); p >= 0; p = m_sections[size_t(p)].parent, ++depth) {
            if (p == base) {
                inside = true;
                break;
            }
        }
        if (!inside || m_sections[s].pipe < 0)
            continue;
        if (std::find(pipes.begin(), pipes.end(), m_sections[s].pipe) != pipes.end() && depth > bestDepth) {
            best = int(s);
            bestDepth = depth;
        }
    }
    return best;
}

void LayoutRun::bindAggregate(Expr& e, const BindContext& context)
{
    if (context.inAggregate)
        fail(context.line, QStringLiteral("%1 cannot stand inside another sum, count or crosstab").arg(e.name));
    QString scopeName;
    std::vector<ExprPtr>& args = e.args;
    if (args.size() > 2)
        fail(context.line, QStringLiteral("%1 takes a value and a scope at most").arg(e.name));
    if (args.size() == 2) {
        if (args[1]->kind != Expr::Kind::Literal || args[1]->value.typeId() != QMetaType::QString)
            fail(context.line, QStringLiteral("the scope of %1 is a group's name in quotes, 'report' or 'page'")
                                   .arg(e.name));
        scopeName = args[1]->value.toString();
    }
    if (args.empty() && e.name != QLatin1String("count"))
        fail(context.line, QStringLiteral("%1 needs a value").arg(e.name));

    Site site;
    site.node = &e;
    site.acc = Accumulator(Accumulator::functionOf(e.name));
    if (!args.empty()) {
        BindContext inner = context;
        inner.inAggregate = true;
        inner.allowPages = false;
        bindExpr(*args[0], inner);
        site.arg = args[0].get();
    }

    Scope scope = defaultScope(context);
    if (!scopeName.isEmpty()) {
        if (scopeName.compare(QLatin1String("page"), Qt::CaseInsensitive) == 0) {
            scope = Scope{Scope::Kind::Page, 0, -1};
        } else if (scopeName.compare(QLatin1String("report"), Qt::CaseInsensitive) == 0) {
            scope = Scope{Scope::Kind::Run, 0, -1};
        } else {
            bool found = false;
            for (int s = context.pageBand ? 0 : context.section; s >= 0 && !found; s = m_sections[size_t(s)].parent) {
                const auto& groups = m_sections[size_t(s)].section->groups;
                for (size_t g = 0; g < groups.size(); ++g) {
                    if (groups[g].name.compare(scopeName, Qt::CaseInsensitive) == 0) {
                        scope = Scope{Scope::Kind::Group, s, int(g)};
                        found = true;
                        break;
                    }
                }
            }
            if (!found)
                fail(context.line, QStringLiteral("no group named %1 encloses this band").arg(scopeName));
        }
    }
    if (context.pageBand && scope.kind != Scope::Kind::Page)
        fail(context.line, QStringLiteral("a page header or footer can only sum its own page"));
    if (!context.pageBand && scope.kind == Scope::Kind::Page)
        fail(context.line, QStringLiteral("page sums can only stand in a page header or footer"));
    if (scope.kind == Scope::Kind::Group && scope.section == context.section) {
        const bool enclosed =
            context.role == Band::Role::Detail ||
            ((context.role == Band::Role::GroupHeader || context.role == Band::Role::GroupFooter) &&
             context.group >= scope.group);
        if (!enclosed)
            fail(context.line,
                 QStringLiteral("the group %1 does not enclose this band")
                     .arg(m_sections[size_t(scope.section)].section->groups[size_t(scope.group)].name));
    }
    site.scope = scope;
    site.accumulateIn = accumulationSection(site.arg, scope);
    site.late = scope.kind != Scope::Kind::Page && context.section == scope.section &&
                ((context.role == Band::Role::Title && scope.kind == Scope::Kind::Run) ||
                 (context.role == Band::Role::GroupHeader &&
                  (scope.kind == Scope::Kind::Run || context.group >= scope.group)));
    e.site = int(m_sites.size());
    m_sites.push_back(std::move(site));
    m_sitesIn[size_t(m_sites.back().accumulateIn)].push_back(e.site);
}

bool LayoutRun::containsKind(const Expr& e, Expr::Kind kind) const
{
    if (e.kind == kind)
        return true;
    for (const auto& arg : e.args) {
        if (containsKind(*arg, kind))
            return true;
    }
    return false;
}

bool LayoutRun::containsLate(const Expr& e) const
{
    if (e.kind == Expr::Kind::Aggregate)
        return e.site >= 0 && m_sites[size_t(e.site)].late;
    for (const auto& arg : e.args) {
        if (containsLate(*arg))
            return true;
    }
    return false;
}

void LayoutRun::assignCaptures(Expr& e, int& next) const
{
    switch (e.kind) {
    case Expr::Kind::Name:
    case Expr::Kind::Field:
    case Expr::Kind::Parameter:
    case Expr::Kind::Aggregate:
        e.captureIndex = next++;
        return;
    default:
        break;
    }
    for (auto& arg : e.args)
        assignCaptures(*arg, next);
}

} // namespace kb::reports
