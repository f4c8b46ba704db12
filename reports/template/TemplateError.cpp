#include "template/TemplateError.h"

namespace kb::reports {

QString missingTemplateMessage(const QString& path)
{
    return QStringLiteral("Could not locate the report template file:\n\r") + path;
}

TemplateMissing::TemplateMissing(const QString& path) : MessageError(missingTemplateMessage(path)), m_path(path) {}

} // namespace kb::reports
