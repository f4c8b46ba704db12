#pragma once

#include <QWidget>

#include "ClientLookup.h"

class QLineEdit;
class QToolButton;

namespace kb {
class SettingsFile;
}

namespace kb::ui {

// A screen's client field: the chosen client's name and number, and a
// button that opens the client look-up. Typing a name or a number and
// pressing Enter opens the look-up at that text.
class ClientLookupField : public QWidget
{
    Q_OBJECT

public:
    ClientLookupField(ClientLookup& lookup, SettingsFile& settings, QWidget* parent = nullptr);

    qint64 personId() const { return m_personId; }
    // Shows a client as chosen (0 clears the field).
    void setClient(const std::optional<ClientLookup::Row>& row);
    QLineEdit* edit() const { return m_edit; }
    QToolButton* findButton() const { return m_find; }
    // Opens the look-up at the field's text; true when a client was chosen.
    bool openLookup();

signals:
    void clientChanged(qint64 personId);

private:
    ClientLookup& m_lookup;
    SettingsFile& m_settings;
    QLineEdit* m_edit;
    QToolButton* m_find;
    qint64 m_personId = 0;
};

} // namespace kb::ui
