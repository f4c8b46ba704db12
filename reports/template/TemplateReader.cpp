#include "template/TemplateReader.h"

#include "model/LabelStock.h"
#include "render/Barcode.h"
#include "template/ExpressionParser.h"
#include "template/TemplateError.h"

#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QRegularExpression>
#include <QStringDecoder>

#include <cmath>

namespace kb::reports::TemplateReader {

namespace {

// The largest length a template may give anywhere: 100 inches.
constexpr double MaxLength = 7200;

struct Token
{
    QString text;
    bool quoted = false;
};

struct Line
{
    int number = 0;
    std::vector<Token> tokens;
};

QString describe(const Token& t) { return t.quoted ? u'"' + t.text + u'"' : t.text; }

class Reader
{
public:
    Reader(const QString& text, QString fileName) : m_fileName(std::move(fileName)) { split(text); }

    ReportTemplate read()
    {
        ReportTemplate report;
        report.fileName = m_fileName;
        if (m_lines.empty())
            fail(0, QStringLiteral("the file is empty; a template starts with the line: report \"Title\""));
        const Line& first = m_lines[0];
        if (keyword(first) != QLatin1String("report"))
            fail(first.number, QStringLiteral("a template starts with the line: report \"Title\""));
        {
            Cursor c(*this, first);
            c.skip();
            if (!c.atEnd())
                report.title = c.string(QStringLiteral("the report's title"));
            c.done();
        }
        m_next = 1;
        m_report = &report;
        readReportBody(report);
        if (m_next < m_lines.size())
            fail(m_lines[m_next].number, QStringLiteral("nothing may follow the 'end' of the report"));
        bool groupBands = false;
        for (const Group& g : report.body.groups)
            groupBands = groupBands || g.header || g.footer;
        if (!report.body.detail && !report.body.header && !report.body.footer && !groupBands)
            fail(first.number, QStringLiteral("the report has no bands to print"));
        return report;
    }

private:
    // ---- lines and tokens ----

    void split(const QString& text)
    {
        int number = 0;
        qsizetype pos = 0;
        while (pos <= text.size()) {
            qsizetype end = text.indexOf(u'\n', pos);
            if (end < 0)
                end = text.size();
            ++number;
            QStringView raw = QStringView(text).mid(pos, end - pos);
            if (raw.endsWith(u'\r'))
                raw.chop(1);
            if (raw.size() > MaxLineLength)
                fail(number, QStringLiteral("the line is longer than %1 characters").arg(MaxLineLength));
            Line line;
            line.number = number;
            tokenize(raw, line);
            if (!line.tokens.empty())
                m_lines.push_back(std::move(line));
            pos = end + 1;
        }
    }

    void tokenize(QStringView raw, Line& line)
    {
        qsizetype i = 0;
        const QStringView trimmed = raw.trimmed();
        if (trimmed.startsWith(u'#'))
            return;
        while (i < raw.size()) {
            const QChar c = raw[i];
            if (c.isSpace()) {
                ++i;
                continue;
            }
            if (c.unicode() < 0x20 && c != u'\t')
                fail(line.number, QStringLiteral("the line holds a control character (code %1)").arg(c.unicode()));
            Token t;
            if (c == u'"') {
                t.quoted = true;
                ++i;
                bool closed = false;
                while (i < raw.size()) {
                    const QChar d = raw[i++];
                    if (d == u'"') {
                        closed = true;
                        break;
                    }
                    if (d == u'\\') {
                        if (i >= raw.size())
                            break;
                        const QChar e = raw[i++];
                        if (e == u'n')
                            t.text += u'\n';
                        else if (e == u't')
                            t.text += u'\t';
                        else if (e == u'"' || e == u'\\')
                            t.text += e;
                        else
                            fail(line.number, QStringLiteral("unknown escape \\%1 in a text (use \\\", \\\\, \\n or \\t)")
                                                  .arg(e));
                        continue;
                    }
                    if (d.unicode() < 0x20 && d != u'\t')
                        fail(line.number,
                             QStringLiteral("the line holds a control character (code %1)").arg(d.unicode()));
                    t.text += d;
                }
                if (!closed)
                    fail(line.number, QStringLiteral("a text in double quotes is not closed"));
            } else {
                while (i < raw.size() && !raw[i].isSpace() && raw[i] != u'"') {
                    if (raw[i].unicode() < 0x20)
                        fail(line.number,
                             QStringLiteral("the line holds a control character (code %1)").arg(raw[i].unicode()));
                    t.text += raw[i++];
                }
            }
            line.tokens.push_back(std::move(t));
        }
    }

    [[noreturn]] void fail(int line, const QString& what) const
    {
        if (line > 0)
            throw TemplateError(
                QStringLiteral("Error in the report template %1, line %2: %3").arg(m_fileName).arg(line).arg(what));
        throw TemplateError(QStringLiteral("Error in the report template %1: %2").arg(m_fileName, what));
    }

