#pragma once

#include "OrderRoutesAction.h"

#include <QDialog>

#include <map>

class QAction;
class QCheckBox;
class QComboBox;
class QPushButton;
class QTableView;

namespace kb {
class OrderRoutesModel;
class TFormOrderRoutes;
class UserInterface;
struct SessionState;
class Database;
}

namespace kb::ui {

// "Order Stops within Routes" over its presenter: the route and day lists,
// "Active Clients Only", the commands as buttons with their keys, and the
// grid whose pop-up menu holds the commands and "Apply route changes to
// future Episodic/Scheduled Deliveries".
class OrderRoutesView : public QDialog
{
    Q_OBJECT

public:
    OrderRoutesView(TFormOrderRoutes& presenter, Database& db, const SessionState& session, UserInterface& ui,
                    QWidget* parent = nullptr);
    ~OrderRoutesView() override;

    QTableView* grid() const { return m_grid; }
    QPushButton* button(OrderRoutesAction action) const { return m_buttons.at(action); }
    QComboBox* routeList() const { return m_routes; }
    QComboBox* dayList() const { return m_days; }

    void done(int result) override;

private:
    void addCommand(OrderRoutesAction action, const QString& text, const QKeySequence& key);
    void run(OrderRoutesAction action);
    void showState();
    void showRows();

    TFormOrderRoutes& m_presenter;
    Database& m_db;
    const SessionState& m_session;
    UserInterface& m_ui;
    OrderRoutesModel* m_model;
    QComboBox* m_routes;
    QComboBox* m_days;
    QCheckBox* m_active;
    QTableView* m_grid;
    QAction* m_includeEpisodics;
    std::map<OrderRoutesAction, QPushButton*> m_buttons;
    std::map<OrderRoutesAction, QAction*> m_actions;
    bool m_showing = false;
};

} // namespace kb::ui
