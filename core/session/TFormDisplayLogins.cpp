#include "session/TFormDisplayLogins.h"

#include "store/Database.h"

namespace kb {

TFormDisplayLogins::TFormDisplayLogins(Database& db) : m_db(db) {}

const QString& TFormDisplayLogins::statementText()
{
    static const QString text = QStringLiteral(
        "select event, tran_date, User, if(Pos('into' in Event) > 0 then 'Logged In' else 'Logged Out') as Action "
        "from History where ((event like '%logged into%') or (event like '%logged out%')) and Tran_Date > "
        "(Current_Date - :nPast_Days) order by User, Tran_Date descending nocase");
    return text;
}

void TFormDisplayLogins::refresh()
{
    m_rows = m_db.execute(statementText(), {{QStringLiteral("nPast_Days"), m_pastDays}});
}

} // namespace kb
