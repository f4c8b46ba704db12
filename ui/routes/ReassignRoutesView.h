#pragma once

#include <QDialog>

class QCheckBox;
class QComboBox;
class QMenu;
class QPushButton;

namespace kb {
class SettingsFile;
class TFormReassignScheduledAndEpisodicRoutes;
class UserInterface;
} // namespace kb

namespace kb::ui {

// "Reassign Routes of Future Deliveries": the client's routes for reference,
// the weekdays whose future dated deliveries move, and the route they move
// to. OK moves them and closes; a failure is shown and the screen stays.
class ReassignRoutesView : public QDialog
{
    Q_OBJECT

public:
    ReassignRoutesView(TFormReassignScheduledAndEpisodicRoutes& presenter, UserInterface& ui,
                       SettingsFile& settings, QWidget* parent = nullptr);

    QCheckBox* dayBox(int day) const { return m_days[day]; }
    QComboBox* routeList() const { return m_route; }
    QPushButton* okButton() const { return m_ok; }
    QMenu* dayMenu() const { return m_menu; }
    // How many deliveries the last OK moved.
    qint64 moved() const { return m_moved; }

    void accept() override;

private:
    void showDays();

    TFormReassignScheduledAndEpisodicRoutes& m_presenter;
    UserInterface& m_ui;
    QCheckBox* m_days[7] = {};
    QComboBox* m_route;
    QPushButton* m_ok = nullptr;
    QMenu* m_menu;
    qint64 m_moved = 0;
    bool m_showing = false;
};

} // namespace kb::ui
