#include "ReportAgency.h"

#include "InsertRow.h"

#include "delivery/DeliveryReportLists.h"
#include "labels/TFormLabelLimit.h"
#include "template/TemplateRegistry.h"

#include <QDateTime>
#include <QDir>
#include <QFile>

namespace kb::test {

namespace {

const QString P = QStringLiteral("Person_ID");

void client(Database& db, int person, const QString& clientId, const QString& last, const QString& first,
            const Params& more)
{
    Params values{{P, person},
                  {QStringLiteral("Client_ID"), clientId},
                  {QStringLiteral("Last_Name"), last},
                  {QStringLiteral("First_Name"), first},
                  {QStringLiteral("Status"), QStringLiteral("A")},
                  {QStringLiteral("Start_Dte"), QDate(2020, 1, 6)},
                  {QStringLiteral("Svcs_Used"), 1},
                  {QStringLiteral("City"), QStringLiteral("Burlington")},
                  {QStringLiteral("State"), QStringLiteral("VT")},
                  {QStringLiteral("Delivery_Type"), QStringLiteral("O")},
                  {QStringLiteral("Org_Client"), QStringLiteral("N")}};
    for (const auto& [name, value] : more)
        values = with(values, name, value);
    insertRow(db, QStringLiteral("Clients"), values);
}

struct Item
{
    int item;
    int quantity;
};

void delivery(Database& db, int delivId, const QDate& date, int person, const QString& clientId,
              const QString& route, double stop, int service, int diet, const QString& dietText,
              const std::vector<Item>& items, const Params& more = {})
{
    int meals = 0;
    for (const Item& i : items)
        meals += i.quantity;
    Params values{
        {QStringLiteral("Deliv_ID"), delivId},
        {QStringLiteral("Deliv_Dt"), date},
        {QStringLiteral("DOW"), date.dayOfWeek() == 3 ? QStringLiteral("WED") : QStringLiteral("THU")},
        {QStringLiteral("Route_ID"), route},
        {QStringLiteral("Client_ID"), clientId},
        {P, person},
        {QStringLiteral("Stop"), stop},
        {QStringLiteral("Delivery_Type"), QStringLiteral("OD")},
        {QStringLiteral("Svcs_Used"), service},
        {QStringLiteral("Diet_Restr"), diet},
        {QStringLiteral("Diet_Descr"), dietText},
        {QStringLiteral("Custom_Items"), false},
        {QStringLiteral("Number_Meals"), meals},
        {QStringLiteral("Number_Labels"), 1},
        {QStringLiteral("Address_Overridden"), false},
        {QStringLiteral("Funding_Desc"), service == 1 ? QStringLiteral("OAA") : QStringLiteral("MED")},
        {QStringLiteral("Label_Created"), false},
        {QStringLiteral("Label2_Created"), false},
        {QStringLiteral("Label3_Created"), false}};
    for (const auto& [name, value] : more)
        values = with(values, name, value);
    insertRow(db, QStringLiteral("Deliveri"), values);
    int sort = 0;
    for (const Item& i : items)
        insertRow(db, QStringLiteral("MealCrdt"),
                  {{QStringLiteral("Deliv_ID"), delivId},
                   {P, person},
                   {QStringLiteral("Deliv_Dt"), date},
                   {QStringLiteral("DOW"), values[2].second},
                   {QStringLiteral("Item_ID"), i.item},
                   {QStringLiteral("Quantity"), i.quantity},
                   {QStringLiteral("Congregate"), false},
                   {QStringLiteral("Service_ID"), service},
                   {QStringLiteral("Sort_Order"), ++sort}});
}

} // namespace

void makeReportAgency(Database& db)
{
    db.execute(
        QStringLiteral("Update Config set ORG_REPORT_NAME = 'Kettlebrook Meals on Wheels', "
                       "ENABLE_ALTERNATE_ADDRESSES = True, DELIV_REPORT_SHOW_ITEMS = 'A', "
                       "DELIV_REPORT_SHOW_BARCODES = False, Include_All_Active_Clients = False, "
                       "NO_DELIVERY_LABEL = '', MEALS_LINE_ITEMS = 0, "
                       "DELIV_REPORT_MSG_TOP = 'Call the office at 555-0100 when a client does not answer.', "
                       "DELIV_REPORT_MSG_BOT = 'Bring the cooler bags back by 2 pm.'"));
    insertRow(db, QStringLiteral("Staff"),
              {{QStringLiteral("Staff_ID"), 1},
               {QStringLiteral("User_ID"), QStringLiteral("pat")},
               {QStringLiteral("Staff_Name"), QStringLiteral("Pat Tester")},
               {QStringLiteral("Access_Level"), QStringLiteral("W")},
               {QStringLiteral("Active"), true}});
    struct Service
    {
        int id;
        const char* desc;
        const char* type;
    };
    for (const Service& s : {Service{1, "Home Delivered Meals", "D"}, Service{2, "Frozen Meals", "D"},
                             Service{5, "Nutrition Counseling", "C"}})
        insertRow(db, QStringLiteral("Services"),
                  {{QStringLiteral("Service_ID"), s.id},
                   {QStringLiteral("Sort_Order"), s.id},
                   {QStringLiteral("Service_Desc"), QString::fromLatin1(s.desc)},
                   {QStringLiteral("Service_Type"), QString::fromLatin1(s.type)}});
    int dietId = 0;
    for (const auto& [desc, code] : {std::pair{"Diabetic", "DIAB"}, {"Low Sodium", "LS"}, {"Renal", "REN"}})
        insertRow(db, QStringLiteral("Diet"),
                  {{QStringLiteral("Diet_ID"), ++dietId},
                   {QStringLiteral("Diet_Desc"), QString::fromLatin1(desc)},
                   {QStringLiteral("Diet_Code"), QString::fromLatin1(code)}});
    insertRow(db, QStringLiteral("Cuisines"),
              {{QStringLiteral("Cuisine_ID"), 1}, {QStringLiteral("Cuisine"), QStringLiteral("Kosher")}});
    insertRow(db, QStringLiteral("Cuisines"),
              {{QStringLiteral("Cuisine_ID"), 2}, {QStringLiteral("Cuisine"), QStringLiteral("Vegetarian")}});
    struct ItemRow
    {
        int id;
        const char* meal;
        const char* name;
        bool frozen;
    };
    for (const ItemRow& i : {ItemRow{10, "L", "Chicken Dinner", false},
                             ItemRow{11, "L", "Vegetable Lasagna", false}, ItemRow{12, "O", "Milk 1%", false},
                             ItemRow{13, "D", "Frozen Dinner", true}, ItemRow{14, "S", "Fruit Cup", false}})
        insertRow(db, QStringLiteral("Items"),
                  {{QStringLiteral("Item_ID"), i.id},
                   {QStringLiteral("Meal"), QString::fromLatin1(i.meal)},
                   {QStringLiteral("Meal_Item"), QString::fromLatin1(i.name)},
                   {QStringLiteral("Meal_Sort"), i.id},
                   {QStringLiteral("Item_Sort"), i.id},
                   {QStringLiteral("Frozen_Itm"), i.frozen},
                   {QStringLiteral("Bulk_Item"), false},
                   {QStringLiteral("Itemize_Diets"), !i.frozen},
                   {QStringLiteral("Number_Meals"), 1},
                   {QStringLiteral("Number_Labels"), 1}});
    struct Center
    {
        int id;
        const char* code;
        const char* name;
        bool distribution;
    };
    for (const Center& c :
         {Center{1, "NORTH", "North Kitchen", true}, Center{2, "SOUTH", "South Kitchen", true},
          Center{3, "OFFICE", "Main Office", false}, Center{4, "WEST", "West Pantry", true}})
        insertRow(db, QStringLiteral("Locatns"),
                  {{QStringLiteral("Location_ID"), c.id},
                   {QStringLiteral("Location_Cd"), QString::fromLatin1(c.code)},
                   {QStringLiteral("Location"), QString::fromLatin1(c.name)},
                   {QStringLiteral("Distribution_Center"), c.distribution}});
    struct Route
    {
        const char* id;
        const char* desc;
        int center;
        const char* code;
    };
    for (const Route& r : {Route{"N1", "North Loop", 1, "NORTH"}, Route{"N2", "Hill Road", 1, "NORTH"},
                           Route{"S1", "South Side", 2, "SOUTH"}, Route{"O'B1", "O'Brien Lane", 2, "SOUTH"},
                           Route{"E1", "East Town", 0, ""}})
        insertRow(db, QStringLiteral("Routes"),
                  {{QStringLiteral("Route_ID"), QString::fromLatin1(r.id)},
                   {QStringLiteral("Route_Desc"), QString::fromLatin1(r.desc)},
                   {QStringLiteral("Dist_Center_ID"), r.center ? QVariant(r.center) : QVariant()},
                   {QStringLiteral("Dist_Center_Cd"), QString::fromLatin1(r.code)}});

    client(db, 101, QStringLiteral("101"), QStringLiteral("Abbott"), QStringLiteral("Margaret"),
           {{QStringLiteral("Mid_Name"), QStringLiteral("A")},
            {QStringLiteral("Sex"), QStringLiteral("F")},
            {QStringLiteral("DOB"), QDate(1938, 3, 10)},
            {QStringLiteral("Race"), QStringLiteral("W")},
            {QStringLiteral("ZIP"), QStringLiteral("05401")},
            {QStringLiteral("HIV_Status"), QStringLiteral("4")},
            {QStringLiteral("Address1"), QStringLiteral("12 Elm Street")},
            {QStringLiteral("Phone"), QStringLiteral("(802) 555-0101")},
            {QStringLiteral("Directions"), QStringLiteral("Side door; ring twice and wait.")},
            {QStringLiteral("Def_Rte"), QStringLiteral("N1")},
            {QStringLiteral("Def_Stop"), 1.0},
            {QStringLiteral("Household_ID"), 101},
            {QStringLiteral("Rural"), QStringLiteral("N")},
            {QStringLiteral("Preferences"), QStringLiteral("No fish")}});
    client(db, 102, QStringLiteral("102.0"), QStringLiteral("Baxter"), QStringLiteral("Harold"),
           {{QStringLiteral("Sex"), QStringLiteral("M")},
            {QStringLiteral("DOB"), QDate(1941, 7, 22)},
            {QStringLiteral("Race"), QStringLiteral("B")},
            {QStringLiteral("ZIP"), QStringLiteral("05401")},
            {QStringLiteral("HIV_Status"), QStringLiteral("9")},
            {QStringLiteral("Address1"), QStringLiteral("40 Pine Street")},
            {QStringLiteral("Address2"), QStringLiteral("Apt 2")},
            {QStringLiteral("Phone"), QStringLiteral("(802) 555-0102")},
            {QStringLiteral("Def_Rte"), QStringLiteral("N1")},
            {QStringLiteral("Def_Stop"), 2.0},
            {QStringLiteral("Household_ID"), 102},
            {QStringLiteral("Rural"), QStringLiteral("N")},
            {QStringLiteral("Cross_Street"), QStringLiteral("Maple Ave")}});
    client(db, 103, QStringLiteral("102.1"), QStringLiteral("Baxter"), QStringLiteral("Ruth"),
           {{QStringLiteral("Sex"), QStringLiteral("F")},
            {QStringLiteral("DOB"), QDate(1944, 3, 6)},
            {QStringLiteral("Race"), QStringLiteral("W")},
            {QStringLiteral("ZIP"), QStringLiteral("05401")},
            {QStringLiteral("Address1"), QStringLiteral("40 Pine Street")},
            {QStringLiteral("Address2"), QStringLiteral("Apt 2")},
            {QStringLiteral("Def_Rte"), QStringLiteral("N1")},
            {QStringLiteral("Def_Stop"), 2.0},
            {QStringLiteral("Household_ID"), 102},
            {QStringLiteral("Rural"), QStringLiteral("N")}});
    client(db, 104, QStringLiteral("104"), QStringLiteral("Castellano"), QStringLiteral("Dorothy"),
           {{QStringLiteral("Sex"), QStringLiteral("F")},
            {QStringLiteral("DOB"), QDate(1950, 12, 1)},
            {QStringLiteral("Race"), QStringLiteral("H")},
            {QStringLiteral("ZIP"), QStringLiteral("05403")},
            {QStringLiteral("HIV_Status"), QStringLiteral("2")},
            {QStringLiteral("Svcs_Used"), 2},
            {QStringLiteral("Address1"), QStringLiteral("7 Hill Road")},
            {QStringLiteral("Def_Rte"), QStringLiteral("N2")},
            {QStringLiteral("Def_Stop"), 1.0},
            {QStringLiteral("Household_ID"), 104},
            {QStringLiteral("Cuisine_ID"), 1},
            {QStringLiteral("Rural"), QStringLiteral("Y")}});
    client(db, 105, QStringLiteral("105"), QStringLiteral("Dubois"), QStringLiteral("Walter"),
           {{QStringLiteral("Sex"), QStringLiteral("M")},
            {QStringLiteral("DOB"), QDate(1936, 3, 20)},
            {QStringLiteral("Race"), QStringLiteral("W")},
            {QStringLiteral("ZIP"), QStringLiteral("05403")},
            {QStringLiteral("Address1"), QStringLiteral("99 Hill Road")},
            {QStringLiteral("Def_Rte"), QStringLiteral("N2")},
            {QStringLiteral("Def_Stop"), 2.0},
            {QStringLiteral("Wed_Rte"), QStringLiteral("S1")},
            {QStringLiteral("Wed_Stop"), 3.0},
            {QStringLiteral("Household_ID"), 105},
            {QStringLiteral("Rural"), QStringLiteral("N")}});
    client(db, 106, QStringLiteral("106"), QStringLiteral("Eriksen"), QStringLiteral("Evelyn"),
           {{QStringLiteral("Sex"), QStringLiteral("F")},
            {QStringLiteral("DOB"), QDate(2008, 5, 5)},
            {QStringLiteral("Race"), QStringLiteral("W")},
            {QStringLiteral("ZIP"), QStringLiteral("05405")},
            {QStringLiteral("Address1"), QStringLiteral("3 Shore Road")},
            {QStringLiteral("Def_Rte"), QStringLiteral("S1")},
            {QStringLiteral("Def_Stop"), 1.0},
            {QStringLiteral("Household_ID"), 106},
            {QStringLiteral("Rural"), QStringLiteral("N")}});
    client(db, 107, QStringLiteral("107"), QStringLiteral("Fitzgerald"), QStringLiteral("Arthur"),
           {{QStringLiteral("Sex"), QStringLiteral("M")},
            {QStringLiteral("DOB"), QDate(1939, 11, 11)},
            {QStringLiteral("ZIP"), QStringLiteral("05405")},
            {QStringLiteral("Address1"), QStringLiteral("18 Shore Road")},
            {QStringLiteral("Def_Rte"), QStringLiteral("S1")},
            {QStringLiteral("Def_Stop"), 2.0},
            {QStringLiteral("Household_ID"), 107}});
    client(db, 108, QStringLiteral("108"), QStringLiteral("Okafor"), QStringLiteral("Mildred"),
           {{QStringLiteral("Status"), QStringLiteral("S")},
            {QStringLiteral("Svcs_Used"), 2},
            {QStringLiteral("DOB"), QDate(1945, 3, 31)},
            {QStringLiteral("Address1"), QStringLiteral("2 O'Brien Lane")},
            {QStringLiteral("Def_Rte"), QStringLiteral("O'B1")},
            {QStringLiteral("Def_Stop"), 1.0},
            {QStringLiteral("Household_ID"), 108}});
    client(db, 109, QStringLiteral("ORG1"), QStringLiteral("Senior Center"), QString(),
           {{QStringLiteral("Org_Client"), QStringLiteral("Y")},
            {QStringLiteral("Address1"), QStringLiteral("1 Main Street")},
            {QStringLiteral("Def_Rte"), QStringLiteral("E1")},
            {QStringLiteral("Def_Stop"), 1.0},
            {QStringLiteral("Household_ID"), 109},
            {QStringLiteral("DOB"), QDate(1975, 3, 15)}});
    client(db, 110, QStringLiteral("110"), QStringLiteral("Gray"), QStringLiteral("Eugene"),
           {{QStringLiteral("Status"), QStringLiteral("I")},
            {QStringLiteral("DOB"), QDate(1940, 3, 12)},
            {QStringLiteral("Def_Rte"), QStringLiteral("N1")},
            {QStringLiteral("Def_Stop"), 5.0}});

    const QDate w = wednesday;
    delivery(db, 1, w, 101, QStringLiteral("101"), QStringLiteral("N1"), 1, 1, 0, QString(),
             {{10, 1}, {12, 1}});
    delivery(db, 2, w, 102, QStringLiteral("102.0"), QStringLiteral("N1"), 2, 1, 1, QStringLiteral("DIAB"),
             {{10, 1}, {14, 1}}, {{QStringLiteral("Label_Created"), true}});
    delivery(db, 3, w, 103, QStringLiteral("102.1"), QStringLiteral("N1"), 2, 1, 0, QString(),
             {{11, 1}, {12, 1}}, {{QStringLiteral("Custom_Items"), true}});
    delivery(db, 4, w, 104, QStringLiteral("104"), QStringLiteral("N2"), 1, 2, 3, QStringLiteral("DIAB / LS"),
             {{13, 5}}, {{QStringLiteral("Cuisine_ID"), 1}, {QStringLiteral("Label2_Created"), true}});
    delivery(db, 5, w, 105, QStringLiteral("105"), QStringLiteral("S1"), 3, 1, 4, QStringLiteral("REN"),
             {{10, 1}}, {{QStringLiteral("Address_Overridden"), true}});
    delivery(db, 6, w, 106, QStringLiteral("106"), QStringLiteral("S1"), 1, 1, 0, QString(), {{11, 2}});
    delivery(db, 7, w, 109, QStringLiteral("ORG1"), QStringLiteral("E1"), 1, 1, 0, QString(), {{10, 10}});
    const QDate t = thursday;
    delivery(db, 11, t, 101, QStringLiteral("101"), QStringLiteral("N1"), 1, 1, 0, QString(), {{10, 1}});
    delivery(db, 12, t, 104, QStringLiteral("104"), QStringLiteral("N2"), 1, 2, 3,
             QStringLiteral("DIAB / LS"), {{13, 5}}, {{QStringLiteral("Cuisine_ID"), 1}});
    delivery(db, 13, t, 105, QStringLiteral("105"), QStringLiteral("N2"), 2, 1, 4, QStringLiteral("REN"),
             {{11, 1}});
    delivery(db, 14, t, 106, QStringLiteral("106"), QStringLiteral("S1"), 1, 1, 0, QString(), {{11, 2}});

    insertRow(db, QStringLiteral("Special_Diets"),
              {{QStringLiteral("Deliv_ID"), 2},
               {P, 102},
               {QStringLiteral("Deliv_Dt"), w},
               {QStringLiteral("Special_Diet_Restr"), 1},
               {QStringLiteral("Special_Diet_Descr"), QStringLiteral("DIAB")}});
    insertRow(db, QStringLiteral("Address_Overrides"),
              {{P, 105},
               {QStringLiteral("Client_ID"), QStringLiteral("105")},
               {QStringLiteral("Override_Type"), QStringLiteral("D")},
               {QStringLiteral("Deliv_Date"), w},
               {QStringLiteral("Addr_Desc"), QStringLiteral("Daughter's house")},
               {QStringLiteral("Address1"), QStringLiteral("48 Maple Avenue")},
               {QStringLiteral("City"), QStringLiteral("Winooski")},
               {QStringLiteral("State"), QStringLiteral("VT")},
               {QStringLiteral("ZIP"), QStringLiteral("05404")},
               {QStringLiteral("Route"), QStringLiteral("S1")},
               {QStringLiteral("Stop"), 3.0}});
    insertRow(db, QStringLiteral("History"),
              {{QStringLiteral("Tran_Date"), QDateTime(QDate(2024, 3, 5), QTime(14, 0))},
               {QStringLiteral("Event"), QStringLiteral("Saved 3/6/2024 All Delivery Types, 7 names.")},
               {QStringLiteral("Event_Date"), w},
               {QStringLiteral("User"), QStringLiteral("Pat Tester")}});
    insertRow(db, QStringLiteral("History"),
              {{QStringLiteral("Tran_Date"), QDateTime(QDate(2024, 3, 6), QTime(10, 0))},
               {QStringLiteral("Event"), QStringLiteral("Saved 3/7/2024 All Delivery Types, 4 names.")},
               {QStringLiteral("Event_Date"), t},
               {QStringLiteral("User"), QStringLiteral("Pat Tester")}});
}

QString writeMealsPerRouteReport(const QString& folder)
{
    const QString path = QDir(folder).filePath(QStringLiteral("USERREPORTDELIVERYMeals per Route.rtm"));
    QFile user(path);
    if (!user.open(QIODevice::WriteOnly)) return {};
    user.write(
        "report \"Meals per Route\"\n"
        "  data Meals\n"
        "    sql \"Select Route_ID, Sum(Number_Meals) as Meals from Deliveri\"\n"
        "    sql \"where Deliv_Dt >= :dStart and Deliv_Dt <= :dEnd group by Route_ID order by Route_ID\"\n"
        "  end\n"
        "  pipe Meals\n"
        "  title height 0.3in\n"
        "    text 0 0 5in 0.3in \"{DBPipelineConfig.ORG_REPORT_NAME} "
        "{DBPipelineReportParameters.Period_Beginning}\"\n"
        "  end\n"
        "  detail height 0.2in\n"
        "    text 0 0 5in 0.2in \"{Route_ID}: {Meals}\"\n"
        "  end\n"
        "end\n");
    return path;
}

reports::DeliveryReportChoices choicesFor(Database& db, int report, const QDate& from, const QDate& to)
{
    reports::DeliveryReportChoices choices;
    choices.report = report;
    choices.from = from;
    choices.to = to;
    choices.dates[0] = from;
    choices.services.setEntries(reports::serviceEntries(db));
    choices.routes.setEntries(reports::routeEntries(db, reports::RouteListKind::Routes));
    return choices;
}

void ReportScreenFixture::SetUp()
{
    makeReportAgency(data.db());
    reports::TemplateRegistry::install(templates.path());
}

bool GivenQuestions::askDietCriteria(reports::TFormDeliveryDietCriteria& form)
{
    ++asked;
    return dietCriteria && dietCriteria(form);
}

bool GivenQuestions::askClientItemsSortOrder(reports::TFormClientItemsSortOrder& form)
{
    ++asked;
    return !sortOrder || sortOrder(form);
}

bool GivenQuestions::askItemLimitation(reports::TFormItemLimitation& form)
{
    ++asked;
    return itemLimitation && itemLimitation(form);
}

bool GivenQuestions::askLabelLimit(reports::TFormLabelLimit& form)
{
    ++asked;
    return labelLimit && labelLimit(form);
}

} // namespace kb::test
