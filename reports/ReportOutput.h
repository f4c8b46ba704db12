#pragma once

#include <QString>

#include <memory>
#include <optional>

namespace kb::reports {

struct ReportDocument;

// Where a report goes: "Screen" shows the preview window, "Printer" prints.
enum class ReportDestination { Screen, Printer };

QString destinationName(ReportDestination destination);
// "Screen" or "Printer" (compared without case); nothing for another word.
std::optional<ReportDestination> destinationFromName(const QString& name);

// What shows and prints finished reports. The desktop implements it with
// the preview window and the platform's print dialog; headless commands and
// tests with PDF files.
class ReportOutput
{
public:
    virtual ~ReportOutput() = default;
    // Shows the report; returns when the preview is closed.
    virtual void preview(std::shared_ptr<const ReportDocument> document) = 0;
    // Prints it, through the print dialog when asked; false when the user
    // cancelled the dialog. Throws MessageError when printing fails.
    virtual bool print(const ReportDocument& document, bool showDialog) = 0;

    // The printer to print on, by the name the platform's print system
    // gives it (a label printer, say); the dialog starts on it. Empty, or a
    // printer the system does not have, means its default printer. After a
    // print it names the printer the user chose.
    void setPrinterName(const QString& name) { m_printerName = name; }
    const QString& printerName() const { return m_printerName; }

protected:
    QString m_printerName;
};

// Sends every report to one PDF file, whatever its destination.
class PdfFileOutput final : public ReportOutput
{
public:
    explicit PdfFileOutput(QString path) : m_path(std::move(path)) {}
    void preview(std::shared_ptr<const ReportDocument> document) override;
    bool print(const ReportDocument& document, bool showDialog) override;
    int reportsWritten() const { return m_written; }

private:
    QString m_path;
    int m_written = 0;
};

} // namespace kb::reports
