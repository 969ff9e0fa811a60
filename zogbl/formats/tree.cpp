#include <zogbl/tree.h>

#include <common/without_throwing.h>

#include "ground/callback.h"

#include <afxcoll.h>

#include <utility>

namespace {

/// Notices when a walk along links goes round in a circle, wherever that begins.
class CircleWatch {
public:
    explicit CircleWatch(const CZoTree* start) : m_start(start), m_mark(start) {}

    /// To be asked for each node that comes next.
    bool IsClosedBy(const CZoTree* next)
    {
        if (next == m_start || next == m_mark)
            return true;
        if (++m_steps == m_limit) { // a circle that lies ahead holds the mark some day, and is shorter than the limit
            m_mark = next;
            m_steps = 0;
            m_limit *= 2;
        }
        return false;
    }

private:
    const CZoTree* m_start;
    const CZoTree* m_mark;
    size_t m_steps = 0;
    size_t m_limit = 2;
};

DWORD CallBack(ZoTreeEnumProc callback, CZoTree* node, void* data)
{
    return IsCode(callback) ? callback(node, data) : ERROR_SUCCESS;
}

CZoTree* NextOf(const CZoTree* node) { return node != nullptr ? node->GetNext() : nullptr; }

/// A node that is being destroyed with all below it. Its children, and theirs in turn, do not wait on the stack, which
/// would have to be as deep as the tree: each destructor leaves its node's children here.
struct Destruction {
    CZoTree* node;    ///< whose destructor runs
    CZoTree* waiting; ///< first of the list to be destroyed next; its parent is the first of the list after that one
};

thread_local Destruction* t_destruction = nullptr; // the innermost one

} // namespace

CZoTree::~CZoTree()
{
    if (m_pChild == nullptr || m_pChild == this)
        return;
    Destruction* destruction = t_destruction;
    if (destruction == nullptr || destruction->node != this) {
        CZoTree::FreeChildren();
        return;
    }
    m_pChild->m_pParent = std::exchange(destruction->waiting, m_pChild);
}

// Walks ---------------------------------------------------------------------------------------------------------------

CZoTree* CZoTree::FindEnd(CZoTree* CZoTree::*link, ZoTreeEnumProc callback, void* data)
{
    CZoTree* node = this;
    CircleWatch watch(this);
    while (CZoTree* next = node->*link) {
        if (watch.IsClosedBy(next))
            return node;
        node = next;
    }
    CallBack(callback, node, data);
    return node;
}

CZoTree* CZoTree::FindHead(ZoTreeEnumProc callback, void* data) { return FindEnd(&CZoTree::m_pPrev, callback, data); }
CZoTree* CZoTree::FindTail(ZoTreeEnumProc callback, void* data) { return FindEnd(&CZoTree::m_pNext, callback, data); }
CZoTree* CZoTree::FindRoot(ZoTreeEnumProc callback, void* data) { return FindEnd(&CZoTree::m_pParent, callback, data); }

BOOL CZoTree::IsSibling(const CZoTree* node)
{
    const CZoTree* head = FindHead();
    CircleWatch watch(head);
    for (const CZoTree* other = head->m_pNext; other != nullptr && !watch.IsClosedBy(other); other = other->m_pNext) {
        if (other == node)
            return TRUE;
    }
    return FALSE;
}

BOOL CZoTree::IsChild(const CZoTree* node)
{
    return node != nullptr && m_pChild != nullptr && (node == m_pChild || m_pChild->IsSibling(node));
}

DWORD CZoTree::EnumPath(ZoTreeEnumProc callback, void* data)
{
    CPtrArray path;
    DWORD result = ResultOr(ZoErrMemoryException, [&]() -> DWORD {
        CircleWatch watch(this);
        for (CZoTree* node = m_pParent; node != nullptr; node = node->m_pParent) {
            if (watch.IsClosedBy(node))
                return ZoErrCycle;
            path.Add(node);
        }
        path.Add(nullptr);
        return ERROR_SUCCESS;
    });
    if (result != ERROR_SUCCESS)
        return result;
    for (auto i = path.GetSize() - 1; i >= 0 && result == ERROR_SUCCESS; --i)
        result = CallBack(callback, static_cast<CZoTree*>(path.GetAt(i)), data);
    return result;
}

