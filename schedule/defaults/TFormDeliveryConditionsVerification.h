#pragma once

#include "ItemListLine.h"
#include "defaults/ClientSchedule.h"

#include <QDate>
#include <QList>
#include <QString>

namespace kb {

class Database;

// The delivery condition check of one client on a chosen date: one line per
// condition, "OK" or the reason it fails, and a thumb up when every line
// passes. It answers by the rules the run selects by, IsDeliveryWeek
// included, so that what it approves is what a prepared run delivers.
class TFormDeliveryConditionsVerification
{
public:
    struct Line
    {
        QString condition;
        bool ok = true;
        QString reason; // empty when ok
    };
    // An item the delivery of the date would carry, by the lookup the run uses.
    struct Item
    {
        QString name;
        int quantity = 0;
    };

    TFormDeliveryConditionsVerification(Database& db, ClientSchedule client, const QDate& today);

    static QString caption() { return QStringLiteral("Verify Delivery Conditions"); }
    static QString formName() { return QStringLiteral("TFormDeliveryConditionsVerification"); }
    static QString okText() { return QStringLiteral("OK"); }

    const ClientSchedule& client() const { return m_client; }
    const QDate& date() const { return m_date; }
    // Checks the conditions again for the date.
    void setDate(const QDate& date);

    const QList<Line>& lines() const { return m_lines; }
    bool thumbUp() const;
    // The items of the date's delivery, and which list they come from.
    const QList<Item>& items() const { return m_items; }
    QString itemSource() const { return m_itemSource; }

private:
    void check();
    void readItems(const QVariant& datedId, qint64 datedService);

    Database& m_db;
    ClientSchedule m_client;
    QDate m_date;
    QList<Line> m_lines;
    QList<Item> m_items;
    QString m_itemSource;
};

} // namespace kb
