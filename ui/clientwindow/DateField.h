#pragma once

#include <QDate>
#include <QWidget>

class QDateEdit;
class QToolButton;

namespace kb::ui {

// A date that may be empty: a date editor with a calendar and a button that
// clears it. An empty editor stands at the earliest date (in 1899), which
// the system reads as no date.
class DateField : public QWidget
{
    Q_OBJECT

public:
    explicit DateField(QWidget* parent = nullptr);

    QDate date() const;
    // An invalid date empties the field.
    void setDate(const QDate& date);
    void setReadOnly(bool readOnly);
    QDateEdit* editor() const { return m_edit; }
    QToolButton* clearButton() const { return m_clear; }

signals:
    // Typed or picked by the user; invalid when cleared.
    void dateEdited(const QDate& date);
    void editingFinished();

private:
    QDateEdit* m_edit;
    QToolButton* m_clear;
    bool m_setting = false;
};

} // namespace kb::ui
