// kettlebrook --user NAME bills --from DATE --to DATE --merge FILE
//     [--method cost|pledged] [--pledges per-item|per-item-day|monthly|yearly]
//     [--include ITEM_ID]... | [--exclude ITEM_ID]... [--funding CODE]...
//     [--invoice START] [--no-history]:
// works out the client bills of the period as "Export Client Pledge
// Solicitation and Invoice Data" does and writes the same tab-delimited
// merge file (money in the workstation's currency format). Each bill goes
// into the client's History unless --no-history. Prints one CSV row per
// invoice with its exact total. --funding keeps the deliveries charged to
// those funding sources only.

#include "CommandRegistry.h"
#include "CommandSession.h"

#include "Csv.h"
#include "MessageError.h"
#include "bills/ClientBillsExport.h"
#include "session/SessionState.h"

namespace {

using kb::app::UsageError;

int runBills(kb::app::CommandContext& context, const kb::app::CommandArgs& args)
{
    kb::BillOptions options;
    if (!args.isSet(QStringLiteral("from")) || !args.isSet(QStringLiteral("to")) ||
        !args.isSet(QStringLiteral("merge")))
        throw UsageError(QStringLiteral("bills needs --from, --to and --merge."));
    options.start = args.date(QStringLiteral("from"));
    options.end = args.date(QStringLiteral("to"));
    if (options.end < options.start) throw UsageError(QStringLiteral("--to comes before --from."));
    const QString path = args.value(QStringLiteral("merge")).trimmed();
    if (path.isEmpty()) throw UsageError(QStringLiteral("--merge needs a file name."));
    options.method =
        args.choice(QStringLiteral("method"), {QStringLiteral("cost"), QStringLiteral("pledged")},
                    QStringLiteral("cost")) == QLatin1String("pledged")
            ? kb::BillOptions::Method::PledgedAmount
            : kb::BillOptions::Method::CostPerItem;
    const QString pledges = args.choice(QStringLiteral("pledges"),
                                        {QStringLiteral("per-item"), QStringLiteral("per-item-day"),
                                         QStringLiteral("monthly"), QStringLiteral("yearly")},
                                        QStringLiteral("per-item"));
    if (args.isSet(QStringLiteral("pledges")) && options.method != kb::BillOptions::Method::PledgedAmount)
        throw UsageError(QStringLiteral("--pledges goes with --method pledged."));
    options.pledges = pledges == QLatin1String("per-item-day") ? kb::BillOptions::Pledges::PerItemAndDay
                      : pledges == QLatin1String("monthly")    ? kb::BillOptions::Pledges::Monthly
                      : pledges == QLatin1String("yearly")     ? kb::BillOptions::Pledges::Yearly
                                                               : kb::BillOptions::Pledges::PerItem;
    const QStringList include = args.values(QStringLiteral("include"));
    const QStringList exclude = args.values(QStringLiteral("exclude"));
    if (!include.isEmpty() && !exclude.isEmpty())
        throw UsageError(QStringLiteral("Give --include or --exclude, not both."));
    for (const QString& item : include + exclude)
        options.items << kb::app::parseIntegerWord(item, QStringLiteral("an item"), 1, 2147483647);
    options.filter = !include.isEmpty()   ? kb::BillOptions::ItemFilter::IncludeOnly
                     : !exclude.isEmpty() ? kb::BillOptions::ItemFilter::Exclude
                                          : kb::BillOptions::ItemFilter::All;
    for (const QString& code : args.values(QStringLiteral("funding")))
        options.fundingCodes << code.trimmed();
    options.startingInvoice = args.value(QStringLiteral("invoice"), QStringLiteral("1"));
    options.postToHistory = !args.isSet(QStringLiteral("no-history"));

    kb::app::CommandSession session(context);
    const kb::AccessLevel access = session.data().session().access();
    if (options.postToHistory && !access.mayChangeData())
        throw kb::MessageError(access.refusal() + QStringLiteral(" (--no-history writes nothing)"));
    const auto result = kb::ClientBillsExport::run(session.data().db(), session.ui(), options, path,
                                                   session.data().session().userFullName);
    session.close();
    kb::writeCsvHeader(context.out, {QStringLiteral("InvoiceNumber"), QStringLiteral("Person_ID"),
                                     QStringLiteral("Client_ID"), QStringLiteral("Total")});
    for (const kb::ClientBill& bill : result.bills)
        kb::writeCsvRecord(context.out,
                           {bill.invoiceNumber, bill.personId, bill.clientId, bill.total.toString()});
    return 0;
}

const kb::app::CommandRegistration registration(
    {.name = QStringLiteral("bills"),
     .arguments = QString(),
     .description = QStringLiteral(
         "Works out the client bills of --from to --to (both included) as the Client Invoices screen does, "
         "writes its tab-delimited merge file to --merge, posts each bill to the client's History (unless "
         "--no-history) and prints each invoice's exact total as CSV."),
     .minArguments = 0,
     .maxArguments = 0,
     .options = {QCommandLineOption(QStringLiteral("from"), QStringLiteral("First day of the period."),
                                    QStringLiteral("DATE")),
                 QCommandLineOption(QStringLiteral("to"), QStringLiteral("Last day of the period."),
                                    QStringLiteral("DATE")),
                 QCommandLineOption(QStringLiteral("merge"), QStringLiteral("The merge file to write."),
                                    QStringLiteral("FILE")),
                 QCommandLineOption(
                     QStringLiteral("method"),
                     QStringLiteral("cost (per item, the default) or pledged (the clients' pledges)."),
                     QStringLiteral("cost|pledged")),
                 QCommandLineOption(QStringLiteral("pledges"),
                                    QStringLiteral("Which pledges count under --method pledged."),
                                    QStringLiteral("per-item|per-item-day|monthly|yearly")),
                 QCommandLineOption(QStringLiteral("include"), QStringLiteral("Bill only this item."),
                                    QStringLiteral("ITEM_ID")),
                 QCommandLineOption(QStringLiteral("exclude"), QStringLiteral("Leave this item out."),
                                    QStringLiteral("ITEM_ID")),
                 QCommandLineOption(QStringLiteral("funding"),
                                    QStringLiteral("Bill only deliveries charged to this funding source."),
                                    QStringLiteral("CODE")),
                 QCommandLineOption(QStringLiteral("invoice"),
                                    QStringLiteral("The first invoice number (1 by default)."),
                                    QStringLiteral("START")),
                 QCommandLineOption(QStringLiteral("no-history"),
                                    QStringLiteral("Post nothing to the clients' History."))},
     .repeatable = {QStringLiteral("include"), QStringLiteral("exclude"), QStringLiteral("funding")},
     .needsUser = true},
    runBills);

} // namespace
