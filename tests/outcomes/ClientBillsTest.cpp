// Client bills of February 2024 for a small agency on both stores, checked
// against amounts worked out by hand here (not by the code under test):
// comped, missed and walk-in deliveries, two funding sources, items
// without a price, a Bill-To person, more than ten lines, every pledge
// option, invoice numbers, the History rows and the merge file's shape.

#include "SavedDeliveriesFixture.h"

#include "bills/ClientBillCalculator.h"
#include "bills/ClientBillsExport.h"
#include "bills/InvoiceNumbers.h"
#include "bills/MergeFile.h"
#include "bills/TFormClientBills.h"
#include "settings/SettingsFile.h"

#include <QFile>
#include <QTemporaryDir>

using namespace kb;
using namespace kb::test;

namespace {

using Kind = ScriptedUserInterface::Kind;

const QLocale us(QLocale::English, QLocale::UnitedStates);

} // namespace

namespace kb {
// Slots in failure messages as their four fields.
void PrintTo(const BillSlot& s, std::ostream* os)
{
    *os << '[' << (s.quantity ? std::to_string(*s.quantity) : std::string()) << " | " << s.item.toStdString()
        << " | " << (s.unitPrice ? s.unitPrice->toString().toStdString() : std::string()) << " | "
        << (s.charge ? s.charge->toString().toStdString() : std::string()) << ']';
}
} // namespace kb

namespace {

Money m(const char* text)
{
    return *Money::parse(QString::fromLatin1(text));
}

class ClientBills : public SavedDeliveriesFixture
{
protected:
    void SetUp() override
    {
        SavedDeliveriesFixture::SetUp();
        if (IsSkipped()) return;
        addService(1, QStringLiteral("Home Meals"));
        addItem(1, QStringLiteral("Hot Lunch"), QStringLiteral("L"), QStringLiteral("4.25"));
        addItem(2, QStringLiteral("Frozen Dinner"), QStringLiteral("D"), QStringLiteral("3.3333"));
        addItem(3, QStringLiteral("Milk"), QStringLiteral("BV"), QStringLiteral("0"));
        addItem(4, QStringLiteral("Breakfast"), QStringLiteral("B"), QStringLiteral("1.10"));
        addItem(5, QStringLiteral("Soup Dinner"), QStringLiteral("D"), QStringLiteral("2.00"));
        for (const char* code : {"AAA", "T3", "PVT"})
            addFunding(QString::fromLatin1(code), QString::fromLatin1(code));
        options.start = QDate(2024, 2, 1);
        options.end = QDate(2024, 2, 29);
    }

    void client(qint64 id, const char* clientId, const char* last, const char* first, const Params& more = {})
    {
        Params row = with(more, QStringLiteral("Svcs_Used"), 1);
        addClient(id, QString::fromLatin1(clientId), QString::fromLatin1(last), QString::fromLatin1(first),
                  row);
    }
    void deliver(qint64 person, int day, const char* funding,
                 const std::vector<std::pair<qint64, int>>& items, const char* status = "",
                 const char* kind = "OD", int month = 2)
    {
        addDelivery(++m_delivId, person, QDate(2024, month, day), 1, QString::fromLatin1(kind),
                    QString::fromLatin1(funding), QString::fromLatin1(status), items);
    }
    void pledge(qint64 person, const char* unit, const char* amount, const char* method = "P")
    {
        insertRow(db(), QStringLiteral("Pricing"),
                  {{QStringLiteral("Person_ID"), person},
                   {QStringLiteral("Method"), QString::fromLatin1(method)},
                   {QStringLiteral("Unit"), QString::fromLatin1(unit)},
                   {QStringLiteral("Amount"), QVariant::fromValue(m(amount))}});
    }

