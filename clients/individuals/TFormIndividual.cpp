#include "individuals/TFormIndividual.h"

#include "Clock.h"
#include "UserInterface.h"
#include "dataset/DataSet.h"
#include "store/Database.h"

namespace kb {

namespace {

QString text(const DataSet& set, const char* column)
{
    return set.fieldValue(QString::fromLatin1(column)).toString().trimmed();
}

QString joined(const QStringList& parts, const QString& separator)
{
    QStringList kept;
    for (const QString& part : parts)
        if (!part.trimmed().isEmpty()) kept.append(part.trimmed());
    return kept.join(separator);
}

} // namespace

TFormIndividual::TFormIndividual(DataSet& individuals, UserInterface& ui, const Clock& clock,
                                 QString userName, const QString& postalFormat)
    : m_individuals(individuals), m_ui(ui), m_clock(clock), m_userName(std::move(userName)),
      m_postal(individualPostalForm(postalFormat))
{
}

const std::vector<TFormIndividual::Field>& TFormIndividual::fields()
{
    static const std::vector<Field> list = {
        {QStringLiteral("SALUTATION"), QStringLiteral("Salutation:")},
        {QStringLiteral("FIRST_NAME"), QStringLiteral("First Name:")},
        {QStringLiteral("LAST_NAME"), QStringLiteral("Last Name:")},
        {QStringLiteral("ORGANIZATION"), QStringLiteral("Organization:")},
        {QStringLiteral("ADDRESS1"), QStringLiteral("Address:")},
        {QStringLiteral("ADDRESS2"), QStringLiteral("Address 2:")},
        {QStringLiteral("CITY"), QStringLiteral("City")},
        {QStringLiteral("STATE"), QStringLiteral("State")},
        {QStringLiteral("ZIP"), QStringLiteral("ZIP")},
        {QStringLiteral("PHONE1_DESC"), QStringLiteral("Phone 1:")},
        {QStringLiteral("PHONE1"), QStringLiteral("Phone 1 Number")},
        {QStringLiteral("PHONE2_DESC"), QStringLiteral("Phone 2:")},
        {QStringLiteral("PHONE2"), QStringLiteral("Phone 2 Number")},
        {QStringLiteral("EMAIL"), QStringLiteral("E-Mail:")},
        {QStringLiteral("MISC_INFO"), QStringLiteral("Other Information:")},
    };
    return list;
}

void TFormIndividual::Add()
{
    m_individuals.append();
    m_individuals.setFieldValue(u"CREATE_DATE", m_clock.today());
    m_individuals.setFieldValue(u"USER", m_userName);
}

void TFormIndividual::Edit()
{
    if (m_individuals.state() == DataSet::State::Browse) m_individuals.edit();
}

QVariant TFormIndividual::value(const QString& column) const
{
    return m_individuals.fieldValue(column);
}

void TFormIndividual::setValue(const QString& column, const QVariant& value)
{
    Edit();
    m_individuals.setFieldValue(column, value);
}

void TFormIndividual::zipLeft(Database& db)
{
    if (!m_postal.zipLookUp) return;
    const QString zip = value(QStringLiteral("ZIP")).toString().trimmed().left(5);
    if (zip.isEmpty()) return;
    const ResultSet row = db.execute(QStringLiteral("Select City, St from Zips where Zip = :Zip"),
                                     {{QStringLiteral("Zip"), zip}});
    if (row.rowCount() == 0) return;
    setValue(QStringLiteral("CITY"), row.value(0, 0).toString().trimmed());
    setValue(QStringLiteral("STATE"), row.value(0, 1).toString().trimmed());
}

bool TFormIndividual::ask(const QString& question)
{
    return m_ui.question(question, Buttons::YesNo) == Answer::Yes;
}

int TFormIndividual::ImportClient(const DataSet& client)
{
    if (!client.isActive() || client.isEmpty()) return 0;
    Edit();
    int copied = 0;
    const QString current = joined(
        {value(QStringLiteral("FIRST_NAME")).toString(), value(QStringLiteral("LAST_NAME")).toString()},
        QStringLiteral(" "));
    const QString clientName =
        joined({text(client, "FIRST_NAME"), text(client, "LAST_NAME")}, QStringLiteral(" "));
    if (ask(QStringLiteral("You are about to replace the current Individual's name (") + current +
            QStringLiteral(") with \r\n") + clientName +
            QStringLiteral("!\r\nIs that what you want to do?"))) {
        setValue(QStringLiteral("FIRST_NAME"), text(client, "FIRST_NAME"));
        setValue(QStringLiteral("LAST_NAME"), text(client, "LAST_NAME"));
        ++copied;
    }
    const QString address = joined(
        {text(client, "ADDRESS1"), text(client, "ADDRESS2"),
         joined({text(client, "CITY"), text(client, "STATE"), text(client, "ZIP")}, QStringLiteral(" "))},
        QStringLiteral("\r\n"));
    if (ask(QStringLiteral("You are about to replace the current Individual's address with \r\n") + address +
            QStringLiteral("\r\nIs that what you want to do?"))) {
        for (const char* column : {"ADDRESS1", "ADDRESS2", "CITY", "STATE", "ZIP"})
            setValue(QString::fromLatin1(column), text(client, column));
        ++copied;
    }
    if (ask(QStringLiteral("You are about to replace the current Individual's phone and \r\nemail "
                           "entries!\r\nIs that what you want to do?"))) {
        setValue(QStringLiteral("PHONE1_DESC"), individualPhoneWord(text(client, "PHONE_DESC")));
        setValue(QStringLiteral("PHONE1"), text(client, "PHONE"));
        setValue(QStringLiteral("PHONE2_DESC"), individualPhoneWord(text(client, "ODESC")));
        setValue(QStringLiteral("PHONE2"), text(client, "OPHONE"));
        setValue(QStringLiteral("EMAIL"), text(client, "EMAIL"));
        ++copied;
    }
    return copied;
}

void TFormIndividual::Ok()
{
    if (m_individuals.state() != DataSet::State::Edit && m_individuals.state() != DataSet::State::Insert)
        return;
    m_individuals.setFieldValue(u"LAST_UPDATED", m_clock.now());
    m_individuals.setFieldValue(u"USER", m_userName);
    m_individuals.post();
}

void TFormIndividual::Cancel()
{
    if (m_individuals.state() == DataSet::State::Edit || m_individuals.state() == DataSet::State::Insert)
        m_individuals.cancel();
}

} // namespace kb
