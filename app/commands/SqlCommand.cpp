// kettlebrook sql TEXT [--param Name=Value]...: runs statements of the
// dialect and prints the rows of the last select as CSV, or the number of
// rows the last statement changed.

#include "CommandRegistry.h"

#include "Csv.h"
#include "store/Database.h"

namespace {

int runSql(kb::app::CommandContext& context)
{
    QString text;
    kb::Params params;
    for (qsizetype i = 0; i < context.args.size(); ++i) {
        const QString& word = context.args[i];
        if (word == QLatin1String("--param")) {
            if (i + 1 >= context.args.size())
                throw std::runtime_error("--param needs Name=Value");
            const QString pair = context.args[++i];
            const qsizetype eq = pair.indexOf(u'=');
            if (eq <= 0)
                throw std::runtime_error(QStringLiteral("--param needs Name=Value, not '%1'").arg(pair).toStdString());
            QString name = pair.left(eq);
            if (name.startsWith(u':'))
                name.remove(0, 1);
            params.emplace_back(name, pair.mid(eq + 1));
        } else if (text.isEmpty()) {
            text = word;
        } else {
            throw std::runtime_error(QStringLiteral("Unexpected argument '%1'").arg(word).toStdString());
        }
    }
    if (text.trimmed().isEmpty())
        throw std::runtime_error("Give the statement text");
    const auto clock = kb::app::commandClock(context);
    const auto db = kb::app::openCommandDatabase(context, *clock);
    const kb::ResultSet result = db->execute(text, params);
    if (result.hasRows())
        kb::writeCsv(context.out, result);
    else
        context.out << result.rowsAffected() << '\n';
    return 0;
}

const kb::app::CommandRegistration registration(QStringLiteral("sql"),
                                                QStringLiteral("sql TEXT [--param Name=Value]..."), runSql);

} // namespace
