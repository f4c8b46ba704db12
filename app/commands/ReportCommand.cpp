// kettlebrook --user NAME report NAME_OR_INDEX [--from D] [--to D] [--dates D,D...]
//     [--services ID,...] [--routes ID,...|--centers CODE,...] [--exclude]
//     [--diets CODE,...] [--match any|all] [--sort N] [--title TEXT] [--item ID]
//     [--limit N] [--stock NAME] [--start N]
//     [--pdf FILE] [--csv FILE] [--yes|--no]
// kettlebrook --user NAME report "Client ID Card" --client CLIENT_ID [--stock NAME] --pdf FILE
//
// Runs a delivery report as "Select the Delivery Report to Run" does and
// writes it to a PDF file, or its data set as CSV: what a script uses to
// print the day's sheets and labels. Before a report of one date the user's
// Staff row may ask whether to prepare the date again: --yes prepares and
// saves it, --no (or neither) runs on the data as it stands. The report's
// own questions are answered by the options. "Client ID Card" prints a
// client's card as the client's window does.

#include "CommandRegistry.h"
#include "CommandSession.h"

#include "MessageError.h"
#include "ReportHolder.h"
#include "data/PipeCsv.h"
#include "delivery/DeliveryDataCurrency.h"
#include "delivery/DeliveryReportList.h"
#include "delivery/DeliveryReportLists.h"
#include "delivery/DeliveryReportRun.h"
#include "delivery/HiddenRunPreparation.h"
#include "delivery/ReportLimits.h"
#include "delivery/StaffReportPreferences.h"
#include "delivery/questions/ReportQuestions.h"
#include "delivery/questions/TFormClientItemsSortOrder.h"
#include "delivery/questions/TFormDeliveryDietCriteria.h"
#include "delivery/questions/TFormItemLimitation.h"
#include "labels/ClientIdCard.h"
#include "labels/TFormLabelLimit.h"
#include "model/LabelStock.h"
#include "session/TDataModule1.h"
#include "store/Database.h"
#include "template/TemplateRegistry.h"

#include <QFile>
#include <QSaveFile>

namespace {

using kb::app::UsageError;
using namespace kb::reports;

QStringList listOption(const kb::app::CommandArgs& args, const QString& option)
{
    QStringList words;
    for (const QString& w : args.value(option).split(u',', Qt::SkipEmptyParts))
        words << w.trimmed();
    return words;
}

// The report's questions, answered from the command's options.
class OptionAnswers final : public ReportQuestions
{
public:
    explicit OptionAnswers(const kb::app::CommandArgs& args) : m_args(args) {}

    bool askDietCriteria(TFormDeliveryDietCriteria& form) override
    {
        const QStringList codes = listOption(m_args, QStringLiteral("diets"));
        if (codes.isEmpty())
            throw UsageError(
                QStringLiteral("\"Selected Diet Restrictions\" needs the diets: --diets CODE,..."));
        checkDiets(form.diets(), codes);
        form.setMatchAll(matchAll());
        form.setSortOrder(int(m_args.integer(QStringLiteral("sort"), 0, 3, 0)));
        form.setTitle(m_args.value(QStringLiteral("title")));
        return true;
    }
    bool askClientItemsSortOrder(TFormClientItemsSortOrder& form) override
    {
        form.setSortOrder(int(m_args.integer(QStringLiteral("sort"), 0, 1, 0)));
        return true;
    }
    bool askItemLimitation(TFormItemLimitation& form) override
    {
        if (!m_args.isSet(QStringLiteral("item"))) return false;
        const int item = int(m_args.integer(QStringLiteral("item"), 0, std::numeric_limits<int>::max(), 0));
        if (!form.chooseItem(item))
            throw UsageError(QStringLiteral("--item: there is no item %1.").arg(item));
        return true;
    }
    bool askLabelLimit(TFormLabelLimit& form) override
    {
        const int last = int(LabelRules::limitEntries().size()) - 1;
        form.setLimitIndex(int(m_args.integer(QStringLiteral("limit"), 0, last, 0)));
        const QStringList codes = listOption(m_args, QStringLiteral("diets"));
        if (!codes.isEmpty()) {
            if (!form.dietsEnabled())
                throw UsageError(QStringLiteral("--diets goes with --limit %1 (\"%2\") on the labels.")
                                     .arg(LabelRules::SelectedDiets)
                                     .arg(LabelRules::limitEntries()[LabelRules::SelectedDiets]));
            checkDiets(form.diets(), codes);
        }
        if (form.dietsEnabled())
            form.setMatch(matchAll() ? TFormLabelLimit::Match::All : TFormLabelLimit::Match::Any);
        form.setSortOrder(
            int(m_args.integer(QStringLiteral("sort"), 0, int(LabelRules::sortOrders().size()) - 1, 0)));
        return true;
    }

private:
    bool matchAll() const
    {
        return m_args.choice(QStringLiteral("match"), {QStringLiteral("any"), QStringLiteral("all")},
                             QStringLiteral("any")) == QLatin1String("all");
    }
    static void checkDiets(DietCheckList& diets, const QStringList& codes)
    {
        for (const QString& code : codes) {
            if (!diets.checkCode(code))
                throw UsageError(QStringLiteral("--diets: there is no diet with the code %1 (%2).")
                                     .arg(code, diets.codes().join(QStringLiteral(", "))));
        }
    }

