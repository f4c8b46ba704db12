#pragma once

#include "individuals/IndividualForms.h"

#include <QString>
#include <QVariant>

#include <vector>

namespace kb {

class Clock;
class DataSet;
class Database;
class UserInterface;

// "Related Individuals Maintenance": one row of Individuals, a person who
// is no client (relative, doctor, payer), added or edited. The form edits
// the current row of the data set it is given; OK posts it with its author
// and time, Cancel leaves the row as it was.
class TFormIndividual
{
public:
    struct Field
    {
        QString column;
        QString label;
    };

    TFormIndividual(DataSet& individuals, UserInterface& ui, const Clock& clock, QString userName,
                    const QString& postalFormat);

    static QString caption() { return QStringLiteral("Related Individuals Maintenance"); }
    // The entry fields in the order they are laid out.
    static const std::vector<Field>& fields();
    const IndividualPostalForm& postalForm() const { return m_postal; }

    // A new row, dated today; or the current row put into edit. What the
    // data set refuses is thrown.
    void Add();
    void Edit();

    QVariant value(const QString& column) const;
    void setValue(const QString& column, const QVariant& value);
    // Leaving the ZIP field: where the ZIP table is used, the city and state
    // of a known ZIP fill in.
    void zipLeft(Database& db);

    // "Import client": the client's name, address, and phones with e-mail,
    // each group copied over after its own question. Tells which groups
    // were copied (0 to 3).
    int ImportClient(const DataSet& client);

    // Posts with the author and time; throws what the post refused.
    void Ok();
    void Cancel();

private:
    bool ask(const QString& text);

    DataSet& m_individuals;
    UserInterface& m_ui;
    const Clock& m_clock;
    QString m_userName;
    IndividualPostalForm m_postal;
};

} // namespace kb