    static QString keyword(const Line& line)
    {
        return line.tokens.front().quoted ? QString() : line.tokens.front().text.toLower();
    }

    // Reads the words of one line from left to right.
    class Cursor
    {
    public:
        Cursor(Reader& reader, const Line& line) : m_reader(reader), m_line(line) {}

        bool atEnd() const { return m_pos >= m_line.tokens.size(); }
        int number() const { return m_line.number; }
        void skip() { ++m_pos; }
        const Token& peek() const { return m_line.tokens[m_pos]; }
        bool peekWord(const char* word) const
        {
            return !atEnd() && !peek().quoted && peek().text.compare(QLatin1String(word), Qt::CaseInsensitive) == 0;
        }
        [[noreturn]] void fail(const QString& what) const { m_reader.fail(m_line.number, what); }

        const Token& take(const QString& what)
        {
            if (atEnd())
                fail(QStringLiteral("%1 is missing").arg(what));
            return m_line.tokens[m_pos++];
        }
        QString word(const QString& what)
        {
            const Token& t = take(what);
            if (t.quoted)
                fail(QStringLiteral("expected %1, found %2").arg(what, describe(t)));
            return t.text;
        }
        QString string(const QString& what)
        {
            const Token& t = take(what);
            if (!t.quoted)
                fail(QStringLiteral("expected %1 in double quotes, found %2").arg(what, t.text));
            return t.text;
        }
        // A word or a quoted text.
        QString name(const QString& what) { return take(what).text; }

        double length(const QString& what, bool allowNegative = false)
        {
            const Token& t = take(what);
            static const QRegularExpression pattern(QStringLiteral("^(-?[0-9]{1,6}(?:\\.[0-9]{1,6})?)(in|mm|cm|pt)?$"));
            const auto match = pattern.match(t.text);
            if (t.quoted || !match.hasMatch())
                fail(QStringLiteral("expected %1 as a length such as 0.5in, 12mm or 10pt, found %2")
                         .arg(what, describe(t)));
            const double number = match.captured(1).toDouble();
            const QString unit = match.captured(2).isEmpty() ? m_reader.m_units : match.captured(2);
            double points = number;
            if (unit == QLatin1String("in"))
                points = number * 72;
            else if (unit == QLatin1String("mm"))
                points = number * 72 / 25.4;
            else if (unit == QLatin1String("cm"))
                points = number * 72 / 2.54;
            if (!allowNegative && points < 0)
                fail(QStringLiteral("%1 cannot be negative").arg(what));
            if (std::abs(points) > MaxLength)
                fail(QStringLiteral("%1 is larger than 100 inches").arg(what));
            return points;
        }

        int integer(const QString& what, int min, int max)
        {
            const Token& t = take(what);
            bool ok = false;
            const int n = t.quoted ? 0 : t.text.toInt(&ok);
            if (!ok || n < min || n > max)
                fail(QStringLiteral("expected %1 as a whole number from %2 to %3, found %4")
                         .arg(what)
                         .arg(min)
                         .arg(max)
                         .arg(describe(t)));
            return n;
        }

        double number(const QString& what, double min, double max)
        {
            const Token& t = take(what);
            bool ok = false;
            const double n = t.quoted ? 0 : t.text.toDouble(&ok);
            if (!ok || !std::isfinite(n) || n < min || n > max)
                fail(QStringLiteral("expected %1 as a number from %2 to %3, found %4")
                         .arg(what)
                         .arg(min)
                         .arg(max)
                         .arg(describe(t)));
            return n;
        }

        QString choice(const QString& what, const QStringList& allowed)
        {
            const QString w = word(what);
            for (const QString& a : allowed) {
                if (a.compare(w, Qt::CaseInsensitive) == 0)
                    return a;
            }
            fail(QStringLiteral("%1 must be one of %2, not %3").arg(what, allowed.join(QStringLiteral(", ")), w));
        }

        QColor color(const QString& what)
        {
            const QString text = name(what);
            QColor c;
            if (text.size() <= 40)
                c = QColor::fromString(text);
            if (!c.isValid())
                fail(QStringLiteral("%1 '%2' is not a colour; give #rrggbb or a name such as gray").arg(what, text));
            return c;
        }

        ExprPtr expression(const QString& what)
        {
            const QString text = string(what);
            try {
                return ExpressionParser::parse(text);
            } catch (const ExpressionError& e) {
                fail(QStringLiteral("in %1 \"%2\": %3").arg(what, text, e.message()));
            }
        }

        TextTemplate text(const QString& what)
        {
            const QString value = string(what);
            try {
                return ExpressionParser::parseText(value);
            } catch (const ExpressionError& e) {
                fail(QStringLiteral("in %1 \"%2\": %3").arg(what, value, e.message()));
            }
        }

