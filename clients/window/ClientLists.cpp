#include "window/ClientLists.h"

#include "defaults/DeliveryFrequency.h"
#include "settings/ConfigRecord.h"
#include "settings/SettingsFile.h"
#include "store/Database.h"

namespace kb {

namespace {

constexpr int MaxRememberedEntries = 50;
constexpr int RadioTextLength = 28;
constexpr int MaxRadioServices = 10;

QList<ClientListEntry> codes(std::initializer_list<std::pair<const char*, const char*>> pairs)
{
    QList<ClientListEntry> list;
    for (const auto& [code, text] : pairs)
        list.append({QString::fromLatin1(code), QString::fromLatin1(text)});
    return list;
}

QList<ClientListEntry> rows(Database& db, const QString& sql)
{
    const ResultSet result = db.execute(sql);
    QList<ClientListEntry> list;
    for (qsizetype r = 0; r < result.rowCount(); ++r)
        list.append({result.value(r, 0), result.value(r, 1).toString().trimmed()});
    return list;
}

// The lines of a memo of Config, as entries numbered from 0.
QList<ClientListEntry> memoLines(const QString& memo)
{
    QList<ClientListEntry> list;
    const QStringList lines =
        QString(memo).replace(QStringLiteral("\r\n"), QStringLiteral("\n")).split(QLatin1Char('\n'));
    for (const QString& line : lines)
        if (!line.trimmed().isEmpty()) list.append({int(list.size()), line.trimmed()});
    return list;
}

QString orDefault(const QString& text, const QString& fallback)
{
    return text.trimmed().isEmpty() ? fallback : text.trimmed();
}

} // namespace

const QList<ClientListEntry>& ClientLists::list(const QString& name) const
{
    static const QList<ClientListEntry> none;
    const auto it = lists.constFind(name);
    return it == lists.constEnd() ? none : *it;
}

QString ClientLists::textOf(const QString& name, const QVariant& value) const
{
    for (const ClientListEntry& entry : list(name))
        if (entry.value.toString() == value.toString()) return entry.text;
    return {};
}

const QStringList& ClientLists::historyLists()
{
    static const QStringList names = {QStringLiteral("UserDef2"), QStringLiteral("UserDef5"),
                                      QStringLiteral("InsurancePlan"), QStringLiteral("Housing")};
    return names;
}

ClientLists ClientLists::read(Database& db, const ConfigRecord& config, const SettingsFile& shared)
{
    ClientLists l;
    l.postalFormat = config.text(QStringLiteral("POSTAL_FORMAT")).trimmed();
    l.visibleComponents = config.text(QStringLiteral("VISIBLE_COMPONENTS"));

    l.lists.insert(QStringLiteral("Race"),
                   rows(db, QStringLiteral("Select RACE_CD, RACE_DESC from Race order by RACE_DESC")));
    l.lists.insert(QStringLiteral("MaritalStatus"),
                   rows(db, QStringLiteral("Select MART_ID, MART_DESC from Martst order by MART_DESC")));
    l.lists.insert(QStringLiteral("Cuisine"),
                   rows(db, QStringLiteral("Select Cuisine_ID, Cuisine from Cuisines order by Cuisine")));
    l.lists.insert(
        QStringLiteral("ColdBag"),
        rows(db, QStringLiteral("Select Record_ID, Bag_Code from Cold_Bag_Codes order by Bag_Code")));
    l.lists.insert(
        QStringLiteral("Staff"),
        rows(db, QStringLiteral("Select Staff_ID, Staff_Name from Staff where Active = True order by "
                                "Staff_Name")));
    l.lists.insert(QStringLiteral("StopReasons"),
                   rows(db, QStringLiteral("Select STOP_ID, STOP_REASON from StopReasons order by STOP_ID")));
    QList<ClientListEntry> routes;
    for (const ClientListEntry& r :
         rows(db, QStringLiteral("Select Route_ID, Route_Desc from Routes order by Route_ID")))
        routes.append({r.value, r.text.isEmpty()
                                    ? r.value.toString()
                                    : r.value.toString().trimmed() + QStringLiteral(" - ") + r.text});
    l.lists.insert(QStringLiteral("Routes"), routes);

    // Delivery services: the mutually exclusive ones, as radio buttons while
    // there are few enough to read at a glance.
    QList<ClientListEntry> delivery =
        rows(db, QStringLiteral("Select SERVICE_ID, SERVICE_DESC from Services where MUTL_EXCL = True and "
                                "SERVICE_TYPE = 'D' order by SORT_ORDER, SERVICE_DESC"));
    l.deliveryServiceAsRadio = delivery.size() <= MaxRadioServices;
    if (l.deliveryServiceAsRadio)
        for (ClientListEntry& e : delivery)
            e.text = e.text.left(RadioTextLength);
    l.lists.insert(QStringLiteral("DeliveryService"), delivery);
    // Other services: every service but the mutually exclusive delivery
    // services, in table order; bit i is the i-th.
    QList<ClientListEntry> other;
    for (const ClientListEntry& e :
         rows(db, QStringLiteral("Select SERVICE_ID, SERVICE_DESC, SERVICE_TYPE, "
                                 "MUTL_EXCL from Services where not (SERVICE_TYPE = 'D' "
                                 "and MUTL_EXCL = True) order by RecordID")))
        other.append({int(other.size()), e.text});
    l.lists.insert(QStringLiteral("OtherServices"), other);
    // Diets: bit i is the diet with Diet_ID i + 1.
    QList<ClientListEntry> diets;
    const ResultSet dietRows =
        db.execute(QStringLiteral("Select Diet_ID, Diet_Code, Diet_Desc from Diet order by Diet_ID"));
    for (qsizetype r = 0; r < dietRows.rowCount(); ++r)
        diets.append({dietRows.value(r, 0).toInt() - 1, dietRows.value(r, 2).toString().trimmed() +
                                                            QStringLiteral(" - ") +
                                                            dietRows.value(r, 1).toString().trimmed()});
    l.lists.insert(QStringLiteral("Diet"), diets);

    QList<ClientListEntry> funded{{0, QStringLiteral("All Services")}};
    funded.append(
        rows(db, QStringLiteral("Select SERVICE_ID, SERVICE_DESC from Services order by SERVICE_DESC")));
    l.lists.insert(QStringLiteral("FundedServices"), funded);
    QList<ClientListEntry> sources;
    const ResultSet fundRows =
        db.execute(QStringLiteral("Select FUND_CD, FUND_SRCE from Fundsrcs order by FUND_SRCE"));
    for (qsizetype r = 0; r < fundRows.rowCount(); ++r)
        sources.append(
            {fundRows.value(r, 0), fundRows.value(r, 1).toString().trimmed() + QStringLiteral(" (") +
                                       fundRows.value(r, 0).toString().trimmed() + QLatin1Char(')')});
    l.lists.insert(QStringLiteral("FundingSources"), sources);

    l.lists.insert(QStringLiteral("IncomeSources"), memoLines(config.text(QStringLiteral("INCOME_LIST"))));
    l.lists.insert(QStringLiteral("UserDef3"), memoLines(config.text(QStringLiteral("USERDEF3"))));
    l.lists.insert(QStringLiteral("AppUserDef2"), memoLines(config.text(QStringLiteral("APPUSERDEF2"))));
    QList<ClientListEntry> window;
    for (const ClientListEntry& e : memoLines(config.text(QStringLiteral("DELIVERY_WINDOW_ENTRIES"))))
        window.append({e.text, e.text});
    l.lists.insert(QStringLiteral("DeliveryWindow"), window);

    const QString income = config.text(QStringLiteral("INCOME_CATEGORIES")).trimmed();
    if (income == QLatin1String("AB")) {
        l.lists.insert(QStringLiteral("IncomeCategory"), codes({{"B", "Below"}, {"A", "Above"}}));
    } else if (income == QLatin1String("RA")) {
        QList<ClientListEntry> ranges;
        for (int i = 1; i <= 9; ++i)
            ranges.append({QString::number(i), QStringLiteral("Range %1").arg(i)});
        l.lists.insert(QStringLiteral("IncomeCategory"), ranges);
    } else {
        l.lists.insert(QStringLiteral("IncomeCategory"),
                       codes({{"L", "Low"}, {"M", "Medium"}, {"H", "High"}}));
    }

    const QList<ClientListEntry> items =
        rows(db, QStringLiteral("Select ITEM_ID, MEAL_ITEM from Items order by MEAL_ITEM"));
    const QList<ClientListEntry> meals = codes({{"B", "Breakfasts"},
                                                {"L", "Lunches"},
                                                {"D", "Dinners"},
                                                {"S", "Snacks"},
                                                {"O", "Other"},
                                                {"MF", "Medical Food"},
                                                {"SM", "Specialized Medical Food"}});
    l.lists.insert(QStringLiteral("FundingItems"), items + meals);
    QList<ClientListEntry> pledge = items;
    for (const ClientListEntry& m : meals)
        pledge.append({m.value, m.text + QStringLiteral(" Category")});
    l.lists.insert(QStringLiteral("PledgeItems"), pledge);

    l.lists.insert(QStringLiteral("Sex"), codes({{"M", "Male"},
                                                 {"F", "Female"},
                                                 {"T", "Transgender (M to F)"},
                                                 {"S", "Transgender (F to M)"},
                                                 {"R", "Refused to Report"},
                                                 {"U", "Unknown"}}));
    l.lists.insert(QStringLiteral("DeliveryType"), codes({{"O", "Ongoing"}, {"E", "Episodic"}}));
    QList<ClientListEntry> frequencies;
    for (const DeliveryFrequency& f : deliveryFrequencies())
        frequencies.append({f.value, f.listCaption});
    l.lists.insert(QStringLiteral("Frequency"), frequencies);
    l.lists.insert(QStringLiteral("PhoneDesc"), codes({{"P", "Primary"},
                                                       {"H", "Home"},
                                                       {"W", "Work"},
                                                       {"C", "Cell/Mobile"},
                                                       {"M", "Mother's"},
                                                       {"F", "Father's"},
                                                       {"S", "Sister's"},
                                                       {"B", "Brother's"},
                                                       {"D", "Daughter's"},
                                                       {"N", "Son's"},
                                                       {"G", "Grandparent's"},
                                                       {"R", "Friend's"},
                                                       {"O", "Other"},
                                                       {"X", "No Phone"}}));
    l.lists.insert(QStringLiteral("Language"), codes({{"E", "English"},
                                                      {"S", "Spanish"},
                                                      {"F", "French"},
                                                      {"P", "Polish"},
                                                      {"R", "Russian"},
                                                      {"G", "German"},
                                                      {"I", "Italian"},
                                                      {"C", "Chinese (Cantonese)"},
                                                      {"M", "Chinese (Mandarin)"},
                                                      {"K", "Korean"},
                                                      {"J", "Japanese"},
                                                      {"B", "Portuguese"},
                                                      {"H", "Haitian Creole"},
                                                      {"V", "Crioulo"},
                                                      {"O", "Other"}}));
    l.lists.insert(QStringLiteral("HivStatus"), codes({{"1", "HIV+, not AIDS"},
                                                       {"2", "HIV+, AIDS status unknown"},
                                                       {"3", "CDC-defined AIDS"},
                                                       {"5", "Pediatric AIDS"},
                                                       {"4", "HIV Negative"},
                                                       {"9", "Unknown"}}));
    l.lists.insert(QStringLiteral("FrameSize"), codes({{"S", "Small"}, {"M", "Medium"}, {"L", "Large"}}));
    l.lists.insert(QStringLiteral("PledgePeriod"), codes({{"DY", "Day"}, {"MO", "Month"}, {"YR", "Year"}}));
    l.lists.insert(QStringLiteral("PledgeMethod"),
                   codes({{"T", "Time Period"}, {"I", "Meals or Meal Items"}}));

    for (const QString& name : historyLists()) {
        QList<ClientListEntry> remembered;
        for (const QString& key : shared.readSection(name)) {
            const QString text = shared.readString(name, key).trimmed();
            if (!text.isEmpty()) remembered.append({text, text});
        }
        l.lists.insert(name, remembered);
    }

    // Captions that Config gives.
    const auto label = [&](const char* field, const char* column, const char* fallback) {
        l.labels.insert(QString::fromLatin1(field),
                        orDefault(config.text(QString::fromLatin1(column)), QString::fromLatin1(fallback)));
    };
    label("USER_DEF1", "USER_LABEL_1", "User-Defined 1");
    label("USER_DEF2", "USER_LABEL_2", "User-Defined 2");
    label("USER_DEF3", "USER_LABEL_3", "User-Defined List");
    label("USER_DEF4", "USER_LABEL_4", "HIV-Affected");
    label("USER_DEF5", "USER_LABEL_5", "User-Defined");
    label("ETHNICITY", "ETHNICITY_LABEL", "Hispanic/Latino");
    l.labels.insert(QStringLiteral("FIRST_ML_DTE"),
                    config.text(QStringLiteral("FIRST_SERVICE_DATE_METHOD")) == QLatin1String("S")
                        ? QStringLiteral("First Meal/Counsel:")
                        : QStringLiteral("First Service Date:"));
    if (l.postalFormat == QLatin1String("CAN"))
        l.labels.insert(QStringLiteral("ZIP"), QStringLiteral("Postal Code"));
    else if (l.postalFormat == QLatin1String("UK"))
        l.labels.insert(QStringLiteral("ZIP"), QStringLiteral("Postcode"));
    for (int i = 1; i <= 5; ++i)
        l.userReportCaptions.append(orDefault(
            config.text(QStringLiteral("USER_DEFINED_REPORT%1_LABEL").arg(i, 2, 10, QLatin1Char('0'))),
            QStringLiteral("Report %1").arg(i)));
    l.awareTitle = orDefault(config.text(QStringLiteral("AWARE_SHORT_LABEL")), QStringLiteral("Aware"));

    const QString mapping = config.text(QStringLiteral("MAPPING")).trimmed();
    l.getMapEnabled =
        mapping == QLatin1String("M") ||
        (mapping == QLatin1String("Q") && !config.text(QStringLiteral("MAPPING_URL")).trimmed().isEmpty());
    l.mapPointShown = mapping == QLatin1String("M");
    return l;
}

void ClientLists::remember(const QString& name, const QString& entry, SettingsFile& shared)
{
    const QString text = entry.trimmed();
    if (text.isEmpty() || !historyLists().contains(name)) return;
    QList<ClientListEntry>& list = lists[name];
    for (qsizetype i = 0; i < list.size(); ++i)
        if (list[i].text.compare(text, Qt::CaseInsensitive) == 0) {
            if (i == 0 && list[i].text == text) return;
            list.removeAt(i);
            break;
        }
    list.prepend({text, text});
    while (list.size() > MaxRememberedEntries)
        list.removeLast();
    shared.eraseSection(name);
    for (qsizetype i = 0; i < list.size(); ++i)
        shared.writeString(name, QStringLiteral("Item%1").arg(i), list[i].text);
}

} // namespace kb
