#include "delivery/FailureText.h"

#include "MessageError.h"
#include "store/DbError.h"

namespace kb::reports {

QString failureText(const std::exception& failure)
{
    if (const auto* m = dynamic_cast<const MessageError*>(&failure)) return m->message();
    if (const auto* d = dynamic_cast<const DbError*>(&failure)) return d->message();
    return QString::fromLocal8Bit(failure.what());
}

} // namespace kb::reports
