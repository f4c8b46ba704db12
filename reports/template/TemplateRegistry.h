#pragma once

#include <QString>
#include <QStringList>

namespace kb::reports {

// The templates of the fixed reports and the client ID card ("Client ID with
// Barcode.LWL", a template of the same form), built into the program (the
// files of reports/templates/) and written into every new data directory,
// where an agency may change them without rebuilding the program.
namespace TemplateRegistry {

// File names, such as "DailyRunRAP030103.rtm", in order of their names.
QStringList builtInNames();
// The template's text; empty when there is no built-in template of that name.
QString builtInText(const QString& fileName);

// Writes every built-in template the directory lacks and keeps those it
// has, since an agency may have changed them. Returns the files written.
// Throws MessageError when a file cannot be written.
QStringList install(const QString& directory);

} // namespace TemplateRegistry

// The user-defined reports of a report screen: every file of the data
// directory named prefix + name + ".rtm" (prefix "USERREPORTDELIVERY", for
// example), as the names between the prefix and the extension, in the
// order of the directory's listing by name.
QStringList userDefinedReports(const QString& directory, const QString& prefix);

} // namespace kb::reports
