#pragma once

#include <QDialog>

class QComboBox;
class QDoubleSpinBox;

namespace kb {
class SettingsFile;
class TFormAltRoutes;
} // namespace kb

namespace kb::ui {

// "Alternate Routes": the client's route and stop for each weekday, with OK
// and Cancel; Cancel puts the fourteen values back.
class AltRoutesView : public QDialog
{
    Q_OBJECT

public:
    AltRoutesView(TFormAltRoutes& presenter, SettingsFile& settings, QWidget* parent = nullptr);

    QComboBox* routeList(int day) const { return m_routes[day]; }
    QDoubleSpinBox* stopEdit(int day) const { return m_stops[day]; }

protected:
    void done(int result) override;

private:
    void showDays();

    TFormAltRoutes& m_presenter;
    QComboBox* m_routes[7] = {};
    QDoubleSpinBox* m_stops[7] = {};
    bool m_showing = false;
};

} // namespace kb::ui
