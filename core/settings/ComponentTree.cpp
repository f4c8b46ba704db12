#include "settings/ComponentTree.h"

#include <QStringList>

namespace kb {

namespace {

constexpr int MaxNodes = 1000;
constexpr int MaxTextLength = 200;
constexpr int MaxLevel = 8;

struct Branch
{
    const char* heading;
    std::initializer_list<const char*> leaves;
};

struct Group
{
    const char* heading;
    std::initializer_list<const char*> leaves;
    std::initializer_list<Branch> branches;
};

const Group Standard[] = {
    {"[Client Address]", {"Unique Identifier", "Organization Client", "User-Defined Address Drop-Down"}, {}},
    {"[Client Services Tab]",
     {"User-Defined Numeric Field", "User-Defined Field", "Application Checklist", "Staff Contact"},
     {}},
    {"[Case Management Tab]", {}, {}},
    {"[Biographic Info Tab]",
     {},
     {{"[Personal Stats]",
       {"Date of Birth", "Social Security Number", "Gender", "Race", "Ethnicity", "Height", "Usual Weight",
        "Marital Status", "Rural", "Handicapped/Frail"}},
      {"[Households]", {"Household Name", "Members Button", "Households Button"}},
      {"[Children/Dependents]",
       {"Number of Children", "Number Children Receiving", "Number in Household", "Dependent/Caregiver"}},
      {"[Income]", {"Income Category", "Income per Month", "Income Sources"}},
      {"[Language]", {"Primary Language", "Illiterate"}},
      {"[User-Defined Fields]",
       {"Edit Field 1", "Edit Field 2", "Checklist 1", "Housing/Living Arrangement"}},
      {"[Credit Card]", {"Cardholder Name", "Expiration", "Security Code", "Card Number"}},
      {"[Insurance]", {"Plan", "Account Number"}}}},
    {"[Status/Dates Tab]",
     {"Contractual Start", "Contractual Stop", "Recertification Date"},
     {{"Missed Deliveries", {"Record", "Excuse", "Delete"}}}},
    {"[Service/Diet Tab]", {"Other Services Used", "Cold Bag Code", "Cuisine", "Preferences/Dislikes"}, {}},
    {"[Delivery/Route Tab]", {"Preferred Delivery Window", "Cross Street"}, {}},
    {"[Health/Nutrition Tab]", {"HIV Status", "User-Defined Checkbox", "Mental Health DX"}, {}},
};

} // namespace

ComponentTree ComponentTree::standard()
{
    QList<Node> nodes;
    for (const Group& group : Standard) {
        nodes.append(Node{QString::fromLatin1(group.heading), 0, true});
        for (const char* leaf : group.leaves)
            nodes.append(Node{QString::fromLatin1(leaf), 1, true});
        for (const Branch& branch : group.branches) {
            nodes.append(Node{QString::fromLatin1(branch.heading), 1, true});
            for (const char* leaf : branch.leaves)
                nodes.append(Node{QString::fromLatin1(leaf), 2, true});
        }
    }
    return ComponentTree(nodes);
}

ComponentTree ComponentTree::fromText(const QString& text)
{
    QList<Node> nodes;
    const QStringList lines = text.left(MaxNodes * (MaxTextLength + 8)).split(u'\n');
    for (const QString& raw : lines) {
        if (nodes.size() >= MaxNodes) break;
        const QStringList parts = raw.trimmed().split(u'\t');
        if (parts.size() != 3) continue;
        bool ok = false;
        const int level = parts[0].toInt(&ok);
        const QString nodeText = parts[2].trimmed();
        if (!ok || level < 0 || level > MaxLevel || nodeText.isEmpty() || nodeText.size() > MaxTextLength ||
            (parts[1] != QLatin1String("0") && parts[1] != QLatin1String("1")))
            continue;
        nodes.append(Node{nodeText, level, parts[1] == QLatin1String("1")});
    }
    return nodes.isEmpty() ? standard() : ComponentTree(nodes);
}

QString ComponentTree::toText() const
{
    QStringList lines;
    for (const Node& node : m_nodes)
        lines.append(QStringLiteral("%1\t%2\t%3").arg(node.level).arg(node.checked ? 1 : 0).arg(node.text));
    return lines.join(u'\n');
}

ComponentTree ComponentTree::repopulated() const
{
    ComponentTree tree = standard();
    for (Node& node : tree.m_nodes)
        for (const Node& saved : m_nodes)
            if (saved.text == node.text) {
                node.checked = saved.checked;
                break;
            }
    return tree;
}

void ComponentTree::setChecked(int index, bool checked)
{
    if (index >= 0 && index < m_nodes.size()) m_nodes[index].checked = checked;
}

bool ComponentTree::isVisible(const QString& text) const
{
    for (qsizetype i = 0; i < m_nodes.size(); ++i) {
        if (m_nodes[i].text != text) continue;
        // Walk up through the headings above it.
        int level = m_nodes[i].level;
        if (!m_nodes[i].checked) return false;
        for (qsizetype k = i - 1; k >= 0 && level > 0; --k)
            if (m_nodes[k].level < level) {
                if (!m_nodes[k].checked) return false;
                level = m_nodes[k].level;
            }
        return true;
    }
    return true;
}

} // namespace kb
