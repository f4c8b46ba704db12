#pragma once

#include "store/Database.h"

#include <QString>

namespace kb::reports {

// A report's statement as the report screens assemble it: text appended
// piece by piece, each value a named parameter beside it, never pasted into
// the text.
struct ReportStatement
{
    QString text;
    Params params;

    ReportStatement& operator<<(const QString& piece)
    {
        text += piece;
        return *this;
    }
    // Sets :name (replacing an earlier value of the same name).
    void bind(const QString& name, const QVariant& value);
    // A parameter name not yet used in the statement: prefix + 1, prefix + 2...
    QString freshName(const QString& prefix) const;
    // Binds a new parameter and gives its ":name", for clauses that list values.
    QString addValue(const QString& prefix, const QVariant& value);
};

} // namespace kb::reports
