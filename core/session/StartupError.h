#pragma once

#include "MessageError.h"

namespace kb {

// A failure that ends the program before or while it signs in.
class StartupError : public MessageError
{
public:
    using MessageError::MessageError;
};

} // namespace kb
