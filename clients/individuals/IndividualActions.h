#pragma once

#include <QString>

#include <functional>

namespace kb {

class DataSet;
class Database;
class TFormRelatedClients;
class UserInterface;

// The individual commands of the client window's "All Individuals" sheet
// that do not open the individual itself.
class IndividualActions
{
public:
    // Shows the related clients' list; the window opens it modally.
    using ShowRelated = std::function<void(TFormRelatedClients&)>;

    IndividualActions(Database& db, UserInterface& ui, ShowRelated showRelated);

    // Deletes the current individual after "Delete the selected
    // Individual?" (OK, Cancel). An individual any client is related to
    // stays, and the list of those clients shows instead. True when the row
    // was deleted.
    bool DeleteIndividual(DataSet& individuals);
    // The clients related to the current individual, or the message that
    // there are none.
    void ShowRelatedClients(qint64 indivId);

    static QString deleteQuestion() { return QStringLiteral("Delete the selected Individual?"); }
    static QString noRelatedText()
    {
        return QStringLiteral("There are no Clients related to this Individual.");
    }

private:
    Database& m_db;
    UserInterface& m_ui;
    ShowRelated m_showRelated;
};

} // namespace kb