        void done() const
        {
            if (!atEnd())
                fail(QStringLiteral("unexpected %1").arg(describe(m_line.tokens[m_pos])));
        }

    private:
        Reader& m_reader;
        const Line& m_line;
        size_t m_pos = 0;
    };

    // ---- blocks ----

    // The next line of a block; its end is the line "end".
    const Line* nextInBlock(int openedAt, const QString& block)
    {
        if (m_next >= m_lines.size())
            fail(openedAt, QStringLiteral("the %1 opened here has no 'end'").arg(block));
        const Line& line = m_lines[m_next++];
        if (keyword(line) == QLatin1String("end")) {
            Cursor c(*this, line);
            c.skip();
            c.done();
            return nullptr;
        }
        return &line;
    }

    struct DepthGuard
    {
        DepthGuard(Reader& r, int line) : reader(r)
        {
            if (++reader.m_depth > MaxDepth)
                reader.fail(line, QStringLiteral("blocks are nested more than %1 deep").arg(MaxDepth));
        }
        ~DepthGuard() { --reader.m_depth; }
        Reader& reader;
    };

    void readReportBody(ReportTemplate& report)
    {
        const int opened = m_lines[0].number;
        DepthGuard depth(*this, opened);
        while (const Line* line = nextInBlock(opened, QStringLiteral("report"))) {
            Cursor c(*this, *line);
            const QString key = keyword(*line);
            c.skip();
            if (key == QLatin1String("page"))
                readPage(c, report);
            else if (key == QLatin1String("margins"))
                readMargins(c, report);
            else if (key == QLatin1String("units"))
                m_units = c.choice(QStringLiteral("the unit"), {QStringLiteral("in"), QStringLiteral("mm"),
                                                               QStringLiteral("cm"), QStringLiteral("pt")});
            else if (key == QLatin1String("locale"))
                report.locale = c.word(QStringLiteral("the locale, such as en_US"));
            else if (key == QLatin1String("dateformat"))
                report.dateFormat = c.string(QStringLiteral("the date format"));
            else if (key == QLatin1String("datetimeformat"))
                report.dateTimeFormat = c.string(QStringLiteral("the date and time format"));
            else if (key == QLatin1String("font"))
                readStyle(c, report.defaultStyle, true);
            else if (key == QLatin1String("style")) {
                const QString name = c.word(QStringLiteral("the style's name")).toLower();
                TextStyle style = report.defaultStyle;
                readStyle(c, style, true);
                m_styles.insert(name, style);
                continue;
            } else if (key == QLatin1String("parameter")) {
                ParameterDef p;
                p.name = c.word(QStringLiteral("the parameter's name"));
                if (!c.atEnd())
                    p.defaultValue = c.name(QStringLiteral("the default value"));
                report.parameters.push_back(std::move(p));
            } else if (key == QLatin1String("pipe"))
                report.body.pipe = c.name(QStringLiteral("the pipe's name"));
            else if (key == QLatin1String("columns"))
                readColumns(c, report);
            else if (key == QLatin1String("stock")) {
                const QString name = c.name(QStringLiteral("the label stock's name"));
                const LabelStock* stock = LabelStock::find(name);
                if (!stock)
                    c.fail(QStringLiteral("there is no label stock named \"%1\"").arg(name));
                m_stock = stock;
            } else if (key == QLatin1String("data")) {
                readData(c, report);
                continue;
            } else if (key == QLatin1String("title") || key == QLatin1String("summary") ||
                       key == QLatin1String("pageheader") || key == QLatin1String("pagefooter") ||
                       key == QLatin1String("detail") || key == QLatin1String("nodata")) {
                readSectionBand(c, key, report.body, &report);
                continue;
            } else if (key == QLatin1String("group")) {
                readGroup(c, report.body);
                continue;
            } else {
                c.fail(QStringLiteral("unknown statement '%1' in the report").arg(line->tokens.front().text));
            }
            c.done();
        }
        if (m_stock) {
            if (!report.body.detail)
                fail(opened, QStringLiteral("a report on label stock needs a detail band, which is one label"));
            report.labelFit.design = m_stock->label;
            applyLabelStock(report, *m_stock);
        }
        if (report.columns.count > 1 && report.columns.width <= 0)
            report.columns.width = (report.bodyWidth() - (report.columns.count - 1) * report.columns.gap) /
                                   report.columns.count;
        if (report.bodyWidth() <= 0 ||
            report.pageSize.height() - report.marginTop - report.marginBottom <= 0)
            fail(opened, QStringLiteral("the margins leave no room on the page"));
        if (report.columns.count > 1 && report.body.detail) {
            for (const Element& e : report.body.detail->elements) {
                if ((e.kind == Element::Kind::Subreport && !e.inlineRows) || e.kind == Element::Kind::Crosstab)
                    fail(e.line, QStringLiteral("a detail printed in columns can hold only inline subreports and no "
                                                "crosstab"));
            }
        }
    }

