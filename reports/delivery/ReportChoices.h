#pragma once

#include "ReportOutput.h"

#include <QDate>
#include <QStringList>

#include <array>
#include <vector>

namespace kb::reports {

// A list with check marks, as the limit lists of the report screens show it.
struct CheckedList
{
    QStringList entries;
    std::vector<bool> checked; // one per entry

    void setEntries(const QStringList& list);
    bool isChecked(int index) const
    {
        return index >= 0 && index < int(checked.size()) && checked[size_t(index)];
    }
    void setChecked(int index, bool on);
    void setAll(bool on);
    int checkedCount() const;
    QStringList checkedEntries() const;
    // A limit applies only when some but not all entries are checked:
    // nothing checked and everything checked both mean no limit.
    bool limits() const { return checkedCount() > 0 && checkedCount() < int(entries.size()); }
    // Bit i for entry i, as the settings file keeps the marks (31 at most).
    qint64 mask() const;
    void setMask(qint64 mask);
};

// Whether the route list holds routes or distribution centers.
enum class RouteListKind { Routes, DistributionCenters };

// Which date page the user works on.
enum class DatePage { Range, NonContiguous };

// What the user chose on the report screen: the report, the dates, the
// destination and the limits. Everything a report's data depends on.
struct DeliveryReportChoices
{
    int report = -1;
    QString userReport; // the name of a user-defined report (index 24 and up)

    DatePage page = DatePage::Range;
    QDate from;
    QDate to;
    // The separate dates "1:" to "4:"; an invalid date is a cleared one.
    std::array<QDate, 4> dates;

    ReportDestination destination = ReportDestination::Screen;

    CheckedList services; // "Home Delivered Meals [1]"
    RouteListKind routeKind = RouteListKind::Routes;
    CheckedList routes; // route ids, or center codes
    bool excludeRoutes = false;

    // Labels: the stock they print on (a name of LabelStock's catalogue;
    // empty for the one the template names) and the first label to use on
    // a partly used sheet, counted from 1 across the first row.
    QString labelStock;
    int labelStart = 1;

    // The set separate dates, in order, up to the first cleared one.
    std::vector<QDate> separateDates() const;
    // The service list's text: the checked entries as shown.
    QString servicesText() const;
    // The route list's text: each checked entry in single quotes, separated
    // by commas.
    QString routesText() const;
};

} // namespace kb::reports
