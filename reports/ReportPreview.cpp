#include "ReportPreview.h"

#include "MessageError.h"
#include "ReportOutput.h"
#include "UserInterface.h"
#include "engine/ReportDocument.h"
#include "render/PagePainter.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <QSettings>

#include <algorithm>
#include <cmath>

namespace kb::reports {

namespace {

const QString SettingsSection = QStringLiteral("ReportPreview");
// Room kept around the page in the view, in pixels.
constexpr double ViewMargin = 32;

} // namespace

ReportPreview::ReportPreview(std::shared_ptr<const ReportDocument> document, ReportOutput* printer,
                             UserInterface& ui)
    : m_document(std::move(document)), m_printer(printer), m_ui(ui)
{
}

ReportPreview::~ReportPreview() { writeSettings(); }

QString ReportPreview::caption() const
{
    return m_document->title.isEmpty() ? QStringLiteral("Report Preview")
                                       : QStringLiteral("Report Preview - ") + m_document->title;
}

int ReportPreview::pageCount() const { return m_document->pageCount(); }

QString ReportPreview::pageCountText() const { return QStringLiteral("of %1").arg(pageCount()); }

bool ReportPreview::isEnabled(Command command) const
{
    switch (command) {
    case Command::First:
    case Command::Prior:
        return m_page > 0;
    case Command::Next:
    case Command::Last:
        return m_page + 1 < pageCount();
    case Command::ZoomIn:
        return zoomPercent() < zoomSteps().back();
    case Command::ZoomOut:
        return zoomPercent() > zoomSteps().front();
    case Command::Print:
        return m_printer != nullptr && pageCount() > 0;
    case Command::SaveAsPdf:
        return pageCount() > 0;
    }
    return false;
}

void ReportPreview::setPage(int page)
{
    page = std::clamp(page, 0, std::max(0, pageCount() - 1));
    if (page == m_page)
        return;
    m_page = page;
    emit changed();
}

void ReportPreview::first() { setPage(0); }
void ReportPreview::prior() { setPage(m_page - 1); }
void ReportPreview::next() { setPage(m_page + 1); }
void ReportPreview::last() { setPage(pageCount() - 1); }
void ReportPreview::goToPage(int number) { setPage(number - 1); }

const std::vector<int>& ReportPreview::zoomSteps()
{
    static const std::vector<int> steps{25, 50, 75, 100, 125, 150, 200, 300, 400};
    return steps;
}

void ReportPreview::setZoomPercent(int percent)
{
    percent = std::clamp(percent, zoomSteps().front(), zoomSteps().back());
    if (m_zoom == Zoom::Percent && m_percent == percent)
        return;
    m_zoom = Zoom::Percent;
    m_percent = percent;
    emit changed();
}

void ReportPreview::zoomIn()
{
    const int now = zoomPercent();
    for (int step : zoomSteps()) {
        if (step > now) {
            setZoomPercent(step);
            return;
        }
    }
    setZoomPercent(zoomSteps().back());
}

void ReportPreview::zoomOut()
{
    const int now = zoomPercent();
    for (auto it = zoomSteps().rbegin(); it != zoomSteps().rend(); ++it) {
        if (*it < now) {
            setZoomPercent(*it);
            return;
        }
    }
    setZoomPercent(zoomSteps().front());
}

void ReportPreview::fitWidth()
{
    if (m_zoom == Zoom::FitWidth)
        return;
    m_zoom = Zoom::FitWidth;
    emit changed();
}

void ReportPreview::wholePage()
{
    if (m_zoom == Zoom::WholePage)
        return;
    m_zoom = Zoom::WholePage;
    emit changed();
}

double ReportPreview::pageDpi(QSizeF viewport, double screenDpi) const
{
    const QSizeF inches = m_document->pageSize / 72.0;
    if (inches.isEmpty())
        return screenDpi;
    const double byWidth = std::max(1.0, viewport.width() - ViewMargin) / inches.width();
    const double byHeight = std::max(1.0, viewport.height() - ViewMargin) / inches.height();
    double dpi = screenDpi * m_percent / 100.0;
    if (m_zoom == Zoom::FitWidth)
        dpi = byWidth;
    else if (m_zoom == Zoom::WholePage)
        dpi = std::min(byWidth, byHeight);
    dpi = std::clamp(dpi, 8.0, screenDpi * zoomSteps().back() / 100.0);
    m_shownPercent = int(std::lround(dpi * 100 / screenDpi));
    return dpi;
}

void ReportPreview::print()
{
    if (!isEnabled(Command::Print))
        return;
    try {
        m_printer->print(*m_document, true);
    } catch (const std::exception& e) {
        m_ui.error(QString::fromUtf8(e.what()));
    }
}

bool ReportPreview::saveAsPdf(const QString& path)
{
    if (path.isEmpty() || !isEnabled(Command::SaveAsPdf))
        return false;
    try {
        writePdf(*m_document, path);
        return true;
    } catch (const std::exception& e) {
        m_ui.error(QString::fromUtf8(e.what()));
        return false;
    }
}

QString ReportPreview::suggestedPdfName() const
{
    QString name = m_document->title.isEmpty() ? QStringLiteral("Report") : m_document->title;
    static const QRegularExpression unsafe(QStringLiteral("[\\\\/:*?\"<>|]"));
    name.replace(unsafe, QStringLiteral(" "));
    return name.simplified() + QStringLiteral(".pdf");
}

void ReportPreview::setSettingsFile(const QString& path)
{
    m_settingsFile = path;
    if (path.isEmpty() || !QFileInfo::exists(path))
        return;
    QSettings settings(path, QSettings::IniFormat);
    settings.beginGroup(SettingsSection);
    const QString zoom = settings.value(QStringLiteral("Zoom")).toString();
    if (zoom == QLatin1String("WholePage"))
        m_zoom = Zoom::WholePage;
    else if (zoom == QLatin1String("Percent"))
        m_zoom = Zoom::Percent;
    else
        m_zoom = Zoom::FitWidth;
    bool ok = false;
    const int percent = settings.value(QStringLiteral("ZoomPercent")).toInt(&ok);
    if (ok)
        m_percent = std::clamp(percent, zoomSteps().front(), zoomSteps().back());
}

void ReportPreview::writeSettings() const
{
    if (m_settingsFile.isEmpty())
        return;
    QSettings settings(m_settingsFile, QSettings::IniFormat);
    settings.beginGroup(SettingsSection);
    settings.setValue(QStringLiteral("Zoom"), m_zoom == Zoom::WholePage ? QStringLiteral("WholePage")
                                              : m_zoom == Zoom::Percent ? QStringLiteral("Percent")
                                                                        : QStringLiteral("FitWidth"));
    settings.setValue(QStringLiteral("ZoomPercent"), QString::number(m_percent));
}

} // namespace kb::reports
