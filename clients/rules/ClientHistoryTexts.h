#pragma once

#include <QDate>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <optional>

namespace kb {

// The History texts that a client's save writes, word for word: reports,
// the recent-stops list and the outcome screens search History for them.
namespace client_history {

// A date inside a History text: month/day/year without leading zeros.
QString dateText(const QDate& date);

// "Status changed from Active to Stopped.", "Added status of Wait List.",
// "Client created with status of Never Started."; empty when the status
// did not change.
QString statusChange(const QString& oldCode, const QString& newCode);

// The notice after an inactive client was made active again.
QString reactivationNotice(bool recertifies);

// A change of Svcs_Used. hadService: the old value was a service (not 0);
// a name is absent when the service has no Services row.
QString serviceChange(bool hadService, const std::optional<QString>& oldName,
                      const std::optional<QString>& newName);

// One or two rows for a changed diet mask, its codes joined by "/".
QStringList dietChange(qint64 oldMask, qint64 newMask, const QStringList& dietCodes);

// "Delivery type changed to Ongoing" and its kin; empty when the new type
// is empty or not a delivery type.
QString deliveryTypeChange(const QString& oldType, const QString& newType);

QString defaultRouteChange(const QString& oldRoute, const QString& newRoute);

// The reminder about dated deliveries after the default route changed.
QString futureDeliveriesRouteNotice(bool episodic);

// The two rows of a changed address: the old one and the new one.
QStringList addressChange(const QString& oldAddress, const QString& newAddress);

// The row of a changed phone, by the old phone's description code (null
// for a description never set).
QString phoneChange(const QString& oldPhone, const QVariant& oldDescription);

// "Deliv Day chgd frm Mo to MoWe", with "none" for no day.
QString daysChange(const QString& oldDays, const QString& newDays);

struct Entry
{
    QString event;
    QDate eventDate; // the date the event concerns; invalid for today
};

// A changed stop date: removed (dated the old date), or added with its
// reason when the stop code is set (dated the new date).
Entry stopDateChange(const QDate& oldDate, const QDate& newDate, const std::optional<QString>& stopReason,
                     const QString& stopNote);
Entry startDateChange(const QDate& oldDate, const QDate& newDate);
// A changed recertification date that was set before.
Entry recertificationChange(const QDate& oldDate, const QDate& newDate);

QString stopDateClearedByReactivation(const QDate& stopDate);
QString stopDateClearedByStartDate(const QDate& stopDate);

} // namespace client_history

} // namespace kb
