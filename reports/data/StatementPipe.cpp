#include "data/StatementPipe.h"

#include "data/NamedValues.h"

namespace kb::reports {

StatementPipe::StatementPipe(QString name, Database& database, QString sql)
    : DataPipe(std::move(name)), m_database(database), m_sql(std::move(sql))
{
}

void StatementPipe::setParameter(const QString& name, const QVariant& value)
{
    setNamedValue(m_parameters, name, value);
}

Params StatementPipe::currentParams() const
{
    Params params = m_parameters;
    if (DataPipe* m = master()) {
        const QStringList names = m->fieldNames();
        for (int i = 0; i < names.size(); ++i)
            params.emplace_back(names[i], m->value(i));
    }
    params.insert(params.end(), m_reportParameters.begin(), m_reportParameters.end());
    return params;
}

void StatementPipe::run(const Params& params) const
{
    m_result = m_database.execute(m_sql, params);
    m_lastParams = params;
    m_ran = true;
}

QStringList StatementPipe::fieldNames() const
{
    // The columns are known once the statement has run; a template's names
    // are checked before the first row is read.
    if (!m_ran)
        run(currentParams());
    QStringList names;
    for (int c = 0; c < m_result.columnCount(); ++c)
        names << m_result.columnName(c);
    return names;
}

void StatementPipe::reload()
{
    const Params params = currentParams();
    if (!m_ran || params != m_lastParams)
        run(params);
}

QVariant StatementPipe::fieldValue(qsizetype row, int field) const
{
    if (field >= m_result.columnCount())
        return {};
    return m_result.value(row, field);
}

} // namespace kb::reports
