#pragma once

#include "store/ResultSet.h"

#include <QString>

namespace kb {

class Database;

// "User Login Activity": the sign-ins and sign-outs of the last days, by
// user and newest first.
class TFormDisplayLogins
{
public:
    explicit TFormDisplayLogins(Database& db);

    static QString caption() { return QStringLiteral("User Login Activity"); }
    static const QString& statementText();

    int pastDays() const { return m_pastDays; }
    void setPastDays(int days) { m_pastDays = days; }

    // Refresh: reads the list again for the current number of days.
    void refresh();
    // Columns Event, Tran_Date, User, Action; the screen shows User, Action
    // and Tran_Date (as "Date/Time").
    const ResultSet& rows() const { return m_rows; }

private:
    Database& m_db;
    int m_pastDays = 1;
    ResultSet m_rows;
};

} // namespace kb
