#include "confirmation/TFormConfirmDeliveryItems.h"

namespace kb {

namespace {

struct LineKey
{
    qint64 itemId = 0;
    QString code;
    bool valid = false;
};

// The key stands last on the line: "[", the item id, "~", the code, "]".
LineKey keyOf(const QString& text)
{
    LineKey key;
    const qsizetype open = text.lastIndexOf(u'[');
    const qsizetype tilde = text.indexOf(u'~', open + 1);
    const qsizetype close = text.indexOf(u']', tilde + 1);
    if (open < 0 || tilde < 0 || close < 0) return key;
    key.itemId = text.mid(open + 1, tilde - open - 1).toLongLong(&key.valid);
    key.code = text.mid(tilde + 1, close - tilde - 1);
    return key;
}

} // namespace

TFormConfirmDeliveryItems::TFormConfirmDeliveryItems(const QList<ConfirmationCandidate>& candidates,
                                                     QObject* parent)
    : QObject(parent)
{
    for (const ConfirmationCandidate& c : candidates)
        m_lines.append({lineTextOf(c)});
}

QString TFormConfirmDeliveryItems::lineTextOf(const ConfirmationCandidate& candidate)
{
    return candidate.mealItem + QLatin1Char('\t') + QLatin1Char('[') + QString::number(candidate.itemId) +
           QLatin1Char('~') + candidate.confirmationRequired + QLatin1Char(']');
}

void TFormConfirmDeliveryItems::setChecked(qsizetype line, bool checked)
{
    if (m_lines[line].checked == checked) return;
    m_lines[line].checked = checked;
    emit changed();
}

qsizetype TFormConfirmDeliveryItems::lineOfItem(qint64 itemId) const
{
    for (qsizetype i = 0; i < m_lines.size(); ++i) {
        const LineKey key = keyOf(m_lines[i].text);
        if (key.valid && key.itemId == itemId) return i;
    }
    return -1;
}

void TFormConfirmDeliveryItems::setFilterText(const QString& text)
{
    if (m_filterText == text) return;
    m_filterText = text;
    emit changed();
}

void TFormConfirmDeliveryItems::setAllChecked(bool checked)
{
    for (Line& line : m_lines)
        line.checked = checked;
    emit changed();
}

void TFormConfirmDeliveryItems::ActionCheckAll()
{
    setAllChecked(true);
}

void TFormConfirmDeliveryItems::ActionUncheckAll()
{
    setAllChecked(false);
}

void TFormConfirmDeliveryItems::ActionFilter()
{
    for (Line& line : m_lines)
        line.enabled = m_filterText.isEmpty() || line.text.contains(m_filterText, Qt::CaseInsensitive);
    emit changed();
}

void TFormConfirmDeliveryItems::ActionClearFilter()
{
    m_filterText.clear();
    for (Line& line : m_lines)
        line.enabled = true;
    emit changed();
}

void TFormConfirmDeliveryItems::ActionCheckFiltered()
{
    for (Line& line : m_lines)
        line.checked = line.enabled;
    emit changed();
}

bool TFormConfirmDeliveryItems::okEnabled() const
{
    for (const Line& line : m_lines)
        if (line.checked) return true;
    return false;
}

ConfirmedItems TFormConfirmDeliveryItems::checkedItems() const
{
    ConfirmedItems items;
    for (const Line& line : m_lines) {
        if (!line.checked) continue;
        const LineKey key = keyOf(line.text);
        if (!key.valid) continue;
        if (key.code == QLatin1String("O") || key.code == QLatin1String("A"))
            items.ongoing.append(key.itemId);
        if (key.code == QLatin1String("S") || key.code == QLatin1String("A"))
            items.scheduled.append(key.itemId);
    }
    return items;
}

} // namespace kb