DWORD CZoTree::EnumList(ZoTreeEnumProc callback, void* data)
{
    if (!IsCode(callback))
        return ERROR_SUCCESS;
    CZoTree* const head = FindHead();
    CZoTree* node = head;
    DWORD result = ERROR_SUCCESS;
    do {
        CZoTree* next = node->m_pNext; // before the callback, which may destroy the node
        result = callback(node, data);
        node = next;
    } while (result == ERROR_SUCCESS && node != nullptr && node != head);
    return result;
}

DWORD CZoTree::EnumChildren(ZoTreeEnumProc callback, void* data)
{
    return m_pChild != nullptr ? m_pChild->EnumList(callback, data) : ERROR_SUCCESS;
}

// Sorting -------------------------------------------------------------------------------------------------------------

DWORD CZoTree::SortList(ZoTreeSortProc callback, void* data, BOOL)
{
    if (!IsCode(callback))
        return ERROR_SUCCESS;
    bool changed = true;
    while (changed) {
        changed = false;
        CZoTree* first = FindHead();
        CZoTree* second = first->m_pNext;
        while (second != nullptr) {
            const int code = callback(first, second, data);
            switch (code) {
            case ZO_SORT_AGAIN:
                break;
            case ZO_SORT_STOP:
                return ERROR_SUCCESS;
            case ZO_SORT_CHANGED_PAST_SECOND:
            case 3:
            case 9:
            case 10:
                changed = true;
                [[fallthrough]];
            case ZO_SORT_UNCHANGED:
            case 7:
                first = second->m_pNext;
                second = NextOf(first);
                break;
            case ZO_SORT_CHANGED_PAST_FIRST:
            case 6:
            case 8:
            case 11:
            case 12:
                changed = true;
                first = first->m_pNext;
                second = NextOf(first);
                break;
            default:
                return static_cast<DWORD>(code);
            }
        }
    }
    return ERROR_SUCCESS;
}

DWORD CZoTree::SortChildren(ZoTreeSortProc callback, void* data, BOOL recurse)
{
    return m_pChild != nullptr ? m_pChild->SortList(callback, data, recurse) : ERROR_SUCCESS;
}

// Adding and freeing --------------------------------------------------------------------------------------------------

DWORD CZoTree::InsertItem(CZoTree* item, CZoTree* where, DWORD position)
{
    if (item == nullptr || where == nullptr || item == where)
        return ZoErrBadData;
    CZoTree* before = nullptr; // its neighbours to be
    CZoTree* after = nullptr;
    switch (position) {
    case ZO_INSERT_HEAD:
        after = where->FindHead();
        if (after == this)
            after = nullptr; // unlinked only, see the header
        break;
    case ZO_INSERT_TAIL:
        before = where->FindTail();
        if (before == this)
            before = nullptr;
        break;
    case ZO_INSERT_BEFORE:
        before = where->m_pPrev;
        after = where;
        break;
    case ZO_INSERT_AFTER:
        before = where;
        after = where->m_pNext;
        break;
    default:
        return ZoErrBadData;
    }
    if (before == item || after == item)
        return ERROR_SUCCESS;
    item->m_pPrev = before;
    item->m_pNext = after;
    if (before != nullptr)
        before->m_pNext = item;
    if (after != nullptr) {
        after->m_pPrev = item;
        CZoTree* parent = after->m_pParent;
        if (parent != nullptr && (position == ZO_INSERT_HEAD || parent->m_pChild == after))
            parent->m_pChild = item;
    }
    return ERROR_SUCCESS;
}

