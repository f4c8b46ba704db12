#pragma once

#include <QCommandLineOption>
#include <QDate>
#include <QList>
#include <QStringList>

#include <stdexcept>

namespace kb::app {

// Bad words on the command line. The message names what is wrong and what
// to do; the process ends with exit code 2 before anything is opened.
class UsageError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
    explicit UsageError(const QString& message) : std::runtime_error(message.toStdString()) {}
};

// How a headless command's questions are answered: --yes, --no, or, with
// neither, the answer that changes the least (No, or Cancel where offered).
enum class AnswerPolicy { Least, Yes, No };

// What a command accepts: its positional words and its options. One parser
// reads every command from this, refuses bad input the same way everywhere
// and writes each command's --help.
struct CommandDefinition
{
    QString name;        // the command word, "prepare"
    QString arguments;   // the positional words as usage shows them: "DATE"
    QString description; // what the command does, for --help
    int minArguments = 0;
    int maxArguments = 0;              // -1: any number
    QList<QCommandLineOption> options; // the command's own options
    QStringList repeatable;            // options that may be given more than once
    bool asksQuestions = false;        // takes --yes and --no
    bool needsUser = false;            // signs in: needs --user before the command
    bool paints = false;               // draws pages (reports, labels): runs with fonts, without a screen

    // "prepare DATE [--type A|O|E|S|B]", for the command list.
    QString usage() const;
    // The usage line, the description and every option, for COMMAND --help.
    QString help() const;
};

// A command's words after parsing against its definition. Every reader refuses a
// malformed value with a UsageError naming the option and the form it needs.
class CommandArgs
{
public:
    // Throws UsageError for an unknown option, a missing or empty value, an
    // option given twice that is not repeatable, or the wrong number of
    // positional words. helpRequested() is true, and nothing else checked,
    // when the words hold --help.
    static CommandArgs parse(const CommandDefinition& definition, const QStringList& words);

    bool helpRequested() const { return m_help; }
    const QStringList& positionals() const { return m_positionals; }
    QString positional(int index) const { return m_positionals.value(index); }

    bool isSet(const QString& option) const;
    // The option's value, or fallback when it is not given.
    QString value(const QString& option, const QString& fallback = {}) const;
    // Every value of a repeatable option, in the order given.
    QStringList values(const QString& option) const;

    // Dates are written YYYY-MM-DD. An option not given reads as fallback.
    QDate date(const QString& option, const QDate& fallback = {}) const;
    QDate datePositional(int index, const QString& what) const;
    // A whole number within [min, max]; never wraps.
    qint64 integer(const QString& option, qint64 min, qint64 max, qint64 fallback) const;
    qint64 integerPositional(int index, const QString& what, qint64 min, qint64 max) const;
    // One of the allowed words (compared without case), returned as allowed spells it.
    QString choice(const QString& option, const QStringList& allowed, const QString& fallback) const;

    AnswerPolicy answers() const { return m_answers; }

private:
    QStringList m_positionals;
    QList<QPair<QString, QString>> m_values; // option name (its first name), value
    QStringList m_flags;
    AnswerPolicy m_answers = AnswerPolicy::Least;
    bool m_help = false;
};

// Reads YYYY-MM-DD strictly; throws UsageError naming `what` otherwise.
QDate parseDateWord(const QString& text, const QString& what);
// Reads a whole number within [min, max] strictly; throws UsageError naming `what`.
qint64 parseIntegerWord(const QString& text, const QString& what, qint64 min, qint64 max);

// The options that stand before the command word, shared by the desktop
// program and every command.
struct GlobalOptions
{
    QString dataDir;   // --data DIR
    QString server;    // --server HOST[:PORT]/DATABASE
    QString user;      // --user NAME
    QString today;     // --today YYYY-MM-DD, checked
    bool help = false; // --help
    bool version = false;
    QString command;           // the command word; empty for the desktop program
    QStringList rest;          // the words after the command word
    QStringList debugSwitches; // CODESITE... words for the desktop program's debug log

    // Throws UsageError for an unknown or repeated option, a missing or
    // empty value, or a --today that is not a date.
    static GlobalOptions parse(const QStringList& words);
    static QString usage();
};

} // namespace kb::app
