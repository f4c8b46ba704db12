#include "ReportOutput.h"

#include "engine/ReportDocument.h"
#include "render/PagePainter.h"

namespace kb::reports {

QString destinationName(ReportDestination destination)
{
    return destination == ReportDestination::Printer ? QStringLiteral("Printer") : QStringLiteral("Screen");
}

std::optional<ReportDestination> destinationFromName(const QString& name)
{
    if (name.compare(QLatin1String("Screen"), Qt::CaseInsensitive) == 0)
        return ReportDestination::Screen;
    if (name.compare(QLatin1String("Printer"), Qt::CaseInsensitive) == 0)
        return ReportDestination::Printer;
    return std::nullopt;
}

void PdfFileOutput::preview(std::shared_ptr<const ReportDocument> document)
{
    writePdf(*document, m_path);
    ++m_written;
}

bool PdfFileOutput::print(const ReportDocument& document, bool showDialog)
{
    Q_UNUSED(showDialog);
    writePdf(document, m_path);
    ++m_written;
    return true;
}

} // namespace kb::reports