    void readPage(Cursor& c, ReportTemplate& report)
    {
        static const QHash<QString, QSizeF> sizes{
            {QStringLiteral("letter"), QSizeF(612, 792)},   {QStringLiteral("legal"), QSizeF(612, 1008)},
            {QStringLiteral("tabloid"), QSizeF(792, 1224)}, {QStringLiteral("a4"), QSizeF(595.276, 841.89)},
            {QStringLiteral("a5"), QSizeF(419.528, 595.276)}, {QStringLiteral("a3"), QSizeF(841.89, 1190.551)},
        };
        const Token& first = c.peek();
        QSizeF size;
        if (!first.quoted && sizes.contains(first.text.toLower())) {
            size = sizes.value(first.text.toLower());
            c.skip();
        } else {
            const double w = c.length(QStringLiteral("the page width"));
            const double h = c.length(QStringLiteral("the page height"));
            if (w < 36 || h < 36)
                c.fail(QStringLiteral("a page must be at least half an inch wide and high"));
            size = QSizeF(w, h);
        }
        if (!c.atEnd()) {
            const QString orientation = c.choice(QStringLiteral("the orientation"),
                                                 {QStringLiteral("portrait"), QStringLiteral("landscape")});
            const bool landscape = orientation == QLatin1String("landscape");
            if (landscape != (size.width() > size.height()))
                size.transpose();
        }
        report.pageSize = size;
    }

    void readMargins(Cursor& c, ReportTemplate& report)
    {
        std::vector<double> values;
        while (!c.atEnd() && values.size() < 4)
            values.push_back(c.length(QStringLiteral("a margin")));
        if (values.size() == 1)
            values = {values[0], values[0], values[0], values[0]};
        else if (values.size() == 2)
            values = {values[0], values[1], values[0], values[1]};
        else if (values.size() != 4)
            c.fail(QStringLiteral("give one margin for all sides, two (sides, top and bottom) or four (left, top, "
                                  "right, bottom)"));
        report.marginLeft = values[0];
        report.marginTop = values[1];
        report.marginRight = values[2];
        report.marginBottom = values[3];
    }

    void readColumns(Cursor& c, ReportTemplate& report)
    {
        report.columns.count = c.integer(QStringLiteral("the number of columns"), 1, 50);
        while (!c.atEnd()) {
            const QString attr = c.word(QStringLiteral("a column setting")).toLower();
            if (attr == QLatin1String("width"))
                report.columns.width = c.length(QStringLiteral("the column width"));
            else if (attr == QLatin1String("gap"))
                report.columns.gap = c.length(QStringLiteral("the gap between columns"));
            else if (attr == QLatin1String("pitch"))
                report.columns.rowPitch = c.length(QStringLiteral("the row pitch"));
            else if (attr == QLatin1String("across"))
                report.columns.acrossFirst = true;
            else if (attr == QLatin1String("down"))
                report.columns.acrossFirst = false;
            else
                c.fail(QStringLiteral("unknown column setting '%1' (width, gap, pitch, across, down)").arg(attr));
        }
    }

    void readData(Cursor& c, ReportTemplate& report)
    {
        DataDef data;
        data.line = c.number();
        data.pipe = c.name(QStringLiteral("the data's pipe name"));
        c.done();
        DepthGuard depth(*this, data.line);
        QStringList sql;
        while (const Line* line = nextInBlock(data.line, QStringLiteral("data block"))) {
            Cursor d(*this, *line);
            const QString key = keyword(*line);
            d.skip();
            if (key == QLatin1String("sql"))
                sql << d.string(QStringLiteral("a line of the statement"));
            else if (key == QLatin1String("master"))
                data.master = d.name(QStringLiteral("the master pipe's name"));
            else
                d.fail(QStringLiteral("unknown statement '%1' in a data block (sql, master)")
                           .arg(line->tokens.front().text));
            d.done();
        }
        if (sql.isEmpty())
            fail(data.line, QStringLiteral("the data block gives no sql"));
        data.sql = sql.join(u'\n');
        report.data.push_back(std::move(data));
    }

    static Band::Role roleOf(const QString& key)
    {
        if (key == QLatin1String("title") || key == QLatin1String("header"))
            return Band::Role::Title;
        if (key == QLatin1String("summary") || key == QLatin1String("footer"))
            return Band::Role::Summary;
        if (key == QLatin1String("pageheader"))
            return Band::Role::PageHeader;
        if (key == QLatin1String("pagefooter"))
            return Band::Role::PageFooter;
        if (key == QLatin1String("nodata"))
            return Band::Role::NoData;
        return Band::Role::Detail;
    }

