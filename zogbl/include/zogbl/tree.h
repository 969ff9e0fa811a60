/// \file
/// A tree whose nodes carry their own links.
#pragma once

#include <zogbl/export.h>
#include <zogbl/status.h>

#include <afx.h>

class CZoTree;

/// Called for a node. \return 0 to go on; anything else ends the operation and becomes its result.
using ZoTreeEnumProc = DWORD(WINAPI*)(CZoTree* node, void* data);
/// Called for two neighbours, \p first before \p second, of a list that is being sorted. It does the moving itself, and
/// sets the parent's first child (CZoTree::SetChild) when it moves that. \return how to go on: a ZO_SORT_ code below.
using ZoTreeSortProc = int(WINAPI*)(CZoTree* first, CZoTree* second, void* data);

/// Places for CZoTree::InsertItem.
constexpr DWORD ZO_INSERT_HEAD = 2;   ///< before all others of the list
constexpr DWORD ZO_INSERT_TAIL = 3;   ///< behind all others of the list
constexpr DWORD ZO_INSERT_BEFORE = 4; ///< just before a node
constexpr DWORD ZO_INSERT_AFTER = 5;  ///< just behind a node

/// What a sort callback returns, for a pair (a, b). Several numbers mean the same to the tree; which one a callback uses
/// is between it and its callers. Any other number ends the sorting and becomes its result.
///
///     0              the same pair again
///     1              end the sorting, result 0
///     2, 3, 9, 10    changed; go on with the node behind b, and the one behind that
///     4, 7           unchanged; likewise
///     5, 6, 8, 11, 12   changed; go on with the node behind a, and the one behind that
constexpr int ZO_SORT_AGAIN = 0;
constexpr int ZO_SORT_STOP = 1;
constexpr int ZO_SORT_CHANGED_PAST_SECOND = 2;
constexpr int ZO_SORT_UNCHANGED = 4;
constexpr int ZO_SORT_CHANGED_PAST_FIRST = 5;

/// A node: an object of this class or a derived one, made with new in a module of the suite. The children of a node are
/// a doubly linked list, whose first one the node points at. A node owns its children and destroys them at its end; it
/// does not take itself out of its own list, so a node that is still linked is destroyed through its parent
/// (FreeChild). A node is destroyed before its children, and these from the first to the last, each with all below it;
/// that takes no more stack for a deep tree, unless a derived destructor frees children itself. While a derived
/// destructor runs, its node's children are still there, and the parents above lead to the node that frees, not to one
/// that is gone.
///
/// The tree sets a parent in one case only, in FreeChild; whoever adds a node calls SetParent, without which FindRoot and
/// EnumPath end there and inserting at a head cannot correct the parent's first child.
///
/// Callbacks are checked with IsBadCodePtr; null is allowed and stands for none. Nothing is thrown.
class ZOGBL_API CZoTree {
public:
    CZoTree() = default; ///< no links, everything 0
    /// Copies take over links, values and data as they are; the children then have two owners, and all but one of them
    /// must give them up (SetChild) before their end.
    CZoTree(const CZoTree&) = default;
    CZoTree& operator=(const CZoTree&) = default;
    virtual ~CZoTree(); ///< FreeChildren

    /// Calls back for null, then for each node from the root down to this one's parent; not for this node.
    /// \return the callback's nonzero result, or 0; ZoErrCycle: the parents lead round in a circle; ZoErrMemoryException.
    /// Before an error there are no calls.
    virtual DWORD EnumPath(ZoTreeEnumProc callback, void* data);

    /// Links \p item, which must be in no list, into that of \p where. Its parent stays as it is. At the head the child
    /// pointer of the old head's parent follows, before a node that of its parent. Where this node itself is the head
    /// or tail that is asked for, \p item is only unlinked, as is prescribed. An item that stands there
    /// already stays.
    /// \param position a ZO_INSERT_ place.
    /// \return 0; ZoErrBadData: \p item or \p where is null, they are the same, or there is no such place.
    virtual DWORD InsertItem(CZoTree* item, CZoTree* where, DWORD position);
    virtual DWORD RemoveItem(CZoTree* node); ///< Does nothing. \return 0

