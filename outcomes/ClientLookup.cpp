#include "ClientLookup.h"

#include "store/Database.h"

namespace kb {

namespace {

const QString columns = QStringLiteral("Person_ID, Client_ID, Last_Name+', '+First_Name as Last_First, "
                                       "Address1, City, State, ZIP, Phone from Clients ");

// Longer texts find nothing more, and a pasted page of text stays harmless.
constexpr qsizetype longestText = 100;

ClientLookup::Row rowAt(const ResultSet& r, qsizetype i)
{
    return {r.value(i, 0).toLongLong(),         r.value(i, 1).toString().trimmed(),
            r.value(i, 2).toString().trimmed(), r.value(i, 3).toString().trimmed(),
            r.value(i, 4).toString().trimmed(), r.value(i, 5).toString().trimmed(),
            r.value(i, 6).toString().trimmed(), r.value(i, 7).toString().trimmed()};
}

// "Last, First" as typed: the part before the first comma and the rest.
std::pair<QString, QString> nameParts(const QString& text)
{
    const qsizetype comma = text.indexOf(u',');
    if (comma < 0) return {text.trimmed(), QString()};
    return {text.left(comma).trimmed(), text.mid(comma + 1).trimmed()};
}

} // namespace

ClientLookup::ClientLookup(Database& db, const QString& title) : m_db(db), m_title(title) {}

QStringList ClientLookup::searchChoices()
{
    return {QStringLiteral("Client Name"), QStringLiteral("Client ID")};
}

QStringList ClientLookup::columnCaptions()
{
    return {QStringLiteral("Name"), QStringLiteral("Client ID"), QStringLiteral("Address"),
            QStringLiteral("City"), QStringLiteral("State"),     QStringLiteral("ZIP"),
            QStringLiteral("Phone")};
}

QStringList ClientLookup::cells(const Row& row)
{
    return {row.lastFirst, row.clientId, row.address1, row.city, row.state, row.zip, row.phone};
}

QString ClientLookup::choiceText(const Row& row)
{
    return QStringLiteral("%1  [%2]").arg(row.lastFirst, row.clientId);
}

void ClientLookup::setSearchBy(SearchBy by)
{
    if (by == m_searchBy && !m_rows.empty()) return;
    m_searchBy = by;
    search(m_text);
}

void ClientLookup::search(const QString& text)
{
    m_text = text.left(longestText);
    m_limit = windowSize;
    read();
    m_current = m_rows.empty() ? -1 : 0;
}

void ClientLookup::fetchMore()
{
    if (!m_more) return;
    m_limit += windowSize;
    read();
}

void ClientLookup::setCurrent(int row)
{
    m_current = row >= 0 && row < int(m_rows.size()) ? row : -1;
}

std::optional<ClientLookup::Row> ClientLookup::choose()
{
    if (!okEnabled()) return std::nullopt;
    return m_rows[size_t(m_current)];
}

std::optional<ClientLookup::Row> ClientLookup::client(qint64 personId)
{
    const ResultSet r = m_db.execute(QStringLiteral("Select ") + columns +
                                         QStringLiteral("where Client_ID > '' and Person_ID = :Person_ID"),
                                     {{QStringLiteral("Person_ID"), personId}});
    if (r.isEmpty()) return std::nullopt;
    return rowAt(r, 0);
}

void ClientLookup::read()
{
    // Each read is one statement that starts at the text in the order of an
    // index of Clients (LAST_FIRST without regard to case, or CLIENT_ID) and
    // stops after the window; reading further re-reads from the same start.
    QString sql =
        QStringLiteral("Select Top %1 ").arg(m_limit + 1) + columns + QStringLiteral("where Client_ID > '' ");
    Params params;
    const QString text = m_text.trimmed();
    const auto [last, first] = nameParts(text);
    if (m_searchBy == SearchBy::ClientId) {
        if (!text.isEmpty()) {
            sql += QStringLiteral("and Client_ID >= :Client_ID ");
            params.emplace_back(QStringLiteral("Client_ID"), text);
        }
        sql += QStringLiteral("order by Client_ID, Person_ID");
    } else {
        if (!last.isEmpty() || !first.isEmpty()) {
            sql += QStringLiteral("and Lower(Last_Name) >= Lower(:Last) ");
            params.emplace_back(QStringLiteral("Last"), last);
        }
        if (!first.isEmpty()) {
            sql += QStringLiteral(
                "and not (Lower(Last_Name) = Lower(:Last) and Lower(First_Name) < Lower(:First)) ");
            params.emplace_back(QStringLiteral("First"), first);
        }
        sql += QStringLiteral("order by Last_Name NoCase, First_Name NoCase, Person_ID");
    }
    const ResultSet r = m_db.execute(sql, params);
    m_more = r.rowCount() > m_limit;
    const qsizetype count = std::min<qsizetype>(r.rowCount(), m_limit);
    m_rows.clear();
    m_rows.reserve(size_t(count));
    for (qsizetype i = 0; i < count; ++i)
        m_rows.push_back(rowAt(r, i));

    m_found = false;
    if (!m_rows.empty() && !text.isEmpty()) {
        const Row& top = m_rows.front();
        if (m_searchBy == SearchBy::ClientId) {
            m_found = top.clientId.startsWith(text, Qt::CaseInsensitive);
        } else {
            const auto [rowLast, rowFirst] = nameParts(top.lastFirst);
            m_found = first.isEmpty() ? rowLast.startsWith(last, Qt::CaseInsensitive)
                                      : rowLast.compare(last, Qt::CaseInsensitive) == 0 &&
                                            rowFirst.startsWith(first, Qt::CaseInsensitive);
        }
    }
}

} // namespace kb
