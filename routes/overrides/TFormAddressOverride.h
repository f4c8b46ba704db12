#pragma once

#include <QDate>
#include <QString>
#include <QStringList>
#include <QUrl>
#include <QVariant>

#include <functional>
#include <memory>

namespace kb {

class QueryDataSet;
class RecordServices;
class UserInterface;
struct SessionState;

// "Address Overrides": the alternate addresses of one client. A grid to
// move through them and the current row's fields below, shown by the row's
// type. The posting rule hangs on the data set's before-post hook, so every
// post, from any command, goes through it.
class TFormAddressOverride
{
public:
    struct Client
    {
        qint64 personId = 0;
        QString clientId;
        qint64 householdId = 0;
    };

    TFormAddressOverride(RecordServices& services, const SessionState& session, Client client);
    ~TFormAddressOverride();

    static QString caption() { return QStringLiteral("Address Overrides"); }
    static QString gridHint() { return QStringLiteral("This grid is used to navigate. Edit addresses below."); }

    QueryDataSet& dataSet() { return *m_set; }
    // With no rows every field is disabled.
    bool fieldsEnabled() const;
    // Whether the current row's type shows a column's field.
    bool isShown(const QString& column) const;
    // Chooses the row's type and empties the columns it does not use.
    void setType(const QString& type);
    // "City State Zip:", or "City Prov Postal:" and "Town / Postcode:" by the postal format.
    QString cityLabel() const;
    // The description choices: Config.ADDR_OVERRIDE_DESC, one a line, and "Mailing Address".
    QStringList descriptionChoices() const;

    void ActionAddAddress();
    void ActionDuplicateAddress();
    void ActionDeleteAddress();
    // Moves to the address that applies on the date; false (the user told) when none does.
    bool ActionLocateDate(const QDate& date);
    // The date "Locate Address" offers first: today by the agency's clock.
    QDate locateDateDefault() const;

    // Leaving the postal code: the city and state of Zips fill City and
    // State, as on the client's screen. True when they were filled.
    bool zipLeft();

    // "Locate address on map": the web map of Config.MAPPING_URL with the
    // row's address, city, state and postal code put in for "AXXX", "CXXX",
    // "SXXX" and "ZXXX" (blanks as "+"), when the agency maps on the web
    // (Config.MAPPING "Q"). Empty otherwise, or with no row.
    QUrl mappedAddressUrl() const;
    bool canLocateOnMap() const { return m_mapping == QLatin1String("Q") && !m_mappingUrl.isEmpty(); }

    // "Print Delivery Directions": prints the directions to the current
    // address, through what the desktop sets (it asks the date and the
    // destination). An unposted row is asked about first, as on Duplicate.
    using DirectionsPrinter = std::function<void(qint64 personId, qint64 recordId)>;
    void setDirectionsPrinter(DirectionsPrinter printer) { m_directionsPrinter = std::move(printer); }
    bool canPrintDirections() const;
    void ActionPrintDeliveryDirections();
    // Closing with an unposted row asks whether to save it; false when the
    // post was refused and the screen stays open.
    bool close();

private:
    void insertNew();
    void householdReminder(const QString& text);
    bool saveQuestion();

    RecordServices& m_services;
    const SessionState& m_session;
    Client m_client;
    std::unique_ptr<QueryDataSet> m_set;
    QString m_postalFormat;
    QString m_mapping;
    QString m_mappingUrl;
    DirectionsPrinter m_directionsPrinter;
};

} // namespace kb
