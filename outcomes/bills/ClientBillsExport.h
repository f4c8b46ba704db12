#pragma once

#include "bills/BillOptions.h"
#include "bills/ClientBill.h"

#include <QLocale>
#include <QString>

#include <functional>
#include <vector>

namespace kb {

class Database;
class UserInterface;

// The export behind "Export Client Pledge Solicitation and Invoice Data":
// every client served in the period with a total above zero gets one
// numbered invoice line in the merge file and, when asked, one History row.
// The file is complete or not written at all; the History rows are written
// together in one transaction after it.
class ClientBillsExport
{
public:
    struct Result
    {
        std::vector<ClientBill> bills; // as exported, in file order
        Money total;                   // of all of them
    };

    static QString noClients()
    {
        return QStringLiteral("There are no client records for that period to export!");
    }
    static QString progressText() { return QStringLiteral("Exporting client billing data..."); }
    // "Bill exported, 2/1 - 2/29/2024- $12.50 "
    static QString historyEvent(const QDate& start, const QDate& end, Money total, const QLocale& locale);

    // Computes and writes the file; tells "N invoices exported." or that no
    // client was served. userFullName signs the History rows.
    static Result run(Database& db, UserInterface& ui, const BillOptions& options, const QString& path,
                      const QString& userFullName, const QLocale& locale = QLocale());
};

} // namespace kb