    std::vector<ClientBill> bills()
    {
        ClientBillCalculator calculator(db(), options);
        calculator.prepare();
        std::vector<ClientBill> out;
        for (qint64 person : calculator.clients())
            if (auto b = calculator.bill(person, QStringLiteral("N"))) out.push_back(*b);
        return out;
    }
    static const ClientBill* of(const std::vector<ClientBill>& bills, qint64 person)
    {
        for (const ClientBill& b : bills)
            if (b.personId == person) return &b;
        return nullptr;
    }
    static BillSlot slot(std::optional<qint64> q, const char* item, const char* price, const char* charge)
    {
        return {q, QString::fromLatin1(item), price ? std::optional(m(price)) : std::nullopt,
                charge ? std::optional(m(charge)) : std::nullopt};
    }

    BillOptions options;
    qint64 m_delivId = 0;
};

TEST_P(ClientBills, CostPerItemMatchesTotalsWorkedOutByHand)
{
    client(11, "C11", "Abbott", "Ann",
           {{QStringLiteral("Mid_Name"), QStringLiteral("B")},
            {QStringLiteral("Address1"), QStringLiteral(" 1 Elm St ")},
            {QStringLiteral("City"), QStringLiteral("Troy")},
            {QStringLiteral("DOB"), QDate(1940, 5, 6)}});
    deliver(11, 1, "AAA", {{1, 1}, {2, 2}, {3, 4}});
    deliver(11, 2, "AAA", {{1, 1}}, "C");
    deliver(11, 5, "AAA", {{1, 1}}, "M");          // missed: billed in full
    deliver(11, 6, "AAA", {{2, 1}}, "E");          // excused: billed in full
    deliver(11, 7, "T3", {{1, 1}});                // the second funding source
    deliver(11, 8, "AAA", {{4, 3}}, "", "EW");     // a walk-in credit
    deliver(11, 31, "AAA", {{1, 5}}, "", "OD", 1); // outside the period
    deliver(11, 1, "AAA", {{1, 5}}, "", "OD", 3);
    client(12, "C12", "Baker", "Bo");
    deliver(12, 3, "AAA", {{1, 2}}, "C"); // only comped: total 0, no invoice
    client(13, "C13", "Cole", "Cy");
    deliver(13, 3, "AAA", {{3, 2}}); // only an item without a price

    const auto all = bills();
    ASSERT_EQ(all.size(), 1u);
    const ClientBill& ann = all[0];
    // By hand: Hot Lunch AAA 2 x 4.25 = 8.50; Frozen Dinner AAA 3 x 3.3333
    // = 9.9999; Breakfast AAA 3 x 1.10 = 3.30; Hot Lunch comped 0; Hot
    // Lunch T3 1 x 4.25 = 4.25. Total 26.0499.
    EXPECT_EQ(ann.total, m("26.0499"));
    ASSERT_EQ(ann.entries.size(), 10u);
    EXPECT_EQ(ann.entries[0], slot(2, "Hot Lunch AAA", "4.25", "8.50"));
    EXPECT_EQ(ann.entries[1], slot(3, "Frozen Dinner AAA", "3.3333", "9.9999"));
    EXPECT_EQ(ann.entries[2], slot(3, "Breakfast AAA", "1.10", "3.30"));
    EXPECT_EQ(ann.entries[3], slot(1, "Hot Lunch AAA (Complimentary)", "0", "0"));
    EXPECT_EQ(ann.entries[4], slot(1, "Hot Lunch T3", "4.25", "4.25"));
    EXPECT_EQ(ann.entries[5], BillSlot{});
    EXPECT_EQ(ann.fields,
              (QStringList{"N", "C11", "2/1/2024", "2/29/2024", "Ann B Abbott", "Ann", "B", "Abbott", "",
                           "1 Elm St", "", "Troy", "", "", "Home Meals", "5/6/1940", "", ""}));

    // A funding filter keeps the T3 line alone.
    options.fundingCodes = {QStringLiteral("T3")};
    const auto t3 = bills();
    ASSERT_EQ(t3.size(), 1u);
    EXPECT_EQ(t3[0].total, m("4.25"));
    // Excluding Hot Lunch leaves 9.9999 + 3.30.
    options.fundingCodes.clear();
    options.filter = BillOptions::ItemFilter::Exclude;
    options.items = {1};
    EXPECT_EQ(bills().at(0).total, m("13.2999"));
    // Including only Breakfast.
    options.filter = BillOptions::ItemFilter::IncludeOnly;
    options.items = {4};
    EXPECT_EQ(bills().at(0).total, m("3.30"));
    // An exclusion with nothing checked excludes nothing.
    options.filter = BillOptions::ItemFilter::Exclude;
    options.items.clear();
    EXPECT_EQ(bills().at(0).total, m("26.0499"));
}

TEST_P(ClientBills, BillToPersonManyLinesAndTheExportedFile)
{
    client(14, "C14", "Dunn", "Di", {{QStringLiteral("Language"), QStringLiteral("F")}});
    insertRow(db(), QStringLiteral("Individuals"),
              {{QStringLiteral("Indiv_ID"), 5},
               {QStringLiteral("First_Name"), QStringLiteral("Eve")},
               {QStringLiteral("Last_Name"), QStringLiteral("Evans")},
               {QStringLiteral("Address1"), QStringLiteral("9 Oak\tAve")},
               {QStringLiteral("City"), QStringLiteral("Laval")}});
    insertRow(db(), QStringLiteral("Relationships"),
              {{QStringLiteral("Person_ID"), 14},
               {QStringLiteral("Indiv_ID"), 5},
               {QStringLiteral("Relationship"), QStringLiteral("Bill-To")}});
    // Three items under three funding sources, two of them also comped:
    // eleven lines.
    int day = 1;
    for (const char* f : {"AAA", "PVT", "T3"})
        deliver(14, day++, f, {{1, 1}, {2, 1}, {4, 2}});
    deliver(14, day++, "AAA", {{1, 1}, {2, 1}}, "C");
    client(15, "C15", "Eddy", "Ed");
    deliver(15, 9, "AAA", {{5, 1}});

    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("bills.txt"));
    options.startingInvoice = QStringLiteral("AB12");
    const auto result = ClientBillsExport::run(db(), ui, options, path, session.userFullName, us);
    ASSERT_EQ(result.bills.size(), 2u);
    // By hand: each source 4.25 + 3.3333 + 2 x 1.10 = 9.7833, three times.
    EXPECT_EQ(result.bills[0].total, m("29.3499"));
    EXPECT_EQ(result.bills[0].entries.size(), 11u);
    EXPECT_EQ(result.bills[0].fields[8], QStringLiteral("In Care Of Eve Evans"));
    EXPECT_EQ(result.bills[1].total, m("2.00"));
    EXPECT_EQ(result.total, m("31.3499"));
    EXPECT_EQ(ui.texts(Kind::Information).last(), QStringLiteral("2 invoices exported."));

    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly | QIODevice::Text));
    const QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 3);
    const QStringList header = lines[0].split(u'\t');
    ASSERT_EQ(header.size(), 59);
    EXPECT_EQ(header[18], QStringLiteral("Qty1"));
    EXPECT_EQ(header[57], QStringLiteral("Charge10"));
    EXPECT_EQ(header[58], QStringLiteral("Total Charge"));
    const QStringList dunn = lines[1].split(u'\t');
    ASSERT_EQ(dunn.size(), 18 + 44 + 1); // eleven slots, then the total
    EXPECT_EQ(dunn[0], QStringLiteral("AB12"));
    EXPECT_EQ(dunn[9], QStringLiteral("9 Oak Ave")); // no tab of its own
    EXPECT_EQ(dunn[11], QStringLiteral("Laval"));
    EXPECT_EQ(dunn.last(), QStringLiteral("$29.35"));
    EXPECT_EQ(dunn[18 + 4 + 2],
              QStringLiteral("$3.33")); // Frozen Dinner's unit price, rounded in the file only
    const QStringList eddy = lines[2].split(u'\t');
    EXPECT_EQ(eddy.size(), 59);
    EXPECT_EQ(eddy[0], QStringLiteral("AB13"));
    EXPECT_EQ(eddy.last(), QStringLiteral("$2.00"));

    const ResultSet h = db().execute(
        QStringLiteral("Select Person_ID, Client_ID, User, Event from History order by Person_ID"));
    ASSERT_EQ(h.rowCount(), 2);
    EXPECT_EQ(h.value(0, 1).toString(), QStringLiteral("C14"));
    EXPECT_EQ(h.value(0, 2).toString(), QStringLiteral("Dana Clerk"));
    EXPECT_EQ(h.value(0, 3).toString(), QStringLiteral("Bill exported, 2/1 - 2/29/2024- $29.35 "));

    // In a Canadian agency a French-speaking client's Bill-To reads "Care de".
    db().execute(QStringLiteral("Update Config set Postal_Format = 'CAN'"));
    EXPECT_EQ(bills().at(0).fields[8], QStringLiteral("Care de Eve Evans"));

    // Nothing served: told, no file, no History.
    options.start = options.end = QDate(2023, 1, 1);
    options.postToHistory = true;
    const QString none = dir.filePath(QStringLiteral("none.txt"));
    EXPECT_TRUE(ClientBillsExport::run(db(), ui, options, none, session.userFullName, us).bills.empty());
    EXPECT_EQ(ui.texts(Kind::Information).last(), ClientBillsExport::noClients());
    EXPECT_FALSE(QFile::exists(none));
    EXPECT_EQ(count(QStringLiteral("Select Count(*) from History")), 2);
}

