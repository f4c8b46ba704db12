#include "session/DataDirectory.h"

namespace kb {

namespace {

void insertCodes(Database& db, const QString& insert, const QStringList& names,
                 const std::vector<std::vector<QVariant>>& rows)
{
    Query q = db.query(insert);
    for (const auto& row : rows) {
        for (qsizetype i = 0; i < names.size(); ++i)
            q.bind(names[i], row[i]);
        q.execCommand();
    }
}

} // namespace

void seedNewAgency(Database& db)
{
    const QDate today = db.clock().today();
    const QDateTime now = db.clock().now();

    // The agency's settings start from defaults that let a new agency prepare
    // its first run; each can be changed in the configuration screen.
    db.execute(QStringLiteral(
                   "INSERT INTO Config (ORGANIZATN, ORG_REPORT_NAME, DSORT_ORDER, POSTAL_FORMAT, INCOME_CATEGORIES, "
                   "ENABLE_ALTERNATE_ADDRESSES, FIRST_SERVICE_DATE_METHOD, ADVANCE_PREP_DAYS, SUSPEND_SCHEDULED_DELIVERIES, "
                   "CONSOLIDATE_DELIVERIES, DMON, DTUE, DWED, DTHU, DFRI, DSAT, DSUN, MAXDIETMOD, STD_DIET_LABEL, "
                   "LINE_ITEM_RETENTION, RECERT_WKS, STOPPED2INACTIVE_DAYS, FUNDING_CONFIGURATION, COMPLETED_STATE, "
                   "MEETS_CONDITIONS_STATE, DELIV_REPORT_SHOW_ITEMS, DELIV_REPORT_SHOW_COUNTS, NO_DELIVERY_LABEL, "
                   "ALLOW_BYPASSING_CONTRACT_DATES, POST_DELIVERIES_TO_EVENTS, INCLUDE_ALL_ACTIVE_CLIENTS, "
                   "DELIVERY_WINDOW_ENTRIES, RELATIONSHIP_LIST, NOTE_CATEGORIES_LIST, CASE_MGT_DEFAULT_LENGTH, LAST_UPDATED) "
                   "VALUES ('New Agency', 'New Agency', 'LAST_FIRST', 'USA', 'LH', False, 'C', 1, True, False, "
                   "True, True, True, True, True, False, False, 3, 'Regular', 24, 26, 30, '1', '2', '2', 'I', 'B', "
                   "'No Delivery', False, False, False, :Windows, :Relationships, :Categories, 0.5, :Now)"),
               {{QStringLiteral("Windows"), QStringLiteral("8:00 AM\n9:00 AM\n10:00 AM\n11:00 AM\n12:00 PM\n1:00 PM")},
                {QStringLiteral("Relationships"),
                 QStringLiteral("Bill-To\nCaregiver\nDaughter\nSon\nSpouse\nFriend\nNeighbor\nPhysician\nCase Worker")},
                {QStringLiteral("Categories"), QStringLiteral("General\nPhone Call\nDelivery\nHealth\nBilling")},
                {QStringLiteral("Now"), now}});

    // Every counter starts empty: the first number handed out is 1.
    db.execute(QStringLiteral("INSERT INTO IDNOS (FUND_ID, PERSON_ID, CLIENT_ID, DIET_ID, ITEM_ID, SERV_ID, ORNT_ID, "
                              "DELIV_ID, Suspension_Group_ID, NSI_ADL_IADL_ID) VALUES (0, 0, 0, 0, 0, 0, 0, 0, 0, 0)"));

    insertCodes(db,
                QStringLiteral("INSERT INTO Race (RACE_ID, RACE_CD, RACE_DESC, REPORTING_CODE, CREATE_DATE) "
                               "VALUES (:Id, :Code, :Descr, :Code, :Today)"),
                {QStringLiteral("Id"), QStringLiteral("Code"), QStringLiteral("Descr"), QStringLiteral("Today")},
                {{1, "W", "White", today},
                 {2, "B", "Black/African American", today},
                 {3, "A", "Asian", today},
                 {4, "N", "Native American", today},
                 {5, "P", "Pacific Islander", today},
                 {6, "M", "Multi-Racial", today},
                 {7, "O", "Other", today},
                 {8, "U", "Unknown", today}});

    insertCodes(db,
                QStringLiteral("INSERT INTO Martst (MART_ID, MART_DESC, CREATE_DATE) VALUES (:Code, :Descr, :Today)"),
                {QStringLiteral("Code"), QStringLiteral("Descr"), QStringLiteral("Today")},
                {{"S", "Single", today},
                 {"M", "Married", today},
                 {"D", "Divorced", today},
                 {"W", "Widowed", today},
                 {"SP", "Separated", today},
                 {"U", "Unknown", today}});

    insertCodes(db, QStringLiteral("INSERT INTO StopReasons (STOP_ID, STOP_REASON) VALUES (:Id, :Reason)"),
                {QStringLiteral("Id"), QStringLiteral("Reason")},
                {{1, "Moved"},
                 {2, "Deceased"},
                 {3, "Nursing Home"},
                 {4, "Hospitalized"},
                 {5, "No Longer Needs Service"},
                 {6, "Refused Service"},
                 {7, "Other"}});

    insertCodes(db,
                QStringLiteral("INSERT INTO Case_Management_Choices (CONTACT_CD, CONTACT_DESC, USAGE, Create_Date) "
                               "VALUES (:Code, :Descr, :Usage, :Today)"),
                {QStringLiteral("Code"), QStringLiteral("Descr"), QStringLiteral("Usage"), QStringLiteral("Today")},
                {{"C", "Case Manager Visit", "E", today},
                 {"H", "Home Visit", "E", today},
                 {"O", "Other Visit", "E", today},
                 {"R", "Reassessment", "E", today},
                 {"F", "Face-to-Face", "C", today},
                 {"M", "Mail/Fax", "C", today},
                 {"O", "Other", "C", today},
                 {"P", "Telephone", "C", today}});
}

} // namespace kb
