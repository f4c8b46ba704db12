#include "ReportHolder.h"

#include "Clock.h"
#include "MessageError.h"
#include "data/DataPipe.h"
#include "data/NamedValues.h"
#include "data/PipeCsv.h"
#include "data/StatementPipe.h"
#include "engine/ReportLayout.h"
#include "model/LabelStock.h"
#include "template/TemplateError.h"
#include "template/TemplateReader.h"

#include <QDir>
#include <QFileInfo>

namespace kb::reports {

ReportHolder::ReportHolder(ReportOutput& output, const Clock& clock) : m_output(output), m_clock(clock) {}

ReportHolder::~ReportHolder() = default;

bool ReportHolder::templateExists() const { return QFileInfo(m_templateFile).isFile(); }

void ReportHolder::loadTemplate()
{
    m_template.reset();
    m_template = std::make_shared<ReportTemplate>(TemplateReader::readFile(m_templateFile));
}

void ReportHolder::loadFromDataDirectory(const QString& directory, const QString& fileName)
{
    setTemplateFileName(QDir(directory).filePath(fileName));
    loadTemplate();
}

void ReportHolder::loadText(const QString& text, const QString& fileName)
{
    m_template.reset();
    m_templateFile = fileName;
    m_template = std::make_shared<ReportTemplate>(TemplateReader::readText(text, fileName));
}

void ReportHolder::resetDevices()
{
    m_destination = ReportDestination::Screen;
    m_showPrintDialog = true;
}

void ReportHolder::setPipe(DataPipe& pipe)
{
    for (DataPipe*& p : m_pipes) {
        if (p->name().compare(pipe.name(), Qt::CaseInsensitive) == 0) {
            p = &pipe;
            return;
        }
    }
    m_pipes.push_back(&pipe);
}

void ReportHolder::addPipe(std::unique_ptr<DataPipe> pipe)
{
    setPipe(*pipe);
    m_ownPipes.push_back(std::move(pipe));
}

DataPipe* ReportHolder::pipe(const QString& name) const
{
    for (DataPipe* p : m_pipes) {
        if (p->name().compare(name, Qt::CaseInsensitive) == 0)
            return p;
    }
    return nullptr;
}

void ReportHolder::clearPipes()
{
    m_pipes.clear();
    m_ownPipes.clear();
}

void ReportHolder::setParameter(const QString& name, const QVariant& value)
{
    setNamedValue(m_parameters, name, value);
}

QVariant ReportHolder::parameter(const QString& name) const { return namedValue(m_parameters, name); }

void ReportHolder::clearParameters() { m_parameters.clear(); }

std::shared_ptr<ReportDocument> ReportHolder::layout()
{
    if (!m_template) {
        if (m_templateFile.isEmpty())
            throw MessageError(QStringLiteral("No report template was assigned!"));
        loadTemplate();
    }
    if (m_stock)
        applyLabelStock(*m_template, *m_stock);
    const int perSheet = m_template->columns.labelsPerSheet();
    if (perSheet > 0 && m_startPosition > perSheet)
        throw MessageError(
            QStringLiteral("The first label to print must be one of the %1 labels of the sheet, "
                           "not label %2.")
                .arg(perSheet)
                .arg(m_startPosition));
    ReportInputs inputs;
    inputs.pipes = m_pipes;
    inputs.parameters = m_parameters;
    inputs.now = m_clock.now();
    inputs.database = m_database;
    inputs.labelStartPosition = m_startPosition;
    inputs.progress = m_progress;
    auto document = std::make_shared<ReportDocument>(layoutReport(m_template, inputs));
    if (!m_documentName.isEmpty() && document->title.isEmpty())
        document->title = m_documentName;
    return document;
}

bool ReportHolder::print()
{
    std::shared_ptr<ReportDocument> document = layout();
    if (m_destination == ReportDestination::Screen) {
        m_output.preview(document);
        return true;
    }
    return m_output.print(*document, m_showPrintDialog);
}

void ReportHolder::writeCsv(QTextStream& out)
{
    if (!m_template)
        loadTemplate();
    DataPipe* main = pipe(m_template->body.pipe);
    // A template that brings its own data: its statement, run as the report would.
    std::unique_ptr<StatementPipe> own;
    for (const DataDef& def : m_template->data) {
        if (m_database && def.pipe.compare(m_template->body.pipe, Qt::CaseInsensitive) == 0) {
            own = std::make_unique<StatementPipe>(def.pipe, *m_database, def.sql);
            Params params;
            for (const ParameterDef& p : m_template->parameters)
                params.emplace_back(p.name, p.defaultValue);
            params.insert(params.begin(), m_parameters.begin(), m_parameters.end());
            own->setReportParameters(params);
            main = own.get();
        }
    }
    if (!main)
        throw MessageError(QStringLiteral("The report reads no data pipe the program gave (%1).")
                               .arg(m_template->body.pipe.isEmpty() ? QStringLiteral("none named")
                                                                    : m_template->body.pipe));
    main->invalidate();
    writePipeCsv(*main, out);
}

} // namespace kb::reports
