#include "RouteChoiceDialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QVBoxLayout>

namespace kb::ui {

RouteChoiceDialog::RouteChoiceDialog(const QStringList& routeEntries, QWidget* parent)
    : QDialog(parent), m_routes(new QComboBox(this))
{
    setWindowTitle(QStringLiteral("Select a Route"));
    setObjectName(QStringLiteral("TFormResetRoutes"));
    m_routes->addItems(routeEntries);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(QStringLiteral("Set the Route of the selected clients to"), this));
    layout->addWidget(m_routes);
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

QString RouteChoiceDialog::routeEntry() const { return m_routes->currentText(); }

} // namespace kb::ui
