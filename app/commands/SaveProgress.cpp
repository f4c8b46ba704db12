#include "SaveProgress.h"

#include <unistd.h>

namespace kb::app {

SaveProgress::SaveProgress(UserInterface& inner, QTextStream& err, bool lines)
    : m_inner(inner), m_err(err), m_terminal(isatty(STDERR_FILENO) == 1), m_lines(lines)
{
}

SaveProgress::~SaveProgress()
{
    endLine();
}

void SaveProgress::endLine()
{
    if (!m_open) return;
    m_err << '\n';
    m_err.flush();
    m_open = false;
}

void SaveProgress::information(const QString& text)
{
    endLine();
    m_inner.information(text);
}

void SaveProgress::warning(const QString& text)
{
    endLine();
    m_inner.warning(text);
}

void SaveProgress::error(const QString& text)
{
    endLine();
    m_inner.error(text);
}

Answer SaveProgress::question(const QString& text, Buttons buttons)
{
    endLine();
    return m_inner.question(text, buttons);
}

void SaveProgress::progressStart(const QString& text)
{
    m_inner.progressStart(text);
    // The window's text may run over two lines; the stream shows one.
    m_text = QString(text).replace(QStringLiteral("\r\n"), QStringLiteral(" ")).replace(u'\n', u' ');
    m_shown = -1;
    if (m_terminal) {
        m_err << '\r' << m_text << "\x1b[K";
        m_open = true;
    } else if (m_lines) {
        m_err << m_text << '\n';
    }
    m_err.flush();
}

void SaveProgress::progressStep(int percent)
{
    m_inner.progressStep(percent);
    if (m_terminal) {
        m_err << '\r' << m_text << ' ' << percent << "%\x1b[K";
        m_open = true;
        m_err.flush();
    } else if (m_lines && percent / 10 != m_shown / 10) {
        m_err << m_text << ' ' << percent << "%\n";
        m_err.flush();
    }
    m_shown = percent;
}

void SaveProgress::progressEnd()
{
    m_inner.progressEnd();
    endLine();
}

} // namespace kb::app
