#include "catalogue/ColumnLabels.h"

#include <QHash>
#include <QRegularExpression>
#include <QStringList>

namespace kb {

namespace {

// Names whose words alone would not say what they hold.
const QHash<QString, QString>& knownNames()
{
    static const QHash<QString, QString> names = {
        {QStringLiteral("STAFF_ID"), QStringLiteral("Staff Number")},
        {QStringLiteral("USER_ID"), QStringLiteral("User Name")},
        {QStringLiteral("STAFF_NAME"), QStringLiteral("Name")},
        {QStringLiteral("PREFERREDTAB"), QStringLiteral("Preferred Tab")},
        {QStringLiteral("DTAB"), QStringLiteral("Preferred Tab Number")},
        {QStringLiteral("DSORT_ORDER"), QStringLiteral("Client Sort Order")},
        {QStringLiteral("VISIBLE_TABS"), QStringLiteral("Visible Tabs")},
        {QStringLiteral("CONSERVE_RESOURCES"), QStringLiteral("Conserve Resources")},
        {QStringLiteral("EXECUTE_ONOPEN_QUERY"), QStringLiteral("Run Opening Query at Sign-In")},
        {QStringLiteral("EXECUTE_ONCLOSE_QUERY"), QStringLiteral("Run Closing Query at Sign-Out")},
        {QStringLiteral("ACCESS_LEVEL"), QStringLiteral("Access Level")},
        {QStringLiteral("PREPARE_DATA_PROMPT"), QStringLiteral("Ask Before Preparing Data")},
        {QStringLiteral("DISPLAY_PREPARED_DATA"), QStringLiteral("Show Prepared Data")},
        {QStringLiteral("PERSON_ID"), QStringLiteral("Person ID")},
        {QStringLiteral("CLIENT_ID"), QStringLiteral("Client ID")},
        {QStringLiteral("RECORDID"), QStringLiteral("Record Number")},
        {QStringLiteral("RECORD_ID"), QStringLiteral("Record Number")},
        {QStringLiteral("SORT_ORDER"), QStringLiteral("Sort Order")},
        {QStringLiteral("MUTL_EXCL"), QStringLiteral("Mutually Exclusive")},
        {QStringLiteral("SVCS_USED"), QStringLiteral("Service")},
        {QStringLiteral("DEF_RTE"), QStringLiteral("Default Route")},
        {QStringLiteral("DEF_STOP"), QStringLiteral("Default Stop")},
        {QStringLiteral("DOW"), QStringLiteral("Day of Week")},
        {QStringLiteral("DOB"), QStringLiteral("Date of Birth")},
        {QStringLiteral("ST"), QStringLiteral("State")},
        {QStringLiteral("ZIP"), QStringLiteral("ZIP Code")},
        {QStringLiteral("URN"), QStringLiteral("Unique Identifier")},
        {QStringLiteral("HIV_AWARE"), QStringLiteral("Aware")},
        {QStringLiteral("FLLW_UP_DT"), QStringLiteral("Follow-Up Date")},
        {QStringLiteral("FLLW_COMPL"), QStringLiteral("Follow-Up Done")},
        {QStringLiteral("DIAGONOSIS_DATE"), QStringLiteral("Dx Date")},
        {QStringLiteral("COMMENTS"), QStringLiteral("Comments")},
        {QStringLiteral("TRAN_DATE"), QStringLiteral("Date/Time")},
        {QStringLiteral("TRAN_TYPE"), QStringLiteral("Type")},
        {QStringLiteral("STOP_DT"), QStringLiteral("Stop Date")},
        {QStringLiteral("RESUME_DT"), QStringLiteral("Resume Date")},
        {QStringLiteral("HEADASSESSMENT_DATE"), QStringLiteral("Assessment Date")},
        {QStringLiteral("HEADASSESSMENT_TYPE"), QStringLiteral("Assessment Type")},
        {QStringLiteral("EVENT_ID"), QStringLiteral("Event Code")},
        {QStringLiteral("LOC_CODE"), QStringLiteral("Location")},
        {QStringLiteral("FUND_CD"), QStringLiteral("Funding Source")},
        {QStringLiteral("FUND_SRCE"), QStringLiteral("Funding Source Name")},
        {QStringLiteral("QUERY_NAME"), QStringLiteral("Query Name")},
        {QStringLiteral("QUERY_LINES"), QStringLiteral("Query Statement")},
    };
    return names;
}

// Abbreviations written out, by the upper-case word.
const QHash<QString, QString>& words()
{
    static const QHash<QString, QString> w = {
        {QStringLiteral("ID"), QStringLiteral("ID")},
        {QStringLiteral("CD"), QStringLiteral("Code")},
        {QStringLiteral("DESC"), QStringLiteral("Description")},
        {QStringLiteral("DT"), QStringLiteral("Date")},
        {QStringLiteral("DTE"), QStringLiteral("Date")},
        {QStringLiteral("RTE"), QStringLiteral("Route")},
        {QStringLiteral("NBR"), QStringLiteral("Number")},
        {QStringLiteral("NUM"), QStringLiteral("Number")},
        {QStringLiteral("DELIV"), QStringLiteral("Delivery")},
        {QStringLiteral("APP"), QStringLiteral("Application")},
        {QStringLiteral("ADDR"), QStringLiteral("Address")},
        {QStringLiteral("HLTH"), QStringLiteral("Health")},
        {QStringLiteral("DX"), QStringLiteral("Diagnosis")},
        {QStringLiteral("RECV"), QStringLiteral("Receiving")},
        {QStringLiteral("ST"), QStringLiteral("Status")},
        {QStringLiteral("CNSL"), QStringLiteral("Counseling")},
        {QStringLiteral("ML"), QStringLiteral("Meal")},
        {QStringLiteral("SVCS"), QStringLiteral("Services")},
        {QStringLiteral("CNSLG"), QStringLiteral("Counseling")},
        {QStringLiteral("RESTR"), QStringLiteral("Restriction")},
        {QStringLiteral("MEMB"), QStringLiteral("Member")},
        {QStringLiteral("ORG"), QStringLiteral("Organization")},
        {QStringLiteral("HIV"), QStringLiteral("HIV")},
        {QStringLiteral("SSN"), QStringLiteral("SSN")},
        {QStringLiteral("ADL"), QStringLiteral("ADL")},
        {QStringLiteral("IADL"), QStringLiteral("IADL")},
        {QStringLiteral("NSI"), QStringLiteral("NSI")},
        {QStringLiteral("URN"), QStringLiteral("URN")},
        {QStringLiteral("CC"), QStringLiteral("Card")},
        {QStringLiteral("ZIP"), QStringLiteral("ZIP")},
        {QStringLiteral("RPT"), QStringLiteral("Report")},
        {QStringLiteral("MSG"), QStringLiteral("Message")},
        {QStringLiteral("BOT"), QStringLiteral("Bottom")},
        {QStringLiteral("DEF"), QStringLiteral("Default")},
        {QStringLiteral("ONOPEN"), QStringLiteral("On Open")},
        {QStringLiteral("ONCLOSE"), QStringLiteral("On Close")},
    };
    return w;
}

} // namespace

QString plainColumnLabel(const QString& column)
{
    const QString upper = column.trimmed().toUpper();
    if (const auto it = knownNames().constFind(upper); it != knownNames().constEnd()) return *it;
    // Words are parted by underscores and by a capital after a small letter
    // ("PreferredTab").
    QString spaced = column.trimmed();
    static const QRegularExpression camel(QStringLiteral("([a-z])([A-Z])"));
    spaced.replace(camel, QStringLiteral("\\1_\\2"));
    QStringList parts = spaced.split(QLatin1Char('_'), Qt::SkipEmptyParts);
    for (QString& part : parts) {
        const QString w = part.toUpper();
        if (const auto it = words().constFind(w); it != words().constEnd())
            part = *it;
        else
            part = part.left(1).toUpper() + part.mid(1).toLower();
    }
    return parts.join(QLatin1Char(' '));
}

} // namespace kb
