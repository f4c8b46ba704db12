#pragma once

#include <QtGlobal>

namespace kb {

class Database;

struct DemoOptions
{
    int clients = 500;
    quint32 seed = 1; // the same seed gives the same agency
};

struct DemoSummary
{
    int clients = 0;
    int episodicDeliveries = 0;
    int deliveries = 0;
};

// Fills a new data directory with a realistic generated agency, dated around
// the database clock's today: services, diets, items with meal counts,
// routes with stop numbers, funding sources, staff, standing schedules of
// every frequency, households, suspensions, address overrides of each type,
// dated deliveries and past saved runs. Runs in one transaction: its own, or
// the one the caller has open.
DemoSummary generateDemoAgency(Database& db, const DemoOptions& options);

} // namespace kb
