#pragma once

#include "settings/ComponentTree.h"
#include "settings/ConfigPages.h"
#include "settings/UserPreferences.h"
#include "store/ResultSet.h"

#include <QList>
#include <QString>
#include <QVariant>

namespace kb {

class DataSet;
class TDataModule1;

// "System Configuration": the agency's Config row on its pages, the
// signed-in user's preferences, the list of system users, and the commands
// beside them. It edits the data module's Config data set, so the rules of
// saving that row (its BeforePost) apply as they do everywhere; every
// message reaches the user through the user interface.
class TFormEditConfig
{
public:
    enum class Command {
        SetDefaultItems,
        SetIntakeDocuments,
        SetIntakeConditions,
        SelectFont,
        AssessmentVisibility,
        AssessmentChoices,
        ScreeningChoices,
        ScreeningVisibility,
        ShowLogIns,
        RepopulateTree,
        Close,
    };

    explicit TFormEditConfig(TDataModule1& module);
    ~TFormEditConfig();
    TFormEditConfig(const TFormEditConfig&) = delete;
    TFormEditConfig& operator=(const TFormEditConfig&) = delete;

    static QString caption() { return QStringLiteral("System Configuration"); }
    static QString formName() { return QStringLiteral("TFormEditConfig"); }
    static QString closeQuestion()
    {
        return QStringLiteral("Save your changes to the data before closing this window?");
    }
    static QString listLimitMessage()
    {
        return QStringLiteral("You may have exceeded the allowable number of items in the \r\nlist!");
    }
    static QString commandText(Command command);

    // Opens the Config row and the user's preferences; false (the user told)
    // when the row cannot be read.
    bool open();
    // Closing: the meal check boxes go into MEALS_LINE_ITEMS, then, when
    // Config or Staff is being edited, the save question: Yes posts, No
    // cancels. False when the screen stays open (a post was refused).
    bool close();

    // ---- the Config pages ----
    QVariant value(const QString& column) const;
    // Puts the row into edit and sets the column; false when refused (told).
    // A special meal's name or abbreviation clears the meals after it that
    // may no longer be filled.
    bool setValue(const QString& column, const QVariant& value);
    // The entries of a drop-down: fixed codes, another table's codes, or the
    // index names of Clients.
    QList<Choice> choices(const QString& column) const;
    bool isFieldEnabled(const QString& column) const;
    // Leaving a memo of at most 31 entries with more: the message, and false
    // (the focus stays).
    bool leaveMemo(const QString& column);
    static int lineCount(const QString& memo);

    // The "Selected Meals" check list, shown only for line items "M".
    bool mealsListVisible() const;
    bool isMealChecked(int bit) const { return (m_meals & (1 << bit)) != 0; }
    void setMealChecked(int bit, bool checked);
    // The session length in words: "2 hours 15 minutes", "1 hour 0 minutes".
    QString sessionLengthWords() const;
    static QString hoursInWords(double hours);

    // Select Font and Size.
    bool setDeliveryFont(const QString& family, int pointSize);

    // The component visibility tree; saved into the row when it is left
    // after a change.
    const ComponentTree& componentTree() const { return m_tree; }
    void setComponentChecked(int node, bool checked);
    void leaveComponentTree();
    void repopulateComponentTree();

    // The default hours and sessions of each event code, edited in a grid
    // beside the counseling settings; each change is saved at once.
    struct EventDefault
    {
        QVariant eventId;
        QString description;
        QVariant hours;
        QVariant sessions;
    };
    QList<EventDefault> eventDefaults() const;
    // column is DEFAULT_HOURS or DEFAULT_SESSIONS; false when refused (told).
    bool setEventDefault(const QVariant& eventId, const QString& column, int value);

    UserPreferences& preferences() { return m_preferences; }
    // "System Users": User_ID, Staff_Name, Nutritionist, Driver, Volunteer,
    // PreferredTab of every Staff row, by name.
    ResultSet systemUsers() const;

    // Commands whose screens the program does not have yet are disabled.
    bool isEnabled(Command command) const;
    bool isEditing() const;

    TDataModule1& module() { return m_module; }

private:
    DataSet& config() const;
    bool specialMealAllowed(int n) const;
    void clearUnallowedSpecialMeals();

    TDataModule1& m_module;
    UserPreferences m_preferences;
    int m_meals = 0;
    ComponentTree m_tree;
    bool m_treeChanged = false;
    bool m_open = false;
};

} // namespace kb