    void readSectionBand(Cursor& c, const QString& key, Section& section, ReportTemplate* report)
    {
        const int line = c.number();
        auto band = readBand(c, roleOf(key), key);
        std::unique_ptr<Band>* slot = nullptr;
        switch (band->role) {
        case Band::Role::Title: slot = &section.header; break;
        case Band::Role::Summary: slot = &section.footer; break;
        case Band::Role::Detail: slot = &section.detail; break;
        case Band::Role::NoData: slot = &section.noData; break;
        case Band::Role::PageHeader: slot = report ? &report->pageHeader : nullptr; break;
        case Band::Role::PageFooter: slot = report ? &report->pageFooter : nullptr; break;
        default: break;
        }
        if (!slot)
            fail(line, QStringLiteral("a subreport has no page header or footer of its own"));
        if (*slot)
            fail(line, QStringLiteral("there is already a %1 band here").arg(key));
        *slot = std::move(band);
    }

    std::unique_ptr<Band> readBand(Cursor& c, Band::Role role, const QString& key)
    {
        auto band = std::make_unique<Band>();
        band->role = role;
        band->line = c.number();
        bool hasHeight = false;
        while (!c.atEnd()) {
            const QString attr = c.word(QStringLiteral("a band setting")).toLower();
            if (attr == QLatin1String("height")) {
                band->height = c.length(QStringLiteral("the band's height"));
                hasHeight = true;
            } else if (attr == QLatin1String("stretch"))
                band->stretch = true;
            else if (attr == QLatin1String("keeptogether"))
                band->keepTogether = true;
            else if (attr == QLatin1String("newpageafter"))
                band->newPageAfter = true;
            else if (attr == QLatin1String("visible"))
                band->visible = c.expression(QStringLiteral("the condition"));
            else
                c.fail(QStringLiteral("unknown band setting '%1' (height, stretch, keepTogether, newPageAfter, "
                                      "visible)")
                           .arg(attr));
        }
        if (!hasHeight)
            c.fail(QStringLiteral("the %1 band needs a height").arg(key));
        if ((role == Band::Role::PageHeader || role == Band::Role::PageFooter) && band->stretch)
            c.fail(QStringLiteral("page headers and footers have a fixed height"));
        DepthGuard depth(*this, band->line);
        while (const Line* line = nextInBlock(band->line, key + QStringLiteral(" band"))) {
            Cursor e(*this, *line);
            band->elements.push_back(readElement(e, role));
        }
        return band;
    }

    void readGroup(Cursor& c, Section& section)
    {
        Group group;
        group.line = c.number();
        group.name = c.word(QStringLiteral("the group's name"));
        for (const Group& other : section.groups) {
            if (other.name.compare(group.name, Qt::CaseInsensitive) == 0)
                c.fail(QStringLiteral("there is already a group named %1").arg(group.name));
        }
        while (!c.atEnd()) {
            const QString attr = c.word(QStringLiteral("a group setting")).toLower();
            if (attr == QLatin1String("key"))
                group.key = c.expression(QStringLiteral("the group's key"));
            else if (attr == QLatin1String("keeptogether"))
                group.keepTogether = true;
            else if (attr == QLatin1String("reprintheader"))
                group.reprintHeader = true;
            else if (attr == QLatin1String("newpage"))
                group.newPage = true;
            else if (attr == QLatin1String("resetpagenumber"))
                group.resetPageNumber = group.newPage = true;
            else
                c.fail(QStringLiteral("unknown group setting '%1' (key, keepTogether, reprintHeader, newPage, "
                                      "resetPageNumber)")
                           .arg(attr));
        }
        if (!group.key)
            c.fail(QStringLiteral("the group needs a key: key \"Route_ID\""));
        DepthGuard depth(*this, group.line);
        while (const Line* line = nextInBlock(group.line, QStringLiteral("group"))) {
            Cursor g(*this, *line);
            const QString key = keyword(*line);
            g.skip();
            if (key == QLatin1String("header")) {
                if (group.header)
                    g.fail(QStringLiteral("the group already has a header"));
                group.header = readBand(g, Band::Role::GroupHeader, key);
            } else if (key == QLatin1String("footer")) {
                if (group.footer)
                    g.fail(QStringLiteral("the group already has a footer"));
                group.footer = readBand(g, Band::Role::GroupFooter, key);
            } else {
                g.fail(QStringLiteral("a group holds a header and a footer, not '%1'").arg(line->tokens.front().text));
            }
        }
        section.groups.push_back(std::move(group));
    }

    // ---- elements ----

