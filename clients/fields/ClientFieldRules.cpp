#include "fields/ClientFieldRules.h"

#include "UserInterface.h"
#include "dataset/DataSet.h"
#include "fields/EditMask.h"
#include "rules/ClientStatus.h"
#include "store/Database.h"

namespace kb {

namespace {

QDate dateOf(const DataSet& clients, QStringView field)
{
    const QDate d = clients.fieldValue(field).toDate();
    return d.isValid() && d.year() >= 1900 ? d : QDate();
}

bool editing(const DataSet& clients)
{
    return clients.state() == DataSet::State::Edit || clients.state() == DataSet::State::Insert;
}

void fillEmptyDate(DataSet& clients, QStringView target, QStringView from)
{
    const QDate value = dateOf(clients, from);
    if (editing(clients) && value.isValid() && !dateOf(clients, target).isValid())
        clients.setFieldValue(target, value);
}

} // namespace

ClientFieldRules::ClientFieldRules(Database& db, UserInterface& ui)
    : ClientFieldRules(db, ui, ClientConfig::read(db))
{
}

ClientFieldRules::ClientFieldRules(Database& db, UserInterface& ui, ClientConfig config)
    : m_db(db), m_ui(ui), m_config(std::move(config))
{
}

bool ClientFieldRules::isDayEnabled(const DataSet& clients, int weekday) const
{
    return weekday >= 0 && weekday < 7 && m_config.deliveryDays[size_t(weekday)] &&
           clients.fieldValue(u"STATUS").toString() == client_status::Active;
}

bool ClientFieldRules::acceptDietCheck(int checked) const
{
    if (checked <= m_config.maxDietModifications) return true;
    m_ui.warning(
        QStringLiteral("No more than %1 modifications may be selected.").arg(m_config.maxDietModifications));
    return false;
}

QDate ClientFieldRules::latestServiceDate(const DataSet& clients) const
{
    if (m_config.allowBypassingContractDates) return {};
    return dateOf(clients, u"CONTRACTUAL_STOP_DTE");
}

void ClientFieldRules::contractualStartLeft(DataSet& clients) const
{
    fillEmptyDate(clients, u"START_DTE", u"CONTRACTUAL_START_DTE");
}

void ClientFieldRules::contractualStopLeft(DataSet& clients) const
{
    fillEmptyDate(clients, u"STOP_DTE", u"CONTRACTUAL_STOP_DTE");
}

bool ClientFieldRules::isStopReasonEnabled(const DataSet& clients) const
{
    return dateOf(clients, u"STOP_DTE").isValid();
}

bool ClientFieldRules::zipLeft(DataSet& clients) const
{
    const QString zip = clients.fieldValue(u"ZIP").toString().left(5);
    if (zip.isEmpty() || !editing(clients)) return false;
    const ResultSet row = m_db.execute(QStringLiteral("Select City, St, County from Zips where Zip = :Zip"),
                                       {{QStringLiteral("Zip"), zip}});
    if (row.isEmpty()) return false;
    clients.setFieldValue(u"CITY", row.value(0, 0));
    clients.setFieldValue(u"STATE", row.value(0, 1));
    clients.setFieldValue(u"COUNTY", row.value(0, 2));
    return true;
}

bool ClientFieldRules::GetBagCode(DataSet& clients) const
{
    const ResultSet row =
        m_db.execute(QStringLiteral("Select Bag_ID from Cold_Bag_Usage where Diet_Restr = :Diet_Restr"),
                     {{QStringLiteral("Diet_Restr"), clients.fieldValue(u"DIET_RESTR").toLongLong()}});
    if (row.isEmpty()) {
        m_ui.warning(
            QStringLiteral("There is no Bag Code on file for this combination of diet \r\nrestrictions!"));
        return false;
    }
    if (!editing(clients)) clients.edit();
    clients.setFieldValue(u"COLD_BAG_ID", row.value(0, 0));
    return true;
}

QString ClientFieldRules::maskedSocialSecurity(const QString& number, const QString& postalFormat)
{
    if (number.isEmpty()) return {};
    if (postalFormat == QLatin1String("USA")) return QStringLiteral("xxx-xx-") + number.right(4);
    if (postalFormat == QLatin1String("CAN")) return QStringLiteral("xxx-xxx-") + number.right(3);
    return QStringLiteral("xxxxx") + number.mid(5, 6);
}

QString ClientFieldRules::socialSecurityText(const DataSet& clients) const
{
    const QString number = clients.fieldValue(u"SOCIAL_SECURITY_NUMBER").toString();
    return editing(clients) ? number : maskedSocialSecurity(number, m_config.postalFormat);
}

QString ClientFieldRules::entryMask(const QString& field) const
{
    const QString f = field.toUpper();
    const QString& format = m_config.postalFormat;
    if (f == QLatin1String("ZIP")) {
        if (format == QLatin1String("USA")) return QStringLiteral("#####[-####]");
        if (format == QLatin1String("CAN"))
            return QStringLiteral(
                "{A,B,C,E,G,H,J,K,L,M,N,P,R,S,T,V,X,Y}#{A,B,C,E,G,H,J,K,L,M,N,P,R,S,T,V,W,X,Y,Z} "
                "#{A,B,C,E,G,H,J,K,L,M,N,P,R,S,T,V,W,X,Y,Z}#");
        if (format == QLatin1String("UK")) return QStringLiteral("&[&][&][&][#][#][&][ #&&]");
        return {};
    }
    if (f == QLatin1String("PHONE") || f == QLatin1String("OPHONE")) {
        if (format == QLatin1String("USA") || format == QLatin1String("CAN"))
            return QStringLiteral("###-###-####[ x#][#][#][#][#]");
        if (format == QLatin1String("UK"))
            return QStringLiteral("{##### ######,#### ### ####,### #### ####}[x#][#][#][#][#]");
        return {};
    }
    if (f == QLatin1String("SOCIAL_SECURITY_NUMBER")) {
        if (format == QLatin1String("USA")) return QStringLiteral("###-##-####");
        if (format == QLatin1String("CAN")) return QStringLiteral("###-###-###");
    }
    return {};
}

bool ClientFieldRules::checkEntry(const QString& field, const QString& entry) const
{
    if (EditMask(entryMask(field)).fit(entry) == EditMask::Fit::Complete) return true;
    m_ui.warning(QStringLiteral("Invalid input for field ") + field);
    return false;
}

CardNumberCheck ClientFieldRules::checkCardNumber(const QString& entry) const
{
    const CardNumberCheck check = CardNumberCheck::check(entry);
    if (check.result == CardNumberCheck::Result::Incomplete)
        m_ui.warning(
            QStringLiteral("The Credit Card input does not\r\ncontain the correct number of digits."));
    return check;
}

} // namespace kb
