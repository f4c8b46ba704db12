#pragma once

#include "ItemsFixture.h"
#include "dialogs/GivenRunDialogs.h"
#include "save/RunSaver.h"

#include <optional>

namespace kb::test {

// Deliveri, MealCrdt (without its own RecordID), Special_Diets, the
// Fulfilled marks of EpisodicDeliveries and IDNOS, as text: everything a save
// may change.
QString savedRunFingerprint(Database& db);

// The items fixture with the run screen's other dialogs answered by the
// test, and what a test of a save looks at: the stored rows of a date, the
// counter, and a fingerprint of everything a save may change.
class SaveFixture : public ItemsFixture
{
protected:
    SaveFixture();

    // Prepares the date for the delivery type letter and saves it.
    std::optional<SaveResult> save(const QDate& date, QChar letter = u'A');
    // The date's Deliveri rows by Deliv_ID, then Person_ID.
    ResultSet deliveries(const QDate& date);
    // The date's MealCrdt rows by Deliv_ID, then Sort_Order.
    ResultSet mealCrdt(const QDate& date);
    // What the user was told as errors, for a failed expectation's message.
    std::string errors() const;
    QVariant idnos();
    void setIdnos(const QVariant& value);
    QString fingerprint() { return savedRunFingerprint(db()); }
    // A column of the row of a person whose Delivery_Type starts with type.
    static QVariant column(const ResultSet& rows, int person, const QString& name, QChar type = u'O');

    GivenRunDialogs dialogs;
};

} // namespace kb::test
