#pragma once

#include <QDate>
#include <QString>

namespace kb {

// The two kinds of dated delivery, one row of EpisodicDeliveries each:
// episodic (Schedule_Type "E", for a client whose Delivery_Type is "E") and
// scheduled (Schedule_Type "S", an extra date of an ongoing client). The
// run serves a row only with a client of the matching kind. Every text the
// two maintenance screens differ in stands here.
enum class DatedKind { Episodic, Scheduled };

// "E" or "S".
QString scheduleTypeOf(DatedKind kind);
// The kind of row a client gets: episodic for Delivery_Type "E", else scheduled.
DatedKind datedKindOfClient(const QString& clientDeliveryType);
// "episodic" or "scheduled".
QString datedWord(DatedKind kind);
// "Episodic" or "Scheduled".
QString datedTitleWord(DatedKind kind);

// "Maintain Episodic Deliveries for " and the name.
QString datedScreenTitle(DatedKind kind, const QString& clientName);
// Told when a row added by the keyboard would fall before the start date.
QString addBeforeStartText(DatedKind kind);
// A credited row cannot be edited.
QString creditedEditText(DatedKind kind);
// The date of a posted row moved to the start or stop date.
QString beforeStartDateText(DatedKind kind);
QString afterStopDateText(DatedKind kind);
// "Credited episodic delivery for " or "Uncredited ...", the date and " deleted".
QString deletedHistoryText(DatedKind kind, bool credited, const QDate& date);
// The title of the items screen of one row.
QString datedItemsTitle(DatedKind kind, const QDate& date);
// Told before the items of a credited row are opened.
QString creditedItemsText();
// The dates of the working sets: "ddd, mmm d, yyyy", or "ddd, d mmm yyyy"
// when the system's short date format begins with the day.
QString datedDateFormat();

} // namespace kb
