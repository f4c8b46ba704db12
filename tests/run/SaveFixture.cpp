#include "SaveFixture.h"

#include "Csv.h"

#include <QTextStream>

namespace kb::test {

SaveFixture::SaveFixture()
{
    form().setDialogs(&dialogs);
}

std::optional<SaveResult> SaveFixture::save(const QDate& date, QChar letter)
{
    prepare(date, letter);
    return form().ActionSaveData();
}

ResultSet SaveFixture::deliveries(const QDate& date)
{
    return db().execute(
        QStringLiteral("Select * from Deliveri where Deliv_Dt = :Date order by Deliv_ID, Person_ID, "
                       "Delivery_Type"),
        {{QStringLiteral("Date"), date}});
}

ResultSet SaveFixture::mealCrdt(const QDate& date)
{
    return db().execute(
        QStringLiteral("Select Deliv_ID, Person_ID, Deliv_Dt, DOW, Item_ID, Quantity, Congregate, "
                       "Modified_Ml, Service_ID, Sort_Order from MealCrdt where Deliv_Dt = :Date "
                       "order by Deliv_ID, Sort_Order, Item_ID"),
        {{QStringLiteral("Date"), date}});
}

std::string SaveFixture::errors() const
{
    return ui.texts(ScriptedUserInterface::Kind::Error).join(QLatin1Char('\n')).toStdString();
}

QVariant SaveFixture::idnos()
{
    return db().execute(QStringLiteral("Select Deliv_ID from IDNOS")).value(0, 0);
}

void SaveFixture::setIdnos(const QVariant& value)
{
    db().execute(QStringLiteral("Update IDNOS set Deliv_ID = :Value"), {{QStringLiteral("Value"), value}});
}

QString savedRunFingerprint(Database& db)
{
    QString text;
    QTextStream out(&text);
    for (const char* statement :
         {"Select * from Deliveri order by Deliv_ID, Person_ID, Delivery_Type",
          "Select Deliv_ID, Person_ID, Deliv_Dt, DOW, Item_ID, Quantity, Congregate, Modified_Ml, "
          "Service_ID, "
          "Sort_Order from MealCrdt order by Deliv_ID, Sort_Order, Item_ID, Person_ID, Quantity",
          "Select * from Special_Diets order by Deliv_ID, Person_ID",
          "Select RecordID, Fulfilled from EpisodicDeliveries order by RecordID",
          "Select Deliv_ID from IDNOS"})
        writeCsv(out, db.execute(QString::fromLatin1(statement)));
    out.flush();
    return text;
}

QVariant SaveFixture::column(const ResultSet& rows, int person, const QString& name, QChar type)
{
    const int p = rows.columnIndex(u"Person_ID");
    const int t = rows.columnIndex(u"Delivery_Type");
    for (qsizetype r = 0; r < rows.rowCount(); ++r)
        if (rows.value(r, p).toInt() == person &&
            rows.value(r, t).toString().startsWith(type, Qt::CaseInsensitive))
            return rows.value(r, rows.columnIndex(name));
    ADD_FAILURE() << "no stored delivery of person " << person;
    return {};
}

} // namespace kb::test
