// Hostile statements: nesting, chains and lengths far beyond anything a
// screen writes are refused with a clear message, never by a crash, and long
// lists of conditions still run on both stores.

#include "sql/Parser.h"
#include "store/DbError.h"
#include "TempDataDir.h"

#include <gtest/gtest.h>

using namespace kb;

namespace {

QString repeated(const QString& part, int times)
{
    QString text;
    text.reserve(part.size() * times);
    for (int i = 0; i < times; ++i)
        text += part;
    return text;
}

// Runs a statement that must be refused and gives the error's code and message.
std::pair<DbErrorCode, QString> refusal(Database& db, const QString& text)
{
    try {
        db.execute(text);
    } catch (const DbError& e) {
        return {e.code(), e.message()};
    }
    return {DbErrorCode::Other, QStringLiteral("(not refused)")};
}

QString conditions(const QString& op, const QString& compare, int count)
{
    QStringList terms;
    for (int i = 0; i < count; ++i)
        terms.append(QStringLiteral("Person_ID %1 %2").arg(compare).arg(i));
    return terms.join(QLatin1Char(' ') + op + QLatin1Char(' '));
}

class SqlBounds : public ::testing::TestWithParam<test::StoreKind>
{
protected:
    void SetUp() override
    {
        KB_REQUIRE_STORE(GetParam());
        data = std::make_unique<test::TempDataDir>(GetParam());
        data->db().execute(QStringLiteral("Insert into Clients (Person_ID, Last_Name) values (5, 'A'), (50, 'B'), "
                                          "(3999, 'C'), (4000, 'D')"));
    }
    std::unique_ptr<test::TempDataDir> data;
};

TEST_P(SqlBounds, DeepNestingIsRefusedBeforeItCanExhaustTheStack)
{
    Database& db = data->db();
    const QString tooDeep = QStringLiteral("more than %1 levels deep").arg(sql::MaxNesting);
    const auto check = [&](const QString& text) {
        const auto [code, message] = refusal(db, text);
        EXPECT_EQ(code, DbErrorCode::Syntax) << message.toStdString();
        EXPECT_TRUE(message.contains(tooDeep)) << message.toStdString();
    };
    check(QStringLiteral("select ") + repeated(QStringLiteral("("), 6000) + QLatin1Char('1') +
          repeated(QStringLiteral(")"), 6000) + QStringLiteral(" as x"));
    check(QStringLiteral("select 1") + repeated(QStringLiteral(" + 1"), 4000) + QStringLiteral(" as x"));
    check(QStringLiteral("select 'a'") + repeated(QStringLiteral(" || 'a'"), 100000) + QStringLiteral(" as x"));
    check(QStringLiteral("select ") + repeated(QStringLiteral("not "), 50000) + QStringLiteral("true as x"));
    check(QStringLiteral("select ") + repeated(QStringLiteral("- "), 50000) + QStringLiteral("1 as x"));
    check(QStringLiteral("select ") + repeated(QStringLiteral("Upper("), 5000) + QStringLiteral("'a'") +
          repeated(QStringLiteral(")"), 5000) + QStringLiteral(" as x"));
    check(QStringLiteral("select ") + repeated(QStringLiteral("(select "), 3000) + QLatin1Char('1') +
          repeated(QStringLiteral(")"), 3000) + QStringLiteral(" as x"));
    check(QStringLiteral("select * from ") + repeated(QStringLiteral("(select * from "), 3000) +
          QStringLiteral("Config") + repeated(QStringLiteral(") a"), 3000));
    check(QStringLiteral("select Person_ID from Clients where Person_ID") + repeated(QStringLiteral(" is null"), 5000));
    // The session goes on as before.
    EXPECT_EQ(db.execute(QStringLiteral("select count(*) as N from Clients")).value(0, 0).toInt(), 4);
}

TEST_P(SqlBounds, LongListsOfConditionsRunOnTheStore)
{
    Database& db = data->db();
    for (const int terms : {2, 3, 100, 4000}) {
        const ResultSet any = db.execute(QStringLiteral("select count(*) as N from Clients where ") +
                                         conditions(QStringLiteral("or"), QStringLiteral("="), terms));
        EXPECT_EQ(any.value(0, 0).toInt(), terms > 3999 ? 3 : terms > 50 ? 2 : 0) << terms;
        const ResultSet none = db.execute(QStringLiteral("select count(*) as N from Clients where ") +
                                          conditions(QStringLiteral("and"), QStringLiteral("<>"), terms));
        EXPECT_EQ(none.value(0, 0).toInt(), terms > 3999 ? 1 : terms > 50 ? 2 : 4) << terms;
    }
    // Mixed AND and OR keep their precedence.
    const ResultSet mixed = db.execute(
        QStringLiteral("select count(*) as N from Clients where Person_ID = 5 or Person_ID = 50 and Last_Name = 'X' "
                       "or Person_ID = 4000 and not Last_Name = 'X'"));
    EXPECT_EQ(mixed.value(0, 0).toInt(), 2);
}

TEST_P(SqlBounds, TextsBeyondTheLimitAndNestingTheStoreCannotReadAreClearErrors)
{
    Database& db = data->db();
    const auto [code, message] =
        refusal(db, QStringLiteral("select '") + repeated(QStringLiteral("x"), int(sql::MaxStatementLength)) +
                        QStringLiteral("' as x"));
    EXPECT_EQ(code, DbErrorCode::Syntax);
    EXPECT_TRUE(message.contains(QLatin1String("at most"))) << message.toStdString();

    // Within the dialect's bound, a nesting the store's own parser cannot
    // hold is told in words, not in the store's.
    const QString nested = QStringLiteral("select ") + repeated(QStringLiteral("If(Person_ID = 1 then "), 100) +
                           QLatin1Char('1') + repeated(QStringLiteral(" else 0)"), 100) +
                           QStringLiteral(" as x from Clients");
    try {
        const ResultSet rows = db.execute(nested);
        EXPECT_EQ(rows.rowCount(), 4); // a store with room enough runs it
    } catch (const DbError& e) {
        EXPECT_EQ(e.code(), DbErrorCode::Syntax);
        EXPECT_EQ(e.message().left(statementTooComplex().size()), statementTooComplex()) << e.what();
    }
}

TEST_P(SqlBounds, ATranslationThatGrowsGeometricallyMeetsABound)
{
    // Numbers of unknown type joined as text are written out with their
    // operand named several times; chained, each step multiplies the text.
    // (A fuzzer's find, kept as it was found.)
    const QString chain = QStringLiteral(
        "select- :naz||- :FRESCAPE*- :na- :FRESC- :lect- :naz||- :FRESCAPE*- :na- :FRESC- :nAPE*- :na- :FRESC"
        "APEESCAPE*- :lect- :naz||- :FRESCAPEnaz||- :FRESCRESC- :naz||- :FRESCAPE*- :na- :FRESCAPEESCAPE*- :l"
        "ecAPE*- :na- :FRESCAPEESCAPE*- :az||- :FRESCRESC- :naz||- :FRESCAPE*- :na- :FRESCAPEESCAPE*- :lecAPE"
        "*- :na- :FRES- :FRESCAPEESCAPE*- :az||- :FRESCRESC- :naz||- :FRESCAPE*- :na- :FRESCAPEESCAPE*- :lecA"
        "PE*- :na- :FRESCAPEESCAPE*- :lect- :naz||- :FRESct- :naz||- :FRESCAPE*- :na- :FRESCJJJr");
    Database& db = data->db();
    if (GetParam() == test::StoreKind::SQLite) {
        const auto [code, message] = refusal(db, chain);
        EXPECT_EQ(code, DbErrorCode::Syntax);
        EXPECT_TRUE(message.contains(QLatin1String("too large to translate"))) << message.toStdString();
    } else {
        // The server writes each conversion once; whatever it makes of the
        // unbound parameters, the session goes on.
        try {
            db.execute(chain);
        } catch (const DbError&) {
        }
    }
    EXPECT_EQ(db.execute(QStringLiteral("select count(*) as N from Clients")).value(0, 0).toInt(), 4);
}

INSTANTIATE_TEST_SUITE_P(Stores, SqlBounds, ::testing::Values(test::StoreKind::SQLite, test::StoreKind::PostgreSQL),
                         [](const auto& info) { return test::storeName(info.param); });

} // namespace
