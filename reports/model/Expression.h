#pragma once

#include <QString>
#include <QVariant>

#include <memory>
#include <vector>

namespace kb::reports {

// One node of an expression of a template: the values printed in texts, the
// keys of groups, the conditions that show or hide a band or element.
//
// A template is parsed into these trees once; before each run the names in
// them are bound to the run's data pipes and parameters (pipe, field), so
// that evaluating a row costs no look-up by name.
struct Expr
{
    enum class Kind {
        Literal,    // value
        Name,       // a field or parameter named without a pipe: Client_ID
        Field,      // Pipe.Field
        Parameter,  // $Name
        PageNumber, // page
        PageCount,  // pages
        Unary,      // op, args[0]
        Binary,     // op, args[0], args[1]
        Call,       // name(args...)
        Aggregate,  // sum/count/min/max/avg/distinct(args...), site
    };
    enum class Op {
        None, Neg, Not, Add, Sub, Mul, Div, Mod, Concat, Eq, Ne, Lt, Le, Gt, Ge, And, Or,
    };

    Kind kind = Kind::Literal;
    Op op = Op::None;
    QVariant value;    // Literal
    QString pipe;      // Field: the pipe's name as written
    QString name;      // Name, Field, Parameter, Call, Aggregate: as written
    std::vector<std::unique_ptr<Expr>> args;

    // Bound before a run. A Name becomes a Field (boundPipe >= 0) or a
    // Parameter; an Aggregate gets its accumulating site.
    int boundPipe = -1;
    int boundField = -1;
    int site = -1;
    int function = -1; // Call: index into the function table
    // Where the value was captured for a text printed later (see TextTemplate).
    int captureIndex = -1;
    // For a field printed in a page header or footer: its place in the
    // values kept with every block for those bands.
    int pageIndex = -1;
};

using ExprPtr = std::unique_ptr<Expr>;

// A printed text: literal pieces and {expression} pieces, each with an
// optional format ("{Deliv_Dt:dddd}").
struct TextPiece
{
    QString literal;
    ExprPtr expr; // null for a literal piece
    QString format;
    // Known after binding: the piece can only be printed once the pages are
    // counted, or a group has ended, so it is captured and printed late.
    bool deferred = false;
};

struct TextTemplate
{
    std::vector<TextPiece> pieces;
    bool isEmpty() const { return pieces.empty(); }
};

} // namespace kb::reports