    Element readElement(Cursor& c, Band::Role role)
    {
        if (++m_elements > MaxElements)
            c.fail(QStringLiteral("the template has more than %1 elements").arg(MaxElements));
        Element e;
        e.line = c.number();
        e.style = m_report->defaultStyle;
        const QString kind = c.word(QStringLiteral("an element")).toLower();
        const bool pageBand = role == Band::Role::PageHeader || role == Band::Role::PageFooter;
        if (kind == QLatin1String("text")) {
            e.kind = Element::Kind::Text;
            readRect(c, e);
            e.text = c.text(QStringLiteral("the text"));
            readAttributes(c, e);
        } else if (kind == QLatin1String("line")) {
            e.kind = Element::Kind::Line;
            const double x1 = c.length(QStringLiteral("x1"), true), y1 = c.length(QStringLiteral("y1"), true);
            const double x2 = c.length(QStringLiteral("x2"), true), y2 = c.length(QStringLiteral("y2"), true);
            e.rect = QRectF(QPointF(x1, y1), QPointF(x2, y2));
            readAttributes(c, e);
        } else if (kind == QLatin1String("box")) {
            e.kind = Element::Kind::Box;
            readRect(c, e);
            readAttributes(c, e);
        } else if (kind == QLatin1String("image")) {
            e.kind = Element::Kind::Image;
            readRect(c, e);
            readAttributes(c, e);
            if (e.imageFile.isEmpty() && e.imageValue.isEmpty())
                c.fail(QStringLiteral("the image needs file \"name\" or value \"{field}\""));
        } else if (kind == QLatin1String("barcode")) {
            e.kind = Element::Kind::Barcode;
            readRect(c, e);
            e.symbology = c.word(QStringLiteral("the symbology"));
            if (!Barcode::isKnownSymbology(e.symbology))
                c.fail(QStringLiteral("unknown symbology '%1' (%2)")
                           .arg(e.symbology, Barcode::symbologies().join(QStringLiteral(", "))));
            e.barcodeData = c.text(QStringLiteral("the barcode's data"));
            readAttributes(c, e);
        } else if (kind == QLatin1String("subreport") || kind == QLatin1String("crosstab")) {
            if (pageBand)
                c.fail(QStringLiteral("a page header or footer cannot hold a %1").arg(kind));
            e.kind = kind == QLatin1String("subreport") ? Element::Kind::Subreport : Element::Kind::Crosstab;
            const double x = c.length(QStringLiteral("x"));
            const double y = c.length(QStringLiteral("y"));
            e.rect = QRectF(x, y, 0, 0);
            QString pipe;
            while (!c.atEnd()) {
                const QString attr = c.word(QStringLiteral("a setting")).toLower();
                if (attr == QLatin1String("pipe"))
                    pipe = c.name(QStringLiteral("the pipe's name"));
                else if (attr == QLatin1String("visible"))
                    e.visible = c.expression(QStringLiteral("the condition"));
                else if (attr == QLatin1String("inline") && e.kind == Element::Kind::Subreport)
                    e.inlineRows = true;
                else if (attr == QLatin1String("height") && e.kind == Element::Kind::Subreport)
                    e.rect.setHeight(c.length(QStringLiteral("the room the subreport takes")));
                else
                    c.fail(QStringLiteral("unknown %1 setting '%2' (pipe, visible%3)")
                               .arg(kind, attr,
                                    e.kind == Element::Kind::Subreport ? QStringLiteral(", inline, height")
                                                                       : QString()));
            }
            if (e.kind == Element::Kind::Subreport)
                e.section = readSubreport(c.number(), pipe);
            else
                e.crosstab = readCrosstab(c.number(), pipe);
        } else {
            c.fail(QStringLiteral("unknown element '%1' (text, line, box, image, barcode, subreport, crosstab)")
                       .arg(kind));
        }
        return e;
    }

    void readRect(Cursor& c, Element& e)
    {
        const double x = c.length(QStringLiteral("x"), true);
        const double y = c.length(QStringLiteral("y"), true);
        const double w = c.length(QStringLiteral("the width"));
        const double h = c.length(QStringLiteral("the height"));
        e.rect = QRectF(x, y, w, h);
    }

    void readAttributes(Cursor& c, Element& e)
    {
        while (!c.atEnd()) {
            const Token& t = c.peek();
            const QString attr = t.quoted ? QString() : t.text.toLower();
            if (attr == QLatin1String("visible")) {
                c.skip();
                e.visible = c.expression(QStringLiteral("the condition"));
            } else if (e.kind == Element::Kind::Text && attr == QLatin1String("wrap")) {
                c.skip();
                e.wrap = true;
            } else if (e.kind == Element::Kind::Text && attr == QLatin1String("stretch")) {
                c.skip();
                e.wrap = e.stretch = true;
            } else if ((e.kind == Element::Kind::Line || e.kind == Element::Kind::Box) &&
                       attr == QLatin1String("width")) {
                c.skip();
                e.penWidth = c.length(QStringLiteral("the line width"));
            } else if ((e.kind == Element::Kind::Line || e.kind == Element::Kind::Box) &&
                       attr == QLatin1String("color")) {
                c.skip();
                e.penColor = c.color(QStringLiteral("the colour"));
            } else if (e.kind == Element::Kind::Box && attr == QLatin1String("fill")) {
                c.skip();
                e.boxFill = c.color(QStringLiteral("the fill"));
            } else if (e.kind == Element::Kind::Image && attr == QLatin1String("file")) {
                c.skip();
                e.imageFile = c.string(QStringLiteral("the image's file name"));
            } else if (e.kind == Element::Kind::Image && attr == QLatin1String("value")) {
                c.skip();
                e.imageValue = c.text(QStringLiteral("the image's value"));
            } else if (e.kind == Element::Kind::Image && attr == QLatin1String("stretch")) {
                c.skip();
                e.keepAspect = false;
            } else if (e.kind == Element::Kind::Barcode && attr == QLatin1String("notext")) {
                c.skip();
                e.barcodeText = false;
            } else if (e.kind == Element::Kind::Text || e.kind == Element::Kind::Barcode) {
                readStyleAttribute(c, e.style, false);
            } else {
                c.fail(QStringLiteral("unexpected %1").arg(describe(t)));
            }
        }
    }