    const kb::app::CommandArgs& m_args;
};

// The stock named by --stock; empty when not given. An unknown name is
// refused with the names there are.
QString stockOption(const kb::app::CommandArgs& args)
{
    const QString name = args.value(QStringLiteral("stock")).trimmed();
    if (name.isEmpty() || LabelStock::find(name)) return name;
    QStringList names;
    for (const LabelStock& stock : LabelStock::catalogue())
        names << stock.name;
    throw UsageError(QStringLiteral("--stock: there is no label stock %1 (%2).")
                         .arg(name, names.join(QStringLiteral(", "))));
}

// The card of the client --client names, to the PDF file.
int runClientIdCard(kb::app::CommandContext& context, const kb::app::CommandArgs& args)
{
    const QString pdf = args.value(QStringLiteral("pdf"));
    const QString clientId = args.value(QStringLiteral("client")).trimmed();
    if (pdf.isEmpty() || clientId.isEmpty())
        throw UsageError(QStringLiteral("The Client ID Card needs --client CLIENT_ID and --pdf FILE."));
    const QString stock = stockOption(args);
    const auto clock = kb::app::commandClock(context);
    kb::app::CommandSession session(context);
    kb::TDataModule1& data = session.data();
    const kb::ResultSet person =
        data.db().execute(QStringLiteral("Select Person_ID from Clients where Client_ID = :Client_ID"),
                          {{QStringLiteral("Client_ID"), clientId}});
    if (person.rowCount() == 0)
        throw kb::MessageError(QStringLiteral("There is no client with the Client ID %1.").arg(clientId));
    const kb::DataLocation& location = data.location();
    DeliveryReportContext reportContext{data.db(),    *clock,
                                        session.ui(), data.session().cUserName,
                                        nullptr,      location.clientServer ? QString() : location.directory};
    ClientIdCard card(reportContext);
    card.setStock(stock);
    PdfFileOutput output(pdf);
    ReportHolder holder(output, *clock);
    holder.setDocumentName(ClientIdCard::caption());
    if (!card.prepare(holder, person.value(0, 0).toInt())) {
        session.close();
        return 1;
    }
    holder.setDestination(ReportDestination::Printer);
    holder.setShowPrintDialog(false);
    holder.print();
    holder.clearPipes();
    context.err << "Wrote " << pdf << '\n';
    session.close();
    return 0;
}

// Checks the entries of a limit list named by the option; a word the list
// lacks is refused.
void checkEntries(CheckedList& list, const QStringList& words, const QString& option,
                  const std::function<bool(const QString& entry, const QString& word)>& matches)
{
    for (const QString& word : words) {
        bool found = false;
        for (int i = 0; i < int(list.entries.size()); ++i) {
            if (matches(list.entries[i], word)) {
                list.setChecked(i, true);
                found = true;
            }
        }
        if (!found)
            throw UsageError(QStringLiteral("--%1: %2 is not among %3.")
                                 .arg(option, word, list.entries.join(QStringLiteral(", "))));
    }
}

void writeFile(const QString& path, const std::function<void(QTextStream&)>& write)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Text))
        throw kb::MessageError(QStringLiteral("Cannot write %1: %2").arg(path, file.errorString()));
    QTextStream out(&file);
    write(out);
    out.flush();
    if (!file.commit())
        throw kb::MessageError(QStringLiteral("Cannot write %1: %2").arg(path, file.errorString()));
}

