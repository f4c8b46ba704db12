#include "data/DataPipe.h"

#include <algorithm>

namespace kb::reports {

DataPipe::DataPipe(QString name) : m_name(std::move(name)) {}

DataPipe::~DataPipe()
{
    unfollow();
    for (DataPipe* detail : m_details)
        detail->m_master = nullptr;
}

int DataPipe::fieldIndex(QStringView name) const
{
    const QStringList names = fieldNames();
    for (int i = 0; i < names.size(); ++i) {
        if (names[i].compare(name, Qt::CaseInsensitive) == 0)
            return i;
    }
    return -1;
}

void DataPipe::refresh()
{
    // The master first, so that reading this pipe's rows for its current
    // row does not mark this pipe stale again half-way.
    if (m_master)
        m_master->refresh();
    if (!m_stale)
        return;
    m_stale = false;
    reload();
    m_row = -1;
    if (rows() > 0) {
        m_row = 0;
        moveTo(0);
    }
    for (DataPipe* detail : m_details)
        detail->markStale();
}

void DataPipe::markStale()
{
    if (m_stale)
        return;
    m_stale = true;
    for (DataPipe* detail : m_details)
        detail->markStale();
}

qsizetype DataPipe::rowCount()
{
    refresh();
    return rows();
}

void DataPipe::seek(qsizetype row)
{
    refresh();
    const qsizetype target = row >= 0 && row < rows() ? row : -1;
    if (ownPosition() != -2)
        m_row = ownPosition();
    if (target == m_row)
        return;
    m_row = target;
    if (target >= 0)
        moveTo(target);
    for (DataPipe* detail : m_details)
        detail->markStale();
}

qsizetype DataPipe::currentRow()
{
    refresh();
    if (ownPosition() != -2)
        m_row = ownPosition();
    return m_row;
}

QVariant DataPipe::value(int field)
{
    const qsizetype row = currentRow();
    if (row < 0 || field < 0)
        return {};
    return fieldValue(row, field);
}

QVariant DataPipe::value(QStringView field) { return value(fieldIndex(field)); }

void DataPipe::follow(DataPipe& master)
{
    unfollow();
    for (DataPipe* p = &master; p; p = p->m_master) {
        if (p == this)
            return; // a pipe cannot follow itself, even through others
    }
    m_master = &master;
    master.m_details.push_back(this);
    m_stale = true;
}

void DataPipe::unfollow()
{
    if (!m_master)
        return;
    auto& siblings = m_master->m_details;
    siblings.erase(std::remove(siblings.begin(), siblings.end(), this), siblings.end());
    m_master = nullptr;
    m_stale = true;
}

void DataPipe::invalidate() { markStale(); }

} // namespace kb::reports
