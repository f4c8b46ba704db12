// kettlebrook --user NAME prepare DATE [--type A|O|E|S|B]: signs in, prepares
// the run of DATE as the Daily Run Preparation screen does, and prints the
// working table as CSV in the run's order. Messages of the preparation (a
// missing route) go to the error stream.

#include "CommandRegistry.h"
#include "CommandSession.h"

#include "Csv.h"
#include "store/Database.h"
#include "TFormRunPrepare.h"
#include "store/ValueConversion.h"

namespace {

int runPrepare(kb::app::CommandContext& context)
{
    QString dateText;
    QChar letter = u'A';
    for (qsizetype i = 0; i < context.args.size(); ++i) {
        const QString& word = context.args[i];
        if (word == QLatin1String("--type")) {
            if (i + 1 >= context.args.size() || context.args[i + 1].size() != 1)
                throw std::runtime_error("--type needs one of A, O, E, S, B");
            letter = context.args[++i].at(0);
        } else if (dateText.isEmpty()) {
            dateText = word;
        } else {
            throw std::runtime_error(QStringLiteral("Unexpected argument '%1'").arg(word).toStdString());
        }
    }
    const QDate date = kb::parseDate(dateText);
    if (!date.isValid())
        throw std::runtime_error(QStringLiteral("prepare needs a date as YYYY-MM-DD, not '%1'").arg(dateText).toStdString());

    kb::app::CommandSession session(context);
    kb::TFormRunPrepare form(session.data().db(), session.data().session(), session.ui());
    form.SetDeliveryType(letter);
    form.SetPrepareDate(date);
    form.FormShow();
    form.ActionPrepare();
    context.err.flush();
    kb::writeCsv(context.out, form.table().select(kb::DeliveriesIndex::RouteStopClient));
    form.FormClose();
    session.close();
    return 0;
}

const kb::app::CommandRegistration registration(QStringLiteral("prepare"),
                                                QStringLiteral("prepare DATE [--type A|O|E|S|B]  (needs --user)"),
                                                runPrepare);

} // namespace
