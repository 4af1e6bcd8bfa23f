// liop/directory.cpp - path and directory services, and the directory walk.
#include <liop/directory.h>

#include <liop/file.h>
#include <liop/fileiterator.h>
#include <lstd/exception.h>
#include <lstd/tokenizer.h>
#include <lstd/valdlinklist.h>

#include <sys/stat.h>
#include <unistd.h>

namespace liop {
namespace {
// The separator written between parts.
char const kJoin[] = "//";

bool IsSeparator(char c) { return c == '/' || c == '\\'; }

// The parts of path between separators, each trimmed; empty parts are kept unless dropEmpty.
void SplitPath(lstd::String const& path, bool dropEmpty, lstd::ValDLinkList<lstd::String>& parts) {
    lstd::String const separators[2] = {lstd::String("/"), lstd::String("\\")};
    lstd::Tokenizer tokenizer(path);
    lstd::String part;
    while (tokenizer.Next(separators, 2, part)) {
        part.Trim();
        if (!dropEmpty || !part.IsNull())
            parts.Append(part);
    }
}
}  // namespace

Directory::Directory() {}
Directory::~Directory() {}

lstd::String Directory::GetCurDir() {
    char buffer[1024];
    if (::getcwd(buffer, sizeof buffer) == nullptr)
        return lstd::String();
    return lstd::String(buffer);
}

bool Directory::IsDirectory(lstd::String const& path) {
    struct stat status;
    if (::stat(path.GetStdChar(), &status) != 0)
        LSTD_THROWF(FileNotFoundException, "The file/directory not found. (%s)", path.GetStdChar());
    return (status.st_mode & 0x4000) != 0;  // the directory type bit
}

bool Directory::IsAbsolutePath(lstd::String const& path) {
    lstd::String const trimmed = path.TrimHead();
    return !trimmed.IsNull() && trimmed[0] == '/';
}

int Directory::Create(lstd::String const& path) {
    if (File::Exist(path))
        return 1;
    int const status = ::mkdir(path.GetStdChar(), 0777);
    if (status != 0)
        LSTD_THROWF(IOException, "Cannot create directory '%s'. (status = %d)", path.GetStdChar(),
                    status);
    return 0;
}

void Directory::CreateAll(lstd::String const& path, unsigned char const& lastIsFile) {
    lstd::ValDLinkList<lstd::String> parts;
    SplitPath(path, false, parts);
    lstd::String current = IsAbsolutePath(path) ? lstd::String(kJoin) : GetCurDir();
    if (lastIsFile == 1)
        parts.RemoveLast(nullptr);
    for (lstd::ValDoubleLink<lstd::String>* node = parts.GetHead(); node != nullptr;
         node = node->mNext) {
        current += kJoin;
        current += node->mValue;
        Create(current);  // an existing directory answers 1 and is passed over
    }
}

lstd::String Directory::NormalizePath(lstd::String const& path) {
    lstd::ValDLinkList<lstd::String> parts;
    SplitPath(path, true, parts);
    lstd::String const trimmed = path.Trim();
    bool const leading = !trimmed.IsNull() && IsSeparator(trimmed[0]);
    bool const trailing =
        !trimmed.IsNull() && IsSeparator(trimmed[static_cast<long long>(trimmed.GetLength()) - 1]);
    lstd::String result = leading ? lstd::String(kJoin) : lstd::String();
    for (lstd::ValDoubleLink<lstd::String>* node = parts.GetHead(); node != nullptr;
         node = node->mNext) {
        result += node->mValue;
        if (node->mNext != nullptr || trailing)
            result += kJoin;
    }
    return result;
}

FileIterator::FileIterator()
    : mSkipNameSet(&lstd::String::Hash), mExtensionSet(&lstd::String::Hash), mDir(nullptr) {}

FileIterator::FileIterator(lstd::String const& path) : FileIterator() { Init(path); }

FileIterator::~FileIterator() {
    if (mDir != nullptr)
        ::closedir(mDir);
}

void FileIterator::Init(lstd::String const& path) {
    mDirPath = path.Trim();
    if (!mDirPath.IsNull() &&
        !IsSeparator(mDirPath[static_cast<long long>(mDirPath.GetLength()) - 1]))
        mDirPath += kJoin;
    if (mDir != nullptr)
        ::closedir(mDir);
    mDir = ::opendir(path.GetStdChar());
    mSkipNameSet.Clear();
    mSkipNameSet.Append(lstd::String("."));
    mSkipNameSet.Append(lstd::String(".."));
}

void FileIterator::AppendFilteredFileExtension(lstd::String const& extension) {
    mExtensionSet.Append("." + extension);
}

bool FileIterator::operator++() {
    while (GetNextItem()) {
        if (mSkipNameSet.Find(mCurrentName, nullptr))
            continue;
        if (IsFilteredFileName(mCurrentName))
            return true;
    }
    return false;
}

lstd::String FileIterator::GetCurrentPath() const { return mDirPath + mCurrentName; }

void FileIterator::Reset() {
    if (mDir != nullptr)
        ::closedir(mDir);
    mDir = nullptr;
    mSkipNameSet.Clear();
    mExtensionSet.Clear();
}

bool FileIterator::GetNextItem() {
    if (mDir == nullptr)
        return false;
    struct dirent const* entry = ::readdir(mDir);
    if (entry == nullptr)
        return false;
    mCurrentName = entry->d_name;
    return true;
}

bool FileIterator::IsFilteredFileName(lstd::String const& name) const {
    if (mExtensionSet.GetNumberOfEntry() == 0)
        return true;
    lstd::ValHashSetIterator<lstd::String> extension(mExtensionSet);
    while (++extension)
        if (name.EndsWith(extension.Get()))
            return true;
    return false;
}
}  // namespace liop
