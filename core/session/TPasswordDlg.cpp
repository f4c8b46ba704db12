#include "session/TPasswordDlg.h"

#include "session/SignIn.h"
#include "UserInterface.h"

namespace kb {

TPasswordDlg::TPasswordDlg(Database& db, SessionState& session, UserInterface& ui, QObject* parent)
    : QObject(parent), m_db(db), m_session(session), m_ui(ui)
{
}

void TPasswordDlg::setUserName(const QString& text)
{
    if (text == m_userName)
        return;
    m_userName = text;
    emit userNameChanged(m_userName);
}

bool TPasswordDlg::accept()
{
    if (!okEnabled())
        return false;
    SignedInUser user;
    try {
        user = SignIn::lookUp(m_db, m_userName);
    } catch (const SignInRefused& refused) {
        setUserName({});
        emit hideRequested();
        m_ui.warning(refused.message());
        emit showRequested();
        return false;
    }
    SignIn::complete(m_db, m_session, user);
    return true;
}

} // namespace kb
