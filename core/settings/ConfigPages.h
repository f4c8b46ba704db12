#pragma once

#include "reference/EditorField.h"

#include <QList>
#include <QString>

namespace kb {

// How a setting of the configuration screen is typed.
enum class ConfigEditor {
    Text,
    Memo,
    ListMemo,    // one entry a line, at most 31: the entries are kept as bits of a mask
    Check,       // a bool column
    YesNoCheck,  // a one-letter column holding "Y" or "N"
    Choice,      // a fixed code list
    Lookup,      // codes of another table
    ClientIndex, // the index names of Clients
    Integer,
    Float,
};

// One setting: its Config column, caption and editor. Lookups name the
// statement whose first column is the code and second the text.
struct ConfigField
{
    QString column;
    QString label;
    ConfigEditor editor = ConfigEditor::Text;
    int width = 0; // characters of a text column
    QList<Choice> choices;
    QString lookup;
};

struct ConfigPage
{
    QString title;
    QList<ConfigField> fields;
};

// The pages of "System Configuration" that edit the Config row, in order.
const QList<ConfigPage>& configPages();
// The field of a column, or null.
const ConfigField* configField(const QString& column);

// The seven meals of the "Selected Meals" check list, bit 0 first.
const QStringList& mealLineItemNames();
// The columns of the special meals, label and abbreviation of meal n (1-5).
QString specialLabelColumn(int n);
QString specialAbbrevColumn(int n);
// The memos that hold at most 31 entries.
constexpr int MaxListEntries = 31;

} // namespace kb
