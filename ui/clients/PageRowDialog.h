#pragma once

#include <QDialog>
#include <QGroupBox>
#include <QHash>
#include <QList>
#include <QString>

namespace kb {
class DataSet;
class RecordServices;
class TFormClients;
} // namespace kb

namespace kb::ui {

// One row of a page grid of the client window (a funding source, a rate,
// a pledge, an application) in a form of its own. OK types the values into
// the row and saves it, so every rule on the page query's hooks decides; a
// refused save leaves the form open with what was typed. Cancel drops an
// edit the form began.
class PageRowDialog : public QDialog
{
    Q_OBJECT

public:
    // Whether a page grid has such a form.
    static bool hasForm(const QString& grid);
    PageRowDialog(TFormClients& form, const QString& grid, QWidget* parent = nullptr);

    QWidget* editor(const QString& field) const { return m_editors.value(field); }

protected:
    void done(int result) override;

private:
    struct Field;
    static const QList<Field>& fieldsOf(const QString& grid);
    QVariant typed(const Field& field) const;

    TFormClients& m_form;
    DataSet& m_set;
    QString m_grid;
    QHash<QString, QWidget*> m_editors;
    QHash<QString, QGroupBox*> m_groups; // by caption
};

} // namespace kb::ui
