#include "outcomes/ClientLookupField.h"

#include "outcomes/ClientLookupDialog.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QToolButton>

namespace kb::ui {

ClientLookupField::ClientLookupField(ClientLookup& lookup, SettingsFile& settings, QWidget* parent)
    : QWidget(parent), m_lookup(lookup), m_settings(settings)
{
    m_edit = new QLineEdit;
    m_edit->setPlaceholderText(QStringLiteral("Type a name or number and press Enter"));
    m_edit->setToolTip(lookup.title());
    m_find = new QToolButton;
    m_find->setText(QStringLiteral("..."));
    m_find->setToolTip(lookup.title());
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_edit, 1);
    layout->addWidget(m_find);
    setFocusProxy(m_edit);

    connect(m_find, &QToolButton::clicked, this, [this] { openLookup(); });
    connect(m_edit, &QLineEdit::returnPressed, this, [this] { openLookup(); });
    // Typing over a chosen client un-chooses it until the look-up picks one.
    connect(m_edit, &QLineEdit::textEdited, this, [this] {
        if (m_personId == 0) return;
        m_personId = 0;
        emit clientChanged(0);
    });
}

void ClientLookupField::setClient(const std::optional<ClientLookup::Row>& row)
{
    const qint64 id = row ? row->personId : 0;
    m_edit->setText(row ? ClientLookup::choiceText(*row) : QString());
    if (id == m_personId) return;
    m_personId = id;
    emit clientChanged(id);
}

bool ClientLookupField::openLookup()
{
    // A chosen client's own text would find nothing; the look-up then
    // opens at the client's name.
    QString text = m_edit->text();
    if (m_personId != 0) text = text.left(text.indexOf(QStringLiteral("  [")));
    ClientLookupDialog dialog(m_lookup, m_settings, text.trimmed(), this);
    if (dialog.exec() != QDialog::Accepted || !dialog.chosen()) return false;
    setClient(dialog.chosen());
    return true;
}

} // namespace kb::ui
