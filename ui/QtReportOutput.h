#pragma once

#include "ReportOutput.h"

#include <QPointer>
#include <QString>

class QWidget;

namespace kb {
class UserInterface;
}

namespace kb::ui {

// Reports on the desktop: the preview window, maximised, and printing
// through the platform's print system, with its dialog (which also offers
// printing to a PDF file) or straight to the default printer.
class QtReportOutput final : public reports::ReportOutput
{
public:
    // settingsFile: the per-user settings file, where the preview keeps its
    // zoom; empty for none.
    QtReportOutput(QWidget* parent, UserInterface& ui, QString settingsFile = {});

    void preview(std::shared_ptr<const reports::ReportDocument> document) override;
    bool print(const reports::ReportDocument& document, bool showDialog) override;

    // Prints into this PDF file through the printer path instead of a
    // printer, without the dialog: for checking the printer path headless.
    void setPrintToFile(const QString& path) { m_printToFile = path; }

private:
    QPointer<QWidget> m_parent;
    UserInterface& m_ui;
    QString m_settingsFile;
    QString m_printToFile;
};

} // namespace kb::ui
