#pragma once

#include <QString>

namespace kb {

struct SessionState;

// The user's own Kettbrk.ini in the per-user folder, where screens keep
// their layout and choices in a section named after the form. One place
// names it, so the settings class can take it over.
QString userIniPath(const SessionState& session);

} // namespace kb
