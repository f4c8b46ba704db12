#include "GridExport.h"

#include "MessageError.h"

#include <QDate>
#include <QFile>
#include <QLocale>
#include <QTextStream>

namespace kb {

namespace {

QString cellText(const QVariant& v)
{
    if (v.isNull())
        return {};
    switch (v.typeId()) {
    case QMetaType::Double: return QLocale::c().toString(v.toDouble(), 'g', 15);
    case QMetaType::QDate: return v.toDate().toString(Qt::ISODate);
    case QMetaType::Bool: return v.toBool() ? QStringLiteral("true") : QStringLiteral("false");
    default: return v.toString();
    }
}

QString quoted(const QString& text)
{
    QString t = text;
    t.replace(QLatin1Char('"'), QStringLiteral("\"\""));
    return QLatin1Char('"') + t + QLatin1Char('"');
}

QString sylkText(const QString& text)
{
    QString t = text;
    t.replace(QLatin1Char(';'), QStringLiteral(";;"));
    t.replace(QLatin1Char('\n'), QLatin1Char(' '));
    return t;
}

} // namespace

QStringList GridExport::typeTexts()
{
    return {QStringLiteral("Delimited Text"), QStringLiteral("Sylk (for export to Excel)"), QStringLiteral("HTML")};
}

QString GridExport::extension(GridExportType type)
{
    switch (type) {
    case GridExportType::Sylk: return QStringLiteral("slk");
    case GridExportType::Html: return QStringLiteral("HTM");
    case GridExportType::DelimitedText: break;
    }
    return QStringLiteral("txt");
}

void GridExport::write(const GridExportOptions& options, const QStringList& titles,
                       const std::vector<QVariantList>& rows)
{
    QFile file(options.fileName);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Text))
        throw MessageError(QStringLiteral("Unable to write the file %1: %2").arg(options.fileName, file.errorString()));
    QTextStream out(&file);
    switch (options.type) {
    case GridExportType::DelimitedText: {
        QStringList line;
        for (const QString& t : titles)
            line << quoted(t);
        out << line.join(QLatin1Char(',')) << '\n';
        for (const QVariantList& row : rows) {
            line.clear();
            for (const QVariant& v : row)
                line << quoted(cellText(v));
            out << line.join(QLatin1Char(',')) << '\n';
        }
        break;
    }
    case GridExportType::Sylk: {
        out << "ID;PKettlebrook\n";
        for (int c = 0; c < titles.size(); ++c)
            out << "C;Y1;X" << c + 1 << ";K\"" << sylkText(titles[c]) << "\"\n";
        for (size_t r = 0; r < rows.size(); ++r)
            for (int c = 0; c < rows[r].size(); ++c) {
                const QVariant& v = rows[r][c];
                if (v.isNull())
                    continue;
                const bool number = v.typeId() == QMetaType::Double || v.typeId() == QMetaType::Int ||
                                    v.typeId() == QMetaType::LongLong;
                out << "C;Y" << r + 2 << ";X" << c + 1 << ";K";
                if (number)
                    out << cellText(v);
                else
                    out << '"' << sylkText(cellText(v)) << '"';
                out << '\n';
            }
        out << "E\n";
        break;
    }
    case GridExportType::Html: {
        out << "<html><body><table border=\"1\">\n<tr>";
        for (const QString& t : titles)
            out << "<th>" << t.toHtmlEscaped() << "</th>";
        out << "</tr>\n";
        for (const QVariantList& row : rows) {
            out << "<tr>";
            for (const QVariant& v : row)
                out << "<td>" << cellText(v).toHtmlEscaped() << "</td>";
            out << "</tr>\n";
        }
        out << "</table></body></html>\n";
        break;
    }
    }
    out.flush();
    if (out.status() != QTextStream::Ok || !file.flush())
        throw MessageError(QStringLiteral("Unable to write the file %1: %2").arg(options.fileName, file.errorString()));
}

} // namespace kb
