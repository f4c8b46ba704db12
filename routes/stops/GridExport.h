#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>

#include <vector>

namespace kb {

// The file types a grid can be written to.
enum class GridExportType { DelimitedText, Sylk, Html };

// What "Grid Export Options" asks for.
struct GridExportOptions
{
    QString fileName;
    GridExportType type = GridExportType::DelimitedText;
    bool selectedOnly = false;
};

// Writes a grid's shown columns with a header line of their titles:
// delimited text with every field in double quotes, a Sylk sheet, or an
// HTML table. Throws MessageError when the file cannot be written.
class GridExport
{
public:
    static QStringList typeTexts(); // "Delimited Text", "Sylk (for export to Excel)", "HTML"
    static QString extension(GridExportType type);
    static void write(const GridExportOptions& options, const QStringList& titles,
                      const std::vector<QVariantList>& rows);
};

} // namespace kb
