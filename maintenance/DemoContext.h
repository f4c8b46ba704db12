#pragma once

#include "DemoRandom.h"

#include <QDate>
#include <QDateTime>
#include <QString>
#include <QStringList>

#include <array>
#include <map>
#include <optional>
#include <utility>
#include <vector>

namespace kb {
class Database;
}

namespace kb::demo {

// Weekdays are counted from Monday = 0 to Sunday = 6 throughout the demo;
// these are the codes the schedules store for them.
inline const std::array<QString, 7> DayCodes = {
    QStringLiteral("MON"), QStringLiteral("TUE"), QStringLiteral("WED"), QStringLiteral("THU"),
    QStringLiteral("FRI"), QStringLiteral("SAT"), QStringLiteral("SUN"),
};
inline int weekdayIndex(const QDate& date)
{
    return date.dayOfWeek() - 1;
}

using WeekFlags = std::array<bool, 7>;

// Saved runs and past dated deliveries reach this many days back. It stays
// below the agency's line item retention, so that the first real save does
// not throw the demo's meal credits away at once.
inline constexpr int PastDays = 21;
// Dated deliveries are planned this many days ahead.
inline constexpr int FutureDays = 30;

struct DemoService
{
    int id = 0;
    QString desc;
    QString type; // "D", "C", "M" or "O"
    WeekFlags days{};
    int fundId = 0;
    QString fundCode;
    int eventId = 0;
};

struct DemoItem
{
    int id = 0;
    QString meal;
    QString name;
    int meals = 0;
    int labels = 0;
    QString confirmation; // empty: always goes out
    double billed = 0;
    bool frozen = false;
    bool bulk = false;
};

struct ItemLine
{
    int itemId = 0;
    int quantity = 0;
    int sortOrder = 0;
};
using ItemList = std::vector<ItemLine>;

struct DemoRoute
{
    QString id;
    QString desc;
    QString type; // "D" driving, "C" congregate, "I" walk-in
    int distCenter = 0;
    double lat = 0;
    double lon = 0;
    int lastStop = 0; // highest whole stop number handed out
};

struct DemoTown
{
    QString city;
    QStringList zips;
    QString county;
    double northKm = 0; // offset of the town's centre from the city centre
    double eastKm = 0;
    double sigmaKm = 0; // how far its addresses spread
    double weight = 0;  // share of the clients living there
};

struct DemoFundUse
{
    int serviceId = 0; // 0: all services
    QString fundCode;
    WeekFlags days{};
};

struct DemoAddress
{
    QString houseNo;
    QString address1;
    QString address2;
    QString city;
    QString state;
    QString zip;
    QString county;
    double lat = 0;
    double lon = 0;
};

struct DemoClient
{
    int personId = 0;
    QString clientId;
    bool dependent = false;
    QString first;
    QString mid;
    QString last;
    bool org = false;
    QString sex;
    QDate dob;
    QString race;
    QString marital;
    QString language;

    QString status;
    QString deliveryType; // "O" or "E"
    QString frequency;
    WeekFlags days{};
    int service = 0;
    int counselingMask = 0;
    int dietMask = 0;
    int coldBag = 0;
    int cuisine = 0;
    QDate added;
    QDate intake;
    QDate start;
    QDate stop;
    QDate inactive;
    QDate recert;
    int stopCode = 0;
    QString stopNote;

    DemoAddress home;
    QString phone;
    QString phoneDesc;
    QString otherPhone;
    QString otherPhoneDesc;
    QString windowStart;
    QString windowEnd;
    int primaryContact = 0;
    int householdId = 0;
    int householdSize = 1;

    QString defRoute;
    double defStop = 0;
    std::array<QString, 7> dayRoute;              // empty: the default route
    std::array<std::optional<double>, 7> dayStop; // read only with a weekday route

    std::vector<DemoFundUse> funding;
    std::array<ItemList, 7> ownItems; // standing items per weekday; empty: the service's
    int missed = 0;
    int excused = 0;
};

struct DemoHousehold
{
    int id = 0;
    QString name;
    std::vector<int> members; // client indexes; the first is the head
    QDate created;
};

struct DemoSuspension
{
    int client = 0;
    int groupId = 0;
    QDate stop;
    QDate resume;
    QString reason;
    QString user;
    QDate created;
};

struct DemoOverride
{
    int recordId = 0;
    int client = 0;
    QString type; // "O", "T", "D", "M"
    QString dow;
    QDate effective;
    QDate expire;
    QDate delivDate;
    QString desc;
    DemoAddress address;
    QString route;
    std::optional<double> stop;
    QString user;
    QDate created;
};

struct DemoDated
{
    int recordId = 0;
    int client = 0;
    QDate date;
    QString scheduleType; // "E" or "S"
    int service = 0;
    QString deliveryType; // "D" or "W"
    QString route;
    double stop = 0;
    ItemList items; // the lines of this one delivery, may be empty
    bool autoScheduled = false;
    bool fulfilled = false;
    QString user;
    QDate created;
};

// Everything the generator makes, kept in memory first so that the saved
// runs can be worked out from the same schedules they would be prepared from,
// then written table by table.
struct DemoContext
{
    DemoContext(Database& database, quint32 seed, int clientCount);

    Database& db;
    DemoRandom rnd;
    QDate today;
    int clientCount = 0;

    WeekFlags agencyDays{};
    std::vector<DemoService> services;
    std::vector<DemoItem> items;
    QStringList dietCodes; // element i: the code of Diet_ID i + 1
    QStringList dietNames;
    std::map<std::pair<int, int>, ItemList> defaultItems; // (service, weekday)
    std::vector<DemoRoute> routes;
    std::vector<DemoTown> towns;
    QString state;
    double centreLat = 0;
    double centreLon = 0;
    QStringList staffNames; // of the staff who sign in and enter data
    QStringList fundCodes;  // with their terms, element by element
    QStringList fundMethods;
    std::vector<double> fundRates;

    std::vector<DemoClient> clients;
    std::vector<DemoHousehold> households;
    std::vector<DemoSuspension> suspensions;
    std::vector<DemoOverride> overrides;
    std::vector<DemoDated> dated;

    int lastClientNumber = 0;
    int lastSuspensionGroup = 0;
    int lastDelivId = 0;
    int savedDeliveries = 0;

    const DemoService& service(int id) const;
    const DemoItem& item(int id) const;
    const DemoRoute* route(const QString& id) const;
    // The standing items of a client for a weekday: his own, else the
    // service's default list.
    const ItemList& standingItems(const DemoClient& client, int weekday) const;
    QString dietText(int mask, const QString& separator) const;
    QDateTime at(const QDate& date, int hour, int minute) const
    {
        return QDateTime(date, QTime(hour, minute));
    }
    QString anyStaff() { return rnd.pick(staffNames); }
};

// Dates as the agency's workstations show them in history texts.
QString shortDate(const QDate& date);

// Whether a standing schedule of the given frequency delivers in the week of
// the date: every week, odd ("A") or even ("B") weeks counted from the
// engine's day zero, or the nth occurrence of the weekday in its month.
bool isDeliveryWeek(const QString& frequency, const QDate& date);

} // namespace kb::demo
