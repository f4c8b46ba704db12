// Plug-in modules: the example plug-in is loaded from its folder, gets the
// window and adds its command to the "Plug-Ins" menu; a broken module beside
// it is named and passed over; unloading takes the plug-ins away.

#include "WidgetApplication.h"

#include "clientwindow/PlugIns.h"

#include <QDir>
#include <QFile>
#include <QMainWindow>
#include <QMenu>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace kb;

namespace {

TEST(PlugIns, TheExampleLoadsAndABrokenModuleIsPassedOver)
{
    test::ensureWidgetApplication();
    QTemporaryDir folder;
    const QDir built(QStringLiteral(KB_PLUGIN_DIR));
    const QStringList modules = built.entryList({QStringLiteral("plgExample*")}, QDir::Files);
    ASSERT_EQ(modules.size(), 1) << "the example plug-in is built beside the program";
    ASSERT_TRUE(QFile::copy(built.filePath(modules.front()), folder.filePath(modules.front())));
    // A module that is no library at all, and a file that is no module.
    QFile broken(folder.filePath(QStringLiteral("plgBroken.so")));
    ASSERT_TRUE(broken.open(QIODevice::WriteOnly));
    broken.write("this is not a plug-in");
    broken.close();
    QFile notes(folder.filePath(QStringLiteral("readme.txt")));
    ASSERT_TRUE(notes.open(QIODevice::WriteOnly));
    notes.close();

    QMainWindow window;
    window.setWindowTitle(QStringLiteral("Kettlebrook Clients"));
    auto* menu = new QMenu(QStringLiteral("Plug-Ins"), &window);
    {
        ui::PlugIns plugIns;
        plugIns.load(folder.path(), &window, menu);
        EXPECT_EQ(plugIns.loaded(), QStringList{"ExamplePlugIn"});
        ASSERT_EQ(plugIns.failures().size(), 1);
        EXPECT_TRUE(plugIns.failures().front().startsWith(QLatin1String("plgBroken.so: ")))
            << plugIns.failures().front().toStdString();
        ASSERT_EQ(menu->actions().size(), 1);
        EXPECT_EQ(menu->actions().front()->text(), "Example Plug-In");
        menu->clear(); // what the plug-in added goes before its module
    }
    ui::PlugIns none;
    none.load(QDir(folder.path()).filePath(QStringLiteral("missing")), &window, menu);
    EXPECT_TRUE(none.loaded().isEmpty());
    EXPECT_TRUE(none.failures().isEmpty());
}

} // namespace
