#include "data/RowsPipe.h"

#include "MessageError.h"
#include "engine/ValueKinds.h"

#include <QDate>
#include <QDateTime>

namespace kb::reports {

QString linkKeyText(const QVariant& value)
{
    if (!value.isValid() || value.isNull())
        return QStringLiteral("\x01");
    if (isNumberValue(value))
        return QString::number(value.toDouble(), 'g', 17);
    switch (value.typeId()) {
    case QMetaType::QDate:
        return value.toDate().toString(Qt::ISODate);
    case QMetaType::QDateTime:
        return value.toDateTime().toString(Qt::ISODate);
    default:
        break;
    }
    return value.toString();
}

RowsPipe::RowsPipe(QString name, ResultSet rows)
    : RowsPipe(std::move(name), std::make_shared<const ResultSet>(std::move(rows)))
{
}

RowsPipe::RowsPipe(QString name, std::shared_ptr<const ResultSet> rows) : DataPipe(std::move(name)), m_rows(std::move(rows))
{
}

QStringList RowsPipe::fieldNames() const
{
    QStringList names;
    for (int c = 0; c < m_rows->columnCount(); ++c)
        names << m_rows->columnName(c);
    return names;
}

void RowsPipe::linkTo(DataPipe& master, const std::vector<std::pair<QString, QString>>& fields)
{
    m_keyFields.clear();
    m_masterFields.clear();
    for (const auto& [mine, theirs] : fields) {
        const int k = fieldIndex(mine);
        const int m = master.fieldIndex(theirs);
        if (k < 0)
            throw MessageError(QStringLiteral("The pipe %1 has no field %2 to link by.").arg(name(), mine));
        if (m < 0)
            throw MessageError(QStringLiteral("The pipe %1 has no field %2 to link by.").arg(master.name(), theirs));
        m_keyFields.push_back(k);
        m_masterFields.push_back(m);
    }
    m_linked = !m_keyFields.empty();
    m_indexed = false;
    m_index.clear();
    follow(master);
}

void RowsPipe::reload()
{
    m_view = nullptr;
    if (!m_linked || !master())
        return;
    if (!m_indexed) {
        for (qsizetype r = 0; r < m_rows->rowCount(); ++r) {
            QString key;
            for (int f : m_keyFields)
                key += linkKeyText(m_rows->value(r, f)) + u'\x1f';
            m_index[key].push_back(r);
        }
        m_indexed = true;
    }
    QString key;
    for (int f : m_masterFields)
        key += linkKeyText(master()->value(f)) + u'\x1f';
    static const std::vector<qsizetype> none;
    const auto it = m_index.constFind(key);
    m_view = it == m_index.constEnd() ? &none : &it.value();
}

qsizetype RowsPipe::rows() const
{
    if (m_linked && master())
        return m_view ? qsizetype(m_view->size()) : 0;
    return m_rows->rowCount();
}

QVariant RowsPipe::fieldValue(qsizetype row, int field) const
{
    if (field >= m_rows->columnCount())
        return {};
    const qsizetype r = m_linked && master() ? (m_view ? (*m_view)[size_t(row)] : -1) : row;
    return r < 0 ? QVariant() : m_rows->value(r, field);
}

} // namespace kb::reports
