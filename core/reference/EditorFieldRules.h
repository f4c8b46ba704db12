#pragma once

#include "reference/EditorField.h"
#include "reference/EditorScreen.h"
#include "reference/ReferenceRules.h"

namespace kb {

class Database;

// What the edit page of a maintenance screen shows, apart from the data:
// which fields, with which editors, labels, masks and choices, and which
// fields a row's values hide. The rules of the Part's screens live here so
// that the generic presenter and view carry none.

// The fields of the edit page: every column but the row key, the stamps
// and the list a filtered screen stands for.
QList<EditorField> editFieldsOf(Database& db, const EditorScreen& screen, const PostalFormat& postal);

// The drop-down of a field, given the row being edited; empty when the
// field has none.
QList<Choice> fieldChoices(Database& db, const EditorScreen& screen, const QString& field,
                           const RowReader& row);

// What the browse grid shows for a field's value: the caption of a code
// with a fixed meaning, else the value itself.
QVariant gridValue(const EditorScreen& screen, const QString& field, const QVariant& value);

// Whether the field shows for the row being edited.
bool isFieldVisible(const EditorScreen& screen, const QString& field, const RowReader& row);

} // namespace kb
