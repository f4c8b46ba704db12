#pragma once

#include <QObject>
#include <QSizeF>
#include <QString>

#include <memory>

namespace kb {
class UserInterface;
}

namespace kb::reports {

class ReportOutput;
struct ReportDocument;

// The preview window of a report: one page at a time, zoomed to the
// window's width, to the whole page or to a percentage of its real size;
// moving between pages; printing through the platform's print dialog;
// saving as a PDF file. The view only shows what this says.
class ReportPreview : public QObject
{
    Q_OBJECT

public:
    enum class Command { First, Prior, Next, Last, ZoomIn, ZoomOut, Print, SaveAsPdf };
    enum class Zoom { FitWidth, WholePage, Percent };

    // printer prints the document when the user asks (the desktop's print
    // dialog); without one, Print is disabled.
    ReportPreview(std::shared_ptr<const ReportDocument> document, ReportOutput* printer, UserInterface& ui);
    ~ReportPreview() override;

    const ReportDocument& document() const { return *m_document; }
    QString caption() const;

    int pageCount() const;
    int currentPage() const { return m_page; } // from 0
    // "of 12", beside the page number box.
    QString pageCountText() const;
    bool isEnabled(Command command) const;

    void first();
    void prior();
    void next();
    void last();
    // Pages counted from 1, as the page number box shows them; a number
    // beyond the pages goes to the nearest page.
    void goToPage(int number);

    Zoom zoom() const { return m_zoom; }
    // The zoom as a percentage of the real size, also when the page is
    // fitted to the window (as it was last drawn).
    int zoomPercent() const { return m_zoom == Zoom::Percent ? m_percent : m_shownPercent; }
    void zoomIn();
    void zoomOut();
    void setZoomPercent(int percent);
    void fitWidth();
    void wholePage();
    static const std::vector<int>& zoomSteps();
    // The resolution at which to draw the current page into a view of
    // this size on a screen of screenDpi dots per inch.
    double pageDpi(QSizeF viewport, double screenDpi) const;

    // Prints through the printer; a failure is shown, the preview stays.
    void print();
    // Writes the report to a PDF file; a failure is shown.
    bool saveAsPdf(const QString& path);
    QString suggestedPdfName() const;

    // The zoom is remembered in the section "ReportPreview" of the per-user
    // settings file, when there is one.
    void setSettingsFile(const QString& path);

signals:
    void changed();

private:
    void setPage(int page);
    void writeSettings() const;

    std::shared_ptr<const ReportDocument> m_document;
    ReportOutput* m_printer;
    UserInterface& m_ui;
    int m_page = 0;
    Zoom m_zoom = Zoom::FitWidth;
    int m_percent = 100;
    mutable int m_shownPercent = 100;
    QString m_settingsFile;
};

} // namespace kb::reports
