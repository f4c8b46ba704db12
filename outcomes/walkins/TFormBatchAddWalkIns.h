#pragma once

#include "ClientSearch.h"
#include "walkins/WalkIn.h"

#include <QDate>
#include <QObject>
#include <QStringList>
#include <QTimer>

#include <vector>

namespace kb {

class Database;
class UserInterface;
struct SessionState;

// "Record Walk-In Visits": a list of clients who came to a centre, each with
// the date, service and route it is recorded under; "Record Walk-Ins" writes
// them as walk-in events for the credit screen to turn into deliveries.
class TFormBatchAddWalkIns : public QObject
{
    Q_OBJECT

public:
    TFormBatchAddWalkIns(Database& db, const SessionState& session, UserInterface& ui,
                         QObject* parent = nullptr);

    static QString caption() { return QStringLiteral("Record Walk-In Visits"); }

    // "Service Date:", today to begin with, within a year either side.
    QDate date() const { return m_date; }
    bool setDate(const QDate& date);
    QString weekdayName() const;
    // "Route/Center:"; empty takes each client's own route.
    const QString& route() const { return m_route; }
    void setRoute(const QString& route) { m_route = route.trimmed().left(5); }
    // "Service:": the delivery services as "description   [id]"; -1 chooses
    // none (each client's own service).
    const QStringList& serviceChoices() const { return m_services; }
    int serviceIndex() const { return m_serviceIndex; }
    void setServiceIndex(int index);
    // The number between the brackets of the chosen entry; 0 for none.
    qint64 chosenService() const;

    // "Person ID" (the default), "Client ID", "Phone", "Social Security
    // Number", "Client Name".
    static QStringList searchChoices();
    ClientSearchBy searchBy() const { return m_searchBy; }
    void setSearchBy(ClientSearchBy by);
    const QString& searchText() const { return m_searchText; }
    void setSearchText(const QString& text);
    bool complimentary() const { return m_comp; }
    void setComplimentary(bool comp) { m_comp = comp; }
    bool scannerMode() const { return m_scanner; }
    void setScannerMode(bool on);

    // "Add to List": the client found, if eligible or confirmed, goes on the
    // list with the screen's date, service and route.
    void ActionAddToList();
    const std::vector<WalkIn>& walkIns() const { return m_list; }
    // An edit of a line in the list; a line left without a person, a date or
    // a service is deleted.
    void editLine(int row, const QDate& date, qint64 service, const QString& route,
                  const QString& deliveryType, bool comp);
    void ActionRemove(int row);
    // "Record Walk-Ins": the number of events recorded.
    qint64 ActionRecordWalkIns();
    // Closing with lines in the list asks whether to record them first;
    // true when the screen may close.
    bool FormCloseQuery();

signals:
    void stateChanged();
    void focusSearch();
    // A refusal in scanner mode: the view sounds the warning beep.
    void beep();

private:
    void refused();

    Database& m_db;
    const SessionState& m_session;
    UserInterface& m_ui;
    QDate m_date;
    QString m_route;
    QStringList m_services;
    int m_serviceIndex = -1;
    ClientSearchBy m_searchBy = ClientSearchBy::PersonId;
    QString m_searchText;
    bool m_comp = false;
    bool m_scanner = false;
    QTimer m_scanTimer;
    std::vector<WalkIn> m_list;
    bool m_recorded = false;
};

} // namespace kb
