#include "template/TemplateRegistry.h"

#include "MessageError.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

// The resources of a static library are registered by the program that
// links it; this makes sure they are, whoever asks first.
static void initTemplateResources() { Q_INIT_RESOURCE(kb_report_templates); }

namespace kb::reports {

namespace {

const QString ResourceFolder = QStringLiteral(":/kb/templates");

void ensureResources()
{
    static const bool done = [] {
        initTemplateResources();
        return true;
    }();
    Q_UNUSED(done);
}

} // namespace

namespace TemplateRegistry {

QStringList builtInNames()
{
    ensureResources();
    return QDir(ResourceFolder)
        .entryList(QStringList{QStringLiteral("*.rtm"), QStringLiteral("*.LWL")}, QDir::Files, QDir::Name);
}

QString builtInText(const QString& fileName)
{
    ensureResources();
    if (fileName.contains(u'/') || fileName.contains(u'\\'))
        return {};
    QFile file(ResourceFolder + u'/' + fileName);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(file.readAll());
}

QStringList install(const QString& directory)
{
    QStringList written;
    const QDir dir(directory);
    for (const QString& name : builtInNames()) {
        const QString path = dir.filePath(name);
        if (QFileInfo::exists(path))
            continue;
        QSaveFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(builtInText(name).toUtf8()) < 0 || !file.commit())
            throw MessageError(QStringLiteral("Cannot write the report template %1: %2").arg(path, file.errorString()));
        written << name;
    }
    return written;
}

} // namespace TemplateRegistry

QStringList userDefinedReports(const QString& directory, const QString& prefix)
{
    QStringList names;
    const QStringList files = QDir(directory).entryList(QStringList{prefix + QStringLiteral("*.rtm")}, QDir::Files,
                                                        QDir::Name | QDir::IgnoreCase);
    for (const QString& file : files) {
        if (file.size() > prefix.size() + 4)
            names << file.mid(prefix.size(), file.size() - prefix.size() - 4);
    }
    return names;
}

} // namespace kb::reports
