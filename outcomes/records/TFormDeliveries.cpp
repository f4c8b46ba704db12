#include "records/TFormDeliveries.h"

#include "MessageError.h"
#include "UserInterface.h"
#include "records/TFormCompDel.h"
#include "rules/ClientHistoryTexts.h"
#include "session/SessionState.h"
#include "store/Database.h"

#include <algorithm>

namespace kb {

TFormDeliveries::TFormDeliveries(Database& db, const SessionState& session, UserInterface& ui)
    : m_db(db), m_session(session), m_ui(ui), m_deliveredItems(db)
{
}

const std::vector<std::pair<TFormDeliveries::Column, QString>>& TFormDeliveries::shownColumns()
{
    static const std::vector<std::pair<Column, QString>> columns{
        {DelivDt, QStringLiteral("Date")},
        {DeliveryType, QStringLiteral("Deliv~Type")},
        {Dow, QStringLiteral("DOW")},
        {AddressOverridden, QStringLiteral("Alt~Addr")},
        {RouteId, QStringLiteral("Route")},
        {Stop, QStringLiteral("Stop")},
        {NumberMeals, QStringLiteral("Number~of Meals")},
        {CustomItems, QStringLiteral("Custom~Items")},
        {DietDescr, QStringLiteral("Diet")},
        {FundingDesc, QStringLiteral("Funding")},
        {DeliveryStatus, QStringLiteral("Sta~tus")}};
    return columns;
}

void TFormDeliveries::FormShow(qint64 personId)
{
    storeFunding();
    m_personId = personId;
    open();
}

void TFormDeliveries::setDays(int days)
{
    m_days = std::clamp(days, MinDays, MaxDays);
    if (m_personId != 0) ActionRefresh();
}

void TFormDeliveries::open()
{
    const qint64 keep =
        m_current >= 0 && m_current < m_rows.rowCount() ? m_rows.value(m_current, DelivId).toLongLong() : 0;
    m_rows = delivery_records::QueryDeliveries(m_db, m_personId, m_db.clock().today().addDays(-m_days));
    m_lastDelivery = delivery_records::lastDelivery(m_db, m_personId);
    m_current = m_rows.isEmpty() ? -1 : 0;
    if (keep != 0) locate(keep);
}

QVariant TFormDeliveries::value(int row, Column column) const
{
    if (row < 0 || row >= m_rows.rowCount()) return {};
    if (column == FundingDesc) {
        const auto it = m_fundingChanges.find(m_rows.value(row, DelivId).toLongLong());
        if (it != m_fundingChanges.end()) return it->second.isEmpty() ? QVariant() : QVariant(it->second);
    }
    return m_rows.value(row, column);
}

void TFormDeliveries::setCurrentRow(int row)
{
    m_current = m_rows.isEmpty() ? -1 : std::clamp(row, 0, int(m_rows.rowCount()) - 1);
}

bool TFormDeliveries::locate(qint64 delivId)
{
    for (qsizetype r = 0; r < m_rows.rowCount(); ++r)
        if (m_rows.value(r, DelivId).toLongLong() == delivId) {
            m_current = int(r);
            return true;
        }
    return false;
}

QStringList TFormDeliveries::fundingCodes()
{
    const ResultSet r = m_db.execute(QStringLiteral("Select Fund_Cd from Fundsrcs order by Fund_Cd"));
    QStringList codes;
    for (qsizetype i = 0; i < r.rowCount(); ++i)
        codes << r.value(i, 0).toString().trimmed();
    return codes;
}

void TFormDeliveries::setFunding(int row, const QString& code)
{
    if (row < 0 || row >= m_rows.rowCount()) return;
    const QString trimmed = code.trimmed();
    if (trimmed == m_rows.value(row, FundingDesc).toString().trimmed() &&
        !m_fundingChanges.contains(m_rows.value(row, DelivId).toLongLong()))
        return;
    m_fundingChanges[m_rows.value(row, DelivId).toLongLong()] = trimmed;
}

QString TFormDeliveries::currentStatus() const
{
    return m_current < 0 ? QString() : m_rows.value(m_current, DeliveryStatus).toString().trimmed();
}

bool TFormDeliveries::canComp() const
{
    return m_current >= 0 && currentStatus() != QLatin1String("C");
}

bool TFormDeliveries::canReverse() const
{
    return m_current >= 0 && currentStatus() == QLatin1String("C");
}

std::optional<delivery_records::Delivery> TFormDeliveries::current() const
{
    if (m_current < 0) return std::nullopt;
    delivery_records::Delivery d;
    d.delivId = m_rows.value(m_current, DelivId).toLongLong();
    d.personId = m_personId;
    d.date = m_rows.value(m_current, DelivDt).toDate();
    d.service = m_rows.value(m_current, SvcsUsed).toLongLong();
    d.kind = m_rows.value(m_current, DeliveryType).toString().trimmed();
    d.status = currentStatus();
    return d;
}

bool TFormDeliveries::ActionCompedDelivery()
{
    const auto delivery = current();
    if (!delivery) return false;
    if (delivery->status == QLatin1String("C")) {
        m_ui.information(QStringLiteral("That delivery has already been Comped!"));
        return false;
    }
    TFormCompDel dialog(m_db, m_ui, *delivery, m_session.userFullName);
    const bool comped = m_compDialog ? m_compDialog(dialog) : dialog.ActionOK();
    if (comped) open();
    return comped;
}

bool TFormDeliveries::ActionReverseCompedDelivery()
{
    const auto delivery = current();
    if (!delivery) return false;
    const QString day = client_history::dateText(delivery->date);
    if (delivery->status != QLatin1String("C")) {
        m_ui.information(QStringLiteral("The ") + day + QStringLiteral(" delivery was not Comped!"));
        return false;
    }
    if (m_ui.question(QStringLiteral("Reverse the ") + day + QStringLiteral(" Comped delivery?"),
                      Buttons::YesNo) != Answer::Yes)
        return false;
    delivery_records::reverseComp(m_db, *delivery, m_session.userFullName);
    open();
    return true;
}

bool TFormDeliveries::ActionDeleteDelivery()
{
    const auto delivery = current();
    if (!delivery) return false;
    if (m_ui.question(QStringLiteral("Delete the ") + client_history::dateText(delivery->date) +
                          QStringLiteral(" delivery?\nA deletion can not be reversed!"),
                      Buttons::YesNo) != Answer::Yes)
        return false;
    {
        BusyGuard busy(m_ui);
        delivery_records::deleteDelivery(m_db, *delivery, m_session.userFullName);
    }
    m_fundingChanges.erase(delivery->delivId);
    open();
    return true;
}

qint64 TFormDeliveries::currentDelivId() const
{
    return m_current < 0 ? 0 : m_rows.value(m_current, DelivId).toLongLong();
}

ResultSet TFormDeliveries::ActionShowDeliveryItems()
{
    const auto delivery = current();
    return delivery ? delivery_records::deliveredItems(m_db, delivery->delivId) : ResultSet();
}

void TFormDeliveries::storeFunding()
{
    if (m_fundingChanges.empty()) return;
    delivery_records::applyFundingChanges(m_db, {m_fundingChanges.begin(), m_fundingChanges.end()});
    m_fundingChanges.clear();
}

void TFormDeliveries::ActionRefresh()
{
    storeFunding();
    open();
}

void TFormDeliveries::FormClose()
{
    storeFunding();
}

} // namespace kb
