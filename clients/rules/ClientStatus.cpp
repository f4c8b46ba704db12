#include "rules/ClientStatus.h"

namespace kb::client_status {

QString word(const QString& code)
{
    if (code == Active) return QStringLiteral("Active");
    if (code == Stopped) return QStringLiteral("Stopped");
    if (code == Inactive) return QStringLiteral("Inactive");
    if (code == WaitList) return QStringLiteral("Wait List");
    if (code == NeverStarted) return QStringLiteral("Never Started");
    if (code.isEmpty()) return QStringLiteral("No Status");
    return code;
}

QList<Choice> choices(const QString& statusOnFile, bool isClient)
{
    auto list = [](std::initializer_list<QString> codes) {
        QList<Choice> result;
        for (const QString& code : codes)
            result.append({code, word(code)});
        return result;
    };
    if (statusOnFile.isEmpty()) return list({WaitList});
    if (statusOnFile == NeverStarted) return list({Active, WaitList, NeverStarted});
    if (statusOnFile == WaitList && !isClient) return list({WaitList, QString()});
    return list({Active, Inactive, Stopped, WaitList});
}

} // namespace kb::client_status
