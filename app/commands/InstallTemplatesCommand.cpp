// kettlebrook --data DIR install-templates: writes the templates of the
// fixed reports that a data directory lacks, as init does for a new one,
// and keeps those it has (an agency may have changed them).

#include "CommandRegistry.h"

#include "session/DataDirectory.h"
#include "template/TemplateRegistry.h"

namespace {

int runInstallTemplates(kb::app::CommandContext& context, const kb::app::CommandArgs&)
{
    if (context.dataDir.isEmpty())
        throw kb::app::UsageError(QStringLiteral("Name the data directory: --data DIR install-templates"));
    if (!kb::isDataDirectory(context.dataDir))
        throw kb::app::UsageError(
            QStringLiteral("The directory %1 does not hold Kettlebrook data").arg(context.dataDir));
    const QStringList written = kb::reports::TemplateRegistry::install(context.dataDir);
    context.out << "Template\n";
    for (const QString& name : written)
        context.out << name << '\n';
    return 0;
}

const kb::app::CommandRegistration registration(
    {.name = QStringLiteral("install-templates"),
     .arguments = QString(),
     .description = QStringLiteral("Writes the templates of the fixed reports that the data directory lacks and "
                                   "keeps those it has; prints the files written."),
     .options = {},
     .repeatable = {},
     .asksQuestions = false,
     .needsUser = false,
     .paints = false},
    runInstallTemplates);

} // namespace
