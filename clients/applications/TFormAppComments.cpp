#include "applications/TFormAppComments.h"

#include "dataset/DataSet.h"
#include "records/RecordServices.h"

namespace kb {

TFormAppComments::TFormAppComments(DataSet& applications, RecordServices& services)
    : m_applications(applications), m_services(services)
{
    if (hasApplication()) m_text = applications.fieldValue(u"Status_Comments").toString();
}

bool TFormAppComments::hasApplication() const
{
    return m_applications.isActive() && !m_applications.isEmpty();
}

bool TFormAppComments::readOnly() const
{
    return m_applications.isReadOnly() || !m_services.db().mayWrite();
}

bool TFormAppComments::ok()
{
    if (!hasApplication()) return true;
    if (m_text == m_applications.fieldValue(u"Status_Comments").toString()) return true;
    return m_services.guarded([this] {
        if (m_applications.state() == DataSet::State::Browse) m_applications.edit();
        m_applications.setFieldValue(u"Status_Comments", m_text);
        m_applications.post();
    });
}

} // namespace kb
