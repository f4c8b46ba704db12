#include "TFormAddressOverride.h"

#include "AddressOverrideRules.h"

#include "dataset/Abort.h"
#include "dataset/QueryDataSet.h"
#include "records/RecordServices.h"
#include "session/SessionState.h"
#include "UserInterface.h"

namespace kb {

TFormAddressOverride::TFormAddressOverride(RecordServices& services, const SessionState& session, Client client)
    : m_services(services),
      m_session(session),
      m_client(std::move(client)),
      m_set(std::make_unique<QueryDataSet>(services.db(),
                                           QStringLiteral("select * from Address_Overrides where Person_id = :Person_ID ")))
{
    const ResultSet config =
        services.db().execute(QStringLiteral("Select Postal_Format, Mapping, Mapping_URL from Config"));
    if (!config.isEmpty()) {
        m_postalFormat = config.value(0, 0).toString().trimmed();
        m_mapping = config.value(0, 1).toString().trimmed();
        m_mappingUrl = config.value(0, 2).toString().trimmed();
    }
    m_set->setParam(QStringLiteral("Person_ID"), m_client.personId);
    m_set->setRequestLive(true);
    m_services.installErrorHooks(*m_set);
    m_set->setHook(DataSet::Hook::BeforePost, [this](DataSet& set) {
        const QString refusal = AddressOverrideRules::postRefusal(
            set.fieldValue(u"Override_Type").toString(), set.fieldValue(u"Route"), set.fieldValue(u"Effective_Date"),
            set.fieldValue(u"Expire_Date"), set.fieldValue(u"Deliv_Date"), set.fieldValue(u"DOW"));
        if (!refusal.isEmpty()) {
            m_services.ui().warning(refusal);
            throw Abort();
        }
        set.setFieldValue(u"Last_Updated", m_services.db().clock().now());
    });
    m_set->open();
}

TFormAddressOverride::~TFormAddressOverride() = default;

bool TFormAddressOverride::fieldsEnabled() const { return !m_set->isEmpty(); }

bool TFormAddressOverride::isShown(const QString& column) const
{
    return AddressOverrideRules::shows(m_set->fieldValue(u"Override_Type").toString(), column);
}

void TFormAddressOverride::setType(const QString& type)
{
    if (m_set->state() == DataSet::State::Browse)
        m_set->edit();
    m_set->setFieldValue(u"Override_Type", type);
    for (const QString& column : AddressOverrideRules::clearedColumns(type))
        m_set->setFieldValue(column, QVariant());
}

QString TFormAddressOverride::cityLabel() const
{
    if (m_postalFormat == QLatin1String("CAN"))
        return QStringLiteral("City Prov Postal:");
    if (m_postalFormat == QLatin1String("UK"))
        return QStringLiteral("Town / Postcode:");
    return QStringLiteral("City State Zip:");
}

QStringList TFormAddressOverride::descriptionChoices() const
{
    const ResultSet config = m_services.db().execute(QStringLiteral("Select Addr_Override_Desc from Config"));
    QStringList choices;
    if (!config.isEmpty())
        for (const QString& line : config.value(0, 0).toString().split(QLatin1Char('\n')))
            if (!line.trimmed().isEmpty())
                choices << line.trimmed();
    choices << QStringLiteral("Mailing Address");
    return choices;
}

void TFormAddressOverride::householdReminder(const QString& text)
{
    if (m_client.householdId > 0)
        m_services.ui().information(text);
}

void TFormAddressOverride::insertNew()
{
    Database& db = m_services.db();
    db.execute(QStringLiteral("Insert into Address_Overrides (Client_ID, Person_ID, Override_Type, Effective_Date, "
                              "Create_Date, Last_Updated, Created_By) values (:Client_ID, :Person_ID, :Override_Type, "
                              ":Effective_Date, :CreateDate, :Last_Updated, :CreatedBy)"),
               {{QStringLiteral("Client_ID"), m_client.clientId},
                {QStringLiteral("Person_ID"), m_client.personId},
                {QStringLiteral("Override_Type"), QStringLiteral("O")},
                {QStringLiteral("Effective_Date"), db.clock().today()},
                {QStringLiteral("CreateDate"), db.clock().today()},
                {QStringLiteral("Last_Updated"), db.clock().now()},
                {QStringLiteral("CreatedBy"), m_session.userFullName}});
    const qint64 newest = db.execute(QStringLiteral("Select max(RecordID) from Address_Overrides where Person_ID = "
                                                    ":Person_ID"),
                                     {{QStringLiteral("Person_ID"), m_client.personId}})
                              .value(0, 0)
                              .toLongLong();
    m_set->refresh();
    m_set->locate(QStringLiteral("RecordID"), newest);
}

void TFormAddressOverride::ActionAddAddress()
{
    m_set->checkBrowseMode();
    insertNew();
    householdReminder(QStringLiteral("This client is a member of a household. You may need to see if \r\nthe other "
                                     "household members need the same alternate address."));
}

bool TFormAddressOverride::saveQuestion()
{
    if (m_set->state() != DataSet::State::Edit && m_set->state() != DataSet::State::Insert)
        return true;
    if (m_services.ui().question(QStringLiteral("Save the changes to this address?"), Buttons::YesNo) == Answer::Yes) {
        try {
            m_set->post();
        } catch (const Abort&) {
            return false;
        }
    } else {
        m_set->cancel();
    }
    return true;
}

void TFormAddressOverride::ActionDuplicateAddress()
{
    if (!saveQuestion())
        return;
    if (m_set->isEmpty()) {
        m_services.ui().warning(QStringLiteral("Either no address has been selected or there are no addresses to copy!"));
        return;
    }
    static const char* const copied[] = {"Address1", "Address2", "City",  "State",     "ZIP",
                                         "Phone_Desc", "Phone",  "Route", "Directions"};
    QVariantList values;
    for (const char* c : copied)
        values << m_set->fieldValue(QString::fromLatin1(c));
    insertNew();
    m_set->edit();
    for (int i = 0; i < int(std::size(copied)); ++i)
        m_set->setFieldValue(QString::fromLatin1(copied[i]), values[i]);
    householdReminder(QStringLiteral("This client is a member of a household. You may need to see if \r\nthe other "
                                     "household members need the same alternate address."));
}

bool TFormAddressOverride::zipLeft()
{
    const QString zip = m_set->fieldValue(u"ZIP").toString().left(5);
    if (zip.isEmpty() || m_set->state() == DataSet::State::Browse) return false;
    const ResultSet row = m_services.db().execute(QStringLiteral("Select City, St from Zips where Zip = :Zip"),
                                                  {{QStringLiteral("Zip"), zip}});
    if (row.isEmpty()) return false;
    m_set->setFieldValue(u"City", row.value(0, 0));
    m_set->setFieldValue(u"State", row.value(0, 1));
    return true;
}

QUrl TFormAddressOverride::mappedAddressUrl() const
{
    if (!canLocateOnMap() || m_set->isEmpty()) return {};
    const auto part = [&](const char16_t* column) {
        const QString text = m_set->fieldValue(column).toString().trimmed().replace(u' ', u'+');
        return QString::fromUtf8(QUrl::toPercentEncoding(text, "+"));
    };
    QString url = m_mappingUrl;
    url.replace(QStringLiteral("AXXX"), part(u"Address1"));
    url.replace(QStringLiteral("CXXX"), part(u"City"));
    url.replace(QStringLiteral("SXXX"), part(u"State"));
    url.replace(QStringLiteral("ZXXX"), part(u"ZIP"));
    return QUrl(url, QUrl::TolerantMode);
}

bool TFormAddressOverride::canPrintDirections() const
{
    return bool(m_directionsPrinter) && !m_set->isEmpty();
}

void TFormAddressOverride::ActionPrintDeliveryDirections()
{
    if (!canPrintDirections() || !saveQuestion() || m_set->isEmpty()) return;
    m_directionsPrinter(m_client.personId, m_set->fieldValue(u"RecordID").toLongLong());
}

void TFormAddressOverride::ActionDeleteAddress()
{
    if (m_set->isEmpty())
        return;
    if (m_services.ui().question(QStringLiteral("Delete the selected Address?"), Buttons::OkCancel) != Answer::Ok)
        return;
    // The posting rule stays out of the way of a row that is going.
    m_set->takeOff(DataSet::Hook::BeforePost);
    struct PutBack
    {
        DataSet& set;
        ~PutBack() { set.putBack(DataSet::Hook::BeforePost); }
    } putBack{*m_set};
    if (m_set->state() != DataSet::State::Browse)
        m_set->cancel();
    m_services.db().execute(QStringLiteral("Delete from Address_Overrides where RecordID = :RecordID"),
                            {{QStringLiteral("RecordID"), m_set->fieldValue(u"RecordID")}});
    m_set->refresh();
    householdReminder(QStringLiteral("This client is a member of a household. You may need to see if \r\nthe other "
                                     "household members have an alternate address \r\nwhich needs to be deleted."));
}

bool TFormAddressOverride::ActionLocateDate(const QDate& date)
{
    const std::optional<qint64> found = AddressOverrideRules::overrideOfDate(m_services.db(), m_client.personId, date);
    if (!found) {
        m_services.ui().information(QStringLiteral("There is no alternate address on file which is valid for that date."));
        return false;
    }
    m_set->checkBrowseMode();
    m_set->locate(QStringLiteral("RecordID"), *found);
    return true;
}

QDate TFormAddressOverride::locateDateDefault() const
{
    return m_services.db().clock().today();
}

bool TFormAddressOverride::close()
{
    if (!saveQuestion())
        return false;
    m_set->close();
    return true;
}

} // namespace kb
