#pragma once

#include <exception>

namespace kb {

// The silent abort: a before-hook throws it to stop the operation it guards
// (a post a rule refuses, an edit a row does not allow). It travels up like
// any exception, but whoever reports failures to the user passes it over:
// the rule has already said what it had to say.
class Abort : public std::exception
{
public:
    const char* what() const noexcept override { return "Operation aborted"; }
};

} // namespace kb
