// The bills command through the real kettlebrook executable, and its merge
// file opened by LibreOffice as a table: every column, one row per invoice,
// no line broken by a field's own text. The LibreOffice part is skipped
// only where soffice is not installed.

#include "SavedDeliveriesFixture.h"

#include "Csv.h"
#include "Money.h"
#include "RunCommand.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTextStream>

using namespace kb;
using namespace kb::test;

namespace {

class BillsCommand : public SavedDeliveriesFixture
{
protected:
    void SetUp() override
    {
        SavedDeliveriesFixture::SetUp();
        if (IsSkipped()) return;
        isolateHome();
        addUsers({QStringLiteral("W"), QStringLiteral("O")});
        addService(1, QStringLiteral("Home Meals"));
        addItem(1, QStringLiteral("Hot Lunch"), QStringLiteral("L"), QStringLiteral("4.25"));
        addItem(2, QStringLiteral("Frozen \"Dinner\""), QStringLiteral("D"), QStringLiteral("3.3333"));
        addItem(4, QStringLiteral("Breakfast"), QStringLiteral("B"), QStringLiteral("1.10"));
        addClient(11, QStringLiteral("C11"), QStringLiteral("Abbott"), QStringLiteral("Ann"),
                  {{QStringLiteral("Svcs_Used"), 1},
                   {QStringLiteral("Address1"), QStringLiteral("1 Elm St\nApt 2")},
                   {QStringLiteral("City"), QStringLiteral("Trois-Rivières")}});
        addClient(12, QStringLiteral("C12"), QStringLiteral("Baker"), QStringLiteral("Bo"),
                  {{QStringLiteral("Svcs_Used"), 1},
                   {QStringLiteral("Address1"), QStringLiteral("\"The Pines\"\t4")}});
        qint64 id2 = 0;
        int day = 1;
        // Ann: three funding sources and two comped items, eleven lines.
        for (const char* f : {"AAA", "PVT", "T3"})
            addDelivery(++id2, 11, QDate(2024, 2, day++), 1, QStringLiteral("OD"), QString::fromLatin1(f), {},
                        {{1, 1}, {2, 1}, {4, 2}});
        addDelivery(++id2, 11, QDate(2024, 2, day++), 1, QStringLiteral("OD"), QStringLiteral("AAA"),
                    QStringLiteral("C"), {{1, 1}, {2, 1}});
        addDelivery(++id2, 12, QDate(2024, 2, 9), 1, QStringLiteral("OD"), QStringLiteral("AAA"), {},
                    {{2, 3}});
    }

    CommandResult bills(const QStringList& more, const QString& user = QStringLiteral("userW"))
    {
        return runAs(user, QStringList{QStringLiteral("bills"), QStringLiteral("--from"),
                                       QStringLiteral("2024-02-01"), QStringLiteral("--to"),
                                       QStringLiteral("2024-02-29"), QStringLiteral("--merge"), merge} +
                               more);
    }