    /// Calls back for each node of this one's list, from its head. The callback may destroy the node it is called for.
    /// A list that is a ring is gone through once; one that leads into a ring has no end. \return the callback's nonzero result, or 0.
    virtual DWORD EnumList(ZoTreeEnumProc callback, void* data);
    /// Goes through this node's list in passes, offering pairs of neighbours to \p callback, until a pass has changed
    /// nothing. The list must have an end.
    /// \param recurse without effect: a list is sorted by itself, its nodes' children with SortChildren.
    /// \return 0, or a number that \p callback returned and that is none of the codes above.
    virtual DWORD SortList(ZoTreeSortProc callback, void* data, BOOL recurse);

    /// Puts \p child, which must be in no list, at the head of the child list and calls back for it. Without a child,
    /// calls back for this node.
    /// \return the callback's result, 0 without one; ZoErrBadData, and nothing done, when \p child is this node or its
    /// first child already.
    virtual DWORD AddOneChild(ZoTreeEnumProc callback, void* data, CZoTree* child);
    /// Calls back for this node; it is for the callback to add the children. \return its result, 0 without one.
    virtual DWORD AddAllChilren(ZoTreeEnumProc callback, void* data);
    /// Takes a child out of the list and destroys it. A node that is not in the list is destroyed all the same. Null and
    /// this node are left alone. \return 0
    virtual DWORD FreeChild(CZoTree* child);
    virtual DWORD FreeChildren();                                    ///< destroys them, the first one first. \return 0
    virtual DWORD EnumChildren(ZoTreeEnumProc callback, void* data); ///< EnumList of the children
    virtual DWORD SortChildren(ZoTreeSortProc callback, void* data, BOOL recurse); ///< SortList of the children

    /// Numbers and a pointer that are the caller's alone. Setters return 0.
    virtual DWORD SetUserType(DWORD type);
    virtual DWORD GetUserType();
    virtual DWORD SetUserFlag(DWORD flag);
    virtual DWORD GetUserFlag();
    virtual DWORD SetUserData(void* data);
    virtual void* GetUserData();

    /// Links, to be set by who moves nodes. Setters return the link before.
    CZoTree* SetParent(CZoTree* parent);
    CZoTree* GetParent() const { return m_pParent; }
    CZoTree* SetNext(CZoTree* next);
    CZoTree* GetNext() const { return m_pNext; }
    CZoTree* SetPrev(CZoTree* prev);
    CZoTree* GetPrev() const { return m_pPrev; }
    CZoTree* SetChild(CZoTree* child);
    CZoTree* GetChild() const { return m_pChild; }

    void SetLevel(DWORD level) { m_dwLevel = level; } ///< the caller's own number
    DWORD GetLevel() const { return m_dwLevel; }

    /// The end of the links: the first node of this one's list, the last one, the topmost parent. \p callback is called
    /// for it before it is returned. Links that lead round in a circle have no end: a node of the circle is returned, the
    /// one before this node if it belongs to the circle, and nobody is called.
    CZoTree* FindHead(ZoTreeEnumProc callback = nullptr, void* data = nullptr);
    CZoTree* FindTail(ZoTreeEnumProc callback = nullptr, void* data = nullptr);
    CZoTree* FindRoot(ZoTreeEnumProc callback = nullptr, void* data = nullptr);

    /// Whether \p node is in this one's list. The list's head does not count, whichever node is asked. FALSE for null.
    BOOL IsSibling(const CZoTree* node);
    /// Whether \p node is a child of this one. FALSE for null.
    BOOL IsChild(const CZoTree* node);

protected:
    virtual void ClearData(); ///< Sets all members to null and 0, and frees nothing.

    CZoTree* m_pParent = nullptr;
    CZoTree* m_pNext = nullptr;
    CZoTree* m_pPrev = nullptr;  ///< null at the head of a list
    CZoTree* m_pChild = nullptr; ///< the first one
    DWORD m_dwLevel = 0;
    DWORD m_dwUserType = 0;
    DWORD m_dwUserFlag = 0;
    void* m_pUserData = nullptr; ///< not owned

private:
    CZoTree* FindEnd(CZoTree* CZoTree::*link, ZoTreeEnumProc callback, void* data);
    CZoTree* Unlink();
    void Destroy(CZoTree* node);
};
