// lstd/regexpr.cpp - the empty regular-expression class.
#include <lstd/regexpr.h>

namespace lstd {

RegExpr::RegExpr() {}
RegExpr::~RegExpr() {}
}  // namespace lstd
