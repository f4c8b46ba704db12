#pragma once

#include <QDialog>

#include <array>

class QCheckBox;
class QComboBox;
class QDateEdit;
class QLabel;
class QListWidget;
class QPushButton;
class QRadioButton;
class QSpinBox;
class QTabWidget;

namespace kb {
class SettingsFile;
class TFormRecurrence;
} // namespace kb

namespace kb::ui {

// The Auto Schedule screen over TFormRecurrence: the pattern's three pages,
// its range, the limit, service and route, and beside them the dates the
// pattern will make, kept up to date as the controls change. OK makes the
// rows (after its question) and closes with Accepted so the opener reloads.
class RecurrenceView : public QDialog
{
    Q_OBJECT

public:
    RecurrenceView(TFormRecurrence& presenter, SettingsFile& settings, QWidget* parent = nullptr);

    QTabWidget* pages() const { return m_pages; }
    QListWidget* preview() const { return m_preview; }
    QPushButton* okButton() const { return m_ok; }
    QSpinBox* occurrences() const { return m_occurrences; }
    QDateEdit* start() const { return m_start; }

private:
    void build();
    void connectControls();
    // Shows the presenter's state: radios, dates, the preview and OK.
    void refresh();
    void ok();

    TFormRecurrence& m_presenter;
    bool m_refreshing = false;
    QTabWidget* m_pages = nullptr;
    QRadioButton* m_everyDays = nullptr;
    QRadioButton* m_everyWeekday = nullptr;
    QRadioButton* m_everyWeekendDay = nullptr;
    QSpinBox* m_days = nullptr;
    QSpinBox* m_weeks = nullptr;
    std::array<QCheckBox*, 7> m_weekdays{};
    QRadioButton* m_byDay = nullptr;
    QRadioButton* m_byInstance = nullptr;
    QSpinBox* m_dayOfMonth = nullptr;
    QSpinBox* m_monthsByDay = nullptr;
    QComboBox* m_instance = nullptr;
    QComboBox* m_kind = nullptr;
    QSpinBox* m_monthsByInstance = nullptr;
    QDateEdit* m_start = nullptr;
    QRadioButton* m_endAfter = nullptr;
    QRadioButton* m_endBy = nullptr;
    QSpinBox* m_occurrences = nullptr;
    QDateEdit* m_endDate = nullptr;
    QComboBox* m_limit = nullptr;
    QComboBox* m_service = nullptr;
    QComboBox* m_route = nullptr;
    QListWidget* m_preview = nullptr;
    QLabel* m_previewCount = nullptr;
    QPushButton* m_ok = nullptr;
};

} // namespace kb::ui
