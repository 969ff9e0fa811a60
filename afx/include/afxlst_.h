/// \file
/// Application framework: the list template. Included by afxtempl.h.
#pragma once

#include <afxtempl.h>

#include <utility>

/// A list linked both ways. A position stands for an element until that is removed, whatever happens to others; null
/// is no element: it is behind the last one, before the first one, or what was not found. Operations that need memory
/// throw CMemoryException* and then leave the list as it was.
template <class TYPE, class ARG_TYPE = const TYPE&> class CList : public CObject {
public:
    /// \param nBlockSize number of elements that are allocated together.
    explicit CList(INT_PTR nBlockSize = 10) : m_pool(sizeof(Node), nBlockSize) {}
    ~CList() override { RemoveAll(); }

    INT_PTR GetCount() const { return m_nCount; }
    INT_PTR GetSize() const { return m_nCount; }
    BOOL IsEmpty() const { return m_nCount == 0; }

    // The list must not be empty.
    TYPE& GetHead() { return m_pHead->data; }
    const TYPE& GetHead() const { return m_pHead->data; }
    TYPE& GetTail() { return m_pTail->data; }
    const TYPE& GetTail() const { return m_pTail->data; }
    TYPE RemoveHead() { return Take(m_pHead); }
    TYPE RemoveTail() { return Take(m_pTail); }

    POSITION AddHead(ARG_TYPE newElement) { return Link(nullptr, m_pHead, newElement); }
    POSITION AddTail(ARG_TYPE newElement) { return Link(m_pTail, nullptr, newElement); }
    /// Add copies of all elements of a list, which may be this one, in their order.
    void AddHead(CList* pNewList) { AddAll(*pNewList, nullptr); }
    void AddTail(CList* pNewList) { AddAll(*pNewList, GetTailPosition()); }
    void RemoveAll()
    {
        while (m_pHead != nullptr) {
            Node* next = m_pHead->next;
            m_pHead->~Node();
            m_pHead = next;
        }
        m_pTail = nullptr;
        m_nCount = 0;
        m_pool.FreeAll();
    }

    POSITION GetHeadPosition() const { return PositionOf(m_pHead); }
    POSITION GetTailPosition() const { return PositionOf(m_pTail); }
    /// Give the element at a position, and move that to the next or the previous one.
    TYPE& GetNext(POSITION& rPosition) { return Step(rPosition, &Node::next); }
    const TYPE& GetNext(POSITION& rPosition) const { return Step(rPosition, &Node::next); }
    TYPE& GetPrev(POSITION& rPosition) { return Step(rPosition, &Node::previous); }
    const TYPE& GetPrev(POSITION& rPosition) const { return Step(rPosition, &Node::previous); }

    TYPE& GetAt(POSITION position) { return NodeAt(position)->data; }
    const TYPE& GetAt(POSITION position) const { return NodeAt(position)->data; }
    void SetAt(POSITION position, ARG_TYPE newElement) { NodeAt(position)->data = newElement; }
    void RemoveAt(POSITION position) { Remove(NodeAt(position)); }
    /// With null, the first inserts at the head and the second at the tail. \return the position of the new element
    POSITION InsertBefore(POSITION position, ARG_TYPE newElement)
    {
        Node* next = position != nullptr ? NodeAt(position) : m_pHead;
        return Link(next != nullptr ? next->previous : nullptr, next, newElement);
    }
    POSITION InsertAfter(POSITION position, ARG_TYPE newElement)
    {
        Node* previous = position != nullptr ? NodeAt(position) : m_pTail;
        return Link(previous, previous != nullptr ? previous->next : nullptr, newElement);
    }

    /// The first element that CompareElements finds the same, behind \p startAfter or in the whole list; null for none.
    POSITION Find(ARG_TYPE searchValue, POSITION startAfter = nullptr) const
    {
        Node* node = startAfter != nullptr ? NodeAt(startAfter)->next : m_pHead;
        while (node != nullptr && !CompareElements(&node->data, &searchValue))
            node = node->next;
        return PositionOf(node);
    }
    /// The element that has so many before it; null if there are not as many.
    POSITION FindIndex(INT_PTR nIndex) const
    {
        if (nIndex < 0)
            return nullptr;
        Node* node = m_pHead;
        for (; nIndex > 0 && node != nullptr; --nIndex)
            node = node->next;
        return PositionOf(node);
    }

private:
    struct Node {
        Node* previous;
        Node* next;
        TYPE data;
        explicit Node(ARG_TYPE newElement) : data(newElement) {}
    };

    static POSITION PositionOf(Node* node) { return reinterpret_cast<POSITION>(node); }
    static Node* NodeAt(POSITION position)
    {
        ASSERT(position != nullptr);
        return reinterpret_cast<Node*>(position);
    }
    static TYPE& Step(POSITION& position, Node* Node::*link)
    {
        Node* node = NodeAt(position);
        position = PositionOf(node->*link);
        return node->data;
    }
    POSITION Link(Node* previous, Node* next, ARG_TYPE newElement)
    {
        Node* node = AfxMakeElement<Node>(m_pool, newElement);
        node->previous = previous;
        node->next = next;
        (previous != nullptr ? previous->next : m_pHead) = node;
        (next != nullptr ? next->previous : m_pTail) = node;
        ++m_nCount;
        return PositionOf(node);
    }
    void AddAll(CList& list, POSITION after)
    {
        POSITION place = after;
        POSITION from = list.GetHeadPosition();
        INT_PTR added = 0;
        try {
            for (const INT_PTR count = list.m_nCount; added < count; ++added) {
                TYPE& element = list.GetNext(from);
                place = place != nullptr ? InsertAfter(place, element) : AddHead(element);
            }
        } catch (...) {
            for (; added > 0; --added) {
                Node* last = NodeAt(place);
                place = PositionOf(last->previous);
                Remove(last);
            }
            throw;
        }
    }
    void Remove(Node* node)
    {
        (node->previous != nullptr ? node->previous->next : m_pHead) = node->next;
        (node->next != nullptr ? node->next->previous : m_pTail) = node->previous;
        node->~Node();
        m_pool.Return(node);
        --m_nCount;
    }
    TYPE Take(Node* node)
    {
        ASSERT(node != nullptr);
        TYPE data = std::move(node->data);
        Remove(node);
        return data;
    }

    Node* m_pHead = nullptr;
    Node* m_pTail = nullptr;
    INT_PTR m_nCount = 0;
    CElementPool m_pool;
};
