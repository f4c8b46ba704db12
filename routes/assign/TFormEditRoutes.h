#pragma once

#include "reference/TFormEditBase.h"

namespace kb {

// "Add and Edit Routes": the code table editor over Routes with the route
// rules: a code is required; a changed code may not duplicate another and,
// on the user's word, follows to the clients, saved deliveries and dated
// deliveries that hold it; a route in use is not deleted; on closing, the
// distribution center codes follow their locations.
class TFormEditRoutes : public TFormEditBase
{
public:
    explicit TFormEditRoutes(RecordServices& services);

    static QString formName() { return QStringLiteral("TFormEditRoutes"); }
    static EditorScreen editorScreen();
};

} // namespace kb
