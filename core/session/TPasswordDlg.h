#pragma once

#include <QObject>
#include <QString>

namespace kb {

class Database;
class UserInterface;
struct SessionState;

// The sign-in dialog: one name, no password. OK is enabled only while the
// name is not empty. A refused name is cleared, the dialog hides while the
// reason is told, and shows again for another try.
class TPasswordDlg : public QObject
{
    Q_OBJECT

public:
    TPasswordDlg(Database& db, SessionState& session, UserInterface& ui, QObject* parent = nullptr);

    static QString caption() { return QStringLiteral("Please sign in..."); }
    static QString prompt() { return QStringLiteral("Enter your system user name:"); }

    const QString& userName() const { return m_userName; }
    void setUserName(const QString& text);
    bool okEnabled() const { return !m_userName.isEmpty(); }

    // OK: true when the user is signed in (session filled, History written).
    // Throws StartupError when the program must end.
    bool accept();

signals:
    void userNameChanged(const QString& text);
    void hideRequested();
    void showRequested();

private:
    Database& m_db;
    SessionState& m_session;
    UserInterface& m_ui;
    QString m_userName;
};

} // namespace kb
