#pragma once

#include "dataset/DataSet.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>

namespace kb {

// "Filter Client Data": conditions on the columns of Clients that the rows
// must all meet, tested row by row as the status filter is.
class ClientCustomFilter
{
public:
    enum class Operator {
        Equals,
        NotEquals,
        Less,
        LessOrEqual,
        Greater,
        GreaterOrEqual,
        Contains,
        StartsWith,
        IsEmpty,
        IsNotEmpty
    };

    struct Condition
    {
        QString column;
        Operator op = Operator::Equals;
        QString value; // as typed: dates YYYY-MM-DD or as the locale writes them, numbers, texts
    };

    static QString caption() { return QStringLiteral("Filter Client Data"); }
    // The operators as the dialog lists them, in the order of Operator.
    static QStringList operatorTexts();
    static bool takesValue(Operator op) { return op != Operator::IsEmpty && op != Operator::IsNotEmpty; }

    const QList<Condition>& conditions() const { return m_conditions; }
    void setConditions(QList<Condition> conditions) { m_conditions = std::move(conditions); }
    bool isEmpty() const { return m_conditions.isEmpty(); }

    // Whether the current row of a Clients set (as a filter sees it) meets every condition.
    bool accepts(const DataSet& clients) const;
    // A text that names the conditions, for the dialog's summary line.
    QString describe() const;

private:
    bool meets(const DataSet& clients, const Condition& condition) const;

    QList<Condition> m_conditions;
};

} // namespace kb
