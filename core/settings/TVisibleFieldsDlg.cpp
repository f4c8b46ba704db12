#include "settings/TVisibleFieldsDlg.h"

#include "UserInterface.h"
#include "catalogue/Catalogue.h"
#include "dataset/Abort.h"
#include "dataset/TableDataSet.h"
#include "records/RecordServices.h"
#include "session/TDataModule1.h"
#include "settings/ConfigRecord.h"

#include <algorithm>

namespace kb {

namespace {

constexpr int MaxMemoLines = 1000;

QString labelOf(const QString& column)
{
    QString label = column;
    label.replace(u'_', u' ');
    return label;
}

bool isKeyField(const QString& upperName, VisibleFieldsList list)
{
    if (list == VisibleFieldsList::Assessments && upperName == QLatin1String("STAFF_ID")) return false;
    return upperName.contains(QLatin1String("_ID")) || upperName == QLatin1String("RECORDID");
}

} // namespace

TVisibleFieldsDlg::TVisibleFieldsDlg(TDataModule1& module, VisibleFieldsList list)
    : m_module(module), m_list(list)
{
    const QList<VisibleField> fields = fieldsOf(list);
    const QString memo = ConfigRecord::fromDataSet(module.config()).text(memoColumn(list));
    QList<VisibleField> laidOut = SetFieldVisibility(fields, memo, list, module.ui());
    // The memo's lines give the visible list and its order; the rest are available.
    QStringList shown;
    for (const QString& line : memo.split(u'\n').mid(0, MaxMemoLines))
        if (line.split(u'\t').size() >= 2) shown.append(line.split(u'\t')[1].trimmed().toUpper());
    for (const QString& name : shown)
        for (const VisibleField& f : laidOut)
            if (f.name.toUpper() == name) {
                m_visible.append(f);
                break;
            }
    for (const VisibleField& f : laidOut)
        if (!shown.contains(f.name.toUpper()) && !f.label.isEmpty()) m_available.append(f);
}

QString TVisibleFieldsDlg::memoColumn(VisibleFieldsList list)
{
    return list == VisibleFieldsList::Assessments ? QStringLiteral("ASSESSMENT_VISIBLE_FIELDS")
                                                  : QStringLiteral("ADL_VISIBLE_FIELDS");
}

QList<VisibleField> TVisibleFieldsDlg::fieldsOf(VisibleFieldsList list)
{
    QList<VisibleField> fields;
    const TableDef* def =
        Catalogue::standard().table(list == VisibleFieldsList::Assessments ? u"Asssmnts" : u"NSI_ADL_IADL");
    if (!def) return fields;
    for (const ColumnDef& c : def->columns())
        fields.append(VisibleField{c.name, labelOf(c.name), 0, c.type, c.width, false});
    return fields;
}

void TVisibleFieldsDlg::showField(int i)
{
    if (i >= 0 && i < m_available.size()) m_visible.append(m_available.takeAt(i));
}

void TVisibleFieldsDlg::showAll()
{
    m_visible += m_available;
    m_available.clear();
}

void TVisibleFieldsDlg::hideField(int i)
{
    if (i >= 0 && i < m_visible.size()) m_available.append(m_visible.takeAt(i));
}

void TVisibleFieldsDlg::hideAll()
{
    m_available += m_visible;
    m_visible.clear();
}

void TVisibleFieldsDlg::moveUp(int i)
{
    if (i > 0 && i < m_visible.size()) m_visible.swapItemsAt(i, i - 1);
}

void TVisibleFieldsDlg::moveDown(int i)
{
    if (i >= 0 && i + 1 < m_visible.size()) m_visible.swapItemsAt(i, i + 1);
}

void TVisibleFieldsDlg::sortAlphabetically()
{
    const auto byLabel = [](const VisibleField& a, const VisibleField& b) {
        return a.label.compare(b.label, Qt::CaseInsensitive) < 0;
    };
    std::stable_sort(m_visible.begin(), m_visible.end(), byLabel);
    std::stable_sort(m_available.begin(), m_available.end(), byLabel);
}

QString TVisibleFieldsDlg::information(int i) const
{
    if (i < 0 || i >= m_visible.size()) return {};
    const VisibleField& f = m_visible[i];
    return QStringLiteral("Field Name: %1\nField type: %2\nField size: %3\nDisplay label: %4\nTag: %5")
        .arg(f.name, fieldTypeName(f.type))
        .arg(f.size)
        .arg(f.label)
        .arg(f.tag);
}

void TVisibleFieldsDlg::modifyLabel(int i, const QString& label, int tag)
{
    if (i < 0 || i >= m_visible.size() || label.trimmed().isEmpty()) return;
    // Tabs and line breaks would break the memo's lines.
    QString clean = label;
    clean.replace(u'\t', u' ').replace(u'\r', u' ').replace(u'\n', u' ');
    m_visible[i].label = clean.trimmed();
    m_visible[i].tag = tag;
}

QString TVisibleFieldsDlg::memoText() const
{
    QStringList lines;
    for (const VisibleField& f : m_visible)
        lines.append(f.label + u'\t' + f.name + u'\t' + QString::number(f.tag));
    return lines.join(u'\n');
}

bool TVisibleFieldsDlg::accept()
{
    DataSet& config = m_module.config();
    const bool saved = m_module.services().guarded([&] {
        if (config.state() != DataSet::State::Edit && config.state() != DataSet::State::Insert) config.edit();
        config.setFieldValue(memoColumn(m_list), memoText());
        config.post();
    });
    if (!saved && config.state() == DataSet::State::Edit) config.cancel();
    return saved;
}

QList<VisibleField> TVisibleFieldsDlg::SetFieldVisibility(const QList<VisibleField>& fields,
                                                          const QString& memo, VisibleFieldsList list,
                                                          UserInterface& ui)
{
    QList<VisibleField> result = fields;
    for (VisibleField& f : result)
        f.visible = false;
    int position = 0;
    for (const QString& line : memo.split(u'\n').mid(0, MaxMemoLines)) {
        if (line.trimmed().isEmpty()) continue;
        const QStringList parts = line.split(u'\t');
        const QString name = parts.value(1).trimmed().toUpper();
        const auto it = std::find_if(result.begin(), result.end(),
                                     [&](const VisibleField& f) { return f.name.toUpper() == name; });
        if (name.isEmpty() || it == result.end()) {
            ui.error(
                QStringLiteral("An error was encountered while setting the visibility of\r\n") +
                (name.isEmpty() ? line.trimmed() : parts.value(1).trimmed()) +
                (list == VisibleFieldsList::Assessments
                     ? QStringLiteral(
                           "\r\nThe Assessment Visible Fields list may have a bad field name in it.")
                     : QStringLiteral("\r\nThe ADL Visible Fields list may have a bad field name in it.")));
            continue;
        }
        VisibleField f = *it;
        result.erase(it);
        f.visible = !isKeyField(name, list);
        if (!parts.value(0).trimmed().isEmpty()) f.label = parts.value(0).trimmed();
        f.tag = parts.value(2).trimmed().toInt();
        result.insert(std::min(position, int(result.size())), f);
        ++position;
    }
    return result;
}

} // namespace kb
