#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace kb {

// How a field of the client window is edited.
enum class ClientFieldKind {
    Text,
    Memo,
    Date,
    Number,
    Money,
    Check,     // a boolean column
    YesNo,     // a "Y"/"N" text column shown as a check box
    Choice,    // one entry of a list (ClientLists), stored by its value
    History,   // free text with the entries users typed before, shared by all users
    CheckList, // a bit mask over the entries of a list
    Display,   // shown, never typed into
};

// One field of the client window.
struct ClientFieldInfo
{
    QString field; // the Clients column, or a name the window fills itself (below)
    QString label;
    ClientFieldKind kind = ClientFieldKind::Text;
    QString list;         // the list of a Choice, History or CheckList
    QString component;    // the entry of the visibility tree that hides it; empty: never hidden
    QString command = {}; // a command whose button stands beside the field
};

// A group of fields on a page, with the buttons beside them and the grid of
// a page query under them.
struct ClientFieldGroup
{
    int page = -1; // -1: the header above the pages
    QString sheet; // the page's sheet it stands on; empty on a page of one sheet
    QString caption;
    std::vector<ClientFieldInfo> fields;
    QStringList commands; // the buttons, by command id
    QString grid;         // a page query, or "Individuals" (the module's table); empty for none
    QString component;    // the visibility tree entry of the whole group
    // False while the screen that edits the group's data is still to come:
    // it is shown read-only and says so.
    bool editable = true;
    // The grid's columns as "FIELD=Title"; empty: every field but the keys.
    QStringList columns = {};
    // A page grid whose current row the fields edit, named as its columns
    // are (the cells of that row, under the same rules); empty: the fields
    // are the client's.
    QString row = {};
};

// Names of what the window shows that is no column of Clients.
namespace client_field {
inline const QString Age = QStringLiteral("#Age");
inline const QString Suspended = QStringLiteral("CalcSuspendedText");
inline const QString HouseholdName = QStringLiteral("#HouseholdName");
inline const QString MaskedSsn = QStringLiteral("#SocialSecurity");
inline const QString ServiceDays = QStringLiteral("#ServiceDays"); // the group of the weekday boxes
inline const QString ScheduledGroup = QStringLiteral("#Scheduled");
} // namespace client_field

// The header and the fields of every page, in the order they are laid out.
const std::vector<ClientFieldGroup>& clientFieldGroups();
// The Clients columns the window edits, each once.
QStringList clientEditedFields();

} // namespace kb
