#pragma once

#include <QDate>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <utility>
#include <vector>

namespace kb {

class Database;
class UserInterface;
struct SessionState;

// "Episodic/Scheduled Client Information", opened from the credit list for
// the client of a row: the client's details and a check list of the
// client's dated events up to the credit date that are not yet credited,
// by date, each line ending in "[Record ID:n]". "&Delete" removes the
// checked events in one transaction, leaving a History row for each; the
// credit list is then prepared again by its screen.
class TFormViewEpisodicClientInfo
{
public:
    TFormViewEpisodicClientInfo(Database& db, const SessionState& session, UserInterface& ui, qint64 personId,
                                const QDate& through);

    static QString caption() { return QStringLiteral("Episodic/Scheduled Client Information"); }
    static QString listTitle()
    {
        return QStringLiteral("Select Uncredited Episodic and Scheduled Deliveries for Deletion");
    }
    // Asked before the checked events go, for good.
    static QString deleteQuestion(int count);
    // "Uncredited episodic delivery for 3/4/24 deleted"
    static QString deletedText(const QDate& date);
    // The RecordID written at the end of a line; 0 when the line has none.
    static qint64 recordIdOfLine(const QString& line);

    // Reads the client and the list again and unchecks every line. Throws
    // MessageError when the person is not on file.
    void FormShow();

    // The client's details as the screen shows them, caption and value:
    // name, address, default service, status, start and stop dates,
    // Client ID and Person ID.
    const std::vector<std::pair<QString, QString>>& details() const { return m_details; }
    const QDate& through() const { return m_through; }

    const QStringList& lines() const { return m_lines; }
    bool isChecked(int line) const { return m_checked.at(size_t(line)); }
    void setChecked(int line, bool checked);
    int checkedCount() const;

    // Whether "&Delete" may run: some line is checked and the user may change data.
    bool mayDelete() const;
    // "&Delete": asks first; true when the checked events are gone (the
    // screen then closes and the credit list is prepared again); false when
    // nothing was checked, the user may not change data or said No, or it
    // failed (the user was told why, and nothing was deleted).
    bool ActionDelete();
    int deleted() const { return m_deleted; }

private:
    // Removes one event inside the transaction of ActionDelete.
    void deleteEvent(qint64 recordId);

    Database& m_db;
    const SessionState& m_session;
    UserInterface& m_ui;
    qint64 m_personId;
    QDate m_through;
    QVariant m_clientId;
    std::vector<std::pair<QString, QString>> m_details;
    QStringList m_lines;
    std::vector<bool> m_checked;
    int m_deleted = 0;
};

} // namespace kb
