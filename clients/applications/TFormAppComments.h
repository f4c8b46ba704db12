#pragma once

#include <QString>

namespace kb {

class DataSet;
class RecordServices;

// "Application Comments": the Status_Comments of the current application
// in a larger box. OK puts the application into edit with the new text and
// saves it through the application's rules; Cancel leaves it as it was.
class TFormAppComments
{
public:
    TFormAppComments(DataSet& applications, RecordServices& services);

    static QString caption() { return QStringLiteral("Application Comments"); }
    static QString formName() { return QStringLiteral("TFormAppComments"); }

    bool hasApplication() const;
    const QString& text() const { return m_text; }
    void setText(const QString& text) { m_text = text; }
    bool readOnly() const;
    // Saves the text; false (the user told) when the save was refused.
    bool ok();

private:
    DataSet& m_applications;
    RecordServices& m_services;
    QString m_text;
};

} // namespace kb