TEST_P(ClientBills, PledgesPerItemPerDayMonthAndYear)
{
    options.method = BillOptions::Method::PledgedAmount;
    // 21: time pledge per day, three delivery days.
    client(21, "C21", "Fay", "Flo",
           {{QStringLiteral("Pledge_Method"), QStringLiteral("T")},
            {QStringLiteral("Pledge_Period"), QStringLiteral("DY")},
            {QStringLiteral("Pledge_Amount"), QVariant::fromValue(m("2.50"))}});
    pledge(21, "L ", "1.00");
    deliver(21, 1, "AAA", {{1, 1}});
    deliver(21, 2, "AAA", {{1, 2}});
    deliver(21, 2, "T3", {{2, 1}}, "", "EW");
    deliver(21, 5, "AAA", {{1, 1}});
    // 22: item pledges; Hot Lunch has its own pledge and a category one.
    client(22, "C22", "Gray", "Gus", {{QStringLiteral("Pledge_Method"), QStringLiteral("I")}});
    pledge(22, "1", "2.00");
    pledge(22, "L ", "9.99");
    pledge(22, "D ", "1.50");
    deliver(22, 1, "AAA", {{1, 3}, {2, 2}, {5, 4}, {4, 1}});
    deliver(22, 2, "T3", {{1, 1}}); // a second source: merged under pledges
    deliver(22, 3, "AAA", {{1, 1}}, "C");
    // 23 monthly, 24 yearly, 25 per day with one day, 26 with no pledge row.
    client(23, "C23", "Hall", "Hy",
           {{QStringLiteral("Pledge_Method"), QStringLiteral("T")},
            {QStringLiteral("Pledge_Period"), QStringLiteral("MO")},
            {QStringLiteral("Pledge_Amount"), QVariant::fromValue(m("30.00"))}});
    pledge(23, "B ", "0.01");
    deliver(23, 1, "AAA", {{1, 1}});
    client(24, "C24", "Ives", "Ida",
           {{QStringLiteral("Pledge_Method"), QStringLiteral("T")},
            {QStringLiteral("Pledge_Period"), QStringLiteral("YR")},
            {QStringLiteral("Pledge_Amount"), QVariant::fromValue(m("365.0001"))}});
    pledge(24, "B ", "0.01");
    deliver(24, 1, "AAA", {{1, 1}});
    client(25, "C25", "Jay", "Jo",
           {{QStringLiteral("Pledge_Method"), QStringLiteral("T")},
            {QStringLiteral("Pledge_Period"), QStringLiteral("DY")},
            {QStringLiteral("Pledge_Amount"), QVariant::fromValue(m("3.00"))}});
    pledge(25, "B ", "0.01");
    deliver(25, 4, "AAA", {{1, 1}});
    client(26, "C26", "Kay", "Kim", {{QStringLiteral("Pledge_Method"), QStringLiteral("I")}});
    deliver(26, 4, "AAA", {{1, 1}});

    options.pledges = BillOptions::Pledges::PerItem;
    auto all = bills();
    ASSERT_EQ(all.size(), 1u);
    const ClientBill* gus = of(all, 22);
    ASSERT_TRUE(gus);
    // By hand: Hot Lunch 3 + 1 = 4 x 2.00 = 8.00 (the item pledge wins);
    // Frozen Dinner 2 x 1.50 = 3.00 for the D category, Soup Dinner then
    // skipped; Breakfast has no pledge. Total 11.00.
    EXPECT_EQ(gus->total, m("11.00"));
    // In Item_ID order, the comped line last.
    EXPECT_EQ(gus->entries[0], slot(4, "Hot Lunch ---- Pledge for each", "2.00", "8.00"));
    EXPECT_EQ(gus->entries[1], slot(2, "D- Pledge for each:", "1.50", "3.00"));
    EXPECT_EQ(gus->entries[2], BillSlot{});
    EXPECT_EQ(gus->entries[3], slot(1, "Hot Lunch --- (Complimentary)", "0", "0"));
    EXPECT_EQ(gus->entries[4], BillSlot{});

    options.pledges = BillOptions::Pledges::PerItemAndDay;
    all = bills();
    ASSERT_EQ(all.size(), 3u);
    EXPECT_EQ(of(all, 21)->entries[0], slot(3, "Days at a Pledge Per Day of", "2.50", "7.50"));
    EXPECT_EQ(of(all, 21)->total, m("7.50"));
    EXPECT_EQ(of(all, 25)->entries[0], slot(1, "Day at a Pledge Per Day of", "3.00", "3.00"));
    EXPECT_EQ(of(all, 22)->entries[2], slot(1, "Breakfast ---- no pledge made", nullptr, nullptr));
    EXPECT_EQ(of(all, 22)->total, m("11.00"));

    options.pledges = BillOptions::Pledges::Monthly;
    all = bills();
    ASSERT_EQ(all.size(), 1u);
    EXPECT_EQ(all[0].entries[0], slot(std::nullopt, "Monthly Pledge", "30.00", "30.00"));
    options.pledges = BillOptions::Pledges::Yearly;
    all = bills();
    ASSERT_EQ(all.size(), 1u);
    EXPECT_EQ(all[0].personId, 24);
    EXPECT_EQ(all[0].total, m("365.0001"));
}