int runReport(kb::app::CommandContext& context, const kb::app::CommandArgs& args)
{
    if (args.positional(0).compare(ClientIdCard::caption(), Qt::CaseInsensitive) == 0)
        return runClientIdCard(context, args);
    const QString pdf = args.value(QStringLiteral("pdf"));
    const QString csv = args.value(QStringLiteral("csv"));
    if (pdf.isEmpty() && csv.isEmpty())
        throw UsageError(QStringLiteral("Give --pdf FILE, --csv FILE (- for the output) or both."));
    if (args.isSet(QStringLiteral("routes")) && args.isSet(QStringLiteral("centers")))
        throw UsageError(QStringLiteral("Limit by --routes or by --centers, not both."));
    if (args.isSet(QStringLiteral("exclude")) && !args.isSet(QStringLiteral("routes")) &&
        !args.isSet(QStringLiteral("centers")))
        throw UsageError(QStringLiteral("--exclude goes with --routes or --centers."));
    const auto clock = kb::app::commandClock(context);
    const QDate from = args.date(QStringLiteral("from"), clock->today().addDays(1));
    const QDate to = args.date(QStringLiteral("to"), from);
    if (to < from) throw UsageError(QStringLiteral("--to must not lie before --from."));
    std::vector<QDate> separate;
    for (const QString& word : listOption(args, QStringLiteral("dates")))
        separate.push_back(kb::app::parseDateWord(word, QStringLiteral("--dates")));
    if (separate.size() > 4) throw UsageError(QStringLiteral("--dates takes at most four dates."));

    const QString word = args.positional(0);
    const std::optional<int> fixed = DeliveryReports::findFixed(word);
    if (fixed && *fixed == int(DeliveryReport::SelectedDietRestrictions) &&
        !args.isSet(QStringLiteral("diets")))
        throw UsageError(QStringLiteral("\"Selected Diet Restrictions\" needs the diets: --diets CODE,..."));
    const bool labels = fixed && DeliveryReports::isLabel(*fixed);
    for (const char* option : {"limit", "stock", "start"}) {
        if (!labels && args.isSet(QLatin1String(option)))
            throw UsageError(QStringLiteral("--%1 goes with the labels only.").arg(QLatin1String(option)));
    }

    kb::app::CommandSession session(context);
    kb::TDataModule1& data = session.data();
    DeliveryReportChoices choices;
    choices.from = from;
    choices.to = to;
    choices.dates[0] = from;
    choices.labelStock = stockOption(args);
    choices.labelStart = int(args.integer(QStringLiteral("start"), 1, 1000, 1));
    const kb::DataLocation& location = data.location();
    const QString folder = location.clientServer ? QString() : location.directory;
    if (fixed) {
        choices.report = *fixed;
    } else {
        QString name = word;
        if (name.endsWith(DeliveryReports::userDefinedSuffix()))
            name.chop(DeliveryReports::userDefinedSuffix().size());
        const QStringList users = folder.isEmpty()
                                      ? QStringList()
                                      : userDefinedReports(folder, DeliveryReports::userReportPrefix());
        qsizetype at = -1;
        for (qsizetype i = 0; i < users.size() && at < 0; ++i)
            at = users[i].compare(name, Qt::CaseInsensitive) == 0 ? i : -1;
        if (at < 0)
            throw UsageError(
                QStringLiteral("There is no delivery report %1. The reports: 0 to %2 or their names "
                               "(%3)%4.")
                    .arg(word)
                    .arg(DeliveryReports::fixedCount - 1)
                    .arg(DeliveryReports::names().join(QStringLiteral(", ")),
                         users.isEmpty() ? QString()
                                         : QStringLiteral(", or ") + users.join(QStringLiteral(", "))));
        choices.report = DeliveryReports::fixedCount + int(at);
        choices.userReport = users[at];
    }
    if (!separate.empty()) {
        if (!DeliveryReports::takesSeparateDates(choices.report))
            throw UsageError(QStringLiteral("--dates goes with the run sheets and the labels only."));
        choices.page = DatePage::NonContiguous;
        for (size_t i = 0; i < separate.size(); ++i)
            choices.dates[i] = separate[i];
    }
    choices.services.setEntries(serviceEntries(data.db()));
    checkEntries(choices.services, listOption(args, QStringLiteral("services")), QStringLiteral("services"),
                 [](const QString& entry, const QString& w) {
                     return QString::number(ReportLimits::ExtractServiceID(entry)) == w;
                 });
    const bool centers = args.isSet(QStringLiteral("centers"));
    choices.routeKind = centers ? RouteListKind::DistributionCenters : RouteListKind::Routes;
    choices.routes.setEntries(routeEntries(data.db(), choices.routeKind));
    checkEntries(
        choices.routes, listOption(args, centers ? QStringLiteral("centers") : QStringLiteral("routes")),
        centers ? QStringLiteral("centers") : QStringLiteral("routes"),
        [](const QString& entry, const QString& w) { return entry.compare(w, Qt::CaseInsensitive) == 0; });
    choices.excludeRoutes = args.isSet(QStringLiteral("exclude"));

    // The check of the date's run, as the screen makes it.
    kb::reports::HiddenRunPreparation preparation(data.db(), data.session(), session.ui());
    DeliveryDataCurrency(data.db(), *clock, session.ui())
        .check(from, to, StaffReportPreferences::read(data.db(), data.session().cUserName), preparation);

    DeliveryReportContext reportContext{data.db(), *clock, session.ui(), data.session().cUserName,
                                        nullptr,   folder};
    OptionAnswers answers(args);
    PdfFileOutput output(pdf);
    ReportHolder holder(output, *clock);
    holder.setDocumentName(QStringLiteral("Daily Deliveries Report"));
    DeliveryReportRun run(reportContext, answers);
    if (!run.prepare(holder, choices)) {
        context.err.flush();
        session.close();
        return 1;
    }
    if (!csv.isEmpty()) {
        const auto write = [&](QTextStream& out) {
            if (DataPipe* main = run.mainData())
                writePipeCsv(*main, out);
            else
                holder.writeCsv(out);
        };
        if (csv == QLatin1String("-"))
            write(context.out);
        else
            writeFile(csv, write);
    }
    if (!pdf.isEmpty()) {
        holder.setDestination(ReportDestination::Printer);
        holder.setShowPrintDialog(false);
        holder.print();
        context.err << "Wrote " << pdf << '\n';
    }
    holder.clearPipes();
    session.close();
    return 0;
}

