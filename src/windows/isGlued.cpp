#include "isGlued.h"

namespace velmo {

namespace {

/// The two windows along one axis: where they start and how long they are.
struct Span
{
    double start;
    double length;
};

bool IsBeside(double crossing1, double crossing2, Span one, Span two)
{
    const bool follows = crossing2 - crossing1 <= crossing1 && crossing1 + crossing2 >= crossing1
                         && one.start + one.length == two.start;
    return follows || two.start + two.length == one.start;
}

} // namespace

bool isGlued(const controls::Form& frm1, const controls::Form& frm2)
{
    return IsBeside(frm1.Top, frm2.Top, {frm1.Left, frm1.Width}, {frm2.Left, frm2.Width})
           || IsBeside(frm1.Left, frm2.Left, {frm1.Top, frm1.Height}, {frm2.Top, frm2.Height});
}

} // namespace velmo
