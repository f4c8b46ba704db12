// kettlebrook sql TEXT [--param Name=Value]...: runs statements of the
// dialect and prints the rows of the last select as CSV, or the number of
// rows the last statement changed. The statements of one call are one unit:
// when one fails, none has changed anything. Rows are printed as the store
// gives them, so a result of any size passes through in little memory.
// Without --user it is the data owner's maintenance tool; with --user it
// signs in like every other command, and a user whose level allows no
// changes is refused any statement that changes stored data.

#include "CommandRegistry.h"
#include "CommandSession.h"

#include "CsvWriter.h"
#include "store/Database.h"

namespace {

int runSql(kb::app::CommandContext& context, const kb::app::CommandArgs& args)
{
    const QString text = args.positional(0);
    kb::Params params;
    for (const QString& pair : args.values(QStringLiteral("param"))) {
        const qsizetype eq = pair.indexOf(u'=');
        if (eq <= 0)
            throw kb::app::UsageError(QStringLiteral("--param needs Name=Value, not '%1'.").arg(pair));
        QString name = pair.left(eq);
        if (name.startsWith(u':'))
            name.remove(0, 1);
        params.emplace_back(name, pair.mid(eq + 1));
    }
    if (text.trimmed().isEmpty())
        throw kb::app::UsageError(QStringLiteral("Give the statement text: sql TEXT"));
    const auto print = [&](kb::Database& db) {
        kb::CsvWriter csv(context.out);
        const kb::ResultSet result = db.execute(text, params, csv);
        if (!result.hasRows())
            context.out << result.rowsAffected() << '\n';
    };
    if (!context.user.isEmpty()) {
        kb::app::CommandSession session(context);
        print(session.data().db());
        session.close();
        return 0;
    }
    const auto clock = kb::app::commandClock(context);
    const auto db = kb::app::openCommandDatabase(context, *clock);
    print(*db);
    return 0;
}

const kb::app::CommandRegistration registration(
    {.name = QStringLiteral("sql"),
     .arguments = QStringLiteral("TEXT"),
     .description = QStringLiteral("Runs statements of the dialect, all of them or none, and prints the rows of the "
                                   "last select as CSV as they come, or the number of rows the last statement changed."),
     .minArguments = 1,
     .maxArguments = 1,
     .options = {QCommandLineOption(QStringLiteral("param"), QStringLiteral("A named parameter of the statement."),
                                    QStringLiteral("Name=Value"))},
     .repeatable = {QStringLiteral("param")}},
    runSql);

} // namespace
