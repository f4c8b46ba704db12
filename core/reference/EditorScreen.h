#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace kb {

// One maintenance screen of a code table, as the generic editor shows it:
// the table, the caption, which rows it lists in which order, and the
// columns of its browse grid. The edit page shows every column the user
// keeps (all but the row key and the stamps).
struct EditorScreen
{
    QString formName;
    QString table;
    QString caption;
    // The entry under "Table Maintenance" of the main window's Edit menu;
    // empty for a screen that another screen opens.
    QString menuText;
    // Case_Management_Choices holds two lists; the screen shows and adds
    // the rows of this USAGE only.
    QString usage;
    // The index whose order the rows take, or, where no index gives the
    // order, the columns of an order by.
    QString indexName;
    QString orderBy;
    QStringList browseFields;
    // Typing on the browse page moves to the first row whose first browse
    // column (else second) begins with what was typed.
    bool incrementalSearch = false;
};

// The maintenance screens of the code tables, in the order of their menu.
const std::vector<EditorScreen>& referenceEditorScreens();
// The screen of that form name; null when there is none.
const EditorScreen* referenceEditorScreen(const QString& formName);

// The stored statement names the system itself looks for, offered when a
// user names a statement.
const QStringList& reservedQueryNames();

} // namespace kb
