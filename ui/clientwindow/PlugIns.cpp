#include "clientwindow/PlugIns.h"

#include "clientwindow/KettlebrookPlugIn.h"

#include <QCoreApplication>
#include <QDir>
#include <QJsonObject>
#include <QLibrary>
#include <QPluginLoader>

namespace kb::ui {

PlugIns::PlugIns() = default;

PlugIns::~PlugIns()
{
    unload();
}

QString PlugIns::defaultFolder()
{
    const QDir program(QCoreApplication::applicationDirPath());
    return program.exists(QStringLiteral("plug-ins")) ? program.filePath(QStringLiteral("plug-ins"))
                                                      : program.path();
}

void PlugIns::load(const QString& folder, QMainWindow* window, QMenu* menu)
{
    const QDir dir(folder);
    for (const QString& file : dir.entryList({QStringLiteral("plg*")}, QDir::Files, QDir::Name)) {
        const QString path = dir.filePath(file);
        if (!QLibrary::isLibrary(path)) continue;
        auto loader = std::make_unique<QPluginLoader>(path);
        QObject* object = loader->instance();
        if (!object) {
            m_failures.append(file + QStringLiteral(": ") + loader->errorString());
            continue;
        }
        auto* plugIn = qobject_cast<KettlebrookPlugIn*>(object);
        if (!plugIn) {
            m_failures.append(file + QStringLiteral(": it is not a Kettlebrook plug-in"));
            loader->unload();
            continue;
        }
        try {
            plugIn->Initialize(window);
            plugIn->SetMenu(menu);
        } catch (const std::exception& e) {
            m_failures.append(file + QStringLiteral(": ") + QString::fromUtf8(e.what()));
            loader->unload();
            continue;
        }
        m_names.append(loader->metaData().value(QStringLiteral("className")).toString());
        m_loaders.push_back(std::move(loader));
    }
}

void PlugIns::unload()
{
    // Each object is freed with its module, last loaded first.
    while (!m_loaders.empty()) {
        m_loaders.back()->unload();
        m_loaders.pop_back();
    }
    m_names.clear();
}

QStringList PlugIns::loaded() const
{
    return m_names;
}

} // namespace kb::ui
