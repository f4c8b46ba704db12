#include "walkins/WalkInRecorder.h"

#include "UserInterface.h"
#include "WriteTransaction.h"
#include "missed/MissEventText.h"
#include "store/Database.h"

namespace kb {

namespace {

const QString QueryGetClientStatus =
    QStringLiteral("Select Status, Start_Dte, Stop_Dte from Clients where Person_ID = :Person_ID");
const QString QueryGetDeliveryStatus = QStringLiteral(
    "Select Deliv_Date, Fulfilled from EpisodicDeliveries where Deliv_Date = :Deliv_Date and Person_ID = "
    ":Person_ID");
const QString QueryAddDelivery = QStringLiteral(
    "Insert into EpisodicDeliveries (Person_ID, Client_ID, Deliv_Date, Svcs_Used, Delivery_Type, "
    "Schedule_Type, "
    "Route, Stop, Fulfilled, Create_Date, Last_Updated, Created_By) Values (:Person_ID, :Client_ID, "
    ":Deliv_Date, :Svcs_Used, 'W', :Schedule_Type, :Route, :Stop, :Fulfilled, :Create_Date, :Last_Updated, "
    ":Created_By);");

} // namespace

QString WalkInRecorder::eligibilityQuestion(const WalkIn& walkIn)
{
    const ResultSet row =
        m_db.execute(QueryGetClientStatus, {{QStringLiteral("Person_ID"), walkIn.personId}});
    const QString status = row.isEmpty() ? QString() : row.value(0, 0).toString();
    const QDate start = row.isEmpty() ? QDate() : row.value(0, 1).toDate();
    const QDate stop = row.isEmpty() ? QDate() : row.value(0, 2).toDate();
    QStringList reasons;
    if (status != QLatin1String("A")) reasons << QStringLiteral("- the client is not currently active.");
    if (start.isValid() && walkIn.delivDate < start)
        reasons << QStringLiteral("- the client has a Start Date later than the date your are recording.");
    if (stop.isValid() && stop <= walkIn.delivDate)
        reasons << QStringLiteral("- the client has a Stop Date in effect for the date your are recording.");
    if (reasons.isEmpty()) return {};
    return walkIn.name() + QStringLiteral(" may not be eligible for the following reason(s): \n") +
           reasons.join(QLatin1Char('\n')) + QStringLiteral("\nAdd the client to the list anyway?");
}

bool WalkInRecorder::mayAdd(const WalkIn& walkIn)
{
    const QString question = eligibilityQuestion(walkIn);
    if (!question.isEmpty() && m_ui.question(question, Buttons::YesNo) != Answer::Yes) return false;
    if (walkIn.svcsUsed == 0) {
        m_ui.warning(
            walkIn.name() +
            QStringLiteral(
                " has not been assigned to a service\nand therefore will not be added to the list."));
        return false;
    }
    return true;
}

QString WalkInRecorder::recordedText(qint64 count)
{
    if (count == 0) return QStringLiteral("There were no new walk-in events to record.");
    if (count == 1) return QStringLiteral("Successfully added one walk-in event.");
    return QStringLiteral("Successfully added ") + QString::number(count) +
           QStringLiteral(" walk-in events.");
}

qint64 WalkInRecorder::record(const std::vector<WalkIn>& list, const QString& createdBy)
{
    // The questions come first, so the transaction never waits on a person.
    std::vector<const WalkIn*> chosen;
    for (const WalkIn& w : list) {
        if (!w.isComplete()) continue;
        const ResultSet existing =
            m_db.execute(QueryGetDeliveryStatus, {{QStringLiteral("Deliv_Date"), w.delivDate},
                                                  {QStringLiteral("Person_ID"), w.personId}});
        if (!existing.isEmpty()) {
            const bool fulfilled = existing.value(0, 1).toString() == QLatin1String("Y");
            const QString text = w.name() +
                                 (fulfilled ? QStringLiteral(" already has a fulfilled scheduled/episodic")
                                            : QStringLiteral(" already has a scheduled/episodic")) +
                                 QStringLiteral("\n delivery recorded for ") +
                                 miss_text::shortDate(w.delivDate) + QStringLiteral("! Record another?");
            if (m_ui.question(text, Buttons::YesNo) != Answer::Yes) continue;
        }
        chosen.push_back(&w);
    }
    if (!chosen.empty()) {
        const QDateTime now = m_db.clock().now();
        inWriteTransaction(m_db, [&] {
            Query add = m_db.query(QueryAddDelivery);
            for (const WalkIn* w : chosen)
                add.bind({{QStringLiteral("Person_ID"), w->personId},
                          {QStringLiteral("Client_ID"), w->clientId},
                          {QStringLiteral("Deliv_Date"), w->delivDate},
                          {QStringLiteral("Svcs_Used"), w->svcsUsed},
                          {QStringLiteral("Schedule_Type"),
                           w->deliveryType == QLatin1String("E") ? QStringLiteral("E") : QStringLiteral("S")},
                          {QStringLiteral("Route"), w->defRte.isEmpty() ? QVariant() : QVariant(w->defRte)},
                          {QStringLiteral("Stop"), QVariant()},
                          {QStringLiteral("Fulfilled"), w->comp ? QVariant(QStringLiteral("C")) : QVariant()},
                          {QStringLiteral("Create_Date"), now.date()},
                          {QStringLiteral("Last_Updated"), now},
                          {QStringLiteral("Created_By"), createdBy}})
                    .execCommand();
        });
    }
    m_ui.information(recordedText(qint64(chosen.size())));
    return qint64(chosen.size());
}

} // namespace kb
