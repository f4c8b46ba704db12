#pragma once

#include <QtPlugin>

class QMainWindow;
class QMenu;

namespace kb::ui {

// What a plug-in module offers the client window. A module is a Qt plug-in
// whose file name starts with "plg", in the folder "plug-ins" beside the
// program (or the program's own folder when there is none), and whose
// object implements this interface. The window calls Initialize with itself
// and SetMenu with its "Plug-Ins" menu once, after loading; what a plug-in
// does beyond that is its own affair. The object is deleted and the module
// unloaded when the window goes.
class KettlebrookPlugIn
{
public:
    virtual ~KettlebrookPlugIn() = default;
    virtual void Initialize(QMainWindow* mainWindow) = 0;
    virtual void SetMenu(QMenu* plugInsMenu) = 0;
};

} // namespace kb::ui

#define KettlebrookPlugIn_iid "{9C4CD2EC-5B8B-4395-AB5F-3C1EF7B78818}"
Q_DECLARE_INTERFACE(kb::ui::KettlebrookPlugIn, KettlebrookPlugIn_iid)
