#pragma once

#include "records/DeliveryRecords.h"

#include <QString>

namespace kb {

class Database;
class UserInterface;

// "Comped Delivery": marks one saved delivery complimentary, so its bill
// charges nothing. The date is the delivery's own and cannot change; the
// reason and who recorded it go into the client's History.
class TFormCompDel
{
public:
    TFormCompDel(Database& db, UserInterface& ui, delivery_records::Delivery delivery, QString recordedBy);

    static QString caption() { return QStringLiteral("Comped Delivery"); }

    const QDate& date() const { return m_delivery.date; }
    const QString& reason() const { return m_reason; }
    void setReason(const QString& reason) { m_reason = reason; }
    const QString& recordedBy() const { return m_recordedBy; }
    void setRecordedBy(const QString& name) { m_recordedBy = name; }

    // OK: reads the delivery again, refuses one already comped or gone,
    // asks before replacing a miss, then comps it. True when the dialog
    // closes with the delivery comped; false when it stays open.
    bool ActionOK();

private:
    Database& m_db;
    UserInterface& m_ui;
    delivery_records::Delivery m_delivery;
    QString m_reason;
    QString m_recordedBy;
};

} // namespace kb
