#include "QtReportOutput.h"

#include "MessageError.h"
#include "ReportPreview.h"
#include "ReportPreviewView.h"
#include "engine/ReportDocument.h"
#include "render/PagePainter.h"

#include <QPageLayout>
#include <QPageSize>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>

namespace kb::ui {

QtReportOutput::QtReportOutput(QWidget* parent, UserInterface& ui, QString settingsFile)
    : m_parent(parent), m_ui(ui), m_settingsFile(std::move(settingsFile))
{
}

void QtReportOutput::preview(std::shared_ptr<const reports::ReportDocument> document)
{
    reports::ReportPreview presenter(std::move(document), this, m_ui);
    presenter.setSettingsFile(m_settingsFile);
    ReportPreviewView view(presenter, m_parent);
    view.setWindowState(view.windowState() | Qt::WindowMaximized);
    view.exec();
}

bool QtReportOutput::print(const reports::ReportDocument& document, bool showDialog)
{
    if (document.pageCount() == 0)
        return false;
    QPrinter printer(QPrinter::HighResolution);
    // The printer first: choosing one resets the paper to its own.
    if (!m_printerName.isEmpty() && !QPrinterInfo::printerInfo(m_printerName).isNull())
        printer.setPrinterName(m_printerName);
    printer.setDocName(document.title);
    printer.setCreator(QStringLiteral("Kettlebrook"));
    // The painter draws from the paper's corner; the margins are the report's.
    printer.setFullPage(true);
    printer.setPageLayout(reports::pageLayoutOf(document));
    printer.setFromTo(1, document.pageCount());
    if (!m_printToFile.isEmpty()) {
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(m_printToFile);
    } else if (showDialog) {
        QPrintDialog dialog(&printer, m_parent);
        dialog.setWindowTitle(QStringLiteral("Print"));
        dialog.setMinMax(1, document.pageCount());
        dialog.setOption(QAbstractPrintDialog::PrintToFile, true);
        dialog.setOption(QAbstractPrintDialog::PrintPageRange, true);
        if (dialog.exec() != QDialog::Accepted)
            return false;
    } else if (QPrinterInfo::defaultPrinter().isNull() && printer.outputFileName().isEmpty()) {
        throw MessageError(QStringLiteral("There is no printer to print the report on."));
    }
    int first = 0, last = document.pageCount() - 1;
    if (printer.printRange() == QPrinter::PageRange && printer.fromPage() > 0) {
        first = printer.fromPage() - 1;
        last = std::min(last, printer.toPage() - 1);
    }
    // Most printers make the copies themselves; for the others the pages
    // are sent as many times.
    const int copies = printer.supportsMultipleCopies() ? 1 : printer.copyCount();
    reports::paintPages(document, printer, first, last, copies);
    if (printer.outputFormat() == QPrinter::NativeFormat) m_printerName = printer.printerName();
    return true;
}

} // namespace kb::ui
