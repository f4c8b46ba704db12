// run_save_bench [--clients N | --data DIR | --server ADDRESS] [--repeat R] [--date YYYY-MM-DD]:
// preparing and saving one date's run of a demo agency (10,000 clients by
// default) as the run screen does, against a lower bound measured in the
// same run: the same number of Deliveri and MealCrdt rows inserted in one
// transaction with prepared statements straight through the store (the
// statements the layer makes for the save's own inserts, run with
// StoreStatement::executeMany, every value converted beforehand). The first
// save finds the date empty; the repeated ones replace the earlier save.
// The data is a demo agency made on SQLite in a temporary directory or, with
// --server HOST[:PORT]/DATABASE, in a schema of its own on that server
// (dropped afterwards), or an existing data directory.

#include "BenchDemo.h"

#include "confirmation/GivenItemConfirmation.h"
#include "save/RunSaver.h"
#include "sql/Parser.h"
#include "sql/Translator.h"
#include "store/ValueConversion.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <cstdio>

namespace {

const char* const deliveriColumns =
    "Deliv_ID, Deliv_Dt, DOW, Route_ID, Client_ID, Person_ID, Stop, Delivery_Type, "
    "Svcs_Used, Cuisine_ID, Diet_Restr, Diet_Descr, Cold_Bag_ID, Custom_Items, "
    "Number_Meals, Number_Labels, Address_OverRidden, Funding_Desc, ZIP, "
    "Delivery_Status";
const char* const mealCrdtColumns =
    "Deliv_ID, Person_ID, Deliv_Dt, DOW, Item_ID, Quantity, Congregate, Modified_Ml, "
    "Service_ID, Sort_Order";

// One table's rows, ready to go to the store: its insert as the layer
// translates it, prepared, and every row's values converted to the types the
// statement takes.
struct PreparedInsert
{
    kb::sql::TranslatedStatement translation;
    std::vector<std::unique_ptr<kb::StoreStatement>> steps;
    std::vector<std::vector<QVariant>> rows;

    PreparedInsert(kb::Database& db, const QString& table, const QString& columns,
                   const kb::ResultSet& source, qint64 idOffset, const QDate& date)
    {
        QStringList names = columns.split(QStringLiteral(", "));
        const QString text = QStringLiteral("Insert into %1 (%2) values (:%3)")
                                 .arg(table, columns, names.join(QStringLiteral(", :")));
        translation = kb::sql::translate(kb::sql::parseStatements(text).front(), db.dialect(), db);
        for (const kb::sql::StoreSql& step : translation.steps)
            steps.push_back(db.store().prepare(step.text));
        for (qsizetype r = 0; r < source.rowCount(); ++r) {
            std::vector<QVariant> values;
            for (const kb::sql::ParamInfo& p : translation.params) {
                QVariant v = source.value(r, p.name);
                if (p.name.compare(QLatin1String("Deliv_ID"), Qt::CaseInsensitive) == 0)
                    v = v.toLongLong() + idOffset;
                else if (p.name.compare(QLatin1String("Deliv_Dt"), Qt::CaseInsensitive) == 0)
                    v = date;
                values.push_back(kb::toCanonical(v, p.type, p.name));
            }
            rows.push_back(std::move(values));
        }
    }

    void run()
    {
        for (size_t s = 0; s < steps.size(); ++s) {
            const kb::sql::StoreSql& step = translation.steps[s];
            if (step.params.empty()) {
                steps[s]->execute();
                steps[s]->reset();
                continue;
            }
            std::vector<kb::FieldType> types;
            std::vector<std::vector<QVariant>> picked;
            for (int index : step.params)
                types.push_back(translation.params[size_t(index)].type);
            for (const auto& row : rows) {
                std::vector<QVariant> v;
                for (int index : step.params)
                    v.push_back(row[size_t(index)]);
                picked.push_back(std::move(v));
            }
            steps[s]->executeMany(picked, types);
            steps[s]->reset();
        }
    }
};

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    BenchOptions defaults;
    defaults.repeat = 5;
    const BenchOptions options = BenchOptions::read(app.arguments().mid(1), defaults);
    BenchRun bench(options, QStringLiteral("kb_save_bench"));
    kb::Database& db = *bench.db;
    kb::TFormRunPrepare& form = *bench.form;
    kb::GivenItemConfirmation all = kb::GivenItemConfirmation::all();
    form.setItemConfirmation(&all);

    QElapsedTimer timer;
    timer.start();
    form.ActionPrepare();
    const double prepareMs = timer.nsecsElapsed() / 1e6;
    std::printf("prepare %s: %lld rows in %.1f ms\n", qPrintable(options.date.toString(Qt::ISODate)),
                static_cast<long long>(form.table().rowCount()), prepareMs);

    Timings saves;
    std::optional<kb::SaveResult> saved;
    for (int i = 0; i <= options.repeat; ++i) {
        form.ActionPrepare(); // a save leaves Save disabled until the next change
        timer.restart();
        saved = form.ActionSaveData();
        const double ms = timer.nsecsElapsed() / 1e6;
        if (!saved) {
            std::printf("the save failed (%d messages)\n", bench.ui.messages);
            return 1;
        }
        if (i == 0)
            std::printf("save, the date held nothing: %lld deliveries, %lld MealCrdt rows in %.1f ms\n",
                        static_cast<long long>(saved->deliveries),
                        static_cast<long long>(saved->mealCrdtRows), ms);
        else
            saves.add(ms);
    }
    std::printf("save over the earlier save: min %.1f ms, median %.1f ms, max %.1f ms over %d runs\n",
                saves.min(), saves.median(), saves.max(), options.repeat);

    // The bound: the rows the save wrote, once more under another date and
    // numbers no save uses, committed, then taken away again.
    const kb::Params date{{QStringLiteral("D"), options.date}};
    const QDate boundDate = options.date.addYears(30);
    const qint64 offset = 1000000000;
    const kb::ResultSet deliveri = db.execute(
        QStringLiteral("Select %1 from Deliveri where Deliv_Dt = :D").arg(QLatin1String(deliveriColumns)),
        date);
    const kb::ResultSet mealCrdt = db.execute(
        QStringLiteral("Select %1 from MealCrdt where Deliv_Dt = :D").arg(QLatin1String(mealCrdtColumns)),
        date);
    Timings bound;
    for (int i = 0; i < options.repeat; ++i) {
        PreparedInsert deliveries(db, QStringLiteral("Deliveri"), QLatin1String(deliveriColumns), deliveri,
                                  offset, boundDate);
        PreparedInsert items(db, QStringLiteral("MealCrdt"), QLatin1String(mealCrdtColumns), mealCrdt, offset,
                             boundDate);
        timer.restart();
        db.store().begin();
        deliveries.run();
        items.run();
        db.store().commit();
        bound.add(timer.nsecsElapsed() / 1e6);
        db.execute(QStringLiteral(
                       "Delete from Deliveri where Deliv_Dt = :D; Delete from MealCrdt where Deliv_Dt = :D"),
                   {{QStringLiteral("D"), boundDate}});
    }
    std::printf(
        "lower bound, %lld Deliveri and %lld MealCrdt rows through the store's prepared statements in one "
        "transaction: min %.1f ms, median %.1f ms\n",
        static_cast<long long>(deliveri.rowCount()), static_cast<long long>(mealCrdt.rowCount()), bound.min(),
        bound.median());
    std::printf("prepare + save: %.1f ms; save / lower bound: %.2fx (medians)\n", prepareMs + saves.median(),
                saves.median() / bound.median());
    form.FormClose();
    return 0;
}
