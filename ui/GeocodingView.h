#pragma once

#include <QDialog>

class QCheckBox;
class QLineEdit;
class QTableWidget;

namespace kb {
class TFormGeocodeAddresses;
class UserInterface;
struct SessionState;
}

namespace kb::ui {

// "Find Coordinates for Addresses" over its presenter.
class GeocodingView : public QDialog
{
    Q_OBJECT

public:
    GeocodingView(TFormGeocodeAddresses& presenter, const SessionState& session, UserInterface& ui,
                  QWidget* parent = nullptr);

    QTableWidget* grid() const { return m_grid; }
    void done(int result) override;

private:
    void showMatches();

    TFormGeocodeAddresses& m_presenter;
    const SessionState& m_session;
    UserInterface& m_ui;
    QLineEdit* m_web;
    QLineEdit* m_client;
    QCheckBox* m_activeOnly;
    QTableWidget* m_grid;
};

} // namespace kb::ui
