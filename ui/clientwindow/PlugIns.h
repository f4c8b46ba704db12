#pragma once

#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

class QMainWindow;
class QMenu;
class QPluginLoader;

namespace kb::ui {

// The plug-in modules of the client window (LoadPlugIns, UnloadPlugIns).
// A module that cannot be loaded, or whose object lacks the plug-in
// interface, is passed over and named in failures(); it never stops the
// program.
class PlugIns
{
public:
    PlugIns();
    ~PlugIns(); // unloads
    PlugIns(const PlugIns&) = delete;
    PlugIns& operator=(const PlugIns&) = delete;

    // "plug-ins" beside the program when it exists, else the program's folder.
    static QString defaultFolder();

    // Loads every "plg*" module of the folder, in name order, and hands each
    // the window and its "Plug-Ins" menu.
    void load(const QString& folder, QMainWindow* window, QMenu* menu);
    void unload();

    // The class names of the loaded plug-ins.
    QStringList loaded() const;
    // One line per module passed over: its file and why.
    const QStringList& failures() const { return m_failures; }

private:
    std::vector<std::unique_ptr<QPluginLoader>> m_loaders;
    QStringList m_names;
    QStringList m_failures;
};

} // namespace kb::ui
