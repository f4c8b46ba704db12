#pragma once

#include "dataset/DataSet.h"

#include <utility>

namespace kb {

// Hangs a rule on a hook of a data set in front of whatever the hook did
// already, so that rules of several owners can share one data set's hook.
inline void chainHook(DataSet& set, DataSet::Hook hook, DataSet::HookFunction rule)
{
    const DataSet::HookFunction before = set.hook(hook);
    set.setHook(hook, [rule = std::move(rule), before](DataSet& s) {
        rule(s);
        if (before) before(s);
    });
}

} // namespace kb
