// lxml/xmlnode.cpp - root of the XML tree nodes.
#include <lxml/xmlnode.h>

#include <lstd/exception.h>

#include <cstdlib>
#include <new>

namespace lxml {
namespace {
unsigned long const kTableSize = 32767;  // the bucket count of every property set

unsigned long BucketOf(lstd::String const& name) { return lstd::String::Hash(name) % kTableSize; }
}  // namespace

XMLNode::XMLNode(lstd::String const& name)
    : lstd::String(name), mPropertySet(&XMLProperty::Hash, kTableSize), mCompact(nullptr),
      mCompactCount(0), mInSet(0) {}

XMLNode::~XMLNode() {
    if (mInSet == 1) {
        mPropertySet.Clear(1);
        return;
    }
    for (unsigned int i = 0; i < mCompactCount; ++i)
        delete mCompact[i];
    std::free(mCompact);
}

XMLProperty* XMLNode::FindProperty(lstd::String const& name) const {
    if (mInSet == 1) {
        XMLProperty const probe(name, lstd::String());
        return mPropertySet.Find(&probe);
    }
    for (unsigned int i = 0; i < mCompactCount; ++i)
        if (static_cast<lstd::String const&>(*mCompact[i]) == name)
            return mCompact[i];
    return nullptr;
}

unsigned long XMLNode::GetNumberOfProperty() const {
    return mInSet == 1 ? mPropertySet.GetNumberOfEntry() : mCompactCount;
}

lstd::PtrHashSet<XMLProperty> const& XMLNode::GetPropertySet() const {
    if (mInSet != 1)
        FillPropertySet();
    return mPropertySet;
}

void XMLNode::FillPropertySet() const {
    // The array is in set order (bucket, then creation), so appending it in order gives each
    // bucket its properties in creation order, as creating them in the set would have.
    unsigned int appended = 0;
    try {
        for (; appended < mCompactCount; ++appended)
            mPropertySet.Append(mCompact[appended]);
    } catch (...) {
        mPropertySet.Clear(0);  // the array still owns them all
        throw;
    }
    std::free(mCompact);
    mCompact = nullptr;
    mCompactCount = 0;
    mInSet = 1;
}

XMLProperty* XMLNode::CreateProperty(lstd::String const& name) {
    XMLProperty* found = FindProperty(name);
    if (found != nullptr)
        return found;
    if (mInSet != 1 && mCompactCount >= COMPACT_LIMIT)
        FillPropertySet();
    XMLProperty* property;
    try {
        property = new XMLProperty(name, lstd::String());
    } catch (std::bad_alloc const& e) {
        LSTD_THROW(lstd::NotEnoughMemoryException, e.what());
    }
    if (mInSet == 1) {
        try {
            mPropertySet.Append(property);  // a new name: the set stores it
        } catch (...) {
            delete property;
            throw;
        }
        return property;
    }
    void* grown = std::realloc(mCompact, (mCompactCount + 1) * sizeof(XMLProperty*));
    if (grown == nullptr) {
        delete property;
        LSTD_THROW(lstd::NotEnoughMemoryException, std::bad_alloc().what());
    }
    mCompact = static_cast<XMLProperty**>(grown);
    // After every property of a lower or equal bucket: a bucket keeps creation order.
    unsigned long const bucket = BucketOf(name);
    unsigned int at = mCompactCount;
    while (at > 0 && BucketOf(*mCompact[at - 1]) > bucket) {
        mCompact[at] = mCompact[at - 1];
        --at;
    }
    mCompact[at] = property;
    ++mCompactCount;
    return property;
}
}  // namespace lxml
