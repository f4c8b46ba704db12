#pragma once

#include <QDialog>

namespace kb::reports {
class TFormClientItemsSortOrder;
}

namespace kb::ui {

// "Client Items Sort Order": by client name, or by service then client name.
class ClientItemsSortOrderDialog : public QDialog
{
    Q_OBJECT

public:
    ClientItemsSortOrderDialog(reports::TFormClientItemsSortOrder& presenter, QWidget* parent = nullptr);
};

} // namespace kb::ui
