#pragma once

#include <QDate>
#include <QString>

#include <functional>

namespace kb {

class Clock;
class DataSet;
class RecordServices;
class SettingsFile;
class TFormAddSuspension;
class UserInterface;
struct SessionState;

// Adding, editing and deleting a client's suspensions with their
// follow-ups: the contract stop date pushed out or pulled in by the days
// the client is not served, the same suspension for the other members of
// the household, and the scheduled deliveries that fall inside it.
//
// It works on a live QuerySuspends set carrying SuspensionRules and on a
// Clients set carrying the client rules, whose current row is the client.
// An addition or edit has no transaction of its own: each post stands by
// itself (a caller that wants all or nothing runs it inside one). A
// deletion runs in one transaction, with the transaction mark shown.
class SuspensionEditor
{
public:
    // Shows "Service Suspension" over the row; true when closed with OK.
    using ShowForm = std::function<bool(TFormAddSuspension&)>;
    // The client window's "In Transaction" mark.
    using TransactionMark = std::function<void(bool)>;

    enum class Mode { Add, Edit };

    SuspensionEditor(RecordServices& services, UserInterface& ui, const SessionState& session,
                     const Clock& clock, DataSet& clients, DataSet& suspends);

    void setShowForm(ShowForm show) { m_showForm = std::move(show); }
    void setUserSettings(SettingsFile* settings) { m_userSettings = settings; }
    void setTransactionMark(TransactionMark mark) { m_transactionMark = std::move(mark); }

    // EditHolds: appends a row (Add) or edits the current one (Edit; with
    // no row nothing happens), shows the form and saves the row, then the
    // follow-ups. True when the row was saved. A failure after the form
    // opened is shown as its own text and ends the flow (false).
    bool EditHolds(Mode mode);
    // DeleteSuspension1Click: asks first; true when the row was deleted.
    // A failure rolls everything back and is shown.
    bool DeleteSuspension1Click();

    // The RecordID of the row saved last by EditHolds; 0 when none.
    qint64 savedRecordId() const { return m_savedRecordId; }
    // The Group_ID given to a household's suspension by the last EditHolds; 0 when none.
    qint64 groupId() const { return m_groupId; }

    static QString addErrorText()
    {
        return QStringLiteral("An error has occurred while adding the Suspension: ");
    }
    static QString extendQuestion(int days);
    static QString reduceQuestion(int days);
    // "Contract Stop extended by 2 days, now 3/20/2024"
    static QString contractEvent(int change, const QDate& newDate);
    static QString householdAddQuestion()
    {
        return QStringLiteral("This client is a member of a household. Should the same \r\nsuspension be "
                              "created for the other household members?");
    }
    static QString householdEditNotice()
    {
        return QStringLiteral("This client is a member of a household. You may want to see if \r\nthe other "
                              "members will also require the same change to a suspension.");
    }
    static QString scheduledNotice()
    {
        return QStringLiteral(
            "There is at least one Scheduled Delivery that falls within the period of this "
            "suspension.\r\nYou may want to see if any Scheduled Deliveries need to be edited "
            "or deleted.");
    }
    static QString deleteQuestion() { return QStringLiteral("Delete the selected Suspension?"); }
    static QString householdDeleteQuestion()
    {
        return QStringLiteral("This client is a member of a household. Should the same suspension be deleted "
                              "for the other members \r\nof this household?");
    }
    static QString changedDatesNotice(const QString& firstName, const QString& lastName);
    static QString householdDeleteReminder()
    {
        return QStringLiteral(
            "This client is a member of a household. You may want to see if \r\nother members "
            "of the same household need to have a \r\nsuspension deleted.");
    }
    // QueryInsertSuspension.
    static QString insertStatement();

private:
    void afterSave(bool added, int oldSpan, const QDate& oldStop, const QDate& oldResume);
    // Asks about the contract stop date and moves it by change days on Yes.
    void adjustContract(int change);
    void suspendHousehold(qint64 householdId, qint64 personId);
    void deleteGroup(qint64 groupId, const QDate& stop, const QDate& resume);
    void checkScheduledDeliveries(qint64 personId, const QDate& stop, const QDate& resume);
    void mark(bool on);

    RecordServices& m_services;
    UserInterface& m_ui;
    const SessionState& m_session;
    const Clock& m_clock;
    DataSet& m_clients;
    DataSet& m_suspends;
    ShowForm m_showForm;
    SettingsFile* m_userSettings = nullptr;
    TransactionMark m_transactionMark;
    qint64 m_savedRecordId = 0;
    qint64 m_groupId = 0;
};

} // namespace kb
