#pragma once

#include <QLocale>
#include <QString>
#include <QVariant>

namespace kb::reports {

// Turns values into the texts a report prints, in the report's locale.
//
// Without a format: null prints nothing, booleans "Yes" or "No", whole
// numbers as they are, other numbers with up to 12 significant digits,
// money with its decimals, dates and date-times in the report's formats.
//
// A format after a colon, {Amount:#,##0.00}, is for numbers a pattern of
// 0 (a digit always shown), # (a digit shown when needed), a comma for
// thousands separators and a point for decimals, with any text before or
// after ("$#,##0.00", "0.0%"); for dates Qt's date patterns ("dddd, MMMM
// d", "MM/dd/yy"); for booleans two texts separated by ';' ("Yes;No").
class Formatter
{
public:
    Formatter(const QString& locale, QString dateFormat, QString dateTimeFormat);

    QString text(const QVariant& value) const;
    QString text(const QVariant& value, const QString& format) const;
    const QLocale& locale() const { return m_locale; }

    static bool isNumber(const QVariant& value);
    static double toNumber(const QVariant& value);

private:
    QString number(double value, const QString& pattern) const;

    QLocale m_locale;
    QString m_dateFormat;
    QString m_dateTimeFormat;
};

} // namespace kb::reports
