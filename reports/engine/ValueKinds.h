#pragma once

#include <QVariant>

namespace kb::reports {

// The kinds of values that reports compute with, whatever integer or
// floating type a store or a CSV file delivered them as.
bool isIntegerValue(const QVariant& value);
// Whole and floating numbers, and money.
bool isNumberValue(const QVariant& value);

} // namespace kb::reports
