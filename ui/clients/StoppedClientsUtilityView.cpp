#include "clients/StoppedClientsUtilityView.h"

#include "FormPlacement.h"
#include "UserInterface.h"
#include "clients/StoppedClientsView.h"
#include "suspensions/StoppedClientsUtility.h"
#include "suspensions/TFormStoppedClients.h"

#include <QDateEdit>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

namespace kb::ui {

StoppedClientsUtilityView::StoppedClientsUtilityView(StoppedClientsUtility& utility, UserInterface& ui,
                                                     SettingsFile& settings, QWidget* parent)
    : QDialog(parent), m_utility(utility), m_ui(ui), m_settings(settings), m_date(new QDateEdit(this)),
      m_view(new QPushButton(QStringLiteral("View Clients"), this)),
      m_all(new QPushButton(utility.toStatus() == QLatin1String("S") ? QStringLiteral("Stop All")
                                                                     : QStringLiteral("Inactivate All"),
                            this)),
      m_close(new QPushButton(QStringLiteral("Close"), this))
{
    setWindowTitle(utility.caption());
    m_date->setCalendarPopup(true);
    m_date->setDisplayFormat(QStringLiteral("MM/dd/yyyy"));
    m_date->setDate(utility.date());
    auto* form = new QFormLayout;
    form->addRow(utility.dateLabel(), m_date);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_view);
    buttons->addWidget(m_all);
    buttons->addStretch();
    buttons->addWidget(m_close);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addLayout(buttons);
    connect(m_date, &QDateEdit::dateChanged, this, [this](const QDate& date) { m_utility.setDate(date); });
    connect(m_view, &QPushButton::clicked, this, &StoppedClientsUtilityView::viewClients);
    connect(m_all, &QPushButton::clicked, this, &StoppedClientsUtilityView::changeAll);
    connect(m_close, &QPushButton::clicked, this, &QDialog::accept);
    const QString formName = utility.toStatus() == QLatin1String("S")
                                 ? QStringLiteral("TFrmStopClients")
                                 : QStringLiteral("TFrmInactivateClients");
    keepPlacement(*this, settings, formName, QSize(460, 0));
}

void StoppedClientsUtilityView::enableButtons(bool enabled)
{
    for (QPushButton* button : {m_view, m_all, m_close})
        button->setEnabled(enabled);
}

void StoppedClientsUtilityView::viewClients()
{
    TFormStoppedClients list(m_utility);
    StoppedClientsView view(list, m_settings, this);
    view.exec();
}

void StoppedClientsUtilityView::changeAll()
{
    enableButtons(false);
    m_utility.ActionAll();
    enableButtons(true);
}

} // namespace kb::ui
