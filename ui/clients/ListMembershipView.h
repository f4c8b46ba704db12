#pragma once

#include <QDialog>

class QListWidget;
class QPushButton;
class QTableWidget;

namespace kb {
class RecordServices;
class SettingsFile;
class TFormListMembership;
} // namespace kb

namespace kb::ui {

// "List Memberships for ..." over its presenter: the lists the client is
// on (with whether the client was invited and confirmed), the lists still
// available, and the commands that move the client between them, as the
// user's level allows.
class ListMembershipView : public QDialog
{
    Q_OBJECT

public:
    ListMembershipView(TFormListMembership& presenter, RecordServices& services, SettingsFile& settings,
                       QWidget* parent = nullptr);

    QTableWidget* members() const { return m_members; }
    QListWidget* available() const { return m_available; }
    QPushButton* addButton() const { return m_add; }
    QPushButton* removeButton() const { return m_remove; }

private:
    void showLists();

    TFormListMembership& m_presenter;
    RecordServices& m_services;
    QTableWidget* m_members;
    QListWidget* m_available;
    QPushButton* m_add;
    QPushButton* m_remove;
    bool m_showing = false;
};

} // namespace kb::ui
