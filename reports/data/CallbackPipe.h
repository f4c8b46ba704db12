#pragma once

#include "data/DataPipe.h"

#include <functional>

namespace kb::reports {

// A pipe whose fields the program answers when the report asks for them:
// titles worked out from a dialog's choices, for example.
class CallbackPipe final : public DataPipe
{
public:
    using Answer = std::function<QVariant(qsizetype row, const QString& field)>;

    CallbackPipe(QString name, QStringList fields, Answer answer, qsizetype rowCount = 1);

    QStringList fieldNames() const override { return m_fields; }
    void setRowCount(qsizetype rowCount) { m_rowCount = rowCount; }

protected:
    qsizetype rows() const override { return m_rowCount; }
    void moveTo(qsizetype) override {}
    QVariant fieldValue(qsizetype row, int field) const override;

private:
    QStringList m_fields;
    Answer m_answer;
    qsizetype m_rowCount;
};

} // namespace kb::reports
