#include "individuals/TFormRelationship.h"

#include "Clock.h"
#include "MessageError.h"
#include "UserInterface.h"
#include "records/RecordServices.h"
#include "settings/ConfigRecord.h"

namespace kb {

namespace {

const QString BillTo = QStringLiteral("Bill-To");

QStringList memoLines(const QString& memo)
{
    QStringList lines;
    for (const QString& line :
         QString(memo).replace(QStringLiteral("\r\n"), QStringLiteral("\n")).split(u'\n'))
        if (!line.trimmed().isEmpty()) lines.append(line.trimmed());
    return lines;
}

bool editing(const DataSet& set)
{
    return set.state() == DataSet::State::Edit || set.state() == DataSet::State::Insert;
}

} // namespace

TFormRelationship::TFormRelationship(RecordServices& services, UserInterface& ui, const Clock& clock,
                                     QString userName, qint64 personId)
    : m_services(services), m_ui(ui), m_clock(clock), m_userName(std::move(userName)), m_personId(personId),
      m_relationships(
          services.db(),
          QStringLiteral("select * from Relationships where Person_ID = :Person_ID order by RecordID")),
      m_individual(services.db(), QStringLiteral("select * from Individuals where Indiv_ID = :Indiv_ID"))
{
    const ConfigRecord config = ConfigRecord::read(services.db());
    m_choices = memoLines(config.text(QStringLiteral("RELATIONSHIP_LIST")));
    if (!m_choices.contains(BillTo, Qt::CaseInsensitive)) m_choices.append(BillTo);
    m_awareLabel = config.text(QStringLiteral("AWARE_LABEL")).trimmed();
    if (m_awareLabel.isEmpty()) m_awareLabel = QStringLiteral("Relation is aware of client's medical status");
    m_postalFormat = config.text(QStringLiteral("POSTAL_FORMAT"));
    m_postal = individualPostalForm(m_postalFormat);
    m_individuals = kb::individualChoices(services.db());

    m_relationships.setRequestLive(true);
    m_relationships.setParam(QStringLiteral("Person_ID"), personId);
    m_individual.setRequestLive(true);
    services.installErrorHooks(m_relationships);
    services.installErrorHooks(m_individual);
    m_relationships.setHook(DataSet::Hook::BeforePost, [](DataSet& set) { GenericDatasetBeforePost(set); });
}

void TFormRelationship::EditRelationships(Mode mode, qint64 recordId)
{
    m_relationships.open();
    if (mode == Mode::Add) {
        m_relationships.append();
        m_relationships.setFieldValue(u"Person_ID", m_personId);
        m_relationships.setFieldValue(u"Referrer", false);
        m_relationships.setFieldValue(u"HIV_Aware", false);
        m_relationships.setFieldValue(u"Emergency_Contact", false);
        m_relationships.setFieldValue(u"User", m_userName.left(25));
        m_relationships.setFieldValue(u"Create_Date", m_clock.today());
        m_relationships.setFieldValue(u"Last_Updated", m_clock.today());
        setIndividual(0);
        return;
    }
    if (!m_relationships.locate(QStringLiteral("RecordID"), recordId)) throw MessageError(locateFailedText());
    m_relationships.edit();
    setIndividual(m_relationships.fieldValue(u"Indiv_ID").toLongLong());
}

QVariant TFormRelationship::value(const QString& column) const
{
    return m_relationships.fieldValue(column);
}

void TFormRelationship::setValue(const QString& column, const QVariant& value)
{
    m_relationships.setFieldValue(column, value);
}

qint64 TFormRelationship::indivId() const
{
    return m_relationships.fieldValue(u"Indiv_ID").toLongLong();
}

void TFormRelationship::setIndividual(qint64 indivId)
{
    m_individualForm.reset();
    m_individual.close();
    if (editing(m_relationships) && indivId != this->indivId())
        m_relationships.setFieldValue(u"Indiv_ID", indivId > 0 ? QVariant(indivId) : QVariant());
    if (indivId <= 0) return;
    m_individual.setParam(QStringLiteral("Indiv_ID"), indivId);
    m_individual.open();
    if (m_individual.isEmpty()) {
        m_individual.close();
        return;
    }
    m_individualForm =
        std::make_unique<TFormIndividual>(m_individual, m_ui, m_clock, m_userName.left(20), m_postalFormat);
}

QVariant TFormRelationship::individualValue(const QString& column) const
{
    return hasIndividual() ? m_individual.fieldValue(column) : QVariant();
}

void TFormRelationship::setIndividualValue(const QString& column, const QVariant& value)
{
    if (m_individualForm) m_individualForm->setValue(column, value);
}

void TFormRelationship::individualZipLeft()
{
    if (m_individualForm) m_individualForm->zipLeft(m_services.db());
}

bool TFormRelationship::Ok()
{
    if (value(QStringLiteral("Relationship")).toString().trimmed().isEmpty() || indivId() <= 0) {
        m_ui.warning(requiredText());
        return false;
    }
    if (m_individualForm && editing(m_individual)) {
        if (m_individual.isModified())
            m_individualForm->Ok();
        else
            m_individual.cancel();
    }
    if (editing(m_relationships)) m_relationships.post();
    return true;
}

void TFormRelationship::Cancel()
{
    if (m_individualForm) m_individualForm->Cancel();
    if (editing(m_relationships)) m_relationships.cancel();
}

bool TFormRelationship::DeleteRelationship(RecordServices& services, UserInterface& ui, qint64 recordId)
{
    if (ui.question(deleteQuestion(), Buttons::YesNo) != Answer::Yes) return false;
    QueryDataSet row(services.db(), QStringLiteral("select * from Relationships where RecordID = :RecordID"));
    row.setRequestLive(true);
    row.setParam(QStringLiteral("RecordID"), recordId);
    services.installErrorHooks(row);
    row.open();
    if (!row.locate(QStringLiteral("RecordID"), recordId)) throw MessageError(deleteLocateFailedText());
    row.remove();
    return true;
}

} // namespace kb
