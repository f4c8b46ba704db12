#pragma once

#include "DemoContext.h"

#include <QDate>
#include <QString>

#include <vector>

namespace kb::demo {

// One saved delivery of a past run.
struct RunRow
{
    QDate date;
    int client = 0;
    QString route;
    double stop = 0;
    QString type; // "OD", "ED", "EW", "SD", "SW"
    int service = 0;
    int delivId = 0;
    bool custom = false;
    int meals = 0;
    int labels = 0;
    bool overridden = false;
    QString fund;
    QString zip;
    QString status; // "", "M", "E", "C"
    ItemList items;
};

struct RunSave
{
    QDate date;
    int rows = 0;
    QString user;
};

struct DemoRuns
{
    std::vector<RunRow> rows;
    std::vector<RunSave> saves;
};

// The runs of the past weeks, as preparing and saving them would have left
// them: the same selection of ongoing, episodic and scheduled deliveries, the
// day's alternate addresses, the items by date, client and service, meal and
// label counts, funding, and a few missed, excused and comped deliveries.
// Marks the dated deliveries the runs fulfilled and counts the clients'
// misses.
DemoRuns makeRuns(DemoContext& ctx);
void writeRuns(DemoContext& ctx, const DemoRuns& runs);

} // namespace kb::demo
