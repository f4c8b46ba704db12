#pragma once

#include "dataset/QueryDataSet.h"
#include "individuals/IndividualForms.h"
#include "individuals/TFormIndividual.h"

#include <QString>
#include <QStringList>

#include <memory>

namespace kb {

class Clock;
class RecordServices;
class UserInterface;

// "Relationship": one row of Relationships of a client, with the related
// individual's own fields beside it, edited in one screen. OK needs both
// the relationship's name and an individual and saves both rows; Cancel
// leaves both as they were. The individual stays one row however many
// clients point at it, so a change made here shows for all of them.
class TFormRelationship
{
public:
    enum class Mode { Add, Edit };

    TFormRelationship(RecordServices& services, UserInterface& ui, const Clock& clock, QString userName,
                      qint64 personId);

    static QString caption() { return QStringLiteral("Relationship"); }
    static QString individualLabel() { return QStringLiteral("Related Individual ID:"); }
    static QString requiredText()
    {
        return QStringLiteral(
            "A required field (either the Relationship or Individual ID) has been left blank!");
    }
    static QString locateFailedText()
    {
        return QStringLiteral(" Error locating the Relationship by RecordID. ");
    }
    static QString deleteQuestion() { return QStringLiteral("Delete the selected Relationship?"); }
    static QString deleteLocateFailedText()
    {
        return QStringLiteral(" Error locating the current Relationship by RecordID. ");
    }

    // The one routine for adding and editing: Add appends a row with its
    // defaults; Edit stands on the row with the RecordID and throws
    // MessageError(locateFailedText()) when it is not there.
    void EditRelationships(Mode mode, qint64 recordId = 0);

    // The configuration's relationship names, "Bill-To" always among them.
    const QStringList& relationshipChoices() const { return m_choices; }
    // The label of the HIV_Aware flag.
    const QString& awareLabel() const { return m_awareLabel; }
    const std::vector<IndividualChoice>& individualChoices() const { return m_individuals; }
    const IndividualPostalForm& postalForm() const { return m_postal; }

    // Relationship, Note, Referrer, HIV_Aware, Emergency_Contact.
    QVariant value(const QString& column) const;
    void setValue(const QString& column, const QVariant& value);

    qint64 indivId() const;
    // The individual chosen by the look-up; its fields then show and can be
    // edited. A change of individual drops what was typed into the former one.
    void setIndividual(qint64 indivId);
    bool hasIndividual() const { return m_individual.isActive() && !m_individual.isEmpty(); }
    // The chosen individual's fields (TFormIndividual::fields()).
    QVariant individualValue(const QString& column) const;
    void setIndividualValue(const QString& column, const QVariant& value);
    void individualZipLeft();

    // False, with the reason told, when a required field is blank (the
    // screen stays); otherwise saves the individual and the relationship.
    // Throws what a post refused.
    bool Ok();
    void Cancel();

    // "Delete the selected Relationship?" and the row with the RecordID
    // deleted; the individual stays. False when the user said No.
    static bool DeleteRelationship(RecordServices& services, UserInterface& ui, qint64 recordId);

    QueryDataSet& relationships() { return m_relationships; }
    QueryDataSet& individual() { return m_individual; }

private:
    RecordServices& m_services;
    UserInterface& m_ui;
    const Clock& m_clock;
    QString m_userName;
    qint64 m_personId;
    QStringList m_choices;
    QString m_awareLabel;
    IndividualPostalForm m_postal;
    QString m_postalFormat;
    std::vector<IndividualChoice> m_individuals;
    QueryDataSet m_relationships;
    QueryDataSet m_individual;
    std::unique_ptr<TFormIndividual> m_individualForm;
};

} // namespace kb
