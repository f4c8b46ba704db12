#pragma once

#include "MessageError.h"

namespace kb::reports {

// A template that cannot be read or run: its message names the file and,
// where there is one, the line, and says what is wrong there.
class TemplateError : public MessageError
{
public:
    using MessageError::MessageError;
};

// The template file is not there. Its message is the one every report
// screen shows for a missing template.
class TemplateMissing : public MessageError
{
public:
    explicit TemplateMissing(const QString& path);
    const QString& path() const { return m_path; }

private:
    QString m_path;
};

// "Could not locate the report template file:\n\r" and the path.
QString missingTemplateMessage(const QString& path);

} // namespace kb::reports
