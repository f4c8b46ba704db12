#include "clientwindow/DateField.h"

#include <QDateEdit>
#include <QHBoxLayout>
#include <QToolButton>

namespace kb::ui {

namespace {

const QDate Empty(1899, 12, 30);

} // namespace

DateField::DateField(QWidget* parent)
    : QWidget(parent), m_edit(new QDateEdit(this)), m_clear(new QToolButton(this))
{
    m_edit->setCalendarPopup(true);
    m_edit->setDisplayFormat(QStringLiteral("MM/dd/yyyy"));
    m_edit->setMinimumDate(Empty);
    m_edit->setSpecialValueText(QStringLiteral(" "));
    m_edit->setDate(Empty);
    m_clear->setText(QStringLiteral("Clear"));
    m_clear->setToolTip(QStringLiteral("Clear the date"));
    m_clear->setAutoRaise(true);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(m_edit, 1);
    layout->addWidget(m_clear);
    setFocusProxy(m_edit);
    connect(m_edit, &QDateEdit::dateChanged, this, [this](const QDate& date) {
        m_clear->setEnabled(date != Empty && !m_edit->isReadOnly());
        if (!m_setting) emit dateEdited(date == Empty ? QDate() : date);
    });
    connect(m_edit, &QDateEdit::editingFinished, this, &DateField::editingFinished);
    connect(m_clear, &QToolButton::clicked, this, [this] {
        m_edit->setDate(Empty);
        emit editingFinished();
    });
    m_clear->setEnabled(false);
}

QDate DateField::date() const
{
    return m_edit->date() == Empty ? QDate() : m_edit->date();
}

void DateField::setDate(const QDate& date)
{
    const QDate shown = date.isValid() && date > Empty ? date : Empty;
    if (m_edit->date() == shown) return;
    m_setting = true;
    m_edit->setDate(shown);
    m_setting = false;
}

void DateField::setReadOnly(bool readOnly)
{
    m_edit->setReadOnly(readOnly);
    m_clear->setVisible(!readOnly);
}

} // namespace kb::ui
