// The one command-line parser as a user meets it: every kind of bad word is
// refused with exit code 2 and a message that names it, before any data is
// touched; --help works per command.

#include "RunCommand.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

using kb::test::runKettlebrook;

namespace {

void expectRefused(const QStringList& words, const char* messagePart)
{
    const auto result = runKettlebrook(words);
    EXPECT_EQ(result.exitCode, 2) << words.join(u' ').toStdString() << "\n" << result.err.toStdString();
    EXPECT_TRUE(result.err.contains(QLatin1String(messagePart)))
        << words.join(u' ').toStdString() << "\n" << result.err.toStdString();
    EXPECT_TRUE(result.out.isEmpty()) << result.out.toStdString();
}

TEST(CommandLine, RefusesBadWordsWithExitTwoAndAMessage)
{
    // Without a value --data must not fall through to the desktop program.
    expectRefused({QStringLiteral("--data")}, "Missing value after '--data'");
    expectRefused({QStringLiteral("--today"), QString(), QStringLiteral("sql"), QStringLiteral("select 1")},
                  "--today YYYY-MM-DD needs a value");
    expectRefused({QStringLiteral("--today"), QStringLiteral("2024-02-30"), QStringLiteral("sql"),
                   QStringLiteral("select 1")},
                  "--today needs a date as YYYY-MM-DD, not '2024-02-30'");
    expectRefused({QStringLiteral("--data"), QStringLiteral("a"), QStringLiteral("--data"), QStringLiteral("b"),
                   QStringLiteral("sql"), QStringLiteral("select 1")},
                  "--data DIR is given 2 times");
    expectRefused({QStringLiteral("--data"), QStringLiteral("a"), QStringLiteral("--server"), QStringLiteral("h/d"),
                   QStringLiteral("sql"), QStringLiteral("select 1")},
                  "not both");
    expectRefused({QStringLiteral("--colour"), QStringLiteral("sql")}, "Unknown option 'colour'");
    expectRefused({QStringLiteral("frobnicate")}, "Unknown command 'frobnicate'");

    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("never"));
    // Out of range numbers are refused, never wrapped; nothing is created.
    expectRefused({QStringLiteral("init"), path, QStringLiteral("--demo"), QStringLiteral("3000000000")},
                  "--demo needs a whole number from 0 to 1000000, not '3000000000'");
    EXPECT_FALSE(QFileInfo::exists(path));
    expectRefused({QStringLiteral("init"), path, QStringLiteral("--seed"), QStringLiteral("-1")}, "--seed");
    expectRefused({QStringLiteral("init"), path, QStringLiteral("--demo"), QStringLiteral("5"),
                   QStringLiteral("--demo"), QStringLiteral("6")},
                  "--demo is given 2 times; give it once");
    expectRefused({QStringLiteral("init"), path, QStringLiteral("extra")}, "Unexpected argument 'extra' for init");
    expectRefused({QStringLiteral("init"), path, QStringLiteral("--demo")}, "Missing value after '--demo'");
    EXPECT_FALSE(QFileInfo::exists(path));

    expectRefused({QStringLiteral("--user"), QStringLiteral("keeperin"), QStringLiteral("prepare"),
                   QStringLiteral("11/03/2024")},
                  "prepare needs a date as YYYY-MM-DD, not '11/03/2024'");
    expectRefused({QStringLiteral("prepare"), QStringLiteral("2024-03-11")}, "give --user NAME");
    expectRefused({QStringLiteral("--user"), QStringLiteral("keeperin"), QStringLiteral("prepare"),
                   QStringLiteral("2024-03-11"), QStringLiteral("--type"), QStringLiteral("Q")},
                  "--type needs one of A, O, E, S, B, not 'Q'");
    expectRefused({QStringLiteral("sql")}, "sql needs TEXT");
    expectRefused({QStringLiteral("sql"), QStringLiteral("select 1"), QStringLiteral("--param"), QStringLiteral("x")},
                  "--param needs Name=Value, not 'x'");
    expectRefused({QStringLiteral("order-stops"), QStringLiteral("--time-limit-ms"), QStringLiteral("0"),
                   QStringLiteral("--tsplib"), QStringLiteral("f")},
                  "--time-limit-ms needs a whole number from 1");
    expectRefused({QStringLiteral("order-stops"), QStringLiteral("--open"), QStringLiteral("--open")},
                  "--open is given 2 times");
}

TEST(CommandLine, HelpListsTheCommandsAndEachCommandExplainsItself)
{
    const auto all = runKettlebrook({QStringLiteral("--help")});
    EXPECT_EQ(all.exitCode, 0);
    for (const char* command : {"init DIR", "sql TEXT", "prepare DATE", "order-stops"})
        EXPECT_TRUE(all.out.contains(QLatin1String(command))) << command;

    const auto prepare = runKettlebrook({QStringLiteral("prepare"), QStringLiteral("--help")});
    EXPECT_EQ(prepare.exitCode, 0);
    EXPECT_TRUE(prepare.out.contains(QLatin1String("--type A|O|E|S|B"))) << prepare.out.toStdString();
    EXPECT_TRUE(prepare.out.contains(QLatin1String("--user NAME"))) << prepare.out.toStdString();
}

} // namespace
