#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace kb {

class Database;

// How the address of an individual is entered, by Config.POSTAL_FORMAT:
// the label of the city line, whether the ZIP fills city and state from
// the ZIP table, the pattern of a free postal code, and the phone mask.
struct IndividualPostalForm
{
    QString cityLabel;
    bool zipLookUp = false;
    QString postalPattern; // empty: free text
    QString phoneMask;     // empty: free text
};

IndividualPostalForm individualPostalForm(const QString& format);

// The words an individual's phone descriptions are chosen from, and the
// word for a client's one-letter phone code (empty for an unknown code).
const QStringList& individualPhoneWords();
QString individualPhoneWord(const QString& code);

// "First Last", ", Organization" behind it when both are filled, or the
// organization alone when there is no name.
QString individualDisplayName(const QString& first, const QString& last, const QString& organization);

// The individuals to choose from, as "Last, First (Organization)   [Indiv_ID]"
// in name order; the key is read back from between the brackets.
struct IndividualChoice
{
    qint64 indivId = 0;
    QString text;
};
std::vector<IndividualChoice> individualChoices(Database& db);
qint64 individualIdOfChoice(const QString& text);

} // namespace kb
