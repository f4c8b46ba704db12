#pragma once

#include "dataset/DataSet.h"

#include <initializer_list>
#include <vector>

namespace kb {

// Takes hooks of a data set off for a scope and puts back the ones that
// were on, also when the work in between fails: the way a rule edits its
// own row without setting itself off again.
class HookSuspension
{
public:
    HookSuspension(DataSet& dataSet, std::initializer_list<DataSet::Hook> hooks);
    ~HookSuspension();
    HookSuspension(const HookSuspension&) = delete;
    HookSuspension& operator=(const HookSuspension&) = delete;

private:
    DataSet& m_dataSet;
    std::vector<DataSet::Hook> m_suspended;
};

} // namespace kb
