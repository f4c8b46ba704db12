#include "bills/ClientBillCalculator.h"

#include "bills/PledgeRates.h"
#include "rules/ClientHistoryTexts.h"
#include "settings/ConfigRecord.h"
#include "store/Database.h"

#include <algorithm>

namespace kb {

namespace {

const QString Complimentary = QStringLiteral("Complimentary");

QString trimmed(const QVariant& v)
{
    return v.toString().trimmed();
}

QString dateField(const QVariant& v)
{
    return v.toDate().isValid() ? client_history::dateText(v.toDate()) : QString();
}

void dropMemDeliveries(Database& db)
{
    db.execute(QStringLiteral("Drop Table if exists Memory \"MemDeliveries\" "));
}

} // namespace

ClientBillCalculator::ClientBillCalculator(Database& db, BillOptions options)
    : m_db(db), m_options(std::move(options))
{
    m_canadian =
        ConfigRecord::read(db).text(QStringLiteral("Postal_Format")).trimmed() == QLatin1String("CAN");
}

ClientBillCalculator::~ClientBillCalculator()
{
    if (!m_prepared) return;
    try {
        dropMemDeliveries(m_db);
    } catch (...) {
        // The session's memory tables go with the session in any case.
    }
}

QStringList ClientBillCalculator::fieldNames()
{
    QStringList names{
        QStringLiteral("InvoiceNumber"), QStringLiteral("ClientID"),     QStringLiteral("PeriodStart"),
        QStringLiteral("PeriodEnd"),     QStringLiteral("ClientName"),   QStringLiteral("FirstName"),
        QStringLiteral("MidName"),       QStringLiteral("LastName"),     QStringLiteral("BillTo"),
        QStringLiteral("Address1"),      QStringLiteral("Address2"),     QStringLiteral("City"),
        QStringLiteral("State"),         QStringLiteral("ZIP"),          QStringLiteral("Service"),
        QStringLiteral("DOB"),           QStringLiteral("DefaultRoute"), QStringLiteral("Language")};
    for (int i = 1; i <= Slots; ++i)
        names << QStringLiteral("Qty%1").arg(i) << QStringLiteral("Item%1").arg(i)
              << QStringLiteral("UnitPrice%1").arg(i) << QStringLiteral("Charge%1").arg(i);
    names << QStringLiteral("Total Charge");
    return names;
}

void ClientBillCalculator::prepare()
{
    dropMemDeliveries(m_db);
    m_prepared = true;
    QString text = QStringLiteral(
        "Select Deliveri.Person_ID, Deliveri.Client_ID, Deliveri.Deliv_ID, Deliveri.Deliv_Dt, "
        "Deliveri.Funding_Desc, MealCrdt.Quantity, MealCrdt.Item_ID,  if( Deliveri.Delivery_Status='C' then "
        "'Complimentary' else '') as Comp into Memory \"MemDeliveries\" from Deliveri join MealCrdt on "
        "Deliveri.Deliv_ID = MealCrdt.Deliv_ID where (Deliveri.Deliv_Dt >= :dStart) and (Deliveri.Deliv_Dt "
        "<= "
        ":dEnd) and (MealCrdt.Deliv_Dt >= :dStart) and (MealCrdt.Deliv_Dt <= :dEnd) ");
    Params params{{QStringLiteral("dStart"), m_options.start}, {QStringLiteral("dEnd"), m_options.end}};
    // The checked items; with none checked the filter adds nothing.
    if (m_options.filter != BillOptions::ItemFilter::All && !m_options.items.isEmpty()) {
        QStringList terms;
        for (int i = 0; i < m_options.items.size(); ++i) {
            terms << QStringLiteral(" (MealCrdt.Item_ID = :Item%1) ").arg(i);
            params.emplace_back(QStringLiteral("Item%1").arg(i), m_options.items[i]);
        }
        text += (m_options.filter == BillOptions::ItemFilter::IncludeOnly ? QStringLiteral(" and ( ")
                                                                          : QStringLiteral(" and not ( ")) +
                terms.join(QStringLiteral(" or ")) + QStringLiteral(" ) ");
    }
    if (!m_options.fundingCodes.isEmpty()) {
        QStringList terms;
        for (int i = 0; i < m_options.fundingCodes.size(); ++i) {
            terms << QStringLiteral("(Deliveri.Funding_Desc = :Funding%1)").arg(i);
            params.emplace_back(QStringLiteral("Funding%1").arg(i), m_options.fundingCodes[i]);
        }
        text += QStringLiteral(" and ( ") + terms.join(QStringLiteral(" or ")) + QStringLiteral(" ) ");
    }
    text += QStringLiteral("Order by Person_ID, Comp, Item_ID");
    m_db.execute(text, params);
    for (const char* index : {"Person_ID", "Item_ID", "Funding_Desc", "Comp"})
        m_db.execute(QStringLiteral("Create Index if not exists %1 on Memory MemDeliveries (%1)")
                         .arg(QLatin1String(index)));
    m_db.execute(QStringLiteral("Create Index if not exists Funding_Comp_Item_ID on Memory MemDeliveries "
                                "(Funding_Desc, Comp, Item_ID)"));
}

QList<qint64> ClientBillCalculator::clients()
{
    Params params{{QStringLiteral("dStart"), m_options.start}, {QStringLiteral("dEnd"), m_options.end}};
    // With the item or funding filters, a client served only with what
    // they leave out has nothing to bill; MemDeliveries holds exactly
    // what counts, so its clients are the ones asked for.
    const ResultSet r =
        m_options.fundingCodes.isEmpty() &&
                (m_options.filter == BillOptions::ItemFilter::All || m_options.items.isEmpty())
            ? m_db.execute(QStringLiteral(
                               "select Distinct MealCrdt.Person_ID from MealCrdt where MealCrdt.Deliv_Dt >= "
                               ":dStart and MealCrdt.Deliv_Dt <= :dEnd order by MealCrdt.Person_ID"),
                           params)
            : m_db.execute(
                  QStringLiteral("select Distinct Person_ID from Memory MemDeliveries order by Person_ID"));
    QList<qint64> ids;
    ids.reserve(r.rowCount());
    for (qsizetype i = 0; i < r.rowCount(); ++i)
        ids << r.value(i, 0).toLongLong();
    return ids;
}

QString ClientBillCalculator::Line::itemText() const
{
    QString text = mealItem.trimmed() + QStringLiteral(" ") + funding;
    if (!comp.isEmpty()) text += QStringLiteral(" (") + comp + QStringLiteral(")");
    return text;
}

std::vector<ClientBillCalculator::Line> ClientBillCalculator::lines(qint64 personId)
{
    const bool pledged = m_options.method == BillOptions::Method::PledgedAmount;
    const QString columns = QStringLiteral(
        "MemDeliveries.Item_ID, Items.Meal_Item, Items.Meal, MemDeliveries.Comp, Sum(MemDeliveries.Quantity) "
        "as "
        "Quantity, if( MemDeliveries.Comp = \"Complimentary\" then 0.00 else Items.Billed_Amount) as "
        "Unit_Charge, "
        "Sum( if( MemDeliveries.Comp = \"Complimentary\" then 0.00 else MemDeliveries.Quantity * "
        "Items.Billed_Amount)) as Total_Charge ");
    // Under pledges every pledge row of the client would otherwise meet
    // every delivered item and multiply its quantity: the client's pledge
    // rows only decide whether he has pledged lines at all.
    const QString text =
        pledged ? QStringLiteral("select \"---\" as Funding_Desc, ") + columns +
                      QStringLiteral(
                          "from Memory MemDeliveries join Items on MemDeliveries.Item_ID = Items.Item_ID "
                          "where MemDeliveries.Person_ID = :Person_ID and MemDeliveries.Person_ID in "
                          "(Select Pricing.Person_ID from Pricing where Pricing.Person_ID = :Person_ID "
                          "and Pricing.Amount > 0 and Pricing.Method in (\"P\",\"D\",\"M\",\"Y\")) Group by "
                          "MemDeliveries.Comp, MemDeliveries.Item_ID, Items.Meal_Item, Items.Meal, "
                          "Items.Billed_Amount")
                : QStringLiteral("select MemDeliveries.Funding_Desc, ") + columns +
                      QStringLiteral(
                          "from Memory MemDeliveries join Items on MemDeliveries.Item_ID = Items.Item_ID "
                          "where MemDeliveries.Person_ID = :Person_ID and Items.Billed_Amount > 0 Group by "
                          "MemDeliveries.Funding_Desc, MemDeliveries.Comp, MemDeliveries.Item_ID, "
                          "Items.Meal_Item, Items.Meal, Items.Billed_Amount");
    const ResultSet r = m_db.execute(text, {{QStringLiteral("Person_ID"), personId}});
    std::vector<Line> out;
    out.reserve(r.rowCount());
    for (qsizetype i = 0; i < r.rowCount(); ++i) {
        Line l;
        l.funding = trimmed(r.value(i, 0));
        l.itemId = r.value(i, 1).toLongLong();
        l.mealItem = r.value(i, 2).toString();
        l.meal = trimmed(r.value(i, 3));
        l.comp = trimmed(r.value(i, 4));
        l.quantity = r.value(i, 5).toLongLong();
        l.unitCharge = moneyValue(r.value(i, 6));
        l.totalCharge = moneyValue(r.value(i, 7));
        out.push_back(std::move(l));
    }
    // The lines stand in the order of their groups.
    std::sort(out.begin(), out.end(), [](const Line& a, const Line& b) {
        return std::tie(a.funding, a.comp, a.itemId) < std::tie(b.funding, b.comp, b.itemId);
    });
    return out;
}

std::optional<ClientBill> ClientBillCalculator::bill(qint64 personId, const QString& invoiceNumber)
{
    const ResultSet c = m_db.execute(
        QStringLiteral(
            "select Clients.Client_ID, Clients.Person_ID, Clients.First_Name, Clients.Mid_Name, "
            "Clients.Last_Name, Clients.Address1, Clients.Address2, Clients.City, Clients.State, "
            "Clients.ZIP, Services.Service_Desc, Clients.Pledge_Method, Clients.Pledge_Period, "
            "Clients.Pledge_Amount, Clients.Language, Clients.DOB, Clients.Def_Rte from Clients left "
            "join Services on Clients.Svcs_Used = Services.Service_ID where Clients.Person_ID = "
            ":Person_ID"),
        {{QStringLiteral("Person_ID"), personId}});
    if (c.isEmpty()) return std::nullopt; // deliveries of a person no longer on file
    const auto col = [&](const char* name) { return c.value(0, QString::fromLatin1(name)); };

    ClientBill bill;
    bill.personId = personId;
    bill.clientId = trimmed(col("Client_ID"));
    bill.invoiceNumber = invoiceNumber;
    const QString first = trimmed(col("First_Name"));
    const QString mid = trimmed(col("Mid_Name"));
    const QString last = trimmed(col("Last_Name"));
    QStringList name;
    for (const QString& part : {first, mid, last})
        if (!part.isEmpty()) name << part;
    bill.fields << invoiceNumber << bill.clientId << client_history::dateText(m_options.start)
                << client_history::dateText(m_options.end) << name.join(u' ') << first << mid << last;

    const QString language = trimmed(col("Language"));
    const ResultSet billTo = m_db.execute(
        QStringLiteral(
            "Select Indiv_ID from Relationships where Person_ID = :Person_ID and Relationship = 'Bill-To'"),
        {{QStringLiteral("Person_ID"), personId}});
    const ResultSet who =
        billTo.isEmpty()
            ? ResultSet()
            : m_db.execute(
                  QStringLiteral("Select First_Name, Last_Name, Address1, Address2, City, State, ZIP from "
                                 "Individuals where Indiv_ID = :Indiv_ID"),
                  {{QStringLiteral("Indiv_ID"), billTo.value(0, 0)}});
    if (who.isEmpty()) {
        bill.fields << QString();
        for (const char* f : {"Address1", "Address2", "City", "State", "ZIP"})
            bill.fields << trimmed(col(f));
    } else {
        const QString care = m_canadian && language == QLatin1String("F") ? QStringLiteral("Care de ")
                                                                          : QStringLiteral("In Care Of ");
        bill.fields << care + trimmed(who.value(0, 0)) + QStringLiteral(" ") + trimmed(who.value(0, 1));
        for (int i = 2; i <= 6; ++i)
            bill.fields << trimmed(who.value(0, i));
    }
    bill.fields << trimmed(col("Service_Desc")) << dateField(col("DOB")) << trimmed(col("Def_Rte"))
                << language;

    charge(bill, lines(personId), trimmed(col("Pledge_Method")), trimmed(col("Pledge_Period")),
           moneyValue(col("Pledge_Amount")), personId);
    while (bill.entries.size() < size_t(Slots))
        bill.entries.push_back({});
    if (bill.total <= Money()) return std::nullopt;
    return bill;
}

void ClientBillCalculator::charge(ClientBill& bill, const std::vector<Line>& lines,
                                  const QString& pledgeMethod, const QString& pledgePeriod,
                                  Money pledgeAmount, qint64 personId)
{
    using P = BillOptions::Pledges;
    if (m_options.method == BillOptions::Method::CostPerItem) {
        for (const Line& l : lines) {
            bill.entries.push_back({l.quantity, l.itemText(), l.unitCharge, l.totalCharge});
            bill.total = bill.total + l.totalCharge;
        }
        return;
    }
    // A time pledge needs at least one pledged line; it does not depend on
    // how much was delivered.
    if (lines.empty()) return;
    const bool items = pledgeMethod == QLatin1String("I");
    const bool time = pledgeMethod == QLatin1String("T");
    switch (m_options.pledges) {
    case P::PerItem:
        if (items)
            chargeItemPledges(bill, lines, personId);
        else
            bill.entries.push_back({});
        return;
    case P::PerItemAndDay:
        if (time && pledgePeriod == QLatin1String("DY")) {
            const qint64 days =
                m_db.execute(QStringLiteral("Select distinct deliv_dt as Distinct_Delivery_Dates "
                                            "from Memory MemDeliveries where Person_ID = :Person_ID"),
                             {{QStringLiteral("Person_ID"), personId}})
                    .rowCount();
            const Money product = Money::fromUnits(pledgeAmount.units() * days);
            bill.entries.push_back({days,
                                    days > 1 ? QStringLiteral("Days at a Pledge Per Day of")
                                             : QStringLiteral("Day at a Pledge Per Day of"),
                                    pledgeAmount, product});
            bill.total = product;
        } else if (items) {
            chargeItemPledges(bill, lines, personId);
        } else {
            bill.entries.push_back({});
        }
        return;
    case P::Monthly:
    case P::Yearly: {
        const bool monthly = m_options.pledges == P::Monthly;
        if (time && pledgePeriod == (monthly ? QLatin1String("MO") : QLatin1String("YR"))) {
            bill.entries.push_back(
                {std::nullopt, monthly ? QStringLiteral("Monthly Pledge") : QStringLiteral("Yearly Pledge"),
                 pledgeAmount, pledgeAmount});
            bill.total = pledgeAmount;
        } else {
            bill.entries.push_back({});
        }
        return;
    }
    }
}

void ClientBillCalculator::chargeItemPledges(ClientBill& bill, const std::vector<Line>& lines,
                                             qint64 personId)
{
    const PledgeRates rates = PledgeRates::read(m_db, personId);
    QStringList categoriesSeen;
    for (const Line& l : lines) {
        if (!l.comp.isEmpty()) {
            bill.entries.push_back({l.quantity, l.itemText(), l.unitCharge, l.totalCharge});
            continue;
        }
        if (const auto amount = rates.forItem(l.itemId)) {
            const Money product = Money::fromUnits(amount->units() * l.quantity);
            bill.entries.push_back(
                {l.quantity, l.itemText() + QStringLiteral("- Pledge for each"), *amount, product});
            bill.total = bill.total + product;
            continue;
        }
        if (const auto amount = rates.forCategory(l.meal)) {
            // A category pledge counts once per client and category, with
            // the quantity of the line where the category first shows.
            if (categoriesSeen.contains(l.meal)) continue;
            categoriesSeen << l.meal;
            const Money product = Money::fromUnits(amount->units() * l.quantity);
            bill.entries.push_back(
                {l.quantity, l.meal + QStringLiteral("- Pledge for each:"), *amount, product});
            bill.total = bill.total + product;
            continue;
        }
        if (m_options.pledges == BillOptions::Pledges::PerItemAndDay)
            bill.entries.push_back(
                {l.quantity, l.itemText() + QStringLiteral("- no pledge made"), std::nullopt, std::nullopt});
        else
            bill.entries.push_back({});
    }
}

} // namespace kb
