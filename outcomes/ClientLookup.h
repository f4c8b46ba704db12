#pragma once

#include <QString>

#include <vector>

namespace kb {

class Database;

// The clients offered by the outcome screens' client look-ups: every
// person with a Client_ID, by last and first name.
struct ClientChoice
{
    qint64 personId = 0;
    QString clientId;
    QString text; // "Last, First  [Client_ID]  Address1"
};

std::vector<ClientChoice> clientChoices(Database& db);

} // namespace kb
