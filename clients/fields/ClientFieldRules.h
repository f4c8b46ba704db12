#pragma once

#include "fields/CardNumber.h"
#include "rules/ClientConfig.h"

#include <QDate>
#include <QString>

namespace kb {

class DataSet;
class Database;
class UserInterface;

// The rules that act while a client's fields are being edited, for the
// client window to ask: which boxes are enabled, what a field fills in when
// it is left, how the social security number is shown, and how masked
// entries and card numbers are checked. Fields are those of a Clients data
// set; the settings are read once, when the rules are made.
class ClientFieldRules
{
public:
    ClientFieldRules(Database& db, UserInterface& ui);
    ClientFieldRules(Database& db, UserInterface& ui, ClientConfig config);

    const ClientConfig& config() const { return m_config; }

    // A weekday box (0 Monday ... 6 Sunday) is enabled for an active client
    // on the days the agency delivers.
    bool isDayEnabled(const DataSet& clients, int weekday) const;

    // The diet check list is disabled when the agency allows no diet
    // modification at all.
    bool isDietListEnabled() const { return m_config.maxDietModifications > 0; }
    // A diet was checked, giving `checked` checked diets: false, after
    // telling the user, when that is more than allowed and the check must
    // be taken back.
    bool acceptDietCheck(int checked) const;

    // The latest date the start and stop date pickers offer: the
    // contractual stop date, unless the agency allows bypassing contract
    // dates. No date when there is no limit.
    QDate latestServiceDate(const DataSet& clients) const;
    // Leaving a contractual date fills an empty start or stop date with it.
    void contractualStartLeft(DataSet& clients) const;
    void contractualStopLeft(DataSet& clients) const;
    // The stop code and reason are enabled for a client with a stop date.
    bool isStopReasonEnabled(const DataSet& clients) const;

    // Leaving the postal code: the city, state and county of its first five
    // characters, when Zips knows them. True when they were filled.
    bool zipLeft(DataSet& clients) const;

    // "Get Bag Code": the cold bag of the client's whole diet mask. False,
    // after telling the user, when no bag is on file for it.
    bool GetBagCode(DataSet& clients) const;

    // The social security number as shown: masked by the postal format,
    // and in full while the record is being edited or inserted.
    QString socialSecurityText(const DataSet& clients) const;
    static QString maskedSocialSecurity(const QString& number, const QString& postalFormat);

    // The entry mask of a field by the postal format: ZIP, PHONE and OPHONE,
    // SOCIAL_SECURITY_NUMBER; empty for a field without one.
    QString entryMask(const QString& field) const;
    // Checks a masked field's entry when it is left; false, after telling
    // the user, when it is not a whole value of the mask. An empty entry
    // passes.
    bool checkEntry(const QString& field, const QString& entry) const;
    // The card number when its entry is complete: the field is marked when
    // the check returns marked(). An entry that is not a whole number is
    // told to the user.
    CardNumberCheck checkCardNumber(const QString& entry) const;

private:
    Database& m_db;
    UserInterface& m_ui;
    ClientConfig m_config;
};

} // namespace kb
