// llog/logger.cpp - tagged records in log files shared by path.
#include <llog/logger.h>

#include <liop/directory.h>
#include <liop/file.h>
#include <llog/logconfig.h>
#include <lstd/exception.h>
#include <lstd/system.h>

#include <cstdio>
#include <new>

namespace llog {

lstd::PtrHashMap<lstd::String, liop::File>* Logger::mFileTable = nullptr;

namespace {

char const* const kTagFormats[] = {"[Error: %d] %s", "[Warn: %d] %s", "[Info: %d] %s"};

// The record formats as the file's FPrint takes them, made once so that writing a record
// allocates nothing for its format; the fourth writes a text as it stands.
lstd::String const& FormatOf(int which) {
    static lstd::String const formats[] = {kTagFormats[0], kTagFormats[1], kTagFormats[2],
                                           "%s"};
    return formats[which];
}

// The code goes to "%d" as a 32-bit int, so that the file and the standard output show the
// same number.
int CodeText(unsigned long long const& code) { return static_cast<int>(code); }

// Ends an argument list however its scope is left: a failing write must not skip va_end.
class ArgsEnd {
public:
    explicit ArgsEnd(va_list& args) : mArgs(args) {}
    ~ArgsEnd() { va_end(mArgs); }

private:
    va_list& mArgs;
};
}  // namespace

Logger::Logger(lstd::String const& name) : mFile(nullptr) {
    Init();
    LogConfig const* config = LogConfig::GetGlobalConfig();
    lstd::String const dir =
        config != nullptr ? config->GetOutputDir() : liop::Directory::GetCurDir();
    // Deliberate: "//" joins the parts. The file system reads it as one slash, and the path
    // is also the key of the shared file, so one file is always named the same way.
    if (name.GetLength() == 0)
        mFile = GetOrOpenFile(dir + "//" + "log.txt");
    else if (!liop::Directory::IsAbsolutePath(name))
        mFile = GetOrOpenFile(dir + "//" + name);
    else
        mFile = GetOrOpenFile(name);
}

Logger::~Logger() {}

void Logger::Init() {
    if (mFileTable != nullptr)
        return;
    try {
        mFileTable = new lstd::PtrHashMap<lstd::String, liop::File>(lstd::String::Hash, 32767);
    } catch (std::bad_alloc const& e) {
        LSTD_THROW(lstd::NotEnoughMemoryException, e.what());
    }
    // Terminate tolerates running more than once, but a handler already registered (after
    // a direct Terminate) is not added again, so that cycles do not pile handlers up.
    if (!lstd::System::ExistsExitHandler(Terminate))
        lstd::System::AddExitHandler(Terminate);
}

void Logger::Terminate() {
    if (mFileTable != nullptr) {
        lstd::PtrHashMapIterator<lstd::String, liop::File> it(*mFileTable);
        while (++it) {
            liop::File* file = it.GetValue();
            if (file != nullptr && file->IsOpened())
                file->Close();
        }
        mFileTable->Clear(1);
        delete mFileTable;
        mFileTable = nullptr;
    }
    LogConfig::DestroyGlobalConfig();
}

liop::File* Logger::GetOrOpenFile(lstd::String const& path) {
    Init();  // also when called before any Logger was made
    if (liop::File* shared = mFileTable->Get(&path))
        return shared;
    lstd::String* key = nullptr;
    liop::File* file = nullptr;
    try {
        key = new lstd::String(path);
        file = new liop::File();
        mFileTable->Append(key, file);
    } catch (std::bad_alloc const& e) {
        delete key;
        delete file;
        LSTD_THROW(lstd::NotEnoughMemoryException, e.what());
    } catch (...) {
        delete key;
        delete file;
        throw;
    }
    try {
        file->Open(path, liop::File::OPEN_APPEND, liop::File::FILE_TEXT);
    } catch (liop::IOException const& e) {
        std::printf("%s", e.what());
    }
    return file;
}

void Logger::Write(int tag, unsigned long long const& code, char const* message) const {
    if (mFile != nullptr && mFile->IsOpened())
        mFile->FPrint(FormatOf(tag), CodeText(code), message);
    else
        std::printf(kTagFormats[tag], CodeText(code), message);
}

void Logger::WriteTagged(int tag, unsigned long long const& code, char const* format,
                         va_list& args) const {
    lstd::String message;
    lstd::String::Sprintf(message, format, args);
    Write(tag, code, message.GetStdChar());
}

void Logger::WriteText(char const* format, va_list& args) const {
    lstd::String text;
    lstd::String::Sprintf(text, format, args);
    if (mFile != nullptr && mFile->IsOpened())
        mFile->FPrint(FormatOf(3), text.GetStdChar());
    else
        std::printf("%s", text.GetStdChar());
}

void Logger::Error(lstd::String const& message, unsigned long long const& code) const {
    Write(0, code, message.GetStdChar());
}

void Logger::Warning(lstd::String const& message, unsigned long long const& code) const {
    Write(1, code, message.GetStdChar());
}

void Logger::Info(lstd::String const& message, unsigned long long const& code) const {
    Write(2, code, message.GetStdChar());
}

void Logger::Error(unsigned long long const& code, char const* format, ...) const {
    va_list args;
    va_start(args, format);
    ArgsEnd const end(args);
    WriteTagged(0, code, format, args);
}

void Logger::Warning(unsigned long long const& code, char const* format, ...) const {
    va_list args;
    va_start(args, format);
    ArgsEnd const end(args);
    WriteTagged(1, code, format, args);
}

void Logger::Info(unsigned long long const& code, char const* format, ...) const {
    va_list args;
    va_start(args, format);
    ArgsEnd const end(args);
    WriteTagged(2, code, format, args);
}

void Logger::Debug(char const* format, ...) const {
    va_list args;
    va_start(args, format);
    ArgsEnd const end(args);
    WriteText(format, args);
}

void Logger::Print(char const* format, ...) const {
    va_list args;
    va_start(args, format);
    ArgsEnd const end(args);
    WriteText(format, args);
}
}  // namespace llog
