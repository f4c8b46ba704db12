#include "session/SessionSettings.h"

#include <QSettings>

#include <stdexcept>

namespace kb {

namespace {

QString readValue(QSettings& store, const QString& key, const QString& name)
{
    store.beginGroup(key);
    const QString value = store.value(name).toString();
    store.endGroup();
    return value;
}

} // namespace

SessionSettings SessionSettings::read(QSettings& store)
{
    const QString program = QStringLiteral("Kettlebrook");
    SessionSettings s;
    s.alias = readValue(store, QStringLiteral("Alias"), program);
    s.aliasKettleBrook = readValue(store, QStringLiteral("Alias"), QStringLiteral("Kettle Brook"));
    s.mode = readValue(store, QStringLiteral("Mode"), program);
    s.connection = readValue(store, QStringLiteral("Connection"), program);
    s.serverIp = readValue(store, QStringLiteral("Server IP"), program);
    return s;
}

SessionSettings SessionSettings::readUserStore()
{
    QSettings store(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("Kettlebrook"),
                    QStringLiteral("DataSession"));
    return read(store);
}

void SessionSettings::applyDataOption(const QString& directory)
{
    mode.clear();
    alias = directory;
    aliasKettleBrook.clear();
}

void SessionSettings::applyServerOption(const QString& server)
{
    const qsizetype slash = server.lastIndexOf(u'/');
    if (slash <= 0 || slash == server.size() - 1)
        throw std::runtime_error(
            QStringLiteral("--server needs HOST[:PORT]/DATABASE, not '%1'").arg(server).toStdString());
    mode = QStringLiteral("C");
    serverIp = server.left(slash);
    aliasKettleBrook = server.mid(slash + 1);
    alias.clear();
}

} // namespace kb
