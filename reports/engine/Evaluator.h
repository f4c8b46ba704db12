#pragma once

#include "engine/Formatter.h"
#include "model/Expression.h"

#include <QDateTime>

namespace kb::reports {

// Where an expression's names get their values: the pipes' current rows
// while the report is laid out, values captured earlier when a text is
// printed after the pages are counted.
class EvalScope
{
public:
    virtual ~EvalScope() = default;
    virtual QVariant field(const Expr& e) = 0;
    virtual QVariant parameter(const Expr& e) = 0;
    virtual QVariant pageNumber() = 0;
    virtual QVariant pageCount() = 0;
    virtual QVariant aggregate(const Expr& e) = 0;
};

// Evaluates bound expressions. Values that do not fit an operation (a text
// times a number, a division by zero) give null rather than an error, so a
// stray value prints as nothing instead of stopping the report.
class Evaluator
{
public:
    Evaluator(const Formatter& formatter, QDateTime now) : m_formatter(formatter), m_now(std::move(now)) {}

    QVariant eval(const Expr& e, EvalScope& scope) const;
    bool truth(const Expr& e, EvalScope& scope) const { return isTrue(eval(e, scope)); }
    QString text(const TextPiece& piece, EvalScope& scope) const;

    static bool isTrue(const QVariant& value);
    // Three-way comparison for sorting and for the comparison operators:
    // null first, numbers by value, dates by date, texts as they stand.
    static int compare(const QVariant& a, const QVariant& b);
    static bool equal(const QVariant& a, const QVariant& b);

    // The function's index, or -1; and whether it takes n arguments.
    static int functionIndex(const QString& name);
    static bool acceptsArguments(int function, int count);
    static QString functionNames();

private:
    QVariant call(const Expr& e, EvalScope& scope) const;
    QVariant binary(Expr::Op op, const QVariant& a, const QVariant& b) const;

    const Formatter& m_formatter;
    QDateTime m_now;
};

} // namespace kb::reports
