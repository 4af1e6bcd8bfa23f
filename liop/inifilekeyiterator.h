// liop/inifilekeyiterator.h - walks the keys of one section of an IniFile.
#ifndef LIOP_INIFILEKEYITERATOR_H
#define LIOP_INIFILEKEYITERATOR_H

#include <liop/inifile.h>
#include <lstd/string.h>
#include <lstd/valhashmap.h>

namespace liop {

/// Walks the keys of one section in the map's order (not the file's). Selection is by the
/// prefix "section " of the flat keys, deliberately: walking section "a" also yields the
/// keys of a section "a b" (with "b " in front), and section "" yields the keys that stood
/// before any section line. Use: construct with a file (or Init), then ++ until false,
/// reading GetKey() and GetValue() after each true. The file must outlive the walk and not
/// change during it.
class IniFileKeyIterator {
public:
    /// No file, empty section.
    IniFileKeyIterator();
    /// Init(file, section).
    IniFileKeyIterator(IniFile const& file, lstd::String const& section);
    virtual ~IniFileKeyIterator();

    /// Stores both and calls Reset().
    void Init(IniFile const& file, lstd::String const& section);
    /// Restarts before the first key. Throws lstd::InvalidOperationException "The iterator
    /// is not initialized" when no file is bound.
    void Reset();
    /// Steps to the next key of the section; false when there is none.
    bool operator++();
    /// The current key, without the section ("" before the first step).
    lstd::String const& GetKey() const;
    /// The current value. Throws lstd::NotInitializedIteratorException "The iterator is not
    /// initialized or it reached last item." before the first step and after the last.
    lstd::String const& GetValue() const;

private:
    IniFile const* mIniFile;
    lstd::String mSection;
    lstd::ValHashMapIterator<lstd::String, lstd::String> mMapIterator;
    lstd::ValHashMapEntry<lstd::String, lstd::String>* mCurrentEntry;
    lstd::String mPrefix;
    lstd::String mCurrentKey;
};
}  // namespace liop
#endif  // LIOP_INIFILEKEYITERATOR_H
