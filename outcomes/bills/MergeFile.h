#pragma once

#include "Money.h"
#include "bills/ClientBill.h"

#include <QLocale>
#include <QSaveFile>
#include <QString>
#include <QTextStream>

#include <memory>

namespace kb {

// The invoices' merge file: plain text, tab-separated fields, one header
// line of field names, then one line per invoice. A word processor's mail
// merge and a spreadsheet read it as a table, so no field may carry a tab
// or a line break of its own (those become blanks), nor a double quote,
// which both read as the start of a quoted field that may run over the
// tabs and lines after it (it becomes a single quote). Money is written in the
// workstation's currency format with two decimals, the one place where an
// amount is rounded (half away from zero, from the exact value).
//
// The file is written under a temporary name and takes its place at
// commit(), so a failed export never leaves half a file behind.
class MergeFile
{
public:
    // Throws MessageError when the file cannot be created.
    MergeFile(const QString& path, QLocale locale);
    ~MergeFile();

    void writeHeader(const QStringList& names);
    void write(const ClientBill& bill);
    // Throws MessageError when the file cannot be written.
    void commit();

    // "$1,234.50" in an American locale; "1234.50" in the C locale.
    static QString money(Money amount, const QLocale& locale);
    // A field's text with tabs and line breaks made blanks, double quotes
    // single ones.
    static QString field(const QString& text);

private:
    void writeLine(const QStringList& fields);

    QString m_path;
    QLocale m_locale;
    std::unique_ptr<QSaveFile> m_file;
    std::unique_ptr<QTextStream> m_out;
};

} // namespace kb
