#include "dataset/HookSuspension.h"

namespace kb {

HookSuspension::HookSuspension(DataSet& dataSet, std::initializer_list<DataSet::Hook> hooks) : m_dataSet(dataSet)
{
    for (DataSet::Hook hook : hooks) {
        if (m_dataSet.isHookOn(hook)) {
            m_dataSet.takeOff(hook);
            m_suspended.push_back(hook);
        }
    }
}

HookSuspension::~HookSuspension()
{
    for (DataSet::Hook hook : m_suspended)
        m_dataSet.putBack(hook);
}

} // namespace kb
