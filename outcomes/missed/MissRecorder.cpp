#include "missed/MissRecorder.h"

#include "UserInterface.h"
#include "WriteTransaction.h"

#include <algorithm>

namespace kb {

QString MissRecorder::alreadyMissedText(const MissedClient& client) const
{
    if (m_wording == Wording::Single)
        return QStringLiteral("That delivery has already been marked as missed.");
    return QStringLiteral("The delivery for ") + client.name() +
           QStringLiteral(" has already been marked as missed.");
}

bool MissRecorder::confirm(const MissedClient& client, const DateStatus& status)
{
    const bool single = m_wording == Wording::Single;
    switch (checkMiss(status)) {
    case MissCheck::Record:
        return true;
    case MissCheck::Comped:
        return m_ui.question(single ? QStringLiteral("That delivery was comped! Change it to missed?")
                                    : QStringLiteral("The delivery for ") + client.name() +
                                          QStringLiteral(" was comped! Change it to missed?"),
                             Buttons::YesNo) == Answer::Yes;
    case MissCheck::AlreadyMissed:
        m_ui.information(alreadyMissedText(client));
        return false;
    case MissCheck::NotDelivered:
        return m_ui.question(
                   (single ? QStringLiteral("The client") : client.name()) +
                       QStringLiteral(" did not receive a delivery on that date. \r\n Do you want to "
                                      "record it as missed anyway?"),
                   Buttons::YesNo) == Answer::Yes;
    }
    return false;
}

qint64 MissRecorder::record(const std::vector<MissRequest>& list, const QDate& date, const QString& user)
{
    MissedDeliveries misses(m_db);
    std::vector<MissRequest> confirmed;
    for (const MissRequest& request : list)
        if (confirm(request.client, misses.status(request.client.personId, date)))
            confirmed.push_back(request);
    return recordConfirmed(confirmed, date, user);
}

qint64 MissRecorder::recordConfirmed(const std::vector<MissRequest>& list, const QDate& date,
                                     const QString& user)
{
    if (list.empty()) return 0;
    // One order for every workstation, so two transactions holding rows of
    // the same route never wait on each other in a circle.
    std::vector<const MissRequest*> ordered;
    for (const MissRequest& r : list)
        ordered.push_back(&r);
    std::stable_sort(ordered.begin(), ordered.end(), [](const MissRequest* a, const MissRequest* b) {
        return a->client.personId < b->client.personId;
    });

    MissedDeliveries misses(m_db);
    qint64 recorded = 0;
    QStringList markedMeanwhile;
    inWriteTransaction(m_db, [&] {
        recorded = 0;
        markedMeanwhile.clear();
        for (const MissRequest* r : ordered) {
            const qint64 person = r->client.personId;
            misses.holdDeliveries(person, date);
            // Marked since it was confirmed, here or on another workstation
            // (also a second line of the same client in the list).
            if (checkMiss(misses.status(person, date)) == MissCheck::AlreadyMissed ||
                misses.hasMiss(person, date)) {
                markedMeanwhile.append(alreadyMissedText(r->client));
                continue;
            }
            misses.record(r->client, date, r->excused, user);
            ++recorded;
        }
    });
    for (const QString& text : markedMeanwhile)
        m_ui.information(text);
    return recorded;
}

} // namespace kb
