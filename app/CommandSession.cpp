#include "CommandSession.h"

#include "session/AppDataFolder.h"
#include "Clock.h"
#include "session/SessionSettings.h"
#include "session/SignIn.h"

namespace kb::app {

CommandSession::CommandSession(CommandContext& context)
    : m_ui(context.err, context.answers), m_dialogs(context.err), m_clock(commandClock(context))
{
    if (context.user.isEmpty())
        throw std::runtime_error("Name the user with --user NAME");
    SessionSettings settings = SessionSettings::readUserStore();
    if (!context.dataDir.isEmpty())
        settings.applyDataOption(context.dataDir);
    if (!context.server.isEmpty())
        settings.applyServerOption(context.server);
    m_data = std::make_unique<TDataModule1>(*m_clock, m_ui);
    m_clientRules = std::make_unique<ModuleClientRules>(*m_data);
    m_clientRules->setDialogs(&m_dialogs);
    m_data->start(settings, platformUserDataFolder(), TDataModule1::Opening::OnFirstUse);
    SignIn::complete(m_data->db(), m_data->session(), SignIn::lookUp(m_data->db(), context.user));
    m_data->userSignedIn();
}

CommandSession::~CommandSession()
{
    try {
        close();
    } catch (...) {
        // Only reached while another failure unwinds; that one is reported.
    }
}

void CommandSession::close() { m_data->shutdown(); }

} // namespace kb::app
