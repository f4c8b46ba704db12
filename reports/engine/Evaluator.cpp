#include "engine/Evaluator.h"

#include "engine/ValueKinds.h"

#include <QDate>
#include <QStringList>

#include <cmath>

namespace kb::reports {

namespace {

enum class Fn {
    If, IsNull, Nvl, Upper, Lower, Trim, Len, Left, Right, Mid, Replace, Contains, StartsWith, Str, Format, Num,
    Int, Round, Abs, Date, Year, Month, Day, DayName, MonthName, AddDays, Age, BitAnd, HasBit, Join, Today, Now,
};

struct Function
{
    const char* name;
    Fn fn;
    int minArgs;
    int maxArgs; // -1: any number
};

constexpr Function Functions[] = {
    {"if", Fn::If, 2, 3},          {"iif", Fn::If, 2, 3},           {"isnull", Fn::IsNull, 1, 1},
    {"nvl", Fn::Nvl, 2, -1},       {"coalesce", Fn::Nvl, 1, -1},    {"upper", Fn::Upper, 1, 1},
    {"lower", Fn::Lower, 1, 1},    {"trim", Fn::Trim, 1, 1},        {"len", Fn::Len, 1, 1},
    {"left", Fn::Left, 2, 2},      {"right", Fn::Right, 2, 2},      {"mid", Fn::Mid, 2, 3},
    {"replace", Fn::Replace, 3, 3}, {"contains", Fn::Contains, 2, 2}, {"startswith", Fn::StartsWith, 2, 2},
    {"str", Fn::Str, 1, 2},        {"format", Fn::Format, 2, 2},    {"num", Fn::Num, 1, 1},
    {"int", Fn::Int, 1, 1},        {"round", Fn::Round, 1, 2},      {"abs", Fn::Abs, 1, 1},
    {"date", Fn::Date, 1, 1},      {"year", Fn::Year, 1, 1},        {"month", Fn::Month, 1, 1},
    {"day", Fn::Day, 1, 1},        {"dayname", Fn::DayName, 1, 1},  {"monthname", Fn::MonthName, 1, 1},
    {"adddays", Fn::AddDays, 2, 2}, {"age", Fn::Age, 1, 2},         {"bitand", Fn::BitAnd, 2, 2},
    {"hasbit", Fn::HasBit, 2, 2},  {"join", Fn::Join, 1, -1},       {"today", Fn::Today, 0, 0},
    {"now", Fn::Now, 0, 0},
};

bool isNull(const QVariant& v) { return !v.isValid() || v.isNull(); }

bool isInteger(const QVariant& v) { return isIntegerValue(v); }

bool isDateLike(const QVariant& v) { return v.typeId() == QMetaType::QDate || v.typeId() == QMetaType::QDateTime; }

QDate toDate(const QVariant& v)
{
    if (v.typeId() == QMetaType::QDate)
        return v.toDate();
    if (v.typeId() == QMetaType::QDateTime)
        return v.toDateTime().date();
    const QString s = v.toString().trimmed();
    QDate d = QDate::fromString(s.left(10), Qt::ISODate);
    if (!d.isValid())
        d = QDate::fromString(s, QStringLiteral("M/d/yyyy"));
    return d;
}

// A text that holds a number takes part in arithmetic and comparisons as
// that number.
bool numeric(const QVariant& v, double& out)
{
    if (Formatter::isNumber(v)) {
        out = Formatter::toNumber(v);
        return true;
    }
    if (v.typeId() == QMetaType::Bool) {
        out = v.toBool() ? 1 : 0;
        return true;
    }
    if (v.typeId() == QMetaType::QString) {
        bool ok = false;
        out = v.toString().trimmed().toDouble(&ok);
        return ok;
    }
    return false;
}

QVariant numberValue(double d)
{
    if (!std::isfinite(d))
        return {};
    if (d == std::floor(d) && std::abs(d) < 9.0e15)
        return qlonglong(d);
    return d;
}

} // namespace

int Evaluator::functionIndex(const QString& name)
{
    for (int i = 0; i < int(std::size(Functions)); ++i) {
        if (name.compare(QLatin1String(Functions[i].name), Qt::CaseInsensitive) == 0)
            return i;
    }
    return -1;
}

bool Evaluator::acceptsArguments(int function, int count)
{
    const Function& f = Functions[function];
    return count >= f.minArgs && (f.maxArgs < 0 || count <= f.maxArgs);
}

QString Evaluator::functionNames()
{
    QStringList names;
    for (const Function& f : Functions)
        names << QLatin1String(f.name);
    return names.join(QStringLiteral(", "));
}

bool Evaluator::isTrue(const QVariant& v)
{
    if (isNull(v))
        return false;
    if (v.typeId() == QMetaType::Bool)
        return v.toBool();
    double d = 0;
    if (Formatter::isNumber(v) && numeric(v, d))
        return d != 0;
    if (v.typeId() == QMetaType::QString) {
        const QString s = v.toString().trimmed();
        return !s.isEmpty() && s.compare(QLatin1String("false"), Qt::CaseInsensitive) != 0 &&
               s != QLatin1String("0");
    }
    return true;
}

int Evaluator::compare(const QVariant& a, const QVariant& b)
{
    const bool na = isNull(a), nb = isNull(b);
    if (na || nb)
        return na == nb ? 0 : (na ? -1 : 1);
    double x = 0, y = 0;
    if ((Formatter::isNumber(a) || Formatter::isNumber(b)) && numeric(a, x) && numeric(b, y))
        return x < y ? -1 : (x > y ? 1 : 0);
    if (isDateLike(a) || isDateLike(b)) {
        const QDateTime p = a.typeId() == QMetaType::QDateTime ? a.toDateTime() : toDate(a).startOfDay();
        const QDateTime q = b.typeId() == QMetaType::QDateTime ? b.toDateTime() : toDate(b).startOfDay();
        return p < q ? -1 : (p > q ? 1 : 0);
    }
    if (a.typeId() == QMetaType::Bool && b.typeId() == QMetaType::Bool)
        return int(a.toBool()) - int(b.toBool());
    const int c = a.toString().compare(b.toString());
    return c < 0 ? -1 : (c > 0 ? 1 : 0);
}

bool Evaluator::equal(const QVariant& a, const QVariant& b) { return compare(a, b) == 0; }

QString Evaluator::text(const TextPiece& piece, EvalScope& scope) const
{
    if (!piece.expr)
        return piece.literal;
    return m_formatter.text(eval(*piece.expr, scope), piece.format);
}

QVariant Evaluator::eval(const Expr& e, EvalScope& scope) const
{
    switch (e.kind) {
    case Expr::Kind::Literal:
        return e.value;
    case Expr::Kind::Field:
        return scope.field(e);
    case Expr::Kind::Name: // bound to a field of a pipe, or else to a parameter
        return e.boundPipe >= 0 ? scope.field(e) : scope.parameter(e);
    case Expr::Kind::Parameter:
        return scope.parameter(e);
    case Expr::Kind::PageNumber:
        return scope.pageNumber();
    case Expr::Kind::PageCount:
        return scope.pageCount();
    case Expr::Kind::Aggregate:
        return scope.aggregate(e);
    case Expr::Kind::Call:
        return call(e, scope);
    case Expr::Kind::Unary: {
        const QVariant v = eval(*e.args[0], scope);
        if (e.op == Expr::Op::Not)
            return !isTrue(v);
        double d = 0;
        if (isNull(v) || !numeric(v, d))
            return {};
        if (isInteger(v))
            return -v.toLongLong();
        return -d;
    }
    case Expr::Kind::Binary:
        if (e.op == Expr::Op::And)
            return truth(*e.args[0], scope) && truth(*e.args[1], scope);
        if (e.op == Expr::Op::Or)
            return truth(*e.args[0], scope) || truth(*e.args[1], scope);
        return binary(e.op, eval(*e.args[0], scope), eval(*e.args[1], scope));
    }
    return {};
}

QVariant Evaluator::binary(Expr::Op op, const QVariant& a, const QVariant& b) const
{
    switch (op) {
    case Expr::Op::Eq: return compare(a, b) == 0;
    case Expr::Op::Ne: return compare(a, b) != 0;
    case Expr::Op::Lt: return !isNull(a) && !isNull(b) && compare(a, b) < 0;
    case Expr::Op::Le: return !isNull(a) && !isNull(b) && compare(a, b) <= 0;
    case Expr::Op::Gt: return !isNull(a) && !isNull(b) && compare(a, b) > 0;
    case Expr::Op::Ge: return !isNull(a) && !isNull(b) && compare(a, b) >= 0;
    case Expr::Op::Concat: return m_formatter.text(a) + m_formatter.text(b);
    default: break;
    }
    // Dates move by days; two dates are days apart.
    if (op == Expr::Op::Add || op == Expr::Op::Sub) {
        double days = 0;
        if (a.typeId() == QMetaType::QDate && !isNull(b) && Formatter::isNumber(b) && numeric(b, days))
            return a.toDate().addDays(qint64(op == Expr::Op::Add ? days : -days));
        if (op == Expr::Op::Sub && a.typeId() == QMetaType::QDate && b.typeId() == QMetaType::QDate)
            return qlonglong(b.toDate().daysTo(a.toDate()));
    }
    if (op == Expr::Op::Add && (a.typeId() == QMetaType::QString || b.typeId() == QMetaType::QString) &&
        !(Formatter::isNumber(a) || Formatter::isNumber(b)))
        return m_formatter.text(a) + m_formatter.text(b);
    double x = 0, y = 0;
    if (isNull(a) || isNull(b) || !numeric(a, x) || !numeric(b, y))
        return {};
    const bool integers = isInteger(a) && isInteger(b);
    switch (op) {
    case Expr::Op::Add: return integers ? QVariant(a.toLongLong() + b.toLongLong()) : QVariant(x + y);
    case Expr::Op::Sub: return integers ? QVariant(a.toLongLong() - b.toLongLong()) : QVariant(x - y);
    case Expr::Op::Mul: return integers ? QVariant(a.toLongLong() * b.toLongLong()) : QVariant(x * y);
    case Expr::Op::Div:
        if (y == 0)
            return {};
        return x / y;
    case Expr::Op::Mod:
        if (y == 0)
            return {};
        return integers ? QVariant(a.toLongLong() % b.toLongLong()) : QVariant(std::fmod(x, y));
    default:
        return {};
    }
}

QVariant Evaluator::call(const Expr& e, EvalScope& scope) const
{
    const Fn fn = Functions[e.function].fn;
    if (fn == Fn::If) {
        if (truth(*e.args[0], scope))
            return eval(*e.args[1], scope);
        return e.args.size() > 2 ? eval(*e.args[2], scope) : QVariant();
    }
    if (fn == Fn::Nvl) {
        for (const auto& arg : e.args) {
            QVariant v = eval(*arg, scope);
            if (!isNull(v) && !(v.typeId() == QMetaType::QString && v.toString().isEmpty()))
                return v;
        }
        return {};
    }
    std::vector<QVariant> a;
    a.reserve(e.args.size());
    for (const auto& arg : e.args)
        a.push_back(eval(*arg, scope));
    auto str = [&](size_t i) { return m_formatter.text(a[i]); };
    auto num = [&](size_t i) {
        double d = 0;
        return numeric(a[i], d) ? d : 0.0;
    };
    switch (fn) {
    case Fn::IsNull: return isNull(a[0]) || (a[0].typeId() == QMetaType::QString && a[0].toString().isEmpty());
    case Fn::Upper: return str(0).toUpper();
    case Fn::Lower: return str(0).toLower();
    case Fn::Trim: return str(0).trimmed();
    case Fn::Len: return qlonglong(str(0).size());
    case Fn::Left: return str(0).left(qsizetype(std::max(0.0, num(1))));
    case Fn::Right: return str(0).right(qsizetype(std::max(0.0, num(1))));
    case Fn::Mid: {
        const qsizetype start = qsizetype(std::max(1.0, num(1))) - 1;
        return a.size() > 2 ? str(0).mid(start, qsizetype(std::max(0.0, num(2)))) : str(0).mid(start);
    }
    case Fn::Replace: return str(1).isEmpty() ? str(0) : QString(str(0)).replace(str(1), str(2));
    case Fn::Contains: return str(0).contains(str(1), Qt::CaseInsensitive);
    case Fn::StartsWith: return str(0).startsWith(str(1), Qt::CaseInsensitive);
    case Fn::Str: return a.size() > 1 ? m_formatter.text(a[0], str(1)) : str(0);
    case Fn::Format: return m_formatter.text(a[0], str(1));
    case Fn::Num: {
        double d = 0;
        return numeric(a[0], d) ? numberValue(d) : QVariant();
    }
    case Fn::Int: {
        double d = 0;
        return numeric(a[0], d) && std::isfinite(d) && std::abs(d) < 9.0e18 ? QVariant(qlonglong(std::trunc(d)))
                                                                             : QVariant();
    }
    case Fn::Round: {
        double d = 0;
        if (!numeric(a[0], d))
            return {};
        const int places = a.size() > 1 ? int(std::clamp(num(1), 0.0, 10.0)) : 0;
        const double scale = std::pow(10.0, places);
        const double r = std::round(d * scale) / scale;
        return places == 0 ? numberValue(r) : QVariant(r);
    }
    case Fn::Abs: {
        double d = 0;
        return numeric(a[0], d) ? numberValue(std::abs(d)) : QVariant();
    }
    case Fn::Date: {
        const QDate d = toDate(a[0]);
        return d.isValid() ? QVariant(d) : QVariant();
    }
    case Fn::Year:
    case Fn::Month:
    case Fn::Day: {
        const QDate d = toDate(a[0]);
        if (!d.isValid())
            return {};
        return qlonglong(fn == Fn::Year ? d.year() : fn == Fn::Month ? d.month() : d.day());
    }
    case Fn::DayName: {
        const QDate d = toDate(a[0]);
        return d.isValid() ? m_formatter.locale().dayName(d.dayOfWeek()) : QString();
    }
    case Fn::MonthName: {
        const QDate d = toDate(a[0]);
        if (d.isValid())
            return m_formatter.locale().monthName(d.month());
        const double m = num(0);
        return m >= 1 && m <= 12 ? m_formatter.locale().monthName(int(m)) : QString();
    }
    case Fn::AddDays: {
        const QDate d = toDate(a[0]);
        return d.isValid() ? QVariant(d.addDays(qint64(num(1)))) : QVariant();
    }
    case Fn::Age: {
        const QDate born = toDate(a[0]);
        const QDate at = a.size() > 1 ? toDate(a[1]) : m_now.date();
        if (!born.isValid() || !at.isValid())
            return {};
        int years = at.year() - born.year();
        if (at.month() < born.month() || (at.month() == born.month() && at.day() < born.day()))
            --years;
        return qlonglong(years);
    }
    case Fn::BitAnd: return qlonglong(qlonglong(num(0)) & qlonglong(num(1)));
    case Fn::HasBit: {
        const double bit = num(1);
        if (bit < 0 || bit > 62)
            return false;
        return (qlonglong(num(0)) & (qlonglong(1) << int(bit))) != 0;
    }
    case Fn::Join: {
        QStringList parts;
        for (size_t i = 1; i < a.size(); ++i) {
            const QString s = str(i).trimmed();
            if (!s.isEmpty())
                parts << s;
        }
        return parts.join(str(0));
    }
    case Fn::Today: return m_now.date();
    case Fn::Now: return m_now;
    default: return {};
    }
}

} // namespace kb::reports
