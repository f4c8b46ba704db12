#pragma once

#include "model/Expression.h"

#include <QStringView>

#include <stdexcept>

namespace kb::reports {

// What is wrong with an expression; the template reader adds the file and
// the line.
class ExpressionError : public std::runtime_error
{
public:
    explicit ExpressionError(const QString& message) : std::runtime_error(message.toStdString()), m_message(message) {}
    const QString& message() const { return m_message; }

private:
    QString m_message;
};

// Reads the expressions of templates:
//
//   literals    12  3.5  'text' ('' for a quote inside)  true  false  null
//   names       Client_ID  DBPipelineClients.First_Name  $Person_ID (a parameter)
//   page        page, pages: the page number and the number of pages
//   operators   not  and  or  = <> != < <= > >=  + - * / %  & (joins texts)
//   calls       if(c, a, b)  upper(s) ... and the aggregates sum, count, min,
//               max, avg, distinct with an optional scope: sum(Quantity, 'Route')
//
// Input is bounded: at most 32 levels of nesting and 500 nodes, so a hostile
// template cannot exhaust the stack.
namespace ExpressionParser {

inline constexpr int MaxDepth = 32;
inline constexpr int MaxNodes = 500;

ExprPtr parse(QStringView text);

// A printed text: literal characters with {expression} and
// {expression:format} pieces; {{ and }} stand for the braces themselves.
TextTemplate parseText(QStringView text);

// Whether a name is one of the aggregates.
bool isAggregate(QStringView name);

} // namespace ExpressionParser

} // namespace kb::reports