    void readStyle(Cursor& c, TextStyle& style, bool fontLine)
    {
        while (!c.atEnd())
            readStyleAttribute(c, style, fontLine);
    }

    void readStyleAttribute(Cursor& c, TextStyle& style, bool fontLine)
    {
        const Token& t = c.peek();
        if (fontLine && t.quoted) {
            style.family = c.string(QStringLiteral("the font family"));
            return;
        }
        if (fontLine && !t.text.isEmpty() && (t.text[0].isDigit() || t.text[0] == u'.')) {
            style.size = c.number(QStringLiteral("the font size"), 2, 200);
            return;
        }
        const QString attr = c.word(QStringLiteral("a text setting")).toLower();
        if (attr == QLatin1String("style")) {
            const QString name = c.word(QStringLiteral("the style's name")).toLower();
            if (!m_styles.contains(name))
                c.fail(QStringLiteral("there is no style named %1 above this line").arg(name));
            style = m_styles.value(name);
        } else if (attr == QLatin1String("family"))
            style.family = c.name(QStringLiteral("the font family"));
        else if (attr == QLatin1String("size"))
            style.size = c.number(QStringLiteral("the font size"), 2, 200);
        else if (attr == QLatin1String("bold"))
            style.bold = true;
        else if (attr == QLatin1String("italic"))
            style.italic = true;
        else if (attr == QLatin1String("underline"))
            style.underline = true;
        else if (attr == QLatin1String("regular"))
            style.bold = style.italic = style.underline = false;
        else if (attr == QLatin1String("color"))
            style.color = c.color(QStringLiteral("the colour"));
        else if (attr == QLatin1String("fill"))
            style.fill = c.color(QStringLiteral("the fill"));
        else if (attr == QLatin1String("border"))
            style.border = c.length(QStringLiteral("the border width"));
        else if (attr == QLatin1String("align")) {
            const QString a = c.choice(QStringLiteral("the alignment"),
                                       {QStringLiteral("left"), QStringLiteral("center"), QStringLiteral("right")});
            style.align = a == QLatin1String("left") ? HAlign::Left
                          : a == QLatin1String("center") ? HAlign::Center
                                                         : HAlign::Right;
        } else if (attr == QLatin1String("valign")) {
            const QString a = c.choice(QStringLiteral("the vertical alignment"),
                                       {QStringLiteral("top"), QStringLiteral("middle"), QStringLiteral("bottom")});
            style.valign = a == QLatin1String("top") ? VAlign::Top
                           : a == QLatin1String("middle") ? VAlign::Middle
                                                          : VAlign::Bottom;
        } else {
            c.fail(QStringLiteral("unknown setting '%1'").arg(attr));
        }
    }

    std::unique_ptr<Section> readSubreport(int opened, const QString& pipe)
    {
        DepthGuard depth(*this, opened);
        auto section = std::make_unique<Section>();
        section->line = opened;
        section->pipe = pipe;
        while (const Line* line = nextInBlock(opened, QStringLiteral("subreport"))) {
            Cursor c(*this, *line);
            const QString key = keyword(*line);
            c.skip();
            if (key == QLatin1String("header") || key == QLatin1String("footer") || key == QLatin1String("detail") ||
                key == QLatin1String("nodata"))
                readSectionBand(c, key, *section, nullptr);
            else if (key == QLatin1String("group"))
                readGroup(c, *section);
            else
                c.fail(QStringLiteral("a subreport holds header, detail, footer, noData and group blocks, not '%1'")
                           .arg(line->tokens.front().text));
        }
        if (!section->detail && !section->header && !section->footer)
            fail(opened, QStringLiteral("the subreport has no bands"));
        return section;
    }

