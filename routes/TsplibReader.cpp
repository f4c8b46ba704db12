#include "TsplibReader.h"

#include "RoutingError.h"

#include <QFile>
#include <QSet>
#include <QStringList>

#include <cmath>

namespace kb::routes {

namespace {

enum class Section { Header, Coordinates, FixedEdges, Done };

[[noreturn]] void fail(const QString& source, int line, const QString& what)
{
    if (line > 0) throw RoutingError(QStringLiteral("%1, line %2: %3").arg(source).arg(line).arg(what));
    throw RoutingError(QStringLiteral("%1: %2").arg(source, what));
}

double number(const QString& word, const QString& source, int line)
{
    bool ok = false;
    const double value = word.toDouble(&ok);
    if (!ok || !std::isfinite(value)) fail(source, line, QStringLiteral("\"%1\" is not a number.").arg(word));
    return value;
}

int wholeNumber(const QString& word, const QString& source, int line)
{
    bool ok = false;
    const int value = word.toInt(&ok);
    if (!ok) fail(source, line, QStringLiteral("\"%1\" is not a whole number.").arg(word));
    return value;
}

} // namespace

TsplibInstance TsplibReader::readFile(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        throw RoutingError(
            QStringLiteral("Cannot open the TSPLIB file %1: %2").arg(path, file.errorString()));
    // Read no more than a file of the largest map could hold, and one byte
    // past it to tell that the file is bigger.
    const QByteArray bytes = file.read(MaxFileBytes + 1);
    if (bytes.size() > MaxFileBytes)
        throw RoutingError(QStringLiteral("%1: The file is larger than %2 MB; no map of %3 stops needs that much.")
                               .arg(path)
                               .arg(MaxFileBytes / (1024 * 1024))
                               .arg(MaxNodes));
    return parse(QString::fromUtf8(bytes), path);
}

TsplibInstance TsplibReader::parse(const QString& text, const QString& sourceName)
{
    if (text.size() > MaxFileBytes)
        fail(sourceName, 0, QStringLiteral("The text is longer than a map of %1 stops needs.").arg(MaxNodes));
    TsplibInstance instance;
    int dimension = -1;
    QString weightType;
    QString type;
    QSet<QString> keys; // header keys read so far
    std::vector<char> seen;
    int coordinates = 0;
    Section section = Section::Header;

    const QStringList lines = text.split(QLatin1Char('\n'));
    for (int index = 0; index < lines.size() && section != Section::Done; ++index) {
        const int lineNo = index + 1;
        const QString line = lines[index].trimmed();
        if (line.isEmpty()) continue;
        if (line == QLatin1String("EOF")) {
            section = Section::Done;
            break;
        }
        const QStringList words = line.split(QLatin1Char(' '), Qt::SkipEmptyParts);

        if (line == QLatin1String("NODE_COORD_SECTION")) {
            if (dimension <= 0)
                fail(sourceName, lineNo, QStringLiteral("NODE_COORD_SECTION comes before a DIMENSION."));
            if (weightType != QLatin1String("EUC_2D"))
                fail(sourceName, lineNo,
                     QStringLiteral("Only EDGE_WEIGHT_TYPE EUC_2D is read, not \"%1\".").arg(weightType));
            if (!seen.empty())
                fail(sourceName, lineNo, QStringLiteral("NODE_COORD_SECTION is given twice."));
            // Room for the nodes is made only now, once the dimension is known
            // to be within bounds and final.
            instance.points.assign(std::size_t(dimension), PlanePoint{});
            seen.assign(std::size_t(dimension), 0);
            section = Section::Coordinates;
            continue;
        }
        if (line == QLatin1String("FIXED_EDGES_SECTION")) {
            section = Section::FixedEdges;
            continue;
        }

        if (section == Section::Coordinates && !line.front().isLetter()) {
            if (words.size() != 3)
                fail(sourceName, lineNo, QStringLiteral("A node line needs a number and two coordinates."));
            const int id = wholeNumber(words[0], sourceName, lineNo);
            if (id < 1 || id > dimension)
                fail(sourceName, lineNo,
                     QStringLiteral("Node %1 is outside 1 to %2.").arg(id).arg(dimension));
            if (seen[id - 1]) fail(sourceName, lineNo, QStringLiteral("Node %1 is given twice.").arg(id));
            seen[id - 1] = 1;
            instance.points[id - 1] = {number(words[1], sourceName, lineNo),
                                       number(words[2], sourceName, lineNo)};
            ++coordinates;
            continue;
        }
        if (section == Section::FixedEdges && !line.front().isLetter()) {
            if (words.size() == 1 && words[0] == QLatin1String("-1")) {
                section = Section::Header;
                continue;
            }
            if (words.size() != 2)
                fail(sourceName, lineNo, QStringLiteral("A fixed edge line needs two node numbers."));
            if (dimension <= 0)
                fail(sourceName, lineNo, QStringLiteral("FIXED_EDGES_SECTION comes before a DIMENSION."));
            const int a = wholeNumber(words[0], sourceName, lineNo);
            const int b = wholeNumber(words[1], sourceName, lineNo);
            if (a < 1 || b < 1 || a > dimension || b > dimension || a == b)
                fail(sourceName, lineNo,
                     QStringLiteral("The fixed edge %1 %2 is not a pair of nodes.").arg(a).arg(b));
            instance.fixedEdges.emplace_back(a - 1, b - 1);
            continue;
        }

        // A header line: KEY : VALUE, with or without blanks around the colon.
        const int colon = line.indexOf(QLatin1Char(':'));
        if (colon < 0)
            fail(sourceName, lineNo,
                 QStringLiteral("\"%1\" is not a header line or a known section.").arg(line));
        const QString key = line.left(colon).trimmed().toUpper();
        const QString value = line.mid(colon + 1).trimmed();
        section = Section::Header;
        if (key != QLatin1String("COMMENT")) {
            // A second value would silently replace the first, and with it
            // what the nodes read so far mean.
            if (keys.contains(key)) fail(sourceName, lineNo, QStringLiteral("%1 is given twice.").arg(key));
            keys.insert(key);
        }
        if (key == QLatin1String("NAME")) {
            instance.name = value;
        } else if (key == QLatin1String("TYPE")) {
            type = value.toUpper();
            if (type != QLatin1String("TSP"))
                fail(sourceName, lineNo, QStringLiteral("Only TYPE TSP is read, not \"%1\".").arg(value));
        } else if (key == QLatin1String("DIMENSION")) {
            dimension = wholeNumber(value, sourceName, lineNo);
            if (dimension < 1) fail(sourceName, lineNo, QStringLiteral("DIMENSION must be at least 1."));
            if (dimension > MaxNodes)
                fail(sourceName, lineNo,
                     QStringLiteral("DIMENSION %1 is more than the %2 stops that can be ordered.")
                         .arg(dimension)
                         .arg(MaxNodes));
            // Each node needs a line of its own.
            if (dimension > lines.size() - index - 1)
                fail(sourceName, lineNo,
                     QStringLiteral("DIMENSION is %1 but the file has only %2 more lines.")
                         .arg(dimension)
                         .arg(lines.size() - index - 1));
        } else if (key == QLatin1String("EDGE_WEIGHT_TYPE")) {
            weightType = value.toUpper();
        }
        // COMMENT and other descriptive keys carry nothing the ordering needs.
    }

    if (dimension <= 0) fail(sourceName, 0, QStringLiteral("The file has no DIMENSION."));
    if (weightType.isEmpty()) fail(sourceName, 0, QStringLiteral("The file has no EDGE_WEIGHT_TYPE."));
    if (coordinates != dimension)
        fail(sourceName, 0,
             QStringLiteral("DIMENSION is %1 but %2 node coordinates were given.")
                 .arg(dimension)
                 .arg(coordinates));
    if (instance.name.isEmpty()) instance.name = sourceName;
    return instance;
}

} // namespace kb::routes
