#pragma once

#include <QList>
#include <QString>

namespace kb {

// The check tree of the optional fields of the client window, kept in
// Config.VISIBLE_COMPONENTS: an unchecked node is hidden for every user,
// and so is everything under it.
//
// Stored as one line per node in tree order: the level, a tab, "1" checked
// or "0" not, a tab, the text. Reading is bounded and passes over lines it
// cannot read.
class ComponentTree
{
public:
    struct Node
    {
        QString text;
        int level = 0; // 0 for a heading
        bool checked = true;
    };

    ComponentTree() = default;
    explicit ComponentTree(QList<Node> nodes) : m_nodes(std::move(nodes)) {}

    // The tree as the program knows it, every node checked.
    static ComponentTree standard();
    // The saved text; an empty or unreadable memo gives the standard tree.
    static ComponentTree fromText(const QString& text);
    QString toText() const;

    // The standard tree with the check state of every node whose text
    // stands in this one.
    ComponentTree repopulated() const;

    const QList<Node>& nodes() const { return m_nodes; }
    void setChecked(int index, bool checked);
    // Whether the node with this text shows: it and every heading above it
    // are checked. A text the tree does not hold shows.
    bool isVisible(const QString& text) const;

private:
    QList<Node> m_nodes;
};

} // namespace kb
