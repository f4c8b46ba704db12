#pragma once

#include "ReportOutput.h"
#include "model/ReportTemplate.h"

#include <QHash>
#include <QTextStream>
#include <QVariant>

#include <functional>
#include <memory>
#include <vector>

namespace kb {
class Clock;
class Database;
}

namespace kb::reports {

class DataPipe;
struct LabelStock;
struct ReportDocument;

// The report object the report screens run their reports on: load a
// template by file name, hand over named data pipes and parameters, choose
// the destination and whether the print dialog shows, print.
//
//     holder.loadFromDataDirectory(dataDir, "DailyRunRAP030103.rtm");
//     holder.setPipe(deliveriesPipe);
//     holder.setParameter("Period_Beginning", from);
//     holder.setDestination(ReportDestination::Printer);
//     holder.setShowPrintDialog(true);
//     holder.print();
//
// A missing template throws TemplateMissing, whose message is the one the
// report screens show; a bad one TemplateError with its line.
class ReportHolder
{
public:
    ReportHolder(ReportOutput& output, const Clock& clock);
    ~ReportHolder();

    void setDocumentName(const QString& name) { m_documentName = name; }
    const QString& documentName() const { return m_documentName; }

    void setTemplateFileName(const QString& path) { m_templateFile = path; }
    const QString& templateFileName() const { return m_templateFile; }
    bool templateExists() const;
    void loadTemplate();
    void loadFromDataDirectory(const QString& directory, const QString& fileName);
    // A template given as text, such as a built-in one; fileName names it in
    // the messages of a bad line.
    void loadText(const QString& text, const QString& fileName);
    bool isLoaded() const { return m_template != nullptr; }
    ReportTemplate& reportTemplate() { return *m_template; }

    // Back to the defaults: the screen, with the print dialog.
    void resetDevices();
    void setDestination(ReportDestination destination) { m_destination = destination; }
    ReportDestination destination() const { return m_destination; }
    void setShowPrintDialog(bool show) { m_showPrintDialog = show; }
    bool showPrintDialog() const { return m_showPrintDialog; }
    // The printer of the next print (see ReportOutput::setPrinterName), and
    // the one the last print went to.
    void setPrinterName(const QString& name) { m_output.setPrinterName(name); }
    const QString& printerName() const { return m_output.printerName(); }

    // Pipes are found by name; a pipe given again under a name replaces the
    // earlier one. setPipe keeps a reference, addPipe takes ownership.
    void setPipe(DataPipe& pipe);
    void addPipe(std::unique_ptr<DataPipe> pipe);
    DataPipe* pipe(const QString& name) const;
    void clearPipes();

    void setParameter(const QString& name, const QVariant& value);
    QVariant parameter(const QString& name) const;
    void clearParameters();

    // For templates that bring their own data.
    void setDatabase(Database* database) { m_database = database; }
    // Labels: the stock (page and grid) and the first label on the sheet.
    void setLabelStock(const LabelStock* stock) { m_stock = stock; }
    void setLabelStartPosition(int position) { m_startPosition = position; }
    void setProgress(std::function<void(int)> progress) { m_progress = std::move(progress); }

    // Lays the loaded template out over the pipes.
    std::shared_ptr<ReportDocument> layout();
    // Lays it out and sends it to the destination: the preview, or the
    // printer. False when the print dialog was cancelled.
    bool print();
    // The main pipe's rows as CSV, as headless commands write them.
    void writeCsv(QTextStream& out);

private:
    ReportOutput& m_output;
    const Clock& m_clock;
    QString m_documentName;
    QString m_templateFile;
    std::shared_ptr<ReportTemplate> m_template;
    ReportDestination m_destination = ReportDestination::Screen;
    bool m_showPrintDialog = true;
    std::vector<DataPipe*> m_pipes;
    std::vector<std::unique_ptr<DataPipe>> m_ownPipes;
    std::vector<std::pair<QString, QVariant>> m_parameters;
    Database* m_database = nullptr;
    const LabelStock* m_stock = nullptr;
    int m_startPosition = 1;
    std::function<void(int)> m_progress;
};

} // namespace kb::reports
