#pragma once

#include <QDialog>

class QComboBox;

namespace kb::ui {

// TFormResetRoutes, "Select a Route": the route for the selected clients.
class RouteChoiceDialog : public QDialog
{
    Q_OBJECT

public:
    RouteChoiceDialog(const QStringList& routeEntries, QWidget* parent = nullptr);
    QString routeEntry() const;

private:
    QComboBox* m_routes;
};

} // namespace kb::ui
