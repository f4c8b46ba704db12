#include "bills/ClientBillsExport.h"

#include "UserInterface.h"
#include "bills/ClientBillCalculator.h"
#include "bills/InvoiceNumbers.h"
#include "bills/MergeFile.h"
#include "rules/ClientHistoryTexts.h"
#include "store/Database.h"

namespace kb {

QString ClientBillsExport::historyEvent(const QDate& start, const QDate& end, Money total,
                                        const QLocale& locale)
{
    return QStringLiteral("Bill exported, %1/%2 - %3- %4 ")
        .arg(start.month())
        .arg(start.day())
        .arg(client_history::dateText(end), MergeFile::money(total, locale));
}

ClientBillsExport::Result ClientBillsExport::run(Database& db, UserInterface& ui, const BillOptions& options,
                                                 const QString& path, const QString& userFullName,
                                                 const QLocale& locale)
{
    Result result;
    ClientBillCalculator calculator(db, options);
    calculator.prepare();
    const QList<qint64> clients = calculator.clients();
    if (clients.isEmpty()) {
        ui.information(noClients());
        return result;
    }
    MergeFile file(path, locale);
    file.writeHeader(ClientBillCalculator::fieldNames());
    InvoiceNumbers numbers(options.startingInvoice);
    ui.progressStart(progressText());
    struct End
    {
        UserInterface& ui;
        ~End() { ui.progressEnd(); }
    } end{ui};
    int lastPercent = -1;
    for (qsizetype i = 0; i < clients.size(); ++i) {
        if (auto bill = calculator.bill(clients[i], numbers.current())) {
            file.write(*bill);
            numbers.advance();
            result.total = result.total + bill->total;
            result.bills.push_back(std::move(*bill));
        }
        const int percent = int(100 * (i + 1) / clients.size());
        if (percent != lastPercent) ui.progressStep(lastPercent = percent);
    }
    file.commit();

    if (options.postToHistory && !result.bills.empty()) {
        std::vector<Params> rows;
        rows.reserve(result.bills.size());
        const QVariant now = db.clock().now();
        for (const ClientBill& bill : result.bills)
            rows.push_back(
                {{QStringLiteral("Person_ID"), bill.personId},
                 {QStringLiteral("Client_ID"), bill.clientId},
                 {QStringLiteral("Event"), historyEvent(options.start, options.end, bill.total, locale)}});
        TransactionGuard transaction(db);
        db.query(QStringLiteral("Insert into History (Person_ID, Client_ID, Tran_Date, User, Event) Values "
                                "(:Person_ID, :Client_ID, :Tran_Date, :User, :Event)"))
            .bind(QStringLiteral("Tran_Date"), now)
            .bind(QStringLiteral("User"), userFullName)
            .execBatch(rows);
        transaction.commit();
    }
    if (!result.bills.empty())
        ui.information(QStringLiteral("%1 invoices exported.").arg(result.bills.size()));
    return result;
}

} // namespace kb
