#pragma once

#include <QString>

#include <stdexcept>

namespace kb {

// The engine codes the record services react to; every other failure keeps
// the store's own message with code Other.
enum class DbErrorCode {
    Other = 0,
    ChangedSinceRead = 8708,
    DuplicateKey = 9729,
    TableLocked = 10241,
    RecordLocked = 10258,
    ExclusiveOpen = 11013,
    Syntax = 11949,       // a statement the dialect cannot read
    UnknownName = 11950,  // a table, column or parameter that does not exist
    ParameterType = 11951, // a value that does not fit its parameter
    AccessDenied = 11952   // the signed-in user's level allows no changes to the data
};

class DbError : public std::runtime_error
{
public:
    DbError(DbErrorCode code, const QString& message, const QString& statement = {});

    DbErrorCode code() const { return m_code; }
    // Only says another session was in the way: a row or table it holds, or
    // a row it changed since this one read it. Trying again later may work.
    bool isLockConflict() const
    {
        return m_code == DbErrorCode::RecordLocked || m_code == DbErrorCode::TableLocked ||
               m_code == DbErrorCode::ChangedSinceRead;
    }
    int engineCode() const { return int(m_code); }
    const QString& message() const { return m_message; }
    const QString& statement() const { return m_statement; }

private:
    DbErrorCode m_code;
    QString m_message;
    QString m_statement;
};

// The message for a statement the store's own parser cannot hold, though
// the dialect read it.
QString statementTooComplex();

} // namespace kb
