#pragma once

#include "data/DataPipe.h"
#include "store/Database.h"

namespace kb::reports {

// A pipe over a statement of the dialect, for templates that bring their
// own data. Its :Name parameters take, in this order, the values set on the
// pipe, the fields of the same name of its master's current row, and the
// report's parameters. Following a master, the statement runs again only
// when those values change.
class StatementPipe final : public DataPipe
{
public:
    StatementPipe(QString name, Database& database, QString sql);

    void setParameter(const QString& name, const QVariant& value);
    void setReportParameters(Params parameters) { m_reportParameters = std::move(parameters); }

    QStringList fieldNames() const override;

protected:
    void reload() override;
    qsizetype rows() const override { return m_result.rowCount(); }
    void moveTo(qsizetype) override {}
    QVariant fieldValue(qsizetype row, int field) const override;

private:
    Params currentParams() const;
    void run(const Params& params) const;

    Database& m_database;
    QString m_sql;
    Params m_parameters;
    Params m_reportParameters;
    mutable ResultSet m_result;
    mutable Params m_lastParams;
    mutable bool m_ran = false;
};

} // namespace kb::reports
