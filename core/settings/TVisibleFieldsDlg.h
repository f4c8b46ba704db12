#pragma once

#include "catalogue/FieldType.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace kb {

class TDataModule1;
class UserInterface;

// A field of a data set as the visible fields dialog and the grids know it.
struct VisibleField
{
    QString name;
    QString label;
    int tag = 0;
    FieldType type = FieldType::Unknown;
    int size = 0;
    bool visible = false;
};

// Which set of fields a list belongs to; it names the Config memo and the
// words of the message about a bad line.
enum class VisibleFieldsList { Assessments, Screening };

// "Visible Fields Selection": which fields of the assessments or the
// screening data set show, in which order, under which label. The choice is
// kept in Config (ASSESSMENT_VISIBLE_FIELDS or ADL_VISIBLE_FIELDS), one line
// per visible field: label, tab, field name, tab, tag.
class TVisibleFieldsDlg
{
public:
    TVisibleFieldsDlg(TDataModule1& module, VisibleFieldsList list);

    static QString caption() { return QStringLiteral("Visible Fields Selection"); }
    static QString memoColumn(VisibleFieldsList list);
    // The fields of the list's table, labelled after their names.
    static QList<VisibleField> fieldsOf(VisibleFieldsList list);

    // "Available Fields" and "Visible Fields".
    const QList<VisibleField>& available() const { return m_available; }
    const QList<VisibleField>& visible() const { return m_visible; }

    void showField(int availableIndex);
    void showAll();
    void hideField(int visibleIndex);
    void hideAll();
    void moveUp(int visibleIndex);
    void moveDown(int visibleIndex);
    void sortAlphabetically();
    // "Show Information On Selected".
    QString information(int visibleIndex) const;
    // "Modify Onscreen Label".
    void modifyLabel(int visibleIndex, const QString& label, int tag);

    // OK: the memo takes the visible list and Config is posted. False when
    // that was refused (told).
    bool accept();
    QString memoText() const;

    // How a data set's fields are laid out from a memo: every field hidden,
    // then each line in order moves its field to that place, shows it unless
    // it is a key (a name with "_ID", or RECORDID; STAFF_ID shows among the
    // assessments) and gives it the label and tag. A line naming a field the
    // set lacks is told and passed over.
    static QList<VisibleField> SetFieldVisibility(const QList<VisibleField>& fields, const QString& memo,
                                                  VisibleFieldsList list, UserInterface& ui);

private:
    TDataModule1& m_module;
    VisibleFieldsList m_list;
    QList<VisibleField> m_available;
    QList<VisibleField> m_visible;
};

} // namespace kb
