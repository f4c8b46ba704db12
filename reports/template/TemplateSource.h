#pragma once

#include <QString>

namespace kb::reports {

class ReportHolder;

// Where the fixed print-outs find their templates: the file of that name in
// the folder (the data directory), where an agency may have changed it, or,
// without a folder (data on a server), the template built into the program.
// Returns the path loaded, the template's own name for a built-in one, or
// an empty text when the folder lacks the file (nothing is loaded, nothing
// told). Throws TemplateError for a bad template.
QString loadFixedTemplate(ReportHolder& holder, const QString& folder, const QString& fileName);

} // namespace kb::reports
