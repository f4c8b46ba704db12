#include "reference/ReferenceRules.h"

#include "store/Database.h"
#include "UserInterface.h"

namespace kb {

namespace {

bool is(const QString& table, const char* name) { return table.compare(QLatin1String(name), Qt::CaseInsensitive) == 0; }

bool blank(const QVariant& v) { return v.isNull() || v.toString().trimmed().isEmpty(); }

// "31 have already been defined": the row limits come from the bit masks
// that store a client's diets and services.
struct RowLimit
{
    const char* table;
    int limit;
    const char* message;
};

const RowLimit Limits[] = {
    {"Diet", 31, "This program does not support more than 31 diet types. 31 have already been defined!"},
    {"Services", 31, "This program does not support more than 31 services. 31 have already been defined!"},
};

constexpr int ExclusiveServiceLimit = 50;

QString firstColumnOf(const TableDef& table, std::initializer_list<const char*> names)
{
    for (const char* name : names)
        if (const ColumnDef* c = table.column(QString::fromLatin1(name)))
            return c->name;
    return {};
}

// A code that clients carry changed: refuse a duplicate, else carry the
// change over to the clients, with the user's consent.
bool changeCode(Database& db, UserInterface& ui, const RowReader& row, const RowReader& original,
                const QString& codeColumn, const QString& lookup, const QString& clientColumn, const QString& what)
{
    const QVariant newCode = row(codeColumn);
    const QVariant oldCode = original(codeColumn);
    if (!oldCode.isValid() || newCode.toString() == oldCode.toString())
        return true;
    if (!db.execute(lookup, {{QStringLiteral("NewCode"), newCode}}).isEmpty()) {
        ui.warning(QStringLiteral("Not able to save this change- it creates a duplicated Code."));
        return false;
    }
    const Params codes = {{QStringLiteral("NewCode"), newCode}, {QStringLiteral("OldCode"), oldCode}};
    const qint64 users = db.execute(QStringLiteral("select count(*) as N from Clients where %1 = :OldCode").arg(clientColumn),
                                    codes)
                             .value(0, 0)
                             .toLongLong();
    if (users == 0)
        return true;
    const QString question = QStringLiteral("The %1 Code you are changing is in use by at least one client.\r\nThe current "
                                            "data must be updated to reflect this change. \r\nProceed with the change?")
                                 .arg(what);
    if (ui.question(question, Buttons::YesNo) != Answer::Yes)
        return false;
    db.execute(QStringLiteral("Update Clients set %1 = :NewCode where %1 = :OldCode").arg(clientColumn), codes);
    return true;
}

} // namespace

QString numberedColumn(const QString& table)
{
    static const std::pair<const char*, const char*> numbered[] = {
        {"Diet", "DIET_ID"},     {"Services", "SERVICE_ID"},   {"Items", "ITEM_ID"},
        {"Race", "RACE_ID"},     {"Staff", "Staff_ID"},        {"EventCds", "EVENT_ID"},
        {"Locatns", "LOCATION_ID"}, {"StopReasons", "STOP_ID"}, {"Fundsrcs", "FUND_ID"},
    };
    for (const auto& [name, column] : numbered)
        if (is(table, name))
            return QString::fromLatin1(column);
    return {};
}

int nextNumber(Database& db, const QString& table, const QString& column)
{
    const ResultSet r = db.execute(QStringLiteral("select max(%1) as Highest from %2").arg(column, table));
    return r.value(0, 0).isNull() ? 1 : r.value(0, 0).toInt() + 1;
}

bool allowsInsert(Database& db, UserInterface& ui, const QString& table)
{
    for (const RowLimit& limit : Limits) {
        if (!is(table, limit.table))
            continue;
        if (db.recordCount(table) >= limit.limit) {
            ui.warning(QString::fromLatin1(limit.message));
            return false;
        }
    }
    return true;
}

QString createDateColumn(const TableDef& table)
{
    return firstColumnOf(table, {"CREATE_DATE", "DATE_CREATED"});
}

QString lastUpdatedColumn(const TableDef& table)
{
    return firstColumnOf(table, {"LAST_UPDATED", "LAST_UPDATE"});
}

void initialiseNewRow(Database& db, const QString& table, const RowWriter& write)
{
    const QString number = numberedColumn(table);
    if (!number.isEmpty())
        write(number, nextNumber(db, table, number));
    if (const TableDef* def = db.persistentTable(table)) {
        const QString created = createDateColumn(*def);
        if (!created.isEmpty())
            write(created, db.clock().today());
    }
    if (is(table, "Services"))
        write(QStringLiteral("MUTL_EXCL"), false);
    if (is(table, "Fundsrcs"))
        write(QStringLiteral("BILLED_PARTY"), QStringLiteral("N"));
}

bool beforeReferencePost(Database& db, UserInterface& ui, const QString& table, const RowReader& row,
                         const RowWriter& write, const RowReader& original)
{
    if (is(table, "Diet")) {
        if (blank(row(QStringLiteral("DIET_ID")))) {
            ui.warning(QStringLiteral("The Diet ID can't be left blank!"));
            return false;
        }
        if (blank(row(QStringLiteral("DIET_CODE")))) {
            ui.warning(QStringLiteral("The Diet Identifier (AKA Diet Code or Abbreviation) can't be left \r\nblank!"));
            return false;
        }
    } else if (is(table, "Queries")) {
        if (blank(row(QStringLiteral("QUERY_NAME"))) || blank(row(QStringLiteral("QUERY_LINES")))) {
            ui.warning(QStringLiteral("Either the name of the query or the query statement is blank.\r\nBoth must be "
                                      "completed in order to save this entry."));
            return false;
        }
    } else if (is(table, "Custom_Lookup_Choices")) {
        // An incomplete choice is simply not kept.
        for (const char* column : {"Dialogue", "Field_Name", "Field_Code", "Field_Choice"})
            if (blank(row(QLatin1String(column))))
                return false;
    } else if (is(table, "Docs")) {
        const QVariant name = row(QStringLiteral("Doc_Name"));
        const QVariant description = row(QStringLiteral("Doc_Description"));
        if (blank(name) && !blank(description))
            write(QStringLiteral("Doc_Name"), description);
        else if (!blank(name) && blank(description))
            write(QStringLiteral("Doc_Description"), name);
    } else if (is(table, "Services")) {
        if (row(QStringLiteral("MUTL_EXCL")).toBool()) {
            const qint64 exclusive =
                db.execute(QStringLiteral("select count(*) as ExclusiveServicesCount from services where (mutl_excl = true)"))
                    .value(0, 0)
                    .toLongLong();
            if (exclusive > ExclusiveServiceLimit) {
                ui.warning(QStringLiteral("This program does not support more than 50 mutually exclusive services. 50 "
                                          "have already been defined!"));
                write(QStringLiteral("MUTL_EXCL"), false);
            }
        }
    } else if (is(table, "Race")) {
        if (!changeCode(db, ui, row, original, QStringLiteral("RACE_CD"),
                        QStringLiteral("Select * from Race where Race_Cd = :NewCode"), QStringLiteral("Race"),
                        QStringLiteral("Race")))
            return false;
    } else if (is(table, "Martst")) {
        if (!changeCode(db, ui, row, original, QStringLiteral("MART_ID"),
                        QStringLiteral("Select * from MartSt where Mart_ID = :NewCode"), QStringLiteral("Marital_St"),
                        QStringLiteral("Marital Status")))
            return false;
    }
    if (const TableDef* def = db.persistentTable(table)) {
        const QString updated = lastUpdatedColumn(*def);
        if (!updated.isEmpty())
            write(updated, db.clock().now());
    }
    return true;
}

PostalFormat postalFormat(const QString& code)
{
    const QString northAmericanPhone = QStringLiteral("###-###-####[ x#][#][#][#][#]");
    if (code == QLatin1String("USA"))
        return {QStringLiteral("City/State/ZIP:"), QStringLiteral("#####[-####]"), northAmericanPhone};
    if (code == QLatin1String("CAN"))
        return {QStringLiteral("City/Prov/Postal:"),
                QStringLiteral("{A,B,C,E,G,H,J,K,L,M,N,P,R,S,T,V,X,Y}#{A,B,C,E,G,H,J,K,L,M,N,P,R,S,T,V,W,X,Y,Z} "
                               "#{A,B,C,E,G,H,J,K,L,M,N,P,R,S,T,V,W,X,Y,Z}#"),
                northAmericanPhone};
    if (code == QLatin1String("UK"))
        return {QStringLiteral("Town/ /Postcode:"), QStringLiteral("&[&][&][&][#][#][&][ #&&]"),
                QStringLiteral("{##### ######,#### ### ####,### #### ####}[x#][#][#][#][#]")};
    return {QStringLiteral("City/State/Postal:"), QString(), QString()};
}

} // namespace kb