    QTemporaryDir dir;
    QString merge = dir.filePath(QStringLiteral("invoices.txt"));
};

TEST_P(BillsCommand, PrintsExactTotalsAndWritesTheMergeFile)
{
    const auto r = bills({QStringLiteral("--invoice"), QStringLiteral("INV-7")});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    // By hand: Ann 3 x (4.25 + 3.3333 + 2.20) = 29.3499; Bo 3 x 3.3333.
    EXPECT_EQ(r.out,
              QStringLiteral("InvoiceNumber,Person_ID,Client_ID,Total\nINV-7,11,C11,29.3499\nINV-8,12,C12,"
                             "9.9999\n"));
    EXPECT_TRUE(r.err.contains(QStringLiteral("2 invoices exported.")));
    EXPECT_EQ(count(QStringLiteral("Select Count(*) from History where Event like 'Bill exported%'")), 2);

    // Only one funding source, without History.
    const auto t3 =
        bills({QStringLiteral("--funding"), QStringLiteral("T3"), QStringLiteral("--no-history")});
    ASSERT_EQ(t3.exitCode, 0) << t3.err.toStdString();
    EXPECT_EQ(t3.out, QStringLiteral("InvoiceNumber,Person_ID,Client_ID,Total\n1,11,C11,9.7833\n"));
    EXPECT_EQ(count(QStringLiteral("Select Count(*) from History where Event like 'Bill exported%'")), 2);

    // A reports-only user may bill without History, not with it.
    EXPECT_EQ(bills({}, QStringLiteral("userO")).exitCode, 1);
    EXPECT_EQ(bills({QStringLiteral("--no-history")}, QStringLiteral("userO")).exitCode, 0);
    EXPECT_EQ(bills({QStringLiteral("--pledges"), QStringLiteral("monthly")}).exitCode, 2);
}

TEST_P(BillsCommand, MergeFileOpensAsATableInLibreOffice)
{
    const QString soffice = QStandardPaths::findExecutable(QStringLiteral("soffice"));
    if (soffice.isEmpty()) GTEST_SKIP() << "LibreOffice (soffice) is not installed";
    const auto r = bills({QStringLiteral("--no-history")});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();

    const QString out = dir.filePath(QStringLiteral("converted"));
    const auto converted = runProgram(
        soffice,
        {QStringLiteral("-env:UserInstallation=") + QUrl::fromLocalFile(dir.filePath("lo")).toString(),
         QStringLiteral("--headless"), QStringLiteral("--infilter=Text - txt - csv (StarCalc):9,34,76,1"),
         QStringLiteral("--convert-to"), QStringLiteral("csv:Text - txt - csv (StarCalc):44,34,76,1"),
         QStringLiteral("--outdir"), out, merge});
    ASSERT_EQ(converted.exitCode, 0) << converted.err.toStdString();
    QFile csv(QDir(out).filePath(QStringLiteral("invoices.csv")));
    ASSERT_TRUE(csv.open(QIODevice::ReadOnly)) << converted.out.toStdString() << converted.err.toStdString();
    QTextStream in(&csv);
    std::vector<QStringList> rows;
    CsvRecord record;
    while (readCsvRecord(in, record))
        rows.push_back(record.fields);

    ASSERT_EQ(rows.size(), 3u); // the header and two invoices, no line broken
    const QStringList& header = rows[0];
    // The spreadsheet is as wide as its widest row: Ann's eleven slots.
    ASSERT_EQ(header.size(), 18 + 44 + 1);
    EXPECT_EQ(header.value(0), QStringLiteral("InvoiceNumber"));
    EXPECT_EQ(header.value(17), QStringLiteral("Language"));
    EXPECT_EQ(header.value(58), QStringLiteral("Total Charge"));
    const QStringList& ann = rows[1];
    EXPECT_EQ(ann.value(1), QStringLiteral("C11"));
    EXPECT_EQ(ann.value(9), QStringLiteral("1 Elm St Apt 2"));
    EXPECT_EQ(ann.value(11), QStringLiteral("Trois-Rivières"));
    EXPECT_EQ(ann.value(18 + 44), QStringLiteral("29.35"));
    EXPECT_EQ(ann.value(18 + 16 + 1), QStringLiteral("Frozen 'Dinner' AAA (Complimentary)"));
    EXPECT_EQ(ann.value(18 + 40 + 1), QStringLiteral("Breakfast T3"));
    const QStringList& bo = rows[2];
    EXPECT_EQ(bo.value(9), QStringLiteral("'The Pines' 4"));
    EXPECT_EQ(bo.value(18), QStringLiteral("3"));
    EXPECT_EQ(bo.value(19), QStringLiteral("Frozen 'Dinner' AAA"));
    // LibreOffice reads the amounts as numbers.
    EXPECT_EQ(bo.value(21), QStringLiteral("10"));
    EXPECT_EQ(bo.value(58), QStringLiteral("10"));
    for (int c = 59; c < bo.size(); ++c)
        EXPECT_TRUE(bo.value(c).isEmpty()) << c;
}

INSTANTIATE_TEST_SUITE_P(Stores, BillsCommand, ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         [](const auto& info) { return storeName(info.param); });

} // namespace
