#pragma once

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace kb {

class Database;

// The client look-up of the outcome screens: a dialog over every person
// with a Client_ID, by last and first name, that finds a client by name or
// by number. A large agency has tens of thousands of clients, so the list
// never holds them all: each search reads one window of clients from the
// index of its key, beginning where the typed text stands, and scrolling
// past the end reads the next.
class ClientLookup
{
public:
    enum class SearchBy { ClientName, ClientId };

    struct Row
    {
        qint64 personId = 0;
        QString clientId;
        QString lastFirst; // "Last, First"
        QString address1;
        QString city;
        QString state;
        QString zip;
        QString phone;
    };

    // Clients read by one search or one further window.
    static constexpr int windowSize = 100;

    ClientLookup(Database& db, const QString& title);

    const QString& title() const { return m_title; }
    // "Client Name" and "Client ID", in the order of SearchBy.
    static QStringList searchChoices();
    static QStringList columnCaptions();
    // A row's cells in the order of columnCaptions().
    static QStringList cells(const Row& row);
    // How a chosen client stands in the screen's field: "Last, First  [C11]".
    static QString choiceText(const Row& row);

    SearchBy searchBy() const { return m_searchBy; }
    // Changing the key searches again with the same text.
    void setSearchBy(SearchBy by);
    const QString& searchText() const { return m_text; }
    // The clients at and after the text in the order of the key: a name is
    // "Last, First", either part a beginning; a number a beginning of the
    // Client_ID. The first row becomes the current one.
    void search(const QString& text);
    // True when the rows found begin with the text (and not merely follow it).
    bool found() const { return m_found; }

    const std::vector<Row>& rows() const { return m_rows; }
    // The last read filled its window, so more clients may follow.
    bool canFetchMore() const { return m_more; }
    void fetchMore();

    int current() const { return m_current; }
    void setCurrent(int row);
    bool okEnabled() const { return m_current >= 0 && m_current < int(m_rows.size()); }
    // The current row as the choice; none when nothing is current.
    std::optional<Row> choose();

    // One client of the look-up by Person_ID; none for an unknown person or
    // one without a Client_ID.
    std::optional<Row> client(qint64 personId);

private:
    void read();

    Database& m_db;
    QString m_title;
    SearchBy m_searchBy = SearchBy::ClientName;
    QString m_text;
    std::vector<Row> m_rows;
    int m_limit = windowSize;
    bool m_more = false;
    bool m_found = false;
    int m_current = -1;
};

} // namespace kb
