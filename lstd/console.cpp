// lstd/console.cpp - terminal services.
#include <lstd/console.h>

#include <lstd/string.h>
#include <lstd/system.h>

namespace lstd {

Console::Console() {}
Console::~Console() {}

void Console::Clear() { System::Run("clear"); }
}  // namespace lstd
