#include "CommandLine.h"

#include <QCommandLineParser>
#include <QRegularExpression>

namespace kb::app {

namespace {

QString optionWord(const QString& name)
{
    return (name.size() == 1 ? QStringLiteral("-") : QStringLiteral("--")) + name;
}

QString optionUsage(const QCommandLineOption& option)
{
    QString text = optionWord(option.names().first());
    if (!option.valueName().isEmpty()) text += QLatin1Char(' ') + option.valueName();
    return text;
}

// How often each option name stands in the parsed words; QCommandLineParser
// lists every occurrence.
int occurrences(const QCommandLineParser& parser, const QCommandLineOption& option)
{
    int n = 0;
    for (const QString& seen : parser.optionNames())
        n += option.names().contains(seen) ? 1 : 0;
    return n;
}

const QCommandLineOption& yesOption()
{
    static const QCommandLineOption option(QStringLiteral("yes"),
                                           QStringLiteral("Answer Yes to every question."));
    return option;
}

const QCommandLineOption& noOption()
{
    static const QCommandLineOption option(QStringLiteral("no"),
                                           QStringLiteral("Answer No to every question."));
    return option;
}

const QCommandLineOption& helpOption()
{
    static const QCommandLineOption option(QStringList{QStringLiteral("help"), QStringLiteral("h")},
                                           QStringLiteral("Show this help."));
    return option;
}

} // namespace

QDate parseDateWord(const QString& text, const QString& what)
{
    static const QRegularExpression shape(QStringLiteral("^\\d{4}-\\d{2}-\\d{2}$"));
    const QDate date = shape.match(text).hasMatch() ? QDate::fromString(text, Qt::ISODate) : QDate();
    if (!date.isValid())
        throw UsageError(QStringLiteral("%1 needs a date as YYYY-MM-DD, not '%2'.").arg(what, text));
    return date;
}

qint64 parseIntegerWord(const QString& text, const QString& what, qint64 min, qint64 max)
{
    bool ok = false;
    const qint64 n = text.trimmed() == text ? text.toLongLong(&ok) : 0;
    if (!ok || n < min || n > max)
        throw UsageError(QStringLiteral("%1 needs a whole number from %2 to %3, not '%4'.")
                             .arg(what)
                             .arg(min)
                             .arg(max)
                             .arg(text));
    return n;
}

QString CommandDefinition::usage() const
{
    QString text = name;
    if (!arguments.isEmpty()) text += QLatin1Char(' ') + arguments;
    for (const QCommandLineOption& option : options) {
        text += QStringLiteral(" [") + optionUsage(option) + QLatin1Char(']');
        if (repeatable.contains(option.names().first())) text += QStringLiteral("...");
    }
    if (asksQuestions) text += QStringLiteral(" [--yes|--no]");
    if (needsUser) text += QStringLiteral("  (needs --user)");
    return text;
}

QString CommandDefinition::help() const
{
    QString text = QStringLiteral("Usage: kettlebrook [--data DIR | --server HOST[:PORT]/DATABASE]");
    if (needsUser) text += QStringLiteral(" --user NAME");
    text += QStringLiteral(" [--today YYYY-MM-DD] ") + name;
    if (!arguments.isEmpty()) text += QLatin1Char(' ') + arguments;
    text += QStringLiteral(" [options]\n\n") + description + QStringLiteral("\n\nOptions:\n");
    QList<QCommandLineOption> shown = options;
    if (asksQuestions) shown << yesOption() << noOption();
    shown << helpOption();
    qsizetype width = 0;
    for (const QCommandLineOption& option : shown)
        width = std::max(width, optionUsage(option).size());
    for (const QCommandLineOption& option : shown) {
        text += QStringLiteral("  ") + optionUsage(option).leftJustified(width + 2) + option.description();
        if (repeatable.contains(option.names().first()))
            text += QStringLiteral(" May be given more than once.");
        text += QLatin1Char('\n');
    }
    return text;
}

CommandArgs CommandArgs::parse(const CommandDefinition& definition, const QStringList& words)
{
    const QString tryHelp = QStringLiteral(" See: kettlebrook %1 --help").arg(definition.name);
    QCommandLineParser parser;
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    parser.addOption(helpOption());
    for (const QCommandLineOption& option : definition.options)
        parser.addOption(option);
    if (definition.asksQuestions) {
        parser.addOption(yesOption());
        parser.addOption(noOption());
    }
    CommandArgs args;
    if (!parser.parse(QStringList{definition.name} + words))
        throw UsageError(QStringLiteral("%1: %2%3").arg(definition.name, parser.errorText(), tryHelp));
    if (parser.isSet(helpOption())) {
        args.m_help = true;
        return args;
    }
    for (const QCommandLineOption& option : definition.options) {
        const QString name = option.names().first();
        const int count = occurrences(parser, option);
        if (count > 1 && !definition.repeatable.contains(name))
            throw UsageError(QStringLiteral("%1: %2 is given %3 times; give it once.%4")
                                 .arg(definition.name, optionWord(name))
                                 .arg(count)
                                 .arg(tryHelp));
        if (option.valueName().isEmpty()) {
            if (count > 0) args.m_flags << name;
            continue;
        }
        for (const QString& value : parser.values(option)) {
            if (value.isEmpty())
                throw UsageError(QStringLiteral("%1: %2 needs a value.%3")
                                     .arg(definition.name, optionUsage(option), tryHelp));
            args.m_values.append({name, value});
        }
    }
    if (definition.asksQuestions) {
        const bool yes = parser.isSet(yesOption());
        const bool no = parser.isSet(noOption());
        if (yes && no)
            throw UsageError(QStringLiteral("%1: give --yes or --no, not both.").arg(definition.name));
        args.m_answers = yes ? AnswerPolicy::Yes : no ? AnswerPolicy::No : AnswerPolicy::Least;
    }
    args.m_positionals = parser.positionalArguments();
    const int given = int(args.m_positionals.size());
    if (given < definition.minArguments)
        throw UsageError(
            QStringLiteral("%1 needs %2. Usage: kettlebrook %3")
                .arg(definition.name,
                     definition.arguments.isEmpty() ? QStringLiteral("more words") : definition.arguments,
                     definition.usage()));
    if (definition.maxArguments >= 0 && given > definition.maxArguments)
        throw UsageError(
            QStringLiteral("Unexpected argument '%1' for %2. Usage: kettlebrook %3")
                .arg(args.m_positionals.at(definition.maxArguments), definition.name, definition.usage()));
    return args;
}

bool CommandArgs::isSet(const QString& option) const
{
    if (m_flags.contains(option)) return true;
    for (const auto& [name, value] : m_values)
        if (name == option) return true;
    return false;
}

QString CommandArgs::value(const QString& option, const QString& fallback) const
{
    for (const auto& [name, value] : m_values)
        if (name == option) return value;
    return fallback;
}

QStringList CommandArgs::values(const QString& option) const
{
    QStringList all;
    for (const auto& [name, value] : m_values)
        if (name == option) all << value;
    return all;
}

QDate CommandArgs::date(const QString& option, const QDate& fallback) const
{
    return isSet(option) ? parseDateWord(value(option), optionWord(option)) : fallback;
}

QDate CommandArgs::datePositional(int index, const QString& what) const
{
    return parseDateWord(positional(index), what);
}

qint64 CommandArgs::integer(const QString& option, qint64 min, qint64 max, qint64 fallback) const
{
    return isSet(option) ? parseIntegerWord(value(option), optionWord(option), min, max) : fallback;
}

qint64 CommandArgs::integerPositional(int index, const QString& what, qint64 min, qint64 max) const
{
    return parseIntegerWord(positional(index), what, min, max);
}

QString CommandArgs::choice(const QString& option, const QStringList& allowed, const QString& fallback) const
{
    if (!isSet(option)) return fallback;
    const QString given = value(option);
    for (const QString& word : allowed)
        if (word.compare(given, Qt::CaseInsensitive) == 0) return word;
    throw UsageError(QStringLiteral("%1 needs one of %2, not '%3'.")
                         .arg(optionWord(option), allowed.join(QStringLiteral(", ")), given));
}

QString GlobalOptions::usage()
{
    return QStringLiteral(
        "usage: kettlebrook [--data DIR | --server HOST[:PORT]/DATABASE] [--user NAME] [--today YYYY-MM-DD]\n"
        "                   [COMMAND [ARGS]]\n"
        "Without a command, starts the desktop program. 'kettlebrook COMMAND --help' explains a command.\n");
}

GlobalOptions GlobalOptions::parse(const QStringList& words)
{
    GlobalOptions result;
    // The debug-log switches are read from the first three words only.
    QStringList remaining;
    for (qsizetype i = 0; i < words.size(); ++i) {
        if (i < 3 && words[i].toUpper().contains(QLatin1String("CODESITE")))
            result.debugSwitches << words[i];
        else
            remaining << words[i];
    }

    const QCommandLineOption data(QStringLiteral("data"), QStringLiteral("The data directory."),
                                  QStringLiteral("DIR"));
    const QCommandLineOption server(QStringLiteral("server"), QStringLiteral("The database server."),
                                    QStringLiteral("HOST[:PORT]/DATABASE"));
    const QCommandLineOption user(QStringLiteral("user"), QStringLiteral("Sign in as this user."),
                                  QStringLiteral("NAME"));
    const QCommandLineOption today(QStringLiteral("today"), QStringLiteral("Run as if on this date."),
                                   QStringLiteral("YYYY-MM-DD"));
    const QCommandLineOption version(QStringLiteral("version"), QStringLiteral("Print the version."));
    QCommandLineParser parser;
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    parser.setOptionsAfterPositionalArgumentsMode(QCommandLineParser::ParseAsPositionalArguments);
    parser.addOptions({data, server, user, today, helpOption(), version});
    if (!parser.parse(QStringList{QStringLiteral("kettlebrook")} + remaining))
        throw UsageError(parser.errorText() + QStringLiteral(" See: kettlebrook --help"));

    const auto single = [&](const QCommandLineOption& option) {
        const QStringList values = parser.values(option);
        const QString word = optionUsage(option);
        if (values.size() > 1)
            throw UsageError(
                QStringLiteral("%1 is given %2 times; give it once.").arg(word).arg(values.size()));
        if (!values.isEmpty() && values.first().trimmed().isEmpty())
            throw UsageError(QStringLiteral("%1 needs a value.").arg(word));
        return values.value(0);
    };
    result.dataDir = single(data);
    result.server = single(server);
    result.user = single(user);
    result.today = single(today);
    if (!result.dataDir.isEmpty() && !result.server.isEmpty())
        throw UsageError(QStringLiteral("Give --data or --server, not both."));
    if (!result.today.isEmpty()) parseDateWord(result.today, QStringLiteral("--today"));
    result.help = parser.isSet(helpOption());
    result.version = parser.isSet(version);
    const QStringList positionals = parser.positionalArguments();
    if (!positionals.isEmpty()) {
        result.command = positionals.first();
        result.rest = positionals.mid(1);
    }
    return result;
}

} // namespace kb::app
