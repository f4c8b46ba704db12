#include "outcomes/EpisodicClientInfoView.h"

#include "walkins/TFormViewEpisodicClientInfo.h"

#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace kb::ui {

EpisodicClientInfoView::EpisodicClientInfoView(TFormViewEpisodicClientInfo& presenter, QWidget* parent)
    : QDialog(parent), m_presenter(presenter), m_list(new QListWidget(this)),
      m_delete(new QPushButton(QStringLiteral("&Delete"), this))
{
    setWindowTitle(TFormViewEpisodicClientInfo::caption());
    setObjectName(QStringLiteral("TFormViewEpisodicClientInfo"));
    auto* details = new QFormLayout;
    for (const auto& [caption, value] : presenter.details()) {
        auto* text = new QLabel(value, this);
        text->setTextInteractionFlags(Qt::TextSelectableByMouse);
        details->addRow(caption, text);
    }
    for (const QString& line : presenter.lines()) {
        auto* item = new QListWidgetItem(line, m_list);
        item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
        item->setCheckState(Qt::Unchecked);
    }
    auto* group = new QGroupBox(TFormViewEpisodicClientInfo::listTitle(), this);
    auto* groupLayout = new QVBoxLayout(group);
    groupLayout->addWidget(m_list);
    auto* close = new QPushButton(QStringLiteral("&Close"), this);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(m_delete);
    buttons->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(details);
    layout->addWidget(group, 1);
    layout->addLayout(buttons);
    connect(m_list, &QListWidget::itemChanged, this, [this](QListWidgetItem* item) {
        m_presenter.setChecked(m_list->row(item), item->checkState() == Qt::Checked);
        showState();
    });
    connect(m_delete, &QPushButton::clicked, this, [this] {
        if (m_presenter.ActionDelete()) accept();
    });
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    showState();
}

void EpisodicClientInfoView::showState()
{
    m_delete->setEnabled(m_presenter.mayDelete());
}

} // namespace kb::ui
