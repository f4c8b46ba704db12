#pragma once

#include <QDialog>
#include <QHash>

#include <functional>

class QCalendarWidget;
class QCheckBox;
class QComboBox;
class QDateEdit;
class QDoubleSpinBox;
class QPushButton;
class QTableView;

namespace kb {
class Database;
class SettingsFile;
class TFormEditEpisodicDeliveries;
class UserInterface;
} // namespace kb

namespace kb::ui {

class DatedGridModel;

// "Maintain Episodic Deliveries for ..." and "Maintain Scheduled Deliveries
// for ...": the calendar and the grid of the client's dated deliveries, the
// current row's fields below the grid (each change posted through the row
// rules), and the screen's commands.
class DatedDeliveriesView : public QDialog
{
    Q_OBJECT

public:
    DatedDeliveriesView(TFormEditEpisodicDeliveries& presenter, Database& db, UserInterface& ui,
                        SettingsFile& settings, QString userName, QWidget* parent = nullptr);

    // "Address Overrides" opens the client's alternate addresses through this.
    void setAddressOverrides(std::function<void()> open) { m_addressOverrides = std::move(open); }

    QCalendarWidget* calendar() const { return m_calendar; }
    QTableView* grid() const { return m_grid; }
    QPushButton* button(const QString& text) const { return m_buttons.value(text); }

protected:
    void done(int result) override;

private:
    QPushButton* addButton(const QString& text, const QString& shortcut, std::function<void()> action);
    // Runs a command; a failure is shown and the screen read again.
    void guarded(const std::function<void()>& action);
    void reload();
    void showRow();
    void paintCalendar();
    void edit(const QString& column, const QVariant& value);
    void autoSchedule();
    void itemsView();
    void setItems();
    void remove();
    void reassignRoutes();

    TFormEditEpisodicDeliveries& m_presenter;
    Database& m_db;
    UserInterface& m_ui;
    SettingsFile& m_settings;
    QString m_userName;
    QCalendarWidget* m_calendar;
    QTableView* m_grid;
    DatedGridModel* m_model;
    QCheckBox* m_bold;
    QDateEdit* m_date;
    QComboBox* m_service;
    QComboBox* m_route;
    QDoubleSpinBox* m_stop;
    QComboBox* m_type;
    QHash<QString, QPushButton*> m_buttons;
    std::function<void()> m_addressOverrides;
    bool m_showing = false;
};

} // namespace kb::ui
