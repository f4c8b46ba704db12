#pragma once

#include "specialmeals/SpecialMealNames.h"
#include "specialmeals/SpecialMealsSetup.h"

#include <QDate>
#include <QObject>
#include <QStringList>

#include <array>
#include <vector>

namespace kb {

class Database;
class RunDialogs;
class UserInterface;

// "Set Special Meal Qualifications": one panel per special meal in use,
// each with its rule ("Flag the labels for clients with:"), the diets of the
// rule "Selected diet restrictions" with Match Any or Match All, and a
// report title or instructions. OK turns the panels into the date's
// setup; Cancel clears it.
class TFormSetSpecialMeals : public QObject
{
    Q_OBJECT

public:
    TFormSetSpecialMeals(Database& db, UserInterface& ui, RunDialogs* dialogs = nullptr,
                         QObject* parent = nullptr);

    static QString formCaption() { return QStringLiteral("Set Special Meal Qualifications"); }
    static QString rulePrompt() { return QStringLiteral("Flag the labels for clients with:"); }
    static QString dietPrompt() { return QStringLiteral("Select the diet codes to match:"); }
    static QString actionPrompt() { return QStringLiteral("Report Title or Instructions:"); }
    static QString matchAnyText() { return QStringLiteral("Match Any"); }
    static QString matchAllText() { return QStringLiteral("Match All"); }
    // "First Special Meal (Special Meal One)" ... "Fifth Special Meal
    // (Special Meal Five)".
    static QString heading(int meal);
    // The rule list of a meal: the blank entry first, then "Items other than
    // the default", "Any diet restriction" (meals 1 to 3 only) and "Selected
    // diet restrictions".
    static QStringList ruleEntries(int meal);

    const QString& caption() const { return m_caption; }
    void setCaption(const QString& caption) { m_caption = caption; }
    // The date whose setup the dialog holds (the Copy dialog's
    // source date).
    const QDate& date() const { return m_date; }
    void setDate(const QDate& date) { m_date = date; }

    // Panels 1 to panelCount() are shown.
    int panelCount() const { return m_names.mealsShown(); }
    bool actionVisible() const { return m_names.actionVisible; }
    bool copyVisible() const { return m_copyVisible; }
    void setCopyVisible(bool visible) { m_copyVisible = visible; }
    // One line per Diet row: its description and, in brackets, its code.
    const QStringList& dietLines() const { return m_dietLines; }

    int ruleIndex(int meal) const { return panel(meal).ruleIndex; }
    void setRuleIndex(int meal, int index);
    // "I", "D", "S" or empty.
    QString rule(int meal) const;
    // The diet part is enabled only while the rule is "S".
    bool dietEnabled(int meal) const { return rule(meal) == QLatin1String("S"); }
    bool isDietChecked(int meal, int line) const;
    void setDietChecked(int meal, int line, bool checked);
    bool matchAll(int meal) const { return panel(meal).matchAll; }
    void setMatchAll(int meal, bool matchAll);
    const QString& action(int meal) const { return panel(meal).action; }
    void setAction(int meal, const QString& text);

    // The panels as a stored setup says.
    void fill(const SpecialMealsSetup& setup);
    // A save's proposal for a date without a setup: Config is read
    // afresh, and each meal in use gets "Selected diet restrictions".
    void propose();
    // Whether the panels hold that proposal rather than a stored
    // setup.
    bool isProposal() const { return m_proposal; }

    // OK: false, with the user told, when a meal has the rule "S" and no
    // diet checked; the dialog then stays open.
    bool accept();
    // Cancel: every rule, mask and choice cleared.
    void reject();
    // What OK gave (empty after Cancel).
    const SpecialMealsSetup& result() const { return m_result; }
    // The panels as OK would take them, for the Copy dialog.
    SpecialMealsSetup current() const;

    // The Copy button.
    void ActionCopy();

signals:
    void changed();

private:
    struct Panel
    {
        int ruleIndex = 0;
        qint64 mask = 0; // the checked diets, by their bits
        bool matchAll = false;
        QString action;
    };
    const Panel& panel(int meal) const { return m_panels[size_t(meal - 1)]; }
    Panel& panel(int meal) { return m_panels[size_t(meal - 1)]; }
    qint64 lineBit(int line) const { return qint64(1) << m_dietBits[size_t(line)]; }
    qint64 knownDiets() const;

    Database& m_db;
    UserInterface& m_ui;
    RunDialogs* m_dialogs;
    SpecialMealNames m_names;
    QString m_caption = formCaption();
    QDate m_date;
    bool m_copyVisible = true;
    bool m_proposal = false;
    QStringList m_dietLines;
    std::vector<int> m_dietBits; // the bit of each line: Diet_ID - 1
    std::array<Panel, SpecialMealsSetup::mealCount> m_panels{};
    SpecialMealsSetup m_result;
};

} // namespace kb
