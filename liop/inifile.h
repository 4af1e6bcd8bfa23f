// liop/inifile.h - reads an ini file into memory and answers lookups by section and key.
#ifndef LIOP_INIFILE_H
#define LIOP_INIFILE_H

#include <lstd/string.h>
#include <lstd/valhashmap.h>
#include <lstd/valsortlist.h>

namespace liop {
class File;
class IniFileKeyIterator;

/// An ini file in memory: values by section and key, read only (nothing is written back,
/// every value is a String). Syntax, one line at a time, each trimmed of blanks (space, tab,
/// carriage return, line feed): empty lines and lines starting with ";" are skipped (no
/// other comment marker: "#x" is a key, and a ";" after a value belongs to the value); a
/// line "[name]" starts section name (its inside not trimmed); any other line is "key =
/// value", split at the first "=", both sides trimmed; a bare word is a key with an empty
/// value. Lines before the first section belong to the section "". There is no quoting,
/// escaping or continuation; bytes are taken as they stand, NUL bytes included.
///
/// Storage is deliberately flat, kept for compatibility: one map from "section key" (the
/// section, one space, the key) to the value, so section "a b" with key "c" and section "a"
/// with key "b c" are one entry. The last occurrence of a key wins. The distinct names of
/// the sections that stored a value are kept in sorted order (String::Compare, shorter
/// first); Load deliberately does not clear them, so they accumulate over loads. The list
/// is internal: no accessor exposes it.
class IniFile {
public:
    /// An empty map and section list.
    IniFile();
    IniFile(IniFile const&) = delete;
    IniFile& operator=(IniFile const&) = delete;
    virtual ~IniFile();

    /// Reads the file at path, replacing the values (the section list is kept and added
    /// to); false, nothing changed, when it cannot be opened. Throws
    /// lstd::NotEnoughMemoryException when memory runs out.
    bool Load(lstd::String const& path);
    /// The value of key in section, or "" when absent (absence and an empty value are not
    /// told apart).
    lstd::String GetString(lstd::String const& section, lstd::String const& key) const;
    /// Parses every remaining line of file, which is open for reading, into the map.
    void LoadMap(File& file);
    /// Stores value under section and key (a key already there gets the new value) and
    /// lists section if it is new.
    void AppendKeyAndValue(lstd::String const& section, lstd::String const& key,
                           lstd::String const& value);

    /// Whether line, trimmed, is "[" ... "]"; then *name (when given) receives the bytes in
    /// between as they are, else "". A line that is empty after trimming must not be
    /// passed: it throws the lstd::InvalidIndexException of String's byte access.
    static bool IsSectionName(lstd::String const& line, lstd::String* name);
    /// Splits line, trimmed, at its first "=" into the trimmed key and value (the outputs
    /// that are given); with no "=" the whole line is the key and the value is "". False
    /// for a line that is empty after trimming.
    static bool SplitKeyAndValue(lstd::String const& line, lstd::String* key, lstd::String* value);

private:
    friend class IniFileKeyIterator;

    lstd::ValHashMap<lstd::String, lstd::String> mKeyValueMap;
    lstd::ValSortList<lstd::String> mSectionList;
};
}  // namespace liop
#endif  // LIOP_INIFILE_H
