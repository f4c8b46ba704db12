#include "store/DbError.h"

namespace kb {

namespace {

// A statement quoted in a message is cut to what a reader can use.
constexpr qsizetype QuotedStatementLength = 2000;

std::string fullText(const QString& message, const QString& statement)
{
    if (statement.isEmpty())
        return message.toStdString();
    QString quoted = statement.left(QuotedStatementLength + 1).simplified();
    if (statement.size() > QuotedStatementLength)
        quoted = quoted.left(QuotedStatementLength) + QStringLiteral("...");
    return (message + QStringLiteral("\nStatement: ") + quoted).toStdString();
}

} // namespace

QString statementTooComplex()
{
    return QStringLiteral("The statement nests too deeply for the database to read; write it with fewer nested "
                          "parentheses, sub-selects or functions");
}

DbError::DbError(DbErrorCode code, const QString& message, const QString& statement)
    : std::runtime_error(fullText(message, statement)), m_code(code), m_message(message),
      m_statement(statement)
{
}

} // namespace kb
