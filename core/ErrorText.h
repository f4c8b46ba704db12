#pragma once

#include "MessageError.h"
#include "store/DbError.h"

#include <QString>

#include <exception>

namespace kb {

// The text a user is shown for a failure: the engine's or the rule's own
// message, without the statement an engine error carries besides.
inline QString errorText(const std::exception& fault)
{
    if (const auto* db = dynamic_cast<const DbError*>(&fault)) return db->message();
    if (const auto* message = dynamic_cast<const MessageError*>(&fault)) return message->message();
    return QString::fromUtf8(fault.what());
}

} // namespace kb
