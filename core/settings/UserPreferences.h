#pragma once

#include "dataset/DataSet.h"
#include "reference/EditorField.h"

#include <QList>
#include <QString>

namespace kb {

class TDataModule1;

// The page "User Preferences" of the configuration screen: the signed-in
// user's own Staff row (client sort order, visible tabs of the client
// window, the page opened first, resource saving and the preferred report of
// each report screen). The built-in administrator has no row, so for that
// user the page says "Preferences are not editable." and nothing is enabled.
//
// Visible_Tabs holds one bit per page of the client window, bit n for item n
// of tabPages(); DTab holds the page number of the preferred tab.
class UserPreferences
{
public:
    struct TabPage
    {
        QString name;
        int pageNumber; // on the client window
    };
    // The pages in the order of the list: item n is bit n of Visible_Tabs.
    static const QList<TabPage>& tabPages();
    static QString notEditableText() { return QStringLiteral("Preferences are not editable."); }
    static QString lastTabMessage()
    {
        return QStringLiteral(
            "At least one tab must be selected! The first tab will now be \r\nset to be visible.");
    }
    // The integer columns of the preferred reports, with their captions.
    static const QList<std::pair<QString, QString>>& preferredReportColumns();

    explicit UserPreferences(TDataModule1& module);
    ~UserPreferences();

    // Finds the user's row; false when the user has none.
    bool open();
    bool isEditable() const { return m_editable; }

    QVariant value(const QString& column) const;
    // Puts the row into edit and sets the column; false when refused (told).
    bool setValue(const QString& column, const QVariant& value);

    // The visible tabs: a mask of 0 (nothing chosen) shows every page, so
    // every item reads as checked.
    bool isTabChecked(int item) const;
    // Removing the last check is refused with lastTabMessage() and the first
    // item is checked instead.
    void setTabChecked(int item, bool checked);
    // Leaving the list: the preferred tab's choices become the checked pages,
    // each "name" + tab + page number, the number being the stored value.
    void leaveTabList();
    const QList<Choice>& preferredTabChoices() const { return m_tabChoices; }

    bool isEditing() const;
    // Posts an edit; false when refused (told).
    bool post();
    void cancel();
    // Puts the shared Staff data set back on the row it stood on.
    void close();

private:
    int tabMask() const;

    TDataModule1& m_module;
    DataSet::Bookmark m_returnTo;
    bool m_editable = false;
    bool m_opened = false;
    QList<Choice> m_tabChoices;
};

} // namespace kb
