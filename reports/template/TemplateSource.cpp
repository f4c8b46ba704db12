#include "template/TemplateSource.h"

#include "ReportHolder.h"
#include "template/TemplateRegistry.h"

#include <QDir>
#include <QFileInfo>

namespace kb::reports {

QString loadFixedTemplate(ReportHolder& holder, const QString& folder, const QString& fileName)
{
    if (folder.isEmpty()) {
        const QString text = TemplateRegistry::builtInText(fileName);
        if (text.isEmpty()) return {};
        holder.loadText(text, fileName);
        return fileName;
    }
    const QString path = QDir(folder).filePath(fileName);
    if (!QFileInfo(path).isFile()) return {};
    holder.setTemplateFileName(path);
    holder.loadTemplate();
    return path;
}

} // namespace kb::reports
