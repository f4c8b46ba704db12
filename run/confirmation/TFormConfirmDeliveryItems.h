#pragma once

#include "confirmation/ConfirmationCandidate.h"
#include "confirmation/ConfirmedItems.h"

#include <QList>
#include <QObject>
#include <QString>

namespace kb {

// "Confirm Delivery Items": the items that go out on a run only when the
// user confirms them, one checkable line each, with a filter that greys out
// the lines not holding its text. OK needs at least one checked line.
class TFormConfirmDeliveryItems : public QObject
{
    Q_OBJECT

public:
    explicit TFormConfirmDeliveryItems(const QList<ConfirmationCandidate>& candidates,
                                       QObject* parent = nullptr);

    static QString caption() { return QStringLiteral("Confirm Delivery Items"); }
    static QString heading()
    {
        return QStringLiteral(
            "The following items require confirmation in order to be included in this delivery:");
    }
    // A line: Meal_Item, a tab, then "[", the item id, "~", the code and "]".
    static QString lineTextOf(const ConfirmationCandidate& candidate);

    qsizetype lineCount() const { return m_lines.size(); }
    const QString& lineText(qsizetype line) const { return m_lines[line].text; }
    bool isChecked(qsizetype line) const { return m_lines[line].checked; }
    void setChecked(qsizetype line, bool checked);
    // A greyed-out line does not hold the filter's text.
    bool isLineEnabled(qsizetype line) const { return m_lines[line].enabled; }
    // The line whose key names this item, or -1.
    qsizetype lineOfItem(qint64 itemId) const;

    const QString& filterText() const { return m_filterText; }
    void setFilterText(const QString& text);

    void ActionCheckAll();
    void ActionUncheckAll();
    // Lines holding the filter's text (without regard to case) stay enabled,
    // the others are greyed out; an empty filter enables all.
    void ActionFilter();
    // Empties the filter and enables all lines.
    void ActionClearFilter();
    // Unchecks everything, then checks the enabled lines.
    void ActionCheckFiltered();
    bool okEnabled() const;

    // The checked lines, read back from the key in their text: "~O" and "~A"
    // go to the ongoing list, "~S" and "~A" to the scheduled list.
    ConfirmedItems checkedItems() const;

signals:
    // A line's check or enabled state, or the filter, changed.
    void changed();

private:
    struct Line
    {
        QString text;
        bool checked = false;
        bool enabled = true;
    };
    void setAllChecked(bool checked);

    QList<Line> m_lines;
    QString m_filterText;
};

} // namespace kb
