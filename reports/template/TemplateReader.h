#pragma once

#include "model/ReportTemplate.h"

#include <QString>

namespace kb::reports {

// Reads report templates, the `.rtm` text files of the data directory
// (TemplateFormat.md in this folder tells the format).
//
// Reading is bounded by design, so that a damaged or hostile file gives a
// message and never a crash or a hang: at most MaxFileBytes bytes,
// MaxLineLength characters on a line, MaxDepth blocks inside each other,
// MaxElements elements in all, and expressions bounded as ExpressionParser
// says. Every refusal is a TemplateError naming the file and the line.
namespace TemplateReader {

inline constexpr qint64 MaxFileBytes = 1024 * 1024;
inline constexpr int MaxLineLength = 4000;
inline constexpr int MaxDepth = 12;
inline constexpr int MaxElements = 5000;

// Throws TemplateMissing when there is no such file, TemplateError when it
// cannot be read or is not a valid template.
ReportTemplate readFile(const QString& path);

// fileName is used in messages and as the folder of relative image files.
ReportTemplate readText(const QString& text, const QString& fileName);

} // namespace TemplateReader

} // namespace kb::reports
