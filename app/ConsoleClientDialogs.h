#pragma once

#include "rules/ClientDialogs.h"

#include <QTextStream>

namespace kb::app {

// The screens of a client's save, headless: what they would show goes to
// the error stream, and nothing is changed through them.
class ConsoleClientDialogs final : public ClientDialogs
{
public:
    explicit ConsoleClientDialogs(QTextStream& err) : m_err(err) {}

    void showHouseholdMembers(TFormShowHouseholdMembers& form) override;
    bool showResetStartDate(TFormResetStartDate& form) override;

private:
    QTextStream& m_err;
};

} // namespace kb::app
