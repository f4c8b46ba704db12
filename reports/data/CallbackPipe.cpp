#include "data/CallbackPipe.h"

namespace kb::reports {

CallbackPipe::CallbackPipe(QString name, QStringList fields, Answer answer, qsizetype rowCount)
    : DataPipe(std::move(name)), m_fields(std::move(fields)), m_answer(std::move(answer)), m_rowCount(rowCount)
{
}

QVariant CallbackPipe::fieldValue(qsizetype row, int field) const
{
    if (field >= m_fields.size() || !m_answer)
        return {};
    return m_answer(row, m_fields[field]);
}

} // namespace kb::reports