TEST_P(ClientBills, ScreenRemembersItsChoicesCouplesTheDatesAndOpensTheDocument)
{
    client(11, "C11", "Abbott", "Ann");
    deliver(11, 1, "AAA", {{1, 1}, {4, 1}});
    QTemporaryDir folder;
    SettingsFile settings(folder.path());
    QStringList opened;
    {
        TFormClientBills form(db(), session, ui, settings);
        form.setLocale(us);
        form.setDocumentOpener([&](const QString& path) {
            opened << path;
            return true;
        });
        form.FormShow();
        // Today is 6 March 2024: the whole of February.
        EXPECT_EQ(form.start(), QDate(2024, 2, 1));
        EXPECT_EQ(form.end(), QDate(2024, 2, 29));
        form.setStart(QDate(2024, 4, 10));
        EXPECT_EQ(form.end(), QDate(2024, 4, 30));
        form.setEnd(QDate(2024, 1, 15));
        EXPECT_EQ(form.start(), QDate(2024, 1, 1));
        form.setStart(QDate(2024, 2, 1));
        form.setEnd(QDate(2024, 2, 29));
        EXPECT_FALSE(form.pledgeOptionVisible());
        EXPECT_EQ(form.itemTree()[0].items.at(0).text, QStringLiteral("Breakfast     [4]"));
        EXPECT_EQ(form.itemTree().back().items.at(0).text, QStringLiteral("Milk     [3]"));
        // A click in the tree while all items count includes only those checked.
        form.setCategoryChecked(QStringLiteral("B"), true);
        EXPECT_EQ(form.filter(), BillOptions::ItemFilter::IncludeOnly);
        EXPECT_FALSE(form.okEnabled());
        form.setFileName(QStringLiteral("  "));
        EXPECT_FALSE(form.okEnabled());
        form.setFileName(folder.filePath(QStringLiteral("b.txt")));
        form.setMasterDocument(QStringLiteral("/docs/invoice.odt"));
        form.setPostToHistory(false);
        EXPECT_TRUE(form.ActionOK());
        EXPECT_EQ(form.result().total, m("1.10"));
        EXPECT_EQ(opened, QStringList{QStringLiteral("/docs/invoice.odt")});
        EXPECT_EQ(count(QStringLiteral("Select Count(*) from History")), 0);
        form.setMethodIndex(1);
        form.setPledgeIndex(2);
        form.FormClose();
    }
    EXPECT_EQ(settings.readString(TFormClientBills::section(), QStringLiteral("RzRadioButtonInclude")),
              QStringLiteral("True"));
    EXPECT_EQ(settings.readString(TFormClientBills::section(), QStringLiteral("wwCheckBoxPostToHistory")),
              QStringLiteral("False"));
    TFormClientBills again(db(), session, ui, settings);
    again.FormShow();
    EXPECT_EQ(again.filter(), BillOptions::ItemFilter::IncludeOnly);
    EXPECT_FALSE(again.postToHistory());
    EXPECT_TRUE(again.pledgeOptionVisible());
    EXPECT_EQ(again.pledgeIndex(), 2);
    EXPECT_EQ(again.masterDocument(), QStringLiteral("/docs/invoice.odt"));
}

