#include "DemoScheduleTables.h"

#include "DemoContext.h"
#include "DemoTable.h"

namespace kb::demo {

namespace {

void writeSuspensions(DemoContext& ctx)
{
    DemoTable t(ctx.db, QStringLiteral("Suspends"),
                {QStringLiteral("Person_ID"), QStringLiteral("Client_ID"), QStringLiteral("Group_ID"),
                 QStringLiteral("Tran_Type"), QStringLiteral("Valid"), QStringLiteral("Stop_Dt"),
                 QStringLiteral("Resume_Dt"), QStringLiteral("Reason"), QStringLiteral("User"),
                 QStringLiteral("Create_Date"), QStringLiteral("Last_Updated")});
    for (const DemoSuspension& s : ctx.suspensions) {
        const DemoClient& c = ctx.clients[size_t(s.client)];
        t.insert({c.personId, c.clientId, orNull(s.groupId), QStringLiteral("SUSP"), true, s.stop, s.resume,
                  s.reason, s.user, s.created, ctx.at(s.created, 11, 40)});
    }
}

void writeOverrides(DemoContext& ctx)
{
    DemoTable t(
        ctx.db, QStringLiteral("Address_Overrides"),
        {QStringLiteral("RecordID"),      QStringLiteral("Person_ID"),  QStringLiteral("Client_ID"),
         QStringLiteral("Override_Type"), QStringLiteral("DOW"),        QStringLiteral("Effective_Date"),
         QStringLiteral("Expire_Date"),   QStringLiteral("Deliv_Date"), QStringLiteral("Addr_Desc"),
         QStringLiteral("Address1"),      QStringLiteral("Address2"),   QStringLiteral("City"),
         QStringLiteral("State"),         QStringLiteral("ZIP"),        QStringLiteral("Phone"),
         QStringLiteral("Phone_Desc"),    QStringLiteral("Route"),      QStringLiteral("Stop"),
         QStringLiteral("Directions"),    QStringLiteral("Created_By"), QStringLiteral("Create_Date"),
         QStringLiteral("Last_Updated")});
    for (const DemoOverride& o : ctx.overrides) {
        const DemoClient& c = ctx.clients[size_t(o.client)];
        const bool mailing = o.type == QLatin1String("M");
        t.insert({o.recordId,
                  c.personId,
                  c.clientId,
                  o.type,
                  orNull(o.dow),
                  orNull(o.effective),
                  orNull(o.expire),
                  orNull(o.delivDate),
                  o.desc,
                  o.address.address1,
                  orNull(o.address.address2),
                  o.address.city,
                  o.address.state,
                  o.address.zip,
                  mailing ? null() : QVariant(c.otherPhone.isEmpty() ? c.phone : c.otherPhone),
                  mailing ? null() : QVariant(QStringLiteral("O")),
                  orNull(o.route),
                  o.stop ? QVariant(*o.stop) : null(),
                  mailing ? null() : QVariant(QStringLiteral("Deliver to the front door")),
                  o.user,
                  o.created,
                  ctx.at(o.created, 15, 20)});
    }
}

void writeDated(DemoContext& ctx)
{
    DemoTable t(ctx.db, QStringLiteral("EpisodicDeliveries"),
                {QStringLiteral("RecordID"), QStringLiteral("Person_ID"), QStringLiteral("Client_ID"),
                 QStringLiteral("List_ID"), QStringLiteral("Deliv_Date"), QStringLiteral("Schedule_Type"),
                 QStringLiteral("Svcs_Used"), QStringLiteral("Delivery_Type"), QStringLiteral("Route"),
                 QStringLiteral("Stop"), QStringLiteral("Fulfilled"), QStringLiteral("Create_Date"),
                 QStringLiteral("Last_Updated"), QStringLiteral("Created_By")});
    // The item lines of one dated delivery point at its RecordID.
    DemoTable lines(ctx.db, QStringLiteral("Defdels"),
                    {QStringLiteral("PERSON_ID"), QStringLiteral("CLIENT_ID"), QStringLiteral("DELIV_ID"),
                     QStringLiteral("SERVICE_ID"), QStringLiteral("DEL_DAY"), QStringLiteral("QUANTITY"),
                     QStringLiteral("ITEM_ID"), QStringLiteral("SORT_ORDER"), QStringLiteral("DELIV_DATE")});
    for (const DemoDated& d : ctx.dated) {
        const DemoClient& c = ctx.clients[size_t(d.client)];
        t.insert({d.recordId, c.personId, c.clientId, d.autoScheduled ? QVariant(-1) : null(), d.date,
                  d.scheduleType, d.service, d.deliveryType, d.route, d.stop,
                  d.fulfilled ? QVariant(QStringLiteral("Y")) : null(), d.created, ctx.at(d.created, 12, 10),
                  d.autoScheduled ? d.user + QStringLiteral(" (AutoSched)") : d.user});
        for (const ItemLine& line : d.items)
            lines.insert({c.personId, c.clientId, d.recordId, d.service,
                          DayCodes[size_t(weekdayIndex(d.date))], line.quantity, line.itemId, line.sortOrder,
                          d.date});
    }
}

} // namespace

void writeSchedules(DemoContext& ctx)
{
    writeSuspensions(ctx);
    writeOverrides(ctx);
    writeDated(ctx);
}

} // namespace kb::demo
