#pragma once

#include <QString>

namespace kb {

// A column's name in plain words, for grid titles and field labels where a
// screen gives no caption of its own: "STAFF_ID" reads "Staff Number",
// "PreferredTab" "Preferred Tab", "Deliv_Dt" "Delivery Date". Known names
// come from a list; the rest are split into words and their abbreviations
// written out.
QString plainColumnLabel(const QString& column);

} // namespace kb