    std::unique_ptr<Element::CrosstabDef> readCrosstab(int opened, const QString& pipe)
    {
        DepthGuard depth(*this, opened);
        auto x = std::make_unique<Element::CrosstabDef>();
        x->pipe = pipe;
        x->style = m_report->defaultStyle;
        bool hasValue = false;
        while (const Line* line = nextInBlock(opened, QStringLiteral("crosstab"))) {
            Cursor c(*this, *line);
            const QString key = keyword(*line);
            c.skip();
            if (key == QLatin1String("row") || key == QLatin1String("column")) {
                Element::CrosstabDef::Dimension d;
                d.expr = c.expression(QStringLiteral("the %1's value").arg(key));
                while (!c.atEnd()) {
                    const QString attr = c.word(QStringLiteral("a setting")).toLower();
                    if (attr == QLatin1String("title"))
                        d.title = c.string(QStringLiteral("the title"));
                    else if (attr == QLatin1String("width"))
                        d.width = c.length(QStringLiteral("the width"));
                    else if (attr == QLatin1String("format"))
                        d.format = c.string(QStringLiteral("the format"));
                    else
                        c.fail(QStringLiteral("unknown %1 setting '%2' (title, width, format)").arg(key, attr));
                }
                auto& list = key == QLatin1String("row") ? x->rows : x->columns;
                if (list.size() >= 4)
                    c.fail(QStringLiteral("a crosstab has at most four %1 levels").arg(key));
                list.push_back(std::move(d));
            } else if (key == QLatin1String("value")) {
                x->function =
                    c.choice(QStringLiteral("the function"),
                             {QStringLiteral("sum"), QStringLiteral("count"), QStringLiteral("min"),
                              QStringLiteral("max"), QStringLiteral("avg"), QStringLiteral("distinct")});
                if (!c.atEnd() && c.peek().quoted)
                    x->value = c.expression(QStringLiteral("the value"));
                else if (x->function != QLatin1String("count"))
                    c.fail(QStringLiteral("%1 needs a value in quotes").arg(x->function));
                if (c.peekWord("format")) {
                    c.skip();
                    x->valueFormat = c.string(QStringLiteral("the format"));
                }
                hasValue = true;
            } else if (key == QLatin1String("cellwidth"))
                x->cellWidth = c.length(QStringLiteral("the cell width"));
            else if (key == QLatin1String("totals")) {
                const QString t = c.choice(QStringLiteral("the totals"),
                                           {QStringLiteral("both"), QStringLiteral("rows"), QStringLiteral("columns"),
                                            QStringLiteral("none")});
                x->rowTotals = t == QLatin1String("both") || t == QLatin1String("rows");
                x->columnTotals = t == QLatin1String("both") || t == QLatin1String("columns");
            } else if (key == QLatin1String("totaltitle"))
                x->totalTitle = c.string(QStringLiteral("the title of the totals"));
            else if (key == QLatin1String("font"))
                readStyle(c, x->style, true);
            else
                c.fail(QStringLiteral("a crosstab holds row, column, value, cellWidth, totals, totalTitle and font "
                                      "lines, not '%1'")
                           .arg(line->tokens.front().text));
            c.done();
        }
        if (x->rows.empty() || x->columns.empty() || !hasValue)
            fail(opened, QStringLiteral("a crosstab needs at least one row, one column and a value"));
        return x;
    }

    QString m_fileName;
    std::vector<Line> m_lines;
    size_t m_next = 0;
    int m_depth = 0;
    int m_elements = 0;
    QString m_units = QStringLiteral("in");
    QHash<QString, TextStyle> m_styles;
    const LabelStock* m_stock = nullptr;
    ReportTemplate* m_report = nullptr;
};

} // namespace

ReportTemplate readText(const QString& text, const QString& fileName)
{
    if (text.size() > MaxFileBytes)
        throw TemplateError(QStringLiteral("Error in the report template %1: the file is larger than %2 bytes")
                                .arg(fileName)
                                .arg(MaxFileBytes));
    return Reader(text, fileName).read();
}

ReportTemplate readFile(const QString& path)
{
    const QFileInfo info(path);
    if (!info.exists() || !info.isFile())
        throw TemplateMissing(path);
    if (info.size() > MaxFileBytes)
        throw TemplateError(QStringLiteral("Error in the report template %1: the file is larger than %2 bytes")
                                .arg(path)
                                .arg(MaxFileBytes));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw TemplateError(QStringLiteral("The report template %1 cannot be read: %2").arg(path, file.errorString()));
    const QByteArray bytes = file.read(MaxFileBytes + 1);
    if (bytes.size() > MaxFileBytes)
        throw TemplateError(QStringLiteral("Error in the report template %1: the file is larger than %2 bytes")
                                .arg(path)
                                .arg(MaxFileBytes));
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder(bytes);
    if (decoder.hasError())
        throw TemplateError(
            QStringLiteral("Error in the report template %1: the file is not UTF-8 text").arg(path));
    return readText(text, path);
}

} // namespace kb::reports::TemplateReader
