#pragma once

#include <QList>
#include <QString>
#include <QVariant>

namespace kb {

// How the edit page lets a field be typed.
enum class FieldEditor {
    Text,
    Memo,
    Number,
    Date,
    DateTime,
    Check,
    Choice,         // one of the choices only
    EditableChoice, // one of the choices, or a text of one's own
};

// One entry of a drop-down: the value stored and the text shown.
struct Choice
{
    QVariant value;
    QString text;
};

// A field of the edit page as the view draws it.
struct EditorField
{
    QString name;
    QString label;
    FieldEditor editor = FieldEditor::Text;
    int width = 0; // characters, for texts
    QString mask;  // an input mask in the system's notation, or empty
    bool readOnly = false; // shown, never typed into
};

} // namespace kb
