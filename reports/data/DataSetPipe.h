#pragma once

#include "data/DataPipe.h"

namespace kb {
class DataSet;
}

namespace kb::reports {

// A pipe over a data set of the program, the way screens hand their queries
// to a report. Moving through the pipe moves the data set, so details
// linked to it by the data set's own master link follow; the data set must
// be open and outlive the runs that use the pipe.
class DataSetPipe final : public DataPipe
{
public:
    DataSetPipe(QString name, DataSet& dataSet);

    QStringList fieldNames() const override;
    DataSet& dataSet() const { return m_dataSet; }

protected:
    qsizetype rows() const override;
    void moveTo(qsizetype row) override;
    QVariant fieldValue(qsizetype row, int field) const override;
    qsizetype ownPosition() const override;

private:
    DataSet& m_dataSet;
};

} // namespace kb::reports
