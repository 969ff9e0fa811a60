/// \file
/// A tree whose nodes carry their own links.
#pragma once

#include <zogbl/export.h>
#include <zogbl/status.h>

#include <afx.h>

class CZoTree;

/// Called for a node. \return 0 to go on; any other value ends the operation and becomes its result
using ZoTreeEnumProc = DWORD(WINAPI*)(CZoTree* node, void* data);
/// Called for two neighbours of a list that is being sorted, \p first before \p second. The callback moves the nodes
/// itself. If it moves the parent's first child, it also sets that link (CZoTree::SetChild). \return how to go on: a
/// ZO_SORT_ code below
using ZoTreeSortProc = int(WINAPI*)(CZoTree* first, CZoTree* second, void* data);

/// Places for CZoTree::InsertItem.
constexpr DWORD ZO_INSERT_HEAD = 2;   ///< before all others of the list
constexpr DWORD ZO_INSERT_TAIL = 3;   ///< behind all others of the list
constexpr DWORD ZO_INSERT_BEFORE = 4; ///< just before a node
constexpr DWORD ZO_INSERT_AFTER = 5;  ///< just behind a node

/// Results of a sort callback for a pair (a, b). Several numbers mean the same to the tree; a callback may use them to
/// tell its callers more. Any other number ends the sorting and becomes its result.
///
///   0                the same pair again
///   1                end the sorting, result 0
///   2, 3, 9, 10      changed; go on with the node behind b and the one behind that
///   4, 7             unchanged; go on with the node behind b and the one behind that
///   5, 6, 8, 11, 12  changed; go on with the node behind a and the one behind that
constexpr int ZO_SORT_AGAIN = 0;
constexpr int ZO_SORT_STOP = 1;
constexpr int ZO_SORT_CHANGED_PAST_SECOND = 2;
constexpr int ZO_SORT_UNCHANGED = 4;
constexpr int ZO_SORT_CHANGED_PAST_FIRST = 5;

/// A node of a tree: an object of this class or a derived one, made with new in a module of the suite. It carries its
/// own links: the node points at its first child, and its children are a doubly linked list.
///
/// A node owns its children and destroys them at its end. It does not take itself out of its own list, so destroy a
/// linked node through its parent (FreeChild). The node is destroyed before its children; these go from the first to
/// the last, each with everything below it. A deep tree takes no more stack for this, unless a derived destructor frees
/// children itself. While a derived destructor runs, its node's children still exist, and its parent links lead up to
/// the node whose children are being freed; none leads to a destroyed node.
///
/// The tree sets a parent only in FreeChild. Whoever adds a node calls SetParent. Otherwise FindRoot and EnumPath end
/// at that node, and inserting at a head cannot correct the parent's first child.
///
/// Callbacks are checked with IsBadCodePtr; null is allowed and stands for no callback. Nothing is thrown.
class ZOGBL_API CZoTree {
public:
    CZoTree() = default; ///< no links, everything 0
    /// A copy has the same links, values and data. Both then own the children. Before they are destroyed, call
    /// SetChild(nullptr) on all copies but one.
    CZoTree(const CZoTree&) = default;
    CZoTree& operator=(const CZoTree&) = default;
    virtual ~CZoTree(); ///< FreeChildren

    /// Calls back for null, then for each node from the root down to this node's parent; not for this node.
    /// \return 0 or the callback's nonzero result. Without any call: ZoErrCycle if the parents lead round in a circle,
    /// or ZoErrMemoryException.
    virtual DWORD EnumPath(ZoTreeEnumProc callback, void* data);

    /// Links \p item, which must be in no list, into the list of \p where. The parent link of \p item is not changed.
    ///   - ZO_INSERT_HEAD: \p item becomes the first child of the old head's parent.
    ///   - Before the first child of a parent: \p item becomes the first child.
    ///   - ZO_INSERT_HEAD, ZO_INSERT_TAIL: if the head (tail) of that list is this node, the one whose InsertItem is
    ///     called, \p item is not inserted: its next and previous links become null. Prescribed.
    ///   - If \p item is already at that place, nothing changes.
    /// \param position a ZO_INSERT_ place
    /// \return 0; ZoErrBadData if \p item or \p where is null, they are the same, or there is no such place
    virtual DWORD InsertItem(CZoTree* item, CZoTree* where, DWORD position);
    virtual DWORD RemoveItem(CZoTree* node); ///< Does nothing. \return 0

    /// Calls back for each node of this node's list, from its head. The callback may destroy its node. A list that is a
    /// ring is walked once; a list that leads into a ring has no end. \return 0, or the callback's nonzero result
    virtual DWORD EnumList(ZoTreeEnumProc callback, void* data);
    /// Walks through this node's list and gives pairs of neighbours to \p callback, again and again until a walk has
    /// changed nothing. The list must have an end.
    /// \param recurse has no effect: only this list is sorted; sort the children of its nodes with SortChildren
    /// \return 0, or a number from \p callback that is none of the codes above
    virtual DWORD SortList(ZoTreeSortProc callback, void* data, BOOL recurse);

    /// Puts \p child, which must be in no list, at the head of the child list and calls back for it. Null: calls back
    /// for this node.
    /// \return the callback's result, 0 without a callback; ZoErrBadData, with nothing done, if \p child is this node
    /// or already its first child
    virtual DWORD AddOneChild(ZoTreeEnumProc callback, void* data, CZoTree* child);
    /// Calls back for this node; the callback adds the children. (The spelling is prescribed.)
    /// \return the callback's result, 0 without a callback
    virtual DWORD AddAllChilren(ZoTreeEnumProc callback, void* data);
    /// Takes a child out of the list and destroys it. A node that is not in the list is destroyed, too. Null and this
    /// node stay as they are. \return 0
    virtual DWORD FreeChild(CZoTree* child);
    virtual DWORD FreeChildren();                                    ///< destroys them, the first one first. \return 0
    virtual DWORD EnumChildren(ZoTreeEnumProc callback, void* data); ///< EnumList of the children
    virtual DWORD SortChildren(ZoTreeSortProc callback, void* data, BOOL recurse); ///< SortList of the children

    /// Numbers and a pointer for the caller only. Setters return 0.
    virtual DWORD SetUserType(DWORD type);
    virtual DWORD GetUserType();
    virtual DWORD SetUserFlag(DWORD flag);
    virtual DWORD GetUserFlag();
    virtual DWORD SetUserData(void* data);
    virtual void* GetUserData();

    /// Links; whoever moves nodes sets them. Setters return the link before.
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

    /// The end of the links: the first node of this node's list, the last one, the topmost parent. \p callback is
    /// called for it before the return. If the links lead round in a circle, there is no end: \p callback is not
    /// called, and the result is a node of the circle: if this node is in it, the one whose link leads to this node.
    CZoTree* FindHead(ZoTreeEnumProc callback = nullptr, void* data = nullptr);
    CZoTree* FindTail(ZoTreeEnumProc callback = nullptr, void* data = nullptr);
    CZoTree* FindRoot(ZoTreeEnumProc callback = nullptr, void* data = nullptr);

    /// Whether \p node is in this node's list. FALSE for null, and FALSE also if \p node is the head of the list.
    BOOL IsSibling(const CZoTree* node);
    /// Whether \p node is a child of this node. FALSE for null.
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
