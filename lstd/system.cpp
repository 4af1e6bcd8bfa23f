// lstd/system.cpp - shell commands, environment, clock and process exit handlers.
#include <lstd/system.h>

#include <lstd/exception.h>
#include <lstd/string.h>

#include <cstdlib>
#include <cstring>

#include <sys/time.h>

namespace lstd {

sign::NoArgSignal System::OnExit;
unsigned char System::mIsSetAtExit = 0;

System::System() {}
System::~System() { HandleExitEvent(); }

int System::Run(String const& command) { return std::system(command.GetStdChar()); }

bool System::GetEnvVariable(String const& name, String& value) {
    // The text belongs to the environment: copied, never released.
    char const* text = std::getenv(name.GetStdChar());
    if (text == nullptr)
        return false;
    value = text;
    return true;
}

void System::SetEnvVariable(String const& name, String const& value, unsigned char const& append) {
    String text = name + "=" + value;
    // Deliberate: any non-zero append counts, and the reference is stored unexpanded.
    if (append != 0)
        text += ":${" + name + "}";
    // putenv keeps the pointer, so the text must outlive the variable: it is malloc'ed and
    // never freed. A documented leak, one block per call (still reachable through environ
    // while the variable holds it).
    char* entry = static_cast<char*>(std::malloc(text.GetLength() + 1));
    if (entry == nullptr)
        LSTD_THROW(NotEnoughMemoryException, "Out of memory");
    std::memcpy(entry, text.GetStdChar(), text.GetLength() + 1);
    putenv(entry);
}

unsigned long long System::GetTickCount() {
    timeval now;
    gettimeofday(&now, nullptr);
    return static_cast<unsigned long long>(now.tv_sec) * 1000000ULL +
           static_cast<unsigned long long>(now.tv_usec);
}

double System::GetTickFrequency() { return 1000000000.0; }

unsigned long long System::GetCPUTickCount() { return 0; }

void System::AddExitHandler(void (*handler)()) {
    mIsSetAtExit = 1;
    OnExit.Connect(handler);
}

bool System::ExistsExitHandler(void (*handler)()) {
    if (mIsSetAtExit != 1)
        return false;
    sign::NoArgSignal::NoArgFunctionConnection<void> probe(handler);
    return OnExit.GetConnections().Find(&probe) != nullptr;
}

void System::HandleExitEvent() {
    PtrDLinkList<sign::NoArgSignal::NoArgConnection>& handlers = OnExit.GetConnections();
    // Walk first, clear after: a running handler is still registered. The walk follows the
    // links up to the current tail, so handlers added meanwhile run in this pass as well.
    unsigned long ran = 0;
    try {
        for (PtrDoubleLink<sign::NoArgSignal::NoArgConnection>* node = handlers.GetHead();
             node != nullptr; node = node->mNext) {
            ++ran;
            if (node->mItem != nullptr)
                node->mItem->Activate();
        }
    } catch (...) {
        // Each registration runs at most once: the handlers that ran, the throwing one
        // included, go; the ones after it stay registered for a later pass.
        for (; ran > 0; --ran)
            delete handlers.RemoveFirst();
        throw;
    }
    handlers.Clear(1);
}
}  // namespace lstd
