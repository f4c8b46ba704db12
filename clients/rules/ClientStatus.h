#pragma once

#include <QList>
#include <QString>

namespace kb {

// The codes of Clients.STATUS and the words that History and the status
// list use for them.
namespace client_status {

inline const QString Active = QStringLiteral("A");
inline const QString Stopped = QStringLiteral("S");
inline const QString Inactive = QStringLiteral("I");
inline const QString WaitList = QStringLiteral("W");
inline const QString NeverStarted = QStringLiteral("N");

// "Active", "Stopped", "Inactive", "Wait List", "Never Started"; "No Status"
// for the empty code; the code itself for one the system does not know.
QString word(const QString& code);

struct Choice
{
    QString code;
    QString word;
};

// The statuses the user may choose, by the status on file and whether the
// person is a client (has a Client_ID). A person who never started can only
// go to active or the wait list, and a person without a client number can
// only be wait-listed; any other change is made by the new client wizard.
QList<Choice> choices(const QString& statusOnFile, bool isClient);

} // namespace client_status

} // namespace kb
