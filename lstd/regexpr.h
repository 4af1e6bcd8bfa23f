// lstd/regexpr.h - reserved name for a regular-expression class; no operations yet.
#ifndef LSTD_REGEXPR_H
#define LSTD_REGEXPR_H

namespace lstd {

/// An empty class: it keeps its name and its virtual destructor in the binary interface so
/// that operations can be added later without breaking programs built against it.
class RegExpr {
public:
    RegExpr();
    virtual ~RegExpr();
};
}  // namespace lstd
#endif  // LSTD_REGEXPR_H
