#include "delivery/TFormRepChoice.h"

#include "delivery/DeliveryDataCurrency.h"
#include "delivery/DeliveryReportList.h"
#include "delivery/DeliveryReportLists.h"
#include "delivery/DeliveryReportRun.h"
#include "delivery/FailureText.h"
#include "delivery/RunPreparation.h"
#include "delivery/StaffReportPreferences.h"

#include "Clock.h"
#include "UserInterface.h"
#include "labels/LabelStockSettings.h"
#include "model/LabelStock.h"
#include "settings/SettingsFile.h"
#include "store/Database.h"
#include "template/TemplateRegistry.h"

#include <QLocale>

#include <algorithm>

namespace kb::reports {

namespace {

// OK and Cancel stay disabled while a report is built, and come back also
// after a failure.
class ButtonsOff
{
public:
    ButtonsOff(bool& enabled, TFormRepChoice& form) : m_enabled(enabled), m_form(form)
    {
        m_enabled = false;
        emit m_form.stateChanged();
    }
    ~ButtonsOff()
    {
        m_enabled = true;
        emit m_form.stateChanged();
    }

private:
    bool& m_enabled;
    TFormRepChoice& m_form;
};

// The report's data sets go with the run; the holder lets go of them first,
// also when printing fails.
class PipesReleased
{
public:
    explicit PipesReleased(ReportHolder& holder) : m_holder(holder) {}
    ~PipesReleased() { m_holder.clearPipes(); }

private:
    ReportHolder& m_holder;
};

} // namespace

QString TFormRepChoice::dateDisplayFormat()
{
    const bool monthFirst = QLocale().dateFormat(QLocale::ShortFormat).startsWith(u'M', Qt::CaseInsensitive);
    return monthFirst ? QStringLiteral("M/d/yyyy, dddd") : QStringLiteral("d/M/yyyy, dddd");
}

TFormRepChoice::TFormRepChoice(const DeliveryReportContext& context, ReportOutput& output,
                               ReportQuestions& questions, RunPreparation* preparation, QObject* parent)
    : QObject(parent), m_context(context), m_questions(questions), m_preparation(preparation),
      m_holder(output, context.clock)
{
    m_holder.setDocumentName(QStringLiteral("Daily Deliveries Report"));
    const QDate tomorrow = m_context.clock.today().addDays(1);
    m_choices.from = tomorrow;
    m_choices.to = tomorrow;
    m_choices.dates[0] = tomorrow;
}

TFormRepChoice::~TFormRepChoice() = default;

void TFormRepChoice::FormShow()
{
    m_choices.services.setEntries(serviceEntries(m_context.db));
    m_reportEntries = DeliveryReports::names();
    if (!m_context.templateFolder.isEmpty()) {
        for (const QString& name :
             userDefinedReports(m_context.templateFolder, DeliveryReports::userReportPrefix()))
            m_reportEntries << name + DeliveryReports::userDefinedSuffix();
    }
    readSettings();
    m_choices.routes.setEntries(routeEntries(m_context.db, m_choices.routeKind));
    const StaffReportPreferences staff = StaffReportPreferences::read(m_context.db, m_context.userId);
    const int preferred = staff.preferredDeliveryReport;
    setReportIndex(staff.found && preferred > 0 && preferred < int(m_reportEntries.size()) ? preferred : -1);
}

void TFormRepChoice::FormClose()
{
    // What a label report left in memory ends with the screen.
    if (m_context.db.memoryTable(QStringLiteral("MemTableLabels")))
        m_context.db.execute(QStringLiteral("Drop table if exists Memory MemTableLabels"));
    writeSettings();
}

void TFormRepChoice::readSettings()
{
    if (!m_context.settings) return;
    const SettingsFile& s = *m_context.settings;
    m_choices.services.setMask(s.readInteger(section(), QStringLiteral("ServiceChoices"), 0));
    m_choices.destination = destinationFromName(s.readString(section(), QStringLiteral("PrintDestination"),
                                                             QStringLiteral("Screen")))
                                .value_or(ReportDestination::Screen);
    m_choices.page = s.readInteger(section(), QStringLiteral("DateRangeType"), 0) == 1
                         ? DatePage::NonContiguous
                         : DatePage::Range;
    m_choices.labelStock = LabelStockSettings::read(&s, LabelStockSettings::labelsKey());
}

void TFormRepChoice::writeSettings()
{
    if (!m_context.settings) return;
    SettingsFile& s = *m_context.settings;
    s.writeString(section(), QStringLiteral("ServiceChoices"), QString::number(m_choices.services.mask()));
    s.writeString(section(), QStringLiteral("PrintDestination"), destinationName(m_choices.destination));
    s.writeString(section(), QStringLiteral("DateRangeType"),
                  m_choices.page == DatePage::NonContiguous ? QStringLiteral("1") : QStringLiteral("0"));
    LabelStockSettings::write(&s, LabelStockSettings::labelsKey(), m_choices.labelStock);
}

void TFormRepChoice::setReportIndex(int index)
{
    m_choices.report = index >= 0 && index < int(m_reportEntries.size()) ? index : -1;
    m_choices.userReport.clear();
    if (m_choices.report >= DeliveryReports::fixedCount) {
        QString name = m_reportEntries[m_choices.report];
        name.chop(DeliveryReports::userDefinedSuffix().size());
        m_choices.userReport = name;
    }
    emit stateChanged();
}

void TFormRepChoice::setDestination(ReportDestination destination)
{
    m_choices.destination = destination;
    emit stateChanged();
}

void TFormRepChoice::setDatePage(DatePage page)
{
    m_choices.page = page;
    emit stateChanged();
}

void TFormRepChoice::setFrom(const QDate& date)
{
    m_choices.from = date;
    if (m_choices.to < date) m_choices.to = date;
    emit stateChanged();
}

void TFormRepChoice::setTo(const QDate& date)
{
    m_choices.to = date;
    if (m_choices.from > date) m_choices.from = date;
    emit stateChanged();
}

void TFormRepChoice::setDates(const QDate& from, const QDate& to)
{
    m_choices.from = from;
    m_choices.to = to < from ? from : to;
    m_choices.dates = {from, QDate(), QDate(), QDate()};
    emit stateChanged();
}

void TFormRepChoice::setSeparateDate(int n, const QDate& date)
{
    if (n < 0 || n > 3) return;
    const bool cleared = !date.isValid() || date.year() < 1900;
    m_choices.dates[size_t(n)] = cleared ? QDate() : date;
    if (cleared) {
        for (int later = n + 1; later < 4; ++later)
            m_choices.dates[size_t(later)] = QDate();
    }
    emit stateChanged();
}

bool TFormRepChoice::separateDateEnabled(int n) const
{
    if (n <= 0) return true;
    const QDate& before = m_choices.dates[size_t(n - 1)];
    return before.isValid() && before.year() >= 1900;
}

void TFormRepChoice::enterSeparateDate(int n)
{
    if (n <= 0 || n > 3 || !separateDateEnabled(n) || m_choices.dates[size_t(n)].isValid()) return;
    setSeparateDate(n, m_choices.dates[size_t(n - 1)].addDays(1));
}

void TFormRepChoice::setServiceChecked(int index, bool on)
{
    m_choices.services.setChecked(index, on);
    emit stateChanged();
}

void TFormRepChoice::setRouteKind(RouteListKind kind)
{
    m_choices.routeKind = kind;
    m_choices.routes.setEntries(routeEntries(m_context.db, kind));
    emit stateChanged();
}

void TFormRepChoice::setRouteChecked(int index, bool on)
{
    m_choices.routes.setChecked(index, on);
    emit stateChanged();
}

void TFormRepChoice::selectAllRoutes()
{
    m_choices.routes.setAll(true);
    emit stateChanged();
}

void TFormRepChoice::deselectAllRoutes()
{
    m_choices.routes.setAll(false);
    emit stateChanged();
}

void TFormRepChoice::setExcludeRoutes(bool exclude)
{
    m_choices.excludeRoutes = exclude;
    emit stateChanged();
}

QString TFormRepChoice::includeCaption() const
{
    return m_choices.routeKind == RouteListKind::Routes ? QStringLiteral("Include these routes")
                                                        : QStringLiteral("Include these centers");
}

QString TFormRepChoice::excludeCaption() const
{
    return m_choices.routeKind == RouteListKind::Routes ? QStringLiteral("Exclude these routes")
                                                        : QStringLiteral("Exclude these centers");
}

bool TFormRepChoice::datesEnabled() const
{
    return DeliveryReports::takesDates(m_choices.report);
}

bool TFormRepChoice::limitsEnabled() const
{
    return DeliveryReports::takesLimits(m_choices.report);
}

bool TFormRepChoice::labelOptionsEnabled() const
{
    return DeliveryReports::isLabel(m_choices.report);
}

int TFormRepChoice::labelStockIndex() const
{
    return LabelStockSettings::indexOf(m_choices.labelStock);
}

void TFormRepChoice::setLabelStockIndex(int index)
{
    m_choices.labelStock = LabelStockSettings::stockAt(index);
    // A start beyond the new sheet would be refused at OK.
    const int perSheet = labelsPerSheet();
    if (perSheet > 0 && m_choices.labelStart > perSheet) m_choices.labelStart = 1;
    emit stateChanged();
}

void TFormRepChoice::setLabelStart(int position)
{
    m_choices.labelStart = std::max(1, position);
    emit stateChanged();
}

int TFormRepChoice::labelsPerSheet() const
{
    const LabelStock* stock = LabelStock::find(m_choices.labelStock);
    return stock ? stock->labelsPerPage() : 0;
}

void TFormRepChoice::ok()
{
    if (m_preparation) {
        const StaffReportPreferences staff = StaffReportPreferences::read(m_context.db, m_context.userId);
        DeliveryDataCurrency(m_context.db, m_context.clock, m_context.ui)
            .check(m_choices.from, m_choices.to, staff, *m_preparation);
    }
    ButtonsOff off(m_buttonsEnabled, *this);
    try {
        runReport();
    } catch (const std::exception& failure) {
        m_context.ui.error(failureText(failure));
    }
}

void TFormRepChoice::runReport()
{
    if (m_choices.report < 0) return;
    DeliveryReportRun run(m_context, m_questions);
    PipesReleased released(m_holder);
    {
        BusyGuard busy(m_context.ui);
        if (!run.prepare(m_holder, m_choices)) return;
    }
    m_holder.resetDevices();
    m_holder.setDestination(m_choices.destination);
    m_holder.setShowPrintDialog(true);
    m_holder.print();
}

} // namespace kb::reports
