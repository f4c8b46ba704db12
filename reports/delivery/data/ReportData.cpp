#include "delivery/data/ReportData.h"

#include "MessageError.h"
#include "delivery/DeliveryReportList.h"

namespace kb::reports {

ReportData ReportData::forReport(int report, const QString& mainPipe)
{
    ReportData data;
    data.templateFile = DeliveryReports::templateFile(report);
    data.mainPipe = mainPipe;
    return data;
}

DataPipe* ReportData::pipe(const QString& name) const
{
    for (const auto& p : pipes) {
        if (p->name().compare(name, Qt::CaseInsensitive) == 0) return p.get();
    }
    return nullptr;
}

DataPipe& ReportData::mainData() const
{
    DataPipe* p = pipe(mainPipe);
    if (!p) throw MessageError(QStringLiteral("The report has no data pipe named %1.").arg(mainPipe));
    return *p;
}

RowsPipe& ReportData::addRows(const QString& name, ResultSet rows)
{
    return addRows(name, std::make_shared<const ResultSet>(std::move(rows)));
}

RowsPipe& ReportData::addRows(const QString& name, std::shared_ptr<const ResultSet> rows)
{
    auto pipe = std::make_unique<RowsPipe>(name, std::move(rows));
    RowsPipe& ref = *pipe;
    pipes.push_back(std::move(pipe));
    return ref;
}

void ReportData::link(const QString& detail, const QString& master,
                      const std::vector<std::pair<QString, QString>>& fields)
{
    auto* d = dynamic_cast<RowsPipe*>(pipe(detail));
    DataPipe* m = pipe(master);
    if (!d || !m) throw MessageError(QStringLiteral("The report cannot link %1 to %2.").arg(detail, master));
    d->linkTo(*m, fields);
}

} // namespace kb::reports
