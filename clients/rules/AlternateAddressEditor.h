#pragma once

namespace kb {

// The alternate address of the current client as the client window edits
// it beside the client row. The client rules post it before the client is
// saved, cancel it with the client, and ask before the client row moves
// while it is being edited.
class AlternateAddressEditor
{
public:
    virtual ~AlternateAddressEditor() = default;
    // In edit or insert.
    virtual bool isEditing() const = 0;
    virtual void post() = 0;
    virtual void cancel() = 0;
};

} // namespace kb
