#include "records/DeliveryGroupDeletion.h"

#include "records/DeliveryRecords.h"
#include "records/History.h"
#include "rules/ClientHistoryTexts.h"
#include "store/Database.h"

namespace kb {

namespace {

// The kind letter that a rule keeps to; empty when all kinds go.
QString kindLetter(DeliveryGroupDeletion::Kinds kinds)
{
    switch (kinds) {
    case DeliveryGroupDeletion::Kinds::ExcludeWalkIns:
        return QStringLiteral("D");
    case DeliveryGroupDeletion::Kinds::WalkInsOnly:
        return QStringLiteral("W");
    case DeliveryGroupDeletion::Kinds::All:
        break;
    }
    return {};
}

Params paramsOf(const DeliveryGroupDeletion::Selection& s)
{
    Params p{{QStringLiteral("Deliv_Dt"), s.date}};
    if (s.byClient)
        p.emplace_back(QStringLiteral("Person_ID"), s.personId);
    else if (s.serviceId != 0)
        p.emplace_back(QStringLiteral("Svcs_Used"), s.serviceId);
    const QString letter = kindLetter(s.kinds);
    if (!letter.isEmpty()) p.emplace_back(QStringLiteral("Delivery_Type"), letter);
    return p;
}

} // namespace

QString DeliveryGroupDeletion::kindsText(Kinds kinds)
{
    switch (kinds) {
    case Kinds::ExcludeWalkIns:
        return QStringLiteral("Exclude Walk-Ins from deletion");
    case Kinds::All:
        return QStringLiteral("Delete all deliveries regardless");
    case Kinds::WalkInsOnly:
        return QStringLiteral("Walk-Ins only should be deleted");
    }
    return {};
}

DeliveryGroupDeletion::Kinds DeliveryGroupDeletion::kindsFromIndex(int index)
{
    return index == 1 ? Kinds::All : index == 2 ? Kinds::WalkInsOnly : Kinds::ExcludeWalkIns;
}

QString DeliveryGroupDeletion::deliveriConditions(const Selection& s)
{
    QString text;
    if (s.byClient)
        text += QStringLiteral(" and Person_ID = :Person_ID");
    else if (s.serviceId != 0)
        text += QStringLiteral(" and Svcs_Used = :Svcs_Used");
    if (!kindLetter(s.kinds).isEmpty())
        text += QStringLiteral(" and Substring( Delivery_Type from 2 for 1) = :Delivery_Type");
    return text;
}

qint64 DeliveryGroupDeletion::candidates(Database& db, const Selection& s)
{
    return db
        .execute(
            QStringLiteral("Select Deliv_ID, Person_ID, Client_ID, Deliv_Dt from Deliveri where Deliv_Dt = "
                           ":Deliv_Dt") +
                deliveriConditions(s),
            paramsOf(s))
        .rowCount();
}

QString DeliveryGroupDeletion::historyEvent(const Selection& s)
{
    const QString day = client_history::dateText(s.date);
    if (s.byClient) {
        const QString what = s.kinds == Kinds::All           ? QStringLiteral("All meal credits for ")
                             : s.kinds == Kinds::WalkInsOnly ? QStringLiteral("Walk-in credits for ")
                                                             : QStringLiteral("Delivered credits for ");
        return what + day + QStringLiteral(" deleted.");
    }
    const QString kindWord =
        s.kinds == Kinds::WalkInsOnly ? QStringLiteral(" wlk-in ") : QStringLiteral(" all ");
    if (s.serviceId == 0)
        return QStringLiteral("Deleted") + kindWord + QStringLiteral("credits, all servcs,") + day;
    return QStringLiteral("Deleted") + kindWord + s.serviceName + QStringLiteral(" crdts,") + day;
}

DeliveryGroupDeletion::Result DeliveryGroupDeletion::run(Database& db, const Selection& s,
                                                         const QString& user)
{
    const Params params = paramsOf(s);
    const QString conditions = deliveriConditions(s);
    Result result;
    TransactionGuard transaction(db);
    if (s.byClient && s.kinds == Kinds::All)
        result.items =
            db.execute(QStringLiteral("Delete from MealCrdt where Deliv_Dt = :Deliv_Dt and Person_ID = "
                                      ":Person_ID"),
                       params)
                .rowsAffected();
    else
        result.items =
            db.execute(QStringLiteral("Delete from MealCrdt where Deliv_Dt = :Deliv_Dt and Deliv_ID in "
                                      "(Select Deliv_ID from Deliveri where Deliv_Dt = :Deliv_Dt") +
                           conditions + QStringLiteral(")"),
                       params)
                .rowsAffected();

    QString episodic =
        QStringLiteral(" Update EpisodicDeliveries set Fulfilled= '' where Deliv_Date = :Deliv_Dt ");
    if (s.byClient)
        episodic += QStringLiteral(" and Person_ID = :Person_ID");
    else if (s.serviceId != 0)
        episodic += QStringLiteral(" and Svcs_Used = :Svcs_Used");
    episodic += s.kinds == Kinds::WalkInsOnly ? QStringLiteral(" and (Delivery_Type = 'W')")
                : s.kinds == Kinds::ExcludeWalkIns
                    ? QStringLiteral(" and (Delivery_Type = 'D')")
                    : QStringLiteral(" and (Delivery_Type = 'D' or Delivery_Type = 'W')");
    Params episodicParams = params;
    std::erase_if(episodicParams, [](const auto& p) { return p.first == QLatin1String("Delivery_Type"); });
    db.execute(episodic, episodicParams);

    result.deliveries =
        db.execute(QStringLiteral("Delete from Deliveri where Deliv_Dt = :Deliv_Dt") + conditions, params)
            .rowsAffected();

    HistoryEntry entry{QVariant(), QVariant(), historyEvent(s), s.date};
    if (s.byClient) {
        entry.personId = s.personId;
        entry.clientId = delivery_records::clientIdOf(db, s.personId);
    }
    QueryInsertHistory(db, user, entry);
    transaction.commit();
    return result;
}

} // namespace kb
