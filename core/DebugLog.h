#pragma once

#include <QString>
#include <QStringList>


namespace kb {

// Debug logging: off unless the command line asks for it, and no rule rests
// on it. Only the first three parameters are looked at, in upper case, and
// only when one of them contains "CODESITE": "=ON" logs to the error stream
// (this platform has no log viewer), "=FILE" to the file Kettlebrook.CSL in
// the folder after "CODESITEPATH=", or in the user's home folder without one.
class DebugLog
{
public:
    enum class Target { Off, Stream, File };

    // Reads the parameters (without the program name).
    static DebugLog fromArguments(const QStringList& arguments);

    Target target() const { return m_target; }
    const QString& filePath() const { return m_filePath; }
    // What the user is told once when logging goes to a file.
    QString destinationMessage() const;

    // Makes this the log of the process; log() then writes to it.
    void install();
    static void log(const QString& text);

private:
    Target m_target = Target::Off;
    QString m_filePath;
};

} // namespace kb
