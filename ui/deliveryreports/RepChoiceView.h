#pragma once

#include <QDialog>

#include <array>
#include <functional>

class QButtonGroup;
class QComboBox;
class QDateEdit;
class QGroupBox;
class QListWidget;
class QPushButton;
class QRadioButton;
class QSpinBox;
class QTabWidget;

namespace kb {
class SettingsFile;
}

namespace kb::reports {
class TFormRepChoice;
}

namespace kb::ui {

// "Select the Delivery Report to Run" over its presenter: the report list,
// the destination, the date pages, the service and route limits, OK and
// Cancel, and a pop-up menu with "Edit Report Driver Messages". The window
// keeps its place in the per-user settings.
class RepChoiceView : public QDialog
{
    Q_OBJECT

public:
    // editMessages opens the driver messages' window.
    RepChoiceView(reports::TFormRepChoice& presenter, SettingsFile* settings,
                  std::function<void()> editMessages, QWidget* parent = nullptr);
    ~RepChoiceView() override;

    QComboBox* reportList() const { return m_reports; }
    QDateEdit* fromEdit() const { return m_from; }
    QDateEdit* toEdit() const { return m_to; }
    QDateEdit* separateDateEdit(int n) const { return m_dates[size_t(n)]; }
    QListWidget* serviceList() const { return m_services; }
    QListWidget* routeList() const { return m_routes; }
    QRadioButton* includeButton() const { return m_include; }
    QRadioButton* excludeButton() const { return m_exclude; }
    QPushButton* okButton() const { return m_ok; }
    QTabWidget* datePages() const { return m_pages; }
    QComboBox* labelStockList() const { return m_labelStock; }
    QSpinBox* labelStartEdit() const { return m_labelStart; }

protected:
    void contextMenuEvent(QContextMenuEvent* event) override;
    // Entering an empty separate date proposes the day after the one before.
    bool eventFilter(QObject* watched, QEvent* event) override;
    void done(int result) override;

private:
    void showState();
    void fillList(QListWidget* list, const QStringList& entries, const std::vector<bool>& checked);

    reports::TFormRepChoice& m_presenter;
    SettingsFile* m_settings;
    std::function<void()> m_editMessages;
    QComboBox* m_reports;
    QRadioButton* m_screen;
    QRadioButton* m_printer;
    QTabWidget* m_pages;
    QDateEdit* m_from;
    QDateEdit* m_to;
    std::array<QDateEdit*, 4> m_dates{};
    QGroupBox* m_serviceGroup;
    QListWidget* m_services;
    QGroupBox* m_routeGroup;
    QRadioButton* m_byRoutes;
    QRadioButton* m_byCenters;
    QListWidget* m_routes;
    QPushButton* m_selectAll;
    QPushButton* m_deselectAll;
    QRadioButton* m_include;
    QRadioButton* m_exclude;
    QGroupBox* m_labelGroup;
    QComboBox* m_labelStock;
    QSpinBox* m_labelStart;
    QPushButton* m_ok;
    QPushButton* m_cancel;
    bool m_showing = false;
};

} // namespace kb::ui
