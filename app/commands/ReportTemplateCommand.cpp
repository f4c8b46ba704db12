// kettlebrook report-template FILE --data-csv NAME=FILE... [--link D.F=M.F]...
//     [--param NAME=VALUE]... [--stock NAME] [--start N] (--pdf OUT | --csv)
// Renders any report template over pipes read from CSV files: what a
// template's author uses to try a layout, and what the tests render.

#include "CommandRegistry.h"

#include "Clock.h"
#include "ReportHolder.h"
#include "data/CsvRows.h"
#include "data/RowsPipe.h"
#include "engine/ReportDocument.h"
#include "model/LabelStock.h"
#include "store/Database.h"

#include <QFileInfo>

namespace {

using kb::app::UsageError;

std::pair<QString, QString> splitPair(const QString& text, const QString& option)
{
    const qsizetype eq = text.indexOf(u'=');
    if (eq <= 0 || eq == text.size() - 1)
        throw UsageError(QStringLiteral("--%1 needs NAME=VALUE, not '%2'.").arg(option, text));
    return {text.left(eq).trimmed(), text.mid(eq + 1)};
}

std::pair<QString, QString> splitField(const QString& text)
{
    const qsizetype dot = text.indexOf(u'.');
    if (dot <= 0 || dot == text.size() - 1)
        throw UsageError(QStringLiteral("--link needs PIPE.FIELD=PIPE.FIELD, not '%1'.").arg(text));
    return {text.left(dot), text.mid(dot + 1)};
}

int runReportTemplate(kb::app::CommandContext& context, const kb::app::CommandArgs& args)
{
    const QString templatePath = args.positional(0);
    const QString pdf = args.value(QStringLiteral("pdf"));
    const bool csv = args.isSet(QStringLiteral("csv"));
    if (pdf.isEmpty() == !csv)
        throw UsageError(QStringLiteral("Give either --pdf OUT or --csv."));
    const auto clock = kb::app::commandClock(context);

    kb::reports::PdfFileOutput output(pdf);
    kb::reports::ReportHolder holder(output, *clock);
    holder.setTemplateFileName(templatePath);

    // Pipes from CSV files; links make details follow their masters.
    std::vector<kb::reports::RowsPipe*> pipes;
    for (const QString& pair : args.values(QStringLiteral("data-csv"))) {
        const auto [name, file] = splitPair(pair, QStringLiteral("data-csv"));
        if (!QFileInfo(file).isFile())
            throw UsageError(QStringLiteral("--data-csv %1: there is no file %2.").arg(name, file));
        auto pipe = std::make_unique<kb::reports::RowsPipe>(name, kb::reports::readCsvRows(file));
        pipes.push_back(pipe.get());
        holder.addPipe(std::move(pipe));
    }
    auto findPipe = [&](const QString& name) {
        for (kb::reports::RowsPipe* p : pipes) {
            if (p->name().compare(name, Qt::CaseInsensitive) == 0)
                return p;
        }
        throw UsageError(QStringLiteral("--link names the pipe %1, which no --data-csv gives.").arg(name));
    };
    // Links of one detail to one master join into one key.
    std::vector<std::pair<std::pair<kb::reports::RowsPipe*, kb::reports::RowsPipe*>,
                          std::vector<std::pair<QString, QString>>>>
        links;
    for (const QString& text : args.values(QStringLiteral("link"))) {
        const auto [detailSide, masterSide] = splitPair(text, QStringLiteral("link"));
        const auto [detailPipe, detailField] = splitField(detailSide);
        const auto [masterPipe, masterField] = splitField(masterSide);
        kb::reports::RowsPipe* detail = findPipe(detailPipe);
        kb::reports::RowsPipe* master = findPipe(masterPipe);
        const auto key = std::make_pair(detail, master);
        auto it = std::find_if(links.begin(), links.end(), [&](const auto& l) { return l.first == key; });
        if (it == links.end())
            it = links.insert(links.end(), {key, {}});
        it->second.emplace_back(detailField, masterField);
    }
    for (const auto& [pair, fields] : links)
        pair.first->linkTo(*pair.second, fields);

    for (const QString& text : args.values(QStringLiteral("param"))) {
        const qsizetype eq = text.indexOf(u'=');
        if (eq <= 0)
            throw UsageError(QStringLiteral("--param needs NAME=VALUE, not '%1'.").arg(text));
        holder.setParameter(text.left(eq).trimmed(), text.mid(eq + 1));
    }
    if (args.isSet(QStringLiteral("stock"))) {
        const QString name = args.value(QStringLiteral("stock"));
        const auto* stock = kb::reports::LabelStock::find(name);
        if (!stock) {
            QStringList names;
            for (const auto& s : kb::reports::LabelStock::catalogue())
                names << s.name;
            throw UsageError(QStringLiteral("--stock: there is no label stock named '%1' (%2).")
                                 .arg(name, names.join(QStringLiteral(", "))));
        }
        holder.setLabelStock(stock);
    }
    holder.setLabelStartPosition(int(args.integer(QStringLiteral("start"), 1, 1000, 1)));

    // A template that brings its own data reads the agency's data.
    std::unique_ptr<kb::Database> db;
    if (!context.dataDir.isEmpty() || !context.server.isEmpty()) {
        db = kb::app::openCommandDatabase(context, *clock);
        holder.setDatabase(db.get());
    }

    holder.loadTemplate();
    if (csv) {
        holder.writeCsv(context.out);
        return 0;
    }
    holder.setDestination(kb::reports::ReportDestination::Printer);
    holder.setShowPrintDialog(false);
    holder.print();
    context.err << "Wrote " << pdf << '\n';
    return 0;
}

const kb::app::CommandRegistration registration(
    {.name = QStringLiteral("report-template"),
     .arguments = QStringLiteral("FILE"),
     .description = QStringLiteral(
         "Renders a report template over pipes read from CSV files (a header line of field names) to a PDF file, "
         "or writes the rows of its main pipe as CSV. Details follow their masters through --link."),
     .minArguments = 1,
     .maxArguments = 1,
     .options = {QCommandLineOption(QStringLiteral("data-csv"),
                                    QStringLiteral("A pipe named NAME with the rows of the CSV file FILE."),
                                    QStringLiteral("NAME=FILE")),
                 QCommandLineOption(QStringLiteral("link"),
                                    QStringLiteral("The detail pipe shows the rows whose field equals the master's."),
                                    QStringLiteral("DETAIL.FIELD=MASTER.FIELD")),
                 QCommandLineOption(QStringLiteral("param"), QStringLiteral("A report parameter."),
                                    QStringLiteral("NAME=VALUE")),
                 QCommandLineOption(QStringLiteral("stock"), QStringLiteral("Print the labels on this label stock."),
                                    QStringLiteral("NAME")),
                 QCommandLineOption(QStringLiteral("start"),
                                    QStringLiteral("The first label on the sheet, counted from 1 (default 1)."),
                                    QStringLiteral("N")),
                 QCommandLineOption(QStringLiteral("pdf"), QStringLiteral("Write the report to this PDF file."),
                                    QStringLiteral("OUT")),
                 QCommandLineOption(QStringLiteral("csv"), QStringLiteral("Write the main pipe's rows as CSV."))},
     .repeatable = {QStringLiteral("data-csv"), QStringLiteral("link"), QStringLiteral("param")},
     .paints = true},
    runReportTemplate);

} // namespace
