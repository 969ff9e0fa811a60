/// \file
/// A height-balanced tree of the caller's records.
#pragma once

#include <zogbl/export.h>
#include <zogbl/status.h>

#include <afx.h>

/// Which subtree of a node is higher.
constexpr DWORD ZO_AVL_LEFT_HIGHER = 0; ///< the left one, by one level
constexpr DWORD ZO_AVL_BALANCED = 1;
constexpr DWORD ZO_AVL_RIGHT_HIGHER = 2; ///< the right one, by one level

/// A node, made by CZoAvl::AvlNewHeader. A node in a tree belongs to the tree.
struct _tagSZoAVLHHEADER {
    _tagSZoAVLHHEADER* pLeft;  ///< records that compare lower
    _tagSZoAVLHHEADER* pRight; ///< records that compare higher
    DWORD dwBalance;           ///< a ZO_AVL_ value
    void* pUserData;           ///< the record
};
using SZoAVLHHEADER = _tagSZoAVLHHEADER;

/// Orders two records.
/// \return -1 if \p first comes before \p second, 0 if they are equal, 1 if it comes after. CZoAvl::AvlFindNode takes
/// any other number for "not found"; inserting and removing look only at the sign
using ZoAvlCompareProc = int(WINAPI*)(const void* first, const void* second);

/// A balanced tree of records, called user data: pointers that mean nothing to the tree. The caller gives the order:
/// each operation takes the function that compares, which must always be the same one for a tree.
///
/// A derived class says how records are made and destroyed. If it overrides AvlDeleteUserData, it calls AvlFreeTree in
/// its own destructor: in the base's destructor the override no longer exists.
///
///     class CNames : public CZoAvl {
///     public:
///         ~CNames() override { AvlFreeTree(); }
///         void AvlDeleteUserData(void* data) override { delete static_cast<CString*>(data); }
///     };
///
/// Comparison functions are checked with IsBadCodePtr. Nothing is thrown. The number of comparisons for inserting,
/// finding and removing grows with the logarithm of the number of records: at most 28 for a million.
class ZOGBL_API CZoAvl {
public:
    CZoAvl() = default;
    /// Copies share the nodes of their original, but a change through one of them is not seen by the others. Before
    /// they end, all but one must be emptied by assigning an empty tree.
    CZoAvl(const CZoAvl&) = default;
    CZoAvl& operator=(const CZoAvl&) = default;
    virtual ~CZoAvl(); ///< calls AvlFreeTree

    /// Makes a record for a node that is created without one. The base returns null.
    virtual void* AvlNewUserData();
    /// Destroys a record; null is allowed. The base calls no destructor. It frees the memory as AfxFreeMemory does,
    /// which is also behind operator delete in the modules of the suite.
    virtual void AvlDeleteUserData(void* data);

    /// Makes a node that is in no tree. It belongs to the caller until AvlInsertHeader has taken it. A node that was
    /// not taken is freed with its record by AvlFreeBranch.
    /// \param data the record; null: AvlNewUserData makes one
    /// \return null if memory has run out
    SZoAVLHHEADER* AvlNewHeader(void* data);

    /// Inserts a node made by AvlNewHeader. After a failure the tree is unchanged, and the node stays the caller's.
    /// \param existing set to null, or to the equal record that is in the tree
    /// \return
    ///   0
    ///   ZoErrBadCallback  \p compare is no code; \p existing is unchanged
    ///   ZoErrNullOutput   \p existing is null
    ///   ZoErrBadData      \p existing is set to an equal record; or it is set to null, and \p node is null or the tree
    ///                     deeper than any balanced one
    DWORD AvlInsertHeader(SZoAVLHHEADER* node, void** existing, ZoAvlCompareProc compare);

    /// Finds a record equal to that of \p key in the subtree of \p start, which is usually AvlGetRoot.
    /// \return null if there is none, a comparison gives another number than -1, 0 or 1, an argument is null, or
    /// \p compare is no code
    SZoAVLHHEADER* AvlFindNode(SZoAVLHHEADER* start, SZoAVLHHEADER* key, ZoAvlCompareProc compare) const;

    /// Removes the record equal to \p keyData from the tree and destroys it. But if the record's node has two children,
    /// the record stays, and the record before it in the order is removed and destroyed instead; this is prescribed.
    /// Nothing is done if \p keyData is null or \p compare is no code.
    /// \return always FALSE
    BOOL AvlFreeNode(void* keyData, ZoAvlCompareProc compare);

    /// Frees a subtree: left, right, then the node's record, if it has one, and the node. Null is allowed. If it is the
    /// root, the tree is empty then; any other link to it must be cleared by the caller.
    void AvlFreeBranch(SZoAVLHHEADER* branch);
    void AvlFreeTree(); ///< frees all nodes, by AvlFreeBranch of the root

    SZoAVLHHEADER* AvlGetRoot() const { return m_pRoot; } ///< null for an empty tree

protected:
    // A link is the pointer that holds a node: the root, or a pointer of the node above. These operations change it if
    // another node takes the place.

    /// Inserts below a link; see AvlInsertHeader. \param grew set to whether the subtree became higher
    static DWORD AvlInsertInternal(SZoAVLHHEADER*& link, SZoAVLHHEADER* node, void** existing, ZoAvlCompareProc compare,
                                   BOOL& grew);
    /// Takes a record out of the subtree at a link; see AvlFreeNode. \param victim set to the node taken out, which the
    /// caller destroys; null if no record is equal. \return whether the subtree became lower
    static BOOL AvlDeleteInternal(SZoAVLHHEADER*& link, const void* keyData, ZoAvlCompareProc compare,
                                  SZoAVLHHEADER*& victim);
    /// Takes the rightmost node out of the subtree at a link, which must not be empty. \return as above
    static BOOL AvlDescend(SZoAVLHHEADER*& link, SZoAVLHHEADER*& victim);
    /// Restores the balance of a node whose left or right subtree became lower. \return whether the node's own subtree
    /// became lower
    static BOOL AvlBalanceLeft(SZoAVLHHEADER*& link);
    static BOOL AvlBalanceRight(SZoAVLHHEADER*& link);

    SZoAVLHHEADER* m_pRoot = nullptr;

private:
    void FreeHeader(SZoAVLHHEADER* node);
};
