#pragma once

#include <QDate>
#include <QString>
#include <QStringList>
#include <QVariant>

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
};

} // namespace kb
