#include "labels/MemTableLabels.h"

#include "store/Database.h"

#include <QDate>

namespace kb::reports {

namespace {

struct IndexDef
{
    const char* name;
    const char* fields; // for Create Index
    const char* order;  // the same order in a statement, ties as stored
};

// By sort order of the label list; "Diet / Route / Stop" has none.
const IndexDef Indexes[] = {
    {"DateRouteStopClientID", "Deliv_Dt, Route_ID, Stop, Client_ID",
     "L.Deliv_Dt, L.Route_ID, L.Stop, L.Client_ID"},
    {"Client_ID", "Client_ID", "L.Client_ID"},
    {"Last_First", "Last_Name nocase, First_Name nocase", "L.Last_Name nocase, L.First_Name nocase"},
    {"Diet_Descr_Client_ID", "Diet_Descr nocase, Client_ID nocase",
     "L.Diet_Descr nocase, L.Client_ID nocase"},
    {"Diet_Descr_Last", "Diet_Descr nocase, Last_Name nocase", "L.Diet_Descr nocase, L.Last_Name nocase"},
};

// The columns MoveToMemData copies, in the order of its insert.
const char* const Copied[] = {
    "Deliv_ID",      "Deliv_Dt",   "Client_ID",  "Person_ID",   "Svcs_Used",    "Route_ID",
    "Stop",          "Diet_Restr", "Diet_Descr", "Cold_Bag_ID", "Cuisine_ID",   "Address_Overridden",
    "First_Name",    "Mid_Name",   "Last_Name",  "Address1",    "Address2",     "City",
    "State",         "Zip",        "User_Def1",  "User_Def2",   "Service_Desc", "Label_Created",
    "Label2_Created"};

} // namespace

void MemTableLabels::ensure(Database& db)
{
    if (db.memoryTable(tableName())) return;
    db.execute(QStringLiteral(
        "Create Table if not exists Memory MemTableLabels (Deliv_ID Integer, Person_ID Integer, Svcs_Used "
        "Integer, Diet_Restr Integer, Cold_Bag_ID Integer, Cuisine_ID Integer, Deliv_Dt Date, DOW "
        "VarChar(3), "
        "Client_ID VarChar(7), Route_ID VarChar(20), Stop Float, Diet_Descr VarChar(50), Service_Desc "
        "VarChar(50), First_Name VarChar(25), Mid_Name VarChar(25), Last_Name VarChar(25), User_Def1 "
        "VarChar(25), User_Def2 VarChar(25), Preferences Memo, Address_Overridden Boolean, Label_Created "
        "Boolean, Label2_Created Boolean, Address1 VarChar(35), Address2 VarChar(30), City VarChar(18), "
        "State "
        "VarChar(2), Zip VarChar(10))"));
    for (const IndexDef& index : Indexes)
        db.execute(QStringLiteral("Create Index %1 on Memory MemTableLabels (%2)")
                       .arg(QLatin1String(index.name), QLatin1String(index.fields)));
}

void MemTableLabels::empty(Database& db)
{
    db.execute(QStringLiteral("Delete  from \"MemTableLabels.dat\""));
}

void MemTableLabels::MoveToMemData(Database& db, const ResultSet& rows)
{
    if (rows.rowCount() == 0) return;
    QStringList names, values;
    std::vector<int> columns;
    for (const char* column : Copied) {
        const QString name = QString::fromLatin1(column);
        names << name;
        values << u':' + name;
        columns.push_back(rows.columnIndex(name));
    }
    const int service = rows.columnIndex(u"Svcs_Used");
    const int diet = rows.columnIndex(u"Diet_Restr");
    std::vector<Params> batch;
    batch.reserve(size_t(rows.rowCount()));
    for (qsizetype r = 0; r < rows.rowCount(); ++r) {
        Params row;
        row.reserve(columns.size());
        for (size_t c = 0; c < columns.size(); ++c) {
            QVariant v = columns[c] >= 0 ? rows.value(r, columns[c]) : QVariant();
            if ((columns[c] == service || columns[c] == diet) && v.isNull()) v = 0;
            row.emplace_back(names[qsizetype(c)], v);
        }
        batch.push_back(std::move(row));
    }
    db.query(QStringLiteral("Insert into Memory MemTableLabels (%1) values (%2)")
                 .arg(names.join(QStringLiteral(", ")), values.join(QStringLiteral(", "))))
        .execBatch(batch);
}

QString MemTableLabels::indexName(int sortOrder)
{
    return QLatin1String(Indexes[hasIndexFor(sortOrder) ? sortOrder : 0].name);
}

bool MemTableLabels::hasIndexFor(int sortOrder)
{
    return sortOrder >= 0 && sortOrder < int(std::size(Indexes));
}

ResultSet MemTableLabels::rows(Database& db, const QString& index)
{
    const IndexDef* def = &Indexes[0];
    for (const IndexDef& i : Indexes) {
        if (index.compare(QLatin1String(i.name), Qt::CaseInsensitive) == 0) def = &i;
    }
    return db.execute(QStringLiteral("Select L.*, Deliveri.Label3_Created from Memory MemTableLabels L left "
                                     "outer join Deliveri on Deliveri.Deliv_ID = L.Deliv_ID order by %1, "
                                     "L.KB_ROWID")
                          .arg(QLatin1String(def->order)));
}

} // namespace kb::reports
