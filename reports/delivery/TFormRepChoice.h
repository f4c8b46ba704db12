#pragma once

#include "ReportHolder.h"
#include "delivery/DeliveryReportContext.h"
#include "delivery/ReportChoices.h"

#include <QObject>

namespace kb::reports {

class ReportOutput;
class ReportQuestions;
class RunPreparation;

// "Select the Delivery Report to Run": the one screen from which the daily
// delivery reports run. The user picks a report, the dates, the
// destination, and limits by service and by route or distribution center.
// OK checks that the date's run is current (and can prepare and save it),
// then runs the report; the screen stays open for the next one.
class TFormRepChoice : public QObject
{
    Q_OBJECT

public:
    static QString caption() { return QStringLiteral("Select the Delivery Report to Run"); }
    // The per-user settings section.
    static QString section() { return QStringLiteral("FormRepChoice"); }
    // How the dates show: the short date, then ", " and the weekday.
    static QString dateDisplayFormat();

    // preparation: how a date's run is prepared and saved when the user asks;
    // without one no date is checked.
    TFormRepChoice(const DeliveryReportContext& context, ReportOutput& output, ReportQuestions& questions,
                   RunPreparation* preparation, QObject* parent = nullptr);
    ~TFormRepChoice() override;

    // Opening: the lists, the user-defined reports, the settings, the
    // user's report.
    void FormShow();
    // Closing: drops what label reports left behind and writes the settings.
    void FormClose();

    // The report list: the fixed reports, then the user-defined ones.
    const QStringList& reportEntries() const { return m_reportEntries; }
    int reportIndex() const { return m_choices.report; }
    void setReportIndex(int index);

    ReportDestination destination() const { return m_choices.destination; }
    void setDestination(ReportDestination destination);

    DatePage datePage() const { return m_choices.page; }
    void setDatePage(DatePage page);
    QDate from() const { return m_choices.from; }
    QDate to() const { return m_choices.to; }
    // The two dates never cross: a "From" after "To" moves "To", and back.
    void setFrom(const QDate& date);
    void setTo(const QDate& date);
    // Both dates, as the run screen opens this screen for its date.
    void setDates(const QDate& from, const QDate& to);
    // The separate dates "1:" to "4:" (n from 0); an invalid date clears it
    // and every later one.
    QDate separateDate(int n) const { return m_choices.dates[size_t(n)]; }
    void setSeparateDate(int n, const QDate& date);
    // Date n is enabled while the one before it holds a date.
    bool separateDateEnabled(int n) const;
    // Entering an empty date after a set one proposes the next day.
    void enterSeparateDate(int n);

    const CheckedList& services() const { return m_choices.services; }
    void setServiceChecked(int index, bool on);
    RouteListKind routeKind() const { return m_choices.routeKind; }
    // Refills the route list, which clears its marks.
    void setRouteKind(RouteListKind kind);
    const CheckedList& routes() const { return m_choices.routes; }
    void setRouteChecked(int index, bool on);
    void selectAllRoutes();
    void deselectAllRoutes();
    bool excludeRoutes() const { return m_choices.excludeRoutes; }
    void setExcludeRoutes(bool exclude);
    // "Include these routes" or "Include these centers", and the exclusion's.
    QString includeCaption() const;
    QString excludeCaption() const;

    // "From" and "To" for a report below the bar-code listing; the limits
    // for every fixed report.
    bool datesEnabled() const;
    bool limitsEnabled() const;
    // The labels: the stock they print on, as an index of
    // LabelStockSettings::entries() (kept in the user's settings), and the
    // first label to use on a partly used sheet (1 each time the screen
    // opens). Both serve the three label reports only.
    bool labelOptionsEnabled() const;
    int labelStockIndex() const;
    void setLabelStockIndex(int index);
    int labelStart() const { return m_choices.labelStart; }
    void setLabelStart(int position);
    // The labels of one sheet of the chosen stock; 0 for the template's own.
    int labelsPerSheet() const;

    // OK and Cancel are disabled while a report is built.
    bool buttonsEnabled() const { return m_buttonsEnabled; }

    // OK: checks the date's run and runs the report. Failures are shown and
    // the screen stays usable.
    void ok();

    const DeliveryReportChoices& choices() const { return m_choices; }
    ReportHolder& holder() { return m_holder; }

signals:
    void stateChanged();

private:
    void readSettings();
    void writeSettings();
    void runReport();

    DeliveryReportContext m_context;
    ReportQuestions& m_questions;
    RunPreparation* m_preparation;
    ReportHolder m_holder;
    DeliveryReportChoices m_choices;
    QStringList m_reportEntries;
    bool m_buttonsEnabled = true;
};

} // namespace kb::reports
