#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace kb {

class Database;

// The client look-up of the batch lists: a typed or scanned text found in
// one of the indexes of Clients, the way an incremental search lands on the
// first entry that begins with the text.
enum class ClientSearchBy { PersonId, ClientId, Phone, SocialSecurityNumber, ClientName };

// "Person ID", "Client ID", "Phone", "Social Security Number" and, where
// offered, "Client Name", in the enum's order.
QString clientSearchText(ClientSearchBy by);

// The Person_ID of the client found; none when no entry begins with the
// text. A Person ID must match whole; a client name is "Last, First", either
// part a beginning.
std::optional<qint64> findClient(Database& db, ClientSearchBy by, const QString& text);

} // namespace kb
