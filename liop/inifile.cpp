// liop/inifile.cpp - ini files in memory and the walk over one section's keys.
#include <liop/inifile.h>

#include <liop/file.h>
#include <liop/inifilekeyiterator.h>
#include <lstd/exception.h>

#include <cstring>
#include <string>

namespace liop {
namespace {
// A piece of a line, not owned: lines are cut without copying until a piece is stored.
struct Span {
    char const* mData;
    unsigned long mLength;
};

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

// data[0, length) without the blanks at both ends (String::Trim's set).
Span Trimmed(char const* data, unsigned long length) {
    while (length > 0 && IsBlank(data[0])) {
        ++data;
        --length;
    }
    while (length > 0 && IsBlank(data[length - 1]))
        --length;
    return Span{data, length};
}

Span Trimmed(lstd::String const& s) { return Trimmed(s.GetStdChar(), s.GetLength()); }

lstd::String ToString(Span s) { return lstd::String(s.mData, s.mLength); }

// Whether the trimmed, non-empty line is "[" ... "]"; its inside goes to name.
bool SectionOf(Span line, Span& name) {
    if (line.mLength < 2 || line.mData[0] != '[' || line.mData[line.mLength - 1] != ']')
        return false;
    name = Span{line.mData + 1, line.mLength - 2};
    return true;
}

// Cuts the trimmed line at its first "="; no "=" makes the whole line the key.
void Split(Span line, Span& key, Span& value) {
    void const* equals = std::memchr(line.mData, '=', line.mLength);
    if (equals == nullptr) {
        key = line;
        value = Span{line.mData, 0};
        return;
    }
    unsigned long const at =
        static_cast<unsigned long>(static_cast<char const*>(equals) - line.mData);
    key = Trimmed(line.mData, at);
    value = Trimmed(line.mData + at + 1, line.mLength - at - 1);
}

// The key of the flat map: section, one space, key, all bytes kept (the text of "%s %s"
// for texts without NUL bytes).
lstd::String CompoundKey(char const* section, unsigned long sectionLength, Span key) {
    unsigned long const length = sectionLength + 1 + key.mLength;
    char local[256];
    std::string large;
    char* text = local;
    if (length > sizeof local) {
        large.resize(length);
        text = &large[0];
    }
    std::memcpy(text, section, sectionLength);
    text[sectionLength] = ' ';
    std::memcpy(text + sectionLength + 1, key.mData, key.mLength);
    return lstd::String(text, length);
}

lstd::String CompoundKey(lstd::String const& section, Span key) {
    return CompoundKey(section.GetStdChar(), section.GetLength(), key);
}

Span AsSpan(lstd::String const& s) { return Span{s.GetStdChar(), s.GetLength()}; }
}  // namespace

IniFile::IniFile() : mKeyValueMap(&lstd::String::Hash, 32767) {}

IniFile::~IniFile() {}

bool IniFile::Load(lstd::String const& path) {
    File file;
    try {
        file.Open(path, File::OPEN_READ, File::FILE_TEXT);
    } catch (IOException const&) {
        return false;
    }
    mKeyValueMap.Clear();
    LoadMap(file);
    file.Close();
    return true;
}

lstd::String IniFile::GetString(lstd::String const& section, lstd::String const& key) const {
    lstd::String const* value = mKeyValueMap.Find(CompoundKey(section, AsSpan(key)));
    return value != nullptr ? *value : lstd::String();
}

void IniFile::LoadMap(File& file) {
    lstd::String line;
    lstd::String section;
    // Whether section is known to be listed: the list is searched once per section line,
    // not once per key, which keeps loading linear in the number of lines.
    bool listed = false;
    while (file.Read(line)) {
        Span const trimmed = Trimmed(line);
        if (trimmed.mLength == 0 || trimmed.mData[0] == ';')
            continue;
        Span name;
        if (SectionOf(trimmed, name)) {
            section = ToString(name);
            listed = false;
            continue;
        }
        Span key;
        Span value;
        Split(trimmed, key, value);
        if (!listed) {
            if (!mSectionList.Find(section, nullptr))
                mSectionList.Append(section);
            listed = true;
        }
        mKeyValueMap.Append(CompoundKey(section, key), ToString(value));
    }
}

void IniFile::AppendKeyAndValue(lstd::String const& section, lstd::String const& key,
                                lstd::String const& value) {
    lstd::String const compound = CompoundKey(section, AsSpan(key));
    if (!mSectionList.Find(section, nullptr))
        mSectionList.Append(section);
    mKeyValueMap.Append(compound, value);
}

bool IniFile::IsSectionName(lstd::String const& line, lstd::String* name) {
    lstd::String const trimmed = line.Trim();
    static_cast<void>(
        trimmed[0]);  // an empty line throws String's index exception here, as documented
    Span inside;
    bool const isSection = SectionOf(AsSpan(trimmed), inside);
    if (name != nullptr)
        *name = isSection ? ToString(inside) : lstd::String();
    return isSection;
}

bool IniFile::SplitKeyAndValue(lstd::String const& line, lstd::String* key, lstd::String* value) {
    Span const trimmed = Trimmed(line);
    if (trimmed.mLength == 0)
        return false;
    Span k;
    Span v;
    Split(trimmed, k, v);
    if (key != nullptr)
        *key = ToString(k);
    if (value != nullptr)
        *value = ToString(v);
    return true;
}

IniFileKeyIterator::IniFileKeyIterator() : mIniFile(nullptr), mCurrentEntry(nullptr) {}

IniFileKeyIterator::IniFileKeyIterator(IniFile const& file, lstd::String const& section)
    : mIniFile(nullptr), mCurrentEntry(nullptr) {
    Init(file, section);
}

IniFileKeyIterator::~IniFileKeyIterator() {}

void IniFileKeyIterator::Init(IniFile const& file, lstd::String const& section) {
    mIniFile = &file;
    mSection = section;
    Reset();
}

void IniFileKeyIterator::Reset() {
    if (mIniFile == nullptr)
        LSTD_THROW(lstd::InvalidOperationException, "The iterator is not initialized");
    mMapIterator.Init(mIniFile->mKeyValueMap);
    mCurrentEntry = nullptr;
    mPrefix = mSection + " ";
}

bool IniFileKeyIterator::operator++() {
    while (++mMapIterator) {
        lstd::ValHashMapEntry<lstd::String, lstd::String>* entry = mMapIterator.GetEntry();
        if (entry->mKey.StartsWith(mPrefix)) {
            mCurrentEntry = entry;
            mCurrentKey = entry->mKey.GetSubString(mPrefix.GetLength(), -1);
            return true;
        }
    }
    mCurrentEntry = nullptr;
    return false;
}

lstd::String const& IniFileKeyIterator::GetKey() const { return mCurrentKey; }

lstd::String const& IniFileKeyIterator::GetValue() const {
    // The map iterator stands on mCurrentEntry whenever there is one, and raises its own
    // exception when there is none.
    return mMapIterator.GetValue();
}
}  // namespace liop
