// lstd/dlinkops.h - node linking shared by the pointer and value lists (internal).
#ifndef LSTD_DLINKOPS_H
#define LSTD_DLINKOPS_H

#include <lstd/exception.h>
#include <lstd/string.h>

#include <cstddef>
#include <iterator>
#include <memory>
#include <new>
#include <type_traits>
#include <vector>

namespace lstd {
namespace dlink {

/// Positions first..last of a list of count items selected by Append(list, from, to).
struct Span {
    unsigned long first;
    unsigned long last;
};

/// Deliberate range rules of Append(list, from, to): from below 1 is 0 and to below 1 the
/// last position, so (0, 0) selects the whole list; to is clamped to the last position.
/// count must not be 0. Throws InvalidOperationException when from >= count.
inline Span AppendSpan(unsigned long count, long long from, long long to) {
    unsigned long const first = from < 1 ? 0 : static_cast<unsigned long>(from);
    if (first >= count)
        LSTD_THROWF(InvalidOperationException,
                    "Initial position '%d' is out of range (0 -> %d - 1).", static_cast<int>(from),
                    static_cast<int>(count));
    unsigned long const last = (to < 1 || static_cast<unsigned long>(to) > count - 1)
                                   ? count - 1
                                   : static_cast<unsigned long>(to);
    return Span{first, last};
}

/// A new It bound to list and standing on position over [begin, end]; the caller owns it.
/// Throws NotEnoughMemoryException with the allocator's text, or what Init throws.
template <typename It, typename List>
It* NewIterator(List const& list, unsigned long position, long long begin, long long end) {
    std::unique_ptr<It> it;
    try {
        it.reset(new It());
    } catch (std::bad_alloc const& e) {
        LSTD_THROW(NotEnoughMemoryException, e.what());
    }
    it->Init(list, position, begin, end);
    return it.release();
}

/// Calls visit with each item of an ordered list through one of its heap iterators
/// standing on first over [first, last], deleting the iterator on every path.
template <typename List, typename Visit>
void ForEach(List const& list, unsigned long first, unsigned long last, Visit visit) {
    std::unique_ptr<typename std::remove_pointer<decltype(list.CreateIterator())>::type> it(
        list.CreateIterator(first, static_cast<long long>(first), static_cast<long long>(last)));
    while (++*it)
        visit(it->Get());
}

/// Calls visit with each element of other in order: a Concrete list (the caller's own kind)
/// node by node, through at(node), any other list through its iterator.
template <typename Concrete, typename List, typename At, typename Visit>
void EachOf(List const& other, At at, Visit visit) {
    if (auto const* list = dynamic_cast<Concrete const*>(&other)) {
        for (auto* node = list->GetHead(); node != nullptr; node = node->mNext)
            visit(at(node));
        return;
    }
    unsigned long const count = other.GetNumberOfEntry();
    if (count != 0)
        ForEach(other, 0, count - 1, visit);
}

/// EachOf, but with copy set the elements are copied first and the copies visited: for
/// visits that change other.
template <typename Concrete, typename Element, typename List, typename At, typename Visit>
void ForEachOf(List const& other, bool copy, At at, Visit visit) {
    if (!copy) {
        EachOf<Concrete>(other, at, visit);
        return;
    }
    std::vector<Element> elements;
    elements.reserve(other.GetNumberOfEntry());
    EachOf<Concrete>(other, at, [&elements](Element const& e) { elements.push_back(e); });
    for (Element const& e : elements)
        visit(e);
}

/// The node at position p (< count), walking from the nearer end: forward when
/// p < count - p, else backward from the tail (an even list's middle comes from the tail).
template <typename Node>
Node* WalkTo(Node* head, Node* tail, unsigned long count, unsigned long p) {
    if (p < count - p) {
        for (; p > 0; --p)
            head = head->mNext;
        return head;
    }
    for (unsigned long steps = count - 1 - p; steps > 0; --steps)
        tail = tail->mPrev;
    return tail;
}

/// Links fresh before at, or after the tail when at is null.
template <typename Node>
void LinkBefore(Node*& head, Node*& tail, Node* at, Node* fresh) {
    fresh->mNext = at;
    fresh->mPrev = at != nullptr ? at->mPrev : tail;
    if (fresh->mPrev != nullptr)
        fresh->mPrev->mNext = fresh;
    else
        head = fresh;
    if (at != nullptr)
        at->mPrev = fresh;
    else
        tail = fresh;
}

/// The standard-library iterator of the linked lists (range-for, `<algorithm>`): bidirectional,
/// one node pointer and the list, no allocation and no virtual call. ++ and -- follow the
/// links; end() has no node, and -- from it reaches the tail. Ref is the element reference
/// (Member of the node), const for a const_iterator, to which an iterator converts. Valid
/// while its node is in the list.
template <typename List, typename Node, typename Value, typename Ref, Value Node::*Member>
class NodeIterator {
public:
    typedef std::bidirectional_iterator_tag iterator_category;
    typedef Value value_type;
    typedef std::ptrdiff_t difference_type;
    typedef typename std::remove_reference<Ref>::type* pointer;
    typedef Ref reference;

    NodeIterator() : mNode(nullptr), mList(nullptr) {}
    NodeIterator(Node* node, List const* list) : mNode(node), mList(list) {}
    /// An iterator converts to a const_iterator.
    template <typename Other,
              typename = typename std::enable_if<std::is_convertible<Other, Ref>::value &&
                                                 !std::is_same<Other, Ref>::value>::type>
    NodeIterator(NodeIterator<List, Node, Value, Other, Member> const& other)
        : mNode(other.GetNode()), mList(other.GetList()) {}

    reference operator*() const { return mNode->*Member; }
    pointer operator->() const { return &(mNode->*Member); }
    NodeIterator& operator++() {
        mNode = mNode->mNext;
        return *this;
    }
    NodeIterator operator++(int) {
        NodeIterator const before = *this;
        mNode = mNode->mNext;
        return before;
    }
    NodeIterator& operator--() {
        mNode = mNode != nullptr ? mNode->mPrev : mList->GetTail();
        return *this;
    }
    NodeIterator operator--(int) {
        NodeIterator const before = *this;
        --*this;
        return before;
    }
    friend bool operator==(NodeIterator const& a, NodeIterator const& b) {
        return a.mNode == b.mNode;
    }
    friend bool operator!=(NodeIterator const& a, NodeIterator const& b) {
        return a.mNode != b.mNode;
    }

    /// The current node, null at the end.
    Node* GetNode() const { return mNode; }
    List const* GetList() const { return mList; }

private:
    Node* mNode;
    List const* mList;
};

/// Unlinks node, joining its neighbours and moving head or tail as needed.
template <typename Node>
void Unlink(Node*& head, Node*& tail, Node* node) {
    if (node->mPrev != nullptr)
        node->mPrev->mNext = node->mNext;
    else
        head = node->mNext;
    if (node->mNext != nullptr)
        node->mNext->mPrev = node->mPrev;
    else
        tail = node->mPrev;
}
}  // namespace dlink
}  // namespace lstd
#endif  // LSTD_DLINKOPS_H
