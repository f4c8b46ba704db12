#include "data/DataSetPipe.h"

#include "dataset/DataSet.h"

namespace kb::reports {

DataSetPipe::DataSetPipe(QString name, DataSet& dataSet) : DataPipe(std::move(name)), m_dataSet(dataSet) {}

QStringList DataSetPipe::fieldNames() const { return m_dataSet.fieldNames(); }

qsizetype DataSetPipe::rows() const { return m_dataSet.isActive() ? m_dataSet.recordCount() : 0; }

void DataSetPipe::moveTo(qsizetype row)
{
    if (m_dataSet.recNo() != int(row + 1))
        m_dataSet.setRecNo(int(row + 1));
}

QVariant DataSetPipe::fieldValue(qsizetype row, int field) const
{
    if (m_dataSet.recNo() != int(row + 1))
        m_dataSet.setRecNo(int(row + 1));
    return m_dataSet.fieldValue(field);
}

qsizetype DataSetPipe::ownPosition() const
{
    // A detail data set stands on its first row after its master moved.
    if (!m_dataSet.isActive() || m_dataSet.isEmpty())
        return -1;
    return m_dataSet.recNo() - 1;
}

} // namespace kb::reports