TEST(ClientBillParts, InvoiceNumbersAndMoneyText)
{
    InvoiceNumbers ab(QStringLiteral("AB12"));
    EXPECT_EQ(ab.current(), QStringLiteral("AB12"));
    ab.advance();
    EXPECT_EQ(ab.current(), QStringLiteral("AB13"));
    EXPECT_EQ(InvoiceNumbers(QStringLiteral("X")).current(), QStringLiteral("X1"));
    EXPECT_EQ(InvoiceNumbers(QStringLiteral("")).current(), QStringLiteral("1"));
    EXPECT_EQ(InvoiceNumbers(QStringLiteral("A1-B2")).current(), QStringLiteral("A-B12"));
    EXPECT_EQ(InvoiceNumbers(QStringLiteral("99999999999999999999999")).current(), QStringLiteral("1"));

    EXPECT_EQ(MergeFile::money(m("1234.565"), us), QStringLiteral("$1,234.57"));
    EXPECT_EQ(MergeFile::money(m("0.0049"), us), QStringLiteral("$0.00"));
    EXPECT_EQ(MergeFile::money(m("-2.005"), QLocale::c()), QStringLiteral("-2.01"));
    EXPECT_EQ(MergeFile::money(m("29.3499"), QLocale::c()), QStringLiteral("29.35"));
    EXPECT_EQ(MergeFile::field(QStringLiteral("a\tb\r\nc")), QStringLiteral("a b  c"));
    EXPECT_EQ(MergeFile::field(QStringLiteral("\"Bud\" O'Neil")), QStringLiteral("'Bud' O'Neil"));
    EXPECT_EQ(ClientBillsExport::historyEvent(QDate(2024, 2, 1), QDate(2024, 2, 29), m("12.5"), us),
              QStringLiteral("Bill exported, 2/1 - 2/29/2024- $12.50 "));
}

INSTANTIATE_TEST_SUITE_P(Stores, ClientBills, ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         [](const auto& info) { return storeName(info.param); });

} // namespace
