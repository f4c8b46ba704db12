#include "reference/EditorFieldRules.h"

#include "catalogue/ColumnLabels.h"
#include "store/Database.h"

namespace kb {

namespace {

bool is(const QString& a, const char* b)
{
    return a.compare(QLatin1String(b), Qt::CaseInsensitive) == 0;
}

struct CodeList
{
    const char* table;
    const char* column;
    std::initializer_list<std::pair<const char*, const char*>> codes;
};

// The codes with fixed meanings among the columns of the code tables.
const CodeList CodeLists[] = {
    {"Items",
     "MEAL",
     {{"B", "Breakfast"},
      {"L", "Lunch"},
      {"D", "Dinner"},
      {"S", "Snack"},
      {"O", "Other"},
      {"BV", "Beverage"},
      {"MF", "Medical Food"},
      {"SM", "Specialized Medical Food"}}},
    {"Items",
     "CONFIRMATION_REQUIRED",
     {{"", "Always included"},
      {"O", "Ongoing deliveries"},
      {"S", "Scheduled and Episodic"},
      {"A", "All deliveries"}}},
    {"Services",
     "SERVICE_TYPE",
     {{"D", "Delivery Service"},
      {"C", "Counseling Service"},
      {"M", "Case Management"},
      {"O", "Other Services"}}},
    {"Services", "DEFAULT_FREQUENCY", {{"O", "Ongoing"}, {"E", "Episodic"}}},
    {"Services", "DEFAULT_DELIVERY_TYPE", {{"D", "Delivered"}, {"W", "Walk-In"}}},
    {"Conditions", "Requirement_Level", {{"R", "Required"}, {"O", "One of Several"}, {"W", "Wildcard"}}},
    {"Docs", "Requirement_Level", {{"R", "Required"}, {"O", "One of Several"}, {"W", "Wildcard"}}},
    {"Staff",
     "Access_Level",
     {{"W", "Full use"}, {"A", "Full use"}, {"R", "Read-only"}, {"O", "Reports only"}}},
    {"Routes",
     "ROUTE_TYPE",
     {{"D", "Driving"}, {"W", "Walking"}, {"T", "Truck"}, {"I", "Walk-In"}, {"C", "Congregate"}}},
    {"Custom_Lookup_Choices", "Dialogue", {{"ASSESSMENTS", "ASSESSMENTS"}, {"NSI ADL IADL", "NSI ADL IADL"}}},
    {"Fundsrcs", "BILLED_PARTY", {{"3", "Third Party"}, {"P", "Client (Private Pay)"}, {"N", "No Billing"}}},
    {"Fundsrcs", "REIMBURSEMENT_METHOD", {{"T", "Time Period"}, {"I", "Meals or Meal Items"}}},
    {"Fundsrcs", "REIMBURSEMENT_PERIOD", {{"D", "Day"}}},
};

const CodeList* codeList(const QString& table, const QString& column)
{
    for (const CodeList& list : CodeLists)
        if (is(table, list.table) && is(column, list.column)) return &list;
    return nullptr;
}

// "SERVICE_DESC" reads "Service Description:".
QString labelOf(const QString& column)
{
    return plainColumnLabel(column) + QLatin1Char(':');
}

FieldEditor editorOf(FieldType type)
{
    switch (type) {
    case FieldType::Bool:
        return FieldEditor::Check;
    case FieldType::Memo:
        return FieldEditor::Memo;
    case FieldType::Date:
        return FieldEditor::Date;
    case FieldType::DateTime:
        return FieldEditor::DateTime;
    case FieldType::SmallInt:
    case FieldType::Int:
    case FieldType::Float:
    case FieldType::Currency:
        return FieldEditor::Number;
    default:
        return FieldEditor::Text;
    }
}

// Fields whose drop-down is read from other tables.
bool hasDataChoices(const QString& table, const QString& column)
{
    return (is(table, "EventCds") && is(column, "SERVICE_ID")) ||
           (is(table, "Cold_Bag_Usage") && is(column, "Bag_ID")) ||
           (is(table, "Custom_Lookup_Choices") && is(column, "Field_Name")) ||
           (is(table, "Routes") && is(column, "DIST_CENTER_ID"));
}

QList<Choice> rowsAsChoices(const ResultSet& rows)
{
    QList<Choice> choices;
    for (qsizetype r = 0; r < rows.rowCount(); ++r)
        choices.append({rows.value(r, 0), rows.value(r, 1).toString()});
    return choices;
}

} // namespace

QList<EditorField> editFieldsOf(Database& db, const EditorScreen& screen, const PostalFormat& postal)
{
    QList<EditorField> fields;
    const TableDef* def = db.persistentTable(screen.table);
    if (!def) return fields;
    const QString created = createDateColumn(*def);
    const QString updated = lastUpdatedColumn(*def);
    for (const ColumnDef& c : def->columns()) {
        if (c.type == FieldType::AutoInc || c.name == created || c.name == updated) continue;
        if (!screen.usage.isEmpty() && is(c.name, "USAGE")) continue;
        EditorField f{c.name, labelOf(c.name), editorOf(c.type), c.width, {}};
        if (codeList(screen.table, c.name) || hasDataChoices(screen.table, c.name))
            f.editor = FieldEditor::Choice;
        if (is(screen.table, "Queries") && is(c.name, "QUERY_NAME")) {
            f.editor = FieldEditor::EditableChoice;
            f.label = QStringLiteral("Query Name:");
        }
        if (is(screen.table, "Queries") && is(c.name, "QUERY_LINES"))
            f.label = QStringLiteral("Query Statement:");
        // A user's level is set outside the program's screens, by the data's owner.
        if (is(screen.table, "Staff") && is(c.name, "Access_Level")) f.readOnly = true;
        if (is(screen.table, "EventCds") && is(c.name, "SERVICE_ID")) f.label = QStringLiteral("Service:");
        if (is(screen.table, "Cold_Bag_Usage") && is(c.name, "Bag_ID")) f.label = QStringLiteral("Cold Bag:");
        if (is(screen.table, "Routes")) {
            static const std::pair<const char*, const char*> RouteLabels[] = {
                {"ROUTE_ID", "Route Code:"},
                {"ROUTE_DESC", "Route Description:"},
                {"ROUTE_TYPE", "Route Type:"},
                {"DIST_CENTER_ID", "Distribution Center:"},
                {"DIST_CENTER_CD", "Dist. Center Code:"}};
            for (const auto& [column, label] : RouteLabels)
                if (is(c.name, column)) f.label = QString::fromLatin1(label);
            // A copy of the center's code, brought up to date when the screen closes.
            if (is(c.name, "DIST_CENTER_CD")) f.readOnly = true;
        }
        if (is(screen.table, "Locatns")) {
            // The postal code and telephone follow the agency's country.
            if (is(c.name, "LOCATION_CITY"))
                f.label = postal.label;
            else if (is(c.name, "LOCATION_ZIP"))
                f.mask = postal.postalMask;
            else if (is(c.name, "LOCATION_PHONE"))
                f.mask = postal.phoneMask;
        }
        fields.append(f);
    }
    return fields;
}

QList<Choice> fieldChoices(Database& db, const EditorScreen& screen, const QString& field,
                           const RowReader& row)
{
    if (const CodeList* list = codeList(screen.table, field)) {
        QList<Choice> choices;
        for (const auto& [code, text] : list->codes)
            choices.append({QString::fromLatin1(code), QString::fromLatin1(text)});
        return choices;
    }
    if (is(screen.table, "Queries") && is(field, "QUERY_NAME")) {
        QList<Choice> choices;
        for (const QString& name : reservedQueryNames())
            choices.append({name, name});
        return choices;
    }
    if (is(screen.table, "EventCds") && is(field, "SERVICE_ID"))
        return rowsAsChoices(db.execute(
            QStringLiteral("Select Service_ID, Service_Desc from Services order by Service_Desc")));
    if (is(screen.table, "Cold_Bag_Usage") && is(field, "Bag_ID"))
        return rowsAsChoices(
            db.execute(QStringLiteral("Select Record_ID, Bag_Code from Cold_Bag_Codes order by Bag_Code")));
    if (is(screen.table, "Routes") && is(field, "DIST_CENTER_ID")) {
        const ResultSet centers =
            db.execute(QStringLiteral("select Location_ID, Location_CD, Location from Locatns where Distribution_Center"));
        QList<Choice> choices;
        for (qsizetype r = 0; r < centers.rowCount(); ++r)
            choices.append({centers.value(r, 0), centers.value(r, 1).toString().trimmed() + QStringLiteral(" - ") +
                                                     centers.value(r, 2).toString().trimmed()});
        return choices;
    }
    if (is(screen.table, "Custom_Lookup_Choices") && is(field, "Field_Name")) {
        // The answers of a dialogue are the columns of the table it fills.
        const QString dialogue = row(QStringLiteral("Dialogue")).toString();
        const TableDef* def = dialogue == QLatin1String("ASSESSMENTS") ? db.persistentTable(u"Asssmnts")
                              : dialogue == QLatin1String("NSI ADL IADL")
                                  ? db.persistentTable(u"NSI_ADL_IADL")
                                  : nullptr;
        QList<Choice> choices;
        if (def)
            for (const ColumnDef& c : def->columns())
                choices.append({c.name, c.name});
        return choices;
    }
    return {};
}

QVariant gridValue(const EditorScreen& screen, const QString& field, const QVariant& value)
{
    const CodeList* list = codeList(screen.table, field);
    if (!list || value.isNull()) return value;
    const QString code = value.toString().trimmed();
    for (const auto& [listed, text] : list->codes)
        if (code == QLatin1String(listed)) return QString::fromLatin1(text);
    return value;
}

bool isFieldVisible(const EditorScreen& screen, const QString& field, const RowReader& row)
{
    if (is(screen.table, "Fundsrcs")) {
        // A source nobody is billed by has no method and no rates; the time
        // rate and period belong to the time method.
        const bool billed = row(QStringLiteral("BILLED_PARTY")).toString().trimmed() != QLatin1String("N");
        if (is(field, "REIMBURSEMENT_METHOD")) return billed;
        if (is(field, "REIMBURSEMENT_RATE") || is(field, "REIMBURSEMENT_PERIOD"))
            return billed &&
                   row(QStringLiteral("REIMBURSEMENT_METHOD")).toString().trimmed() == QLatin1String("T");
        return true;
    }
    if (!is(screen.table, "Services")) return true;
    // Frequency, delivery type and exclusiveness mean something for
    // delivery services only, and default days for ongoing ones.
    const bool delivery = row(QStringLiteral("SERVICE_TYPE")).toString() == QLatin1String("D");
    if (is(field, "DEFAULT_FREQUENCY") || is(field, "DEFAULT_DELIVERY_TYPE") || is(field, "MUTL_EXCL"))
        return delivery;
    static const char* const Days[] = {"DMON", "DTUE", "DWED", "DTHU", "DFRI", "DSAT", "DSUN"};
    for (const char* day : Days)
        if (is(field, day))
            return delivery && row(QStringLiteral("DEFAULT_FREQUENCY")).toString() == QLatin1String("O");
    return true;
}

} // namespace kb
