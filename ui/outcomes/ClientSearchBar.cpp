#include "outcomes/ClientSearchBar.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace kb::ui {

ClientSearchBar::ClientSearchBar(const QStringList& choices, const QString& checkText, QWidget* parent)
    : QWidget(parent), m_searchLabel(new QLabel(QStringLiteral("Search"), this)),
      m_searchBy(new QComboBox(this)), m_forLabel(new QLabel(QStringLiteral("for"), this)),
      m_search(new QLineEdit(this)), m_check(new QCheckBox(checkText, this)),
      m_add(new QPushButton(QStringLiteral("Add to List"), this))
{
    m_searchBy->addItems(choices);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_searchLabel);
    row->addWidget(m_searchBy);
    row->addWidget(m_forLabel);
    row->addWidget(m_search, 1);
    row->addWidget(m_check);
    row->addWidget(m_add);
}

void ClientSearchBar::showState(bool scanner, int searchIndex, const QString& searchText, bool checked)
{
    for (QWidget* w : {static_cast<QWidget*>(m_searchLabel), static_cast<QWidget*>(m_searchBy),
                       static_cast<QWidget*>(m_forLabel), static_cast<QWidget*>(m_check)})
        w->setVisible(!scanner);
    const QSignalBlocker blockChoice(m_searchBy);
    m_searchBy->setCurrentIndex(searchIndex);
    const QSignalBlocker blockCheck(m_check);
    m_check->setChecked(checked);
    if (m_search->text() != searchText) m_search->setText(searchText);
}

void ClientSearchBar::focusSearch()
{
    m_search->clear();
    m_search->setFocus();
}

} // namespace kb::ui
