#pragma once

#include "catalogue/FieldType.h"

#include <QVariant>

namespace kb {

// Brings a caller's value into the canonical form of a type: qlonglong for
// integers, double, Money, bool, QDate, QDateTime, QString or QByteArray; a
// null stays null. Texts are read in the C locale and as ISO dates.
// Throws DbError(ParameterType) naming the parameter when it does not fit.
QVariant toCanonical(const QVariant& value, FieldType type, const QString& parameterName);

// Text forms shared by the CSV output and the server wire format.
QString dateText(const QDate& date);
QString dateTimeText(const QDateTime& dateTime);
QDate parseDate(QStringView text);
QDateTime parseDateTime(QStringView text);

} // namespace kb