DWORD CZoTree::RemoveItem(CZoTree*) { return ERROR_SUCCESS; }

DWORD CZoTree::AddOneChild(ZoTreeEnumProc callback, void* data, CZoTree* child)
{
    if (child == nullptr)
        return CallBack(callback, this, data);
    if (child == this || child == m_pChild)
        return ZoErrBadData;
    child->m_pPrev = nullptr;
    child->m_pNext = m_pChild;
    if (m_pChild != nullptr)
        m_pChild->m_pPrev = child;
    m_pChild = child;
    return CallBack(callback, child, data);
}

DWORD CZoTree::AddAllChilren(ZoTreeEnumProc callback, void* data) { return CallBack(callback, this, data); }

/// Takes this node out of its list. \return the node behind it
CZoTree* CZoTree::Unlink()
{
    CZoTree* next = m_pNext != this ? m_pNext : nullptr; // the last of a ring is linked to itself
    if (next != nullptr)
        next->m_pPrev = m_pPrev;
    if (m_pPrev != nullptr)
        m_pPrev->m_pNext = next;
    return next;
}

/// Destroys a node, which is in no list, and all below it. Parents lead to this node meanwhile, and never to one that
/// is destroyed already.
void CZoTree::Destroy(CZoTree* node)
{
    Destruction destruction = {node, this};
    Destruction* const outer = std::exchange(t_destruction, &destruction);
    delete node;
    while (destruction.waiting != this) {
        CZoTree* child = destruction.waiting;
        CZoTree* afterwards = std::exchange(child->m_pParent, this);
        destruction.waiting = child->Unlink();
        if (destruction.waiting != nullptr)
            destruction.waiting->m_pParent = afterwards;
        else
            destruction.waiting = afterwards;
        destruction.node = child;
        delete child;
    }
    t_destruction = outer;
}

DWORD CZoTree::FreeChild(CZoTree* child)
{
    if (child == nullptr || child == this)
        return ERROR_SUCCESS;
    if (m_pChild != nullptr && (IsChild(child) || m_pChild->FindHead() == child)) {
        CZoTree* next = child->Unlink();
        if (child == m_pChild) {
            m_pChild = next;
            if (next != nullptr)
                next->m_pParent = this;
        }
    }
    Destroy(child);
    return ERROR_SUCCESS;
}

DWORD CZoTree::FreeChildren()
{
    while (m_pChild != nullptr && m_pChild != this)
        CZoTree::FreeChild(m_pChild);
    return ERROR_SUCCESS;
}

// Values --------------------------------------------------------------------------------------------------------------

DWORD CZoTree::SetUserType(DWORD type)
{
    m_dwUserType = type;
    return ERROR_SUCCESS;
}
DWORD CZoTree::GetUserType() { return m_dwUserType; }

DWORD CZoTree::SetUserFlag(DWORD flag)
{
    m_dwUserFlag = flag;
    return ERROR_SUCCESS;
}
DWORD CZoTree::GetUserFlag() { return m_dwUserFlag; }

DWORD CZoTree::SetUserData(void* data)
{
    m_pUserData = data;
    return ERROR_SUCCESS;
}
void* CZoTree::GetUserData() { return m_pUserData; }

CZoTree* CZoTree::SetParent(CZoTree* parent) { return std::exchange(m_pParent, parent); }
CZoTree* CZoTree::SetNext(CZoTree* next) { return std::exchange(m_pNext, next); }
CZoTree* CZoTree::SetPrev(CZoTree* prev) { return std::exchange(m_pPrev, prev); }
CZoTree* CZoTree::SetChild(CZoTree* child) { return std::exchange(m_pChild, child); }

void CZoTree::ClearData()
{
    m_pParent = nullptr;
    m_pNext = nullptr;
    m_pPrev = nullptr;
    m_pChild = nullptr;
    m_dwLevel = 0;
    m_dwUserType = 0;
    m_dwUserFlag = 0;
    m_pUserData = nullptr;
}