const kb::app::CommandRegistration registration(
    {.name = QStringLiteral("report"),
     .arguments = QStringLiteral("NAME_OR_INDEX"),
     .description = QStringLiteral(
         "Runs a delivery report (its number 0 to 23, its name, or the name of a user-defined report) as the "
         "report screen does, to a PDF file, or writes its data set as CSV. A report of one date may first "
         "ask "
         "whether to prepare the date again (the user's Staff row decides): --yes prepares and saves it. "
         "\"Client ID Card\" prints the card of the client --client names."),
     .minArguments = 1,
     .maxArguments = 1,
     .options =
         {QCommandLineOption(QStringLiteral("from"),
                             QStringLiteral("The first date (tomorrow when not given)."),
                             QStringLiteral("YYYY-MM-DD")),
          QCommandLineOption(QStringLiteral("to"),
                             QStringLiteral("The last date (the first when not given)."),
                             QStringLiteral("YYYY-MM-DD")),
          QCommandLineOption(QStringLiteral("dates"),
                             QStringLiteral("Up to four separate dates (run sheets and labels only)."),
                             QStringLiteral("D,D,...")),
          QCommandLineOption(QStringLiteral("services"), QStringLiteral("Only these service numbers."),
                             QStringLiteral("ID,...")),
          QCommandLineOption(QStringLiteral("routes"), QStringLiteral("Only these routes."),
                             QStringLiteral("ROUTE,...")),
          QCommandLineOption(QStringLiteral("centers"),
                             QStringLiteral("Only the routes of these distribution centers."),
                             QStringLiteral("CODE,...")),
          QCommandLineOption(QStringLiteral("exclude"),
                             QStringLiteral("All but the routes or centers given.")),
          QCommandLineOption(QStringLiteral("diets"),
                             QStringLiteral("Selected Diet Restrictions: the diet codes to list."),
                             QStringLiteral("CODE,...")),
          QCommandLineOption(QStringLiteral("match"),
                             QStringLiteral("Selected Diet Restrictions: any (the default) or all of them."),
                             QStringLiteral("any|all")),
          QCommandLineOption(QStringLiteral("sort"),
                             QStringLiteral("The sort order's number in the report's own list (0 when not "
                                            "given)."),
                             QStringLiteral("N")),
          QCommandLineOption(QStringLiteral("title"),
                             QStringLiteral("Selected Diet Restrictions: a title for the report."),
                             QStringLiteral("TEXT")),
          QCommandLineOption(QStringLiteral("item"), QStringLiteral("Kitchen Item Counts: only this item."),
                             QStringLiteral("ID")),
          QCommandLineOption(
              QStringLiteral("limit"),
              QStringLiteral("Labels: the deliveries that get a label, by the number of the "
                             "limit list (0, all, when not given; 3 takes --diets and --match)."),
              QStringLiteral("N")),
          QCommandLineOption(QStringLiteral("stock"),
                             QStringLiteral("Labels and the ID card: the label stock to print on (the "
                                            "template's own when not given)."),
                             QStringLiteral("NAME")),
          QCommandLineOption(QStringLiteral("start"),
                             QStringLiteral("Labels: the first label to use on a partly used sheet, counted "
                                            "from 1 across the first row."),
                             QStringLiteral("N")),
          QCommandLineOption(QStringLiteral("client"),
                             QStringLiteral("Client ID Card: the client's Client ID."),
                             QStringLiteral("CLIENT_ID")),
          QCommandLineOption(QStringLiteral("pdf"), QStringLiteral("Write the report to this PDF file."),
                             QStringLiteral("FILE")),
          QCommandLineOption(QStringLiteral("csv"),
                             QStringLiteral("Write the report's data set as CSV to this file (- for the "
                                            "output)."),
                             QStringLiteral("FILE"))},
     .repeatable = {},
     .asksQuestions = true,
     .needsUser = true,
     .paints = true},
    runReport);

} // namespace
