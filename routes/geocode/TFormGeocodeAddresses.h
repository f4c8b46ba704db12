#pragma once

#include "GeocodeMatch.h"

#include <QObject>
#include <QStringList>

#include <vector>

namespace kb {

class Database;
class UserInterface;
struct SessionState;

// "Find Coordinates for Addresses": looks up the addresses of clients
// without coordinates (or of one client), shows every answer with its
// quality and source, and makes the answers the user picks the clients'
// coordinates. Nothing is written without the user's word, and coordinates
// a client already has are replaced only after a question. Also keeps the
// address of the web geocoding service.
class TFormGeocodeAddresses : public QObject
{
    Q_OBJECT

public:
    TFormGeocodeAddresses(Database& db, const SessionState& session, UserInterface& ui, QObject* parent = nullptr);

    static QString caption() { return QStringLiteral("Find Coordinates for Addresses"); }
    // The grid's column titles and a match's values in them.
    static QStringList columnTitles();
    static QStringList columnValues(const GeocodeMatch& match);

    QString webAddress() const { return m_webAddress; }
    // Checks the address (http or https) and keeps it; empty turns the web service off.
    bool saveWebAddress(const QString& address);

    // The latest answers not yet accepted, newest first.
    const std::vector<GeocodeMatch>& matches() const { return m_matches; }

    void ActionLookUpMissing(bool activeOnly = true);
    void ActionLookUpClient(const QString& clientId);
    // Makes the answers of those rows the clients' coordinates.
    void ActionAccept(const QList<int>& rows);

signals:
    void changed();

private:
    void lookUp(const std::vector<qint64>& persons);
    void refresh();

    Database& m_db;
    const SessionState& m_session;
    UserInterface& m_ui;
    QString m_webAddress;
    std::vector<GeocodeMatch> m_matches;
};

} // namespace kb
