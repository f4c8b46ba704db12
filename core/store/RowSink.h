#pragma once

#include "sql/Translation.h"

#include <QVariantList>

#include <vector>

namespace kb {

// Takes the rows of a statement one by one as the store gives them, so that
// a result of any size passes through without being held whole.
class RowSink
{
public:
    virtual ~RowSink() = default;
    // Once, before the first row.
    virtual void begin(const std::vector<sql::OutputColumn>& columns) = 0;
    virtual void row(const QVariantList& values) = 0;
};

} // namespace kb
