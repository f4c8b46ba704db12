#pragma once

namespace kb::ui {

class MainWindow;

// Gives the client window's commands that open screens their handlers. This
// is the one place where a screen joins the window: a later screen adds a
// line here with its command's id (ClientCommands), and the command turns
// from "not available yet" into a working one, in the menus and on the
// pages alike.
void registerScreenCommands(MainWindow& window);

} // namespace kb::ui
