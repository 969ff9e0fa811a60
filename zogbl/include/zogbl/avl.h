/// \file
/// A height-balanced tree of the caller's records.
#pragma once

#include <zogbl/export.h>
#include <zogbl/status.h>

#include <afx.h>

/// How the subtrees of a node stand to each other.
constexpr DWORD ZO_AVL_LEFT_HIGHER = 0; ///< the left one by one level
constexpr DWORD ZO_AVL_BALANCED = 1;
constexpr DWORD ZO_AVL_RIGHT_HIGHER = 2; ///< the right one by one level

/// A node. Nodes are made by CZoAvl::AvlNewHeader; in a tree they belong to it.
struct _tagSZoAVLHHEADER {
    _tagSZoAVLHHEADER* pLeft;  ///< records that compare lower
    _tagSZoAVLHHEADER* pRight; ///< records that compare higher
    DWORD dwBalance;           ///< ZO_AVL_ value
    void* pUserData;           ///< the record
};
using SZoAVLHHEADER = _tagSZoAVLHHEADER;

/// Orders two records: -1 when \p first comes before \p second, 0 when they are equal, 1 when it comes after. Other
/// numbers do for inserting and removing, which look at the sign, but CZoAvl::AvlFindNode takes them for "not found".
using ZoAvlCompareProc = int(WINAPI*)(const void* first, const void* second);

/// A tree of records, called user data: pointers that mean nothing to the tree. The order is the caller's alone; every
/// operation is given the function that compares, and a tree must always be given the same.
///
/// Derive from it to say how records are made and destroyed. A derived class that overrides AvlDeleteUserData calls
/// AvlFreeTree in its own destructor: when the base's destructor does, the override is gone already.
///
///     class CNames : public CZoAvl {
///     public:
///         ~CNames() override { AvlFreeTree(); }
///         void AvlDeleteUserData(void* data) override { delete static_cast<CString*>(data); }
///     };
///
/// Comparison functions are checked with IsBadCodePtr. Nothing is thrown. Inserting, finding and removing take a number
/// of comparisons that grows with the logarithm of the number of records: 28 at most for a million.
class ZOGBL_API CZoAvl {
public:
    CZoAvl() = default;
    /// Copies share the nodes of their original: all but one of them must be emptied, by assigning an empty tree, before
    /// their end, and none of them sees what is done through another one.
    CZoAvl(const CZoAvl&) = default;
    CZoAvl& operator=(const CZoAvl&) = default;
    virtual ~CZoAvl(); ///< AvlFreeTree

    /// Makes a record for a node that is created without one. The base has none to offer and returns null.
    virtual void* AvlNewUserData();
    /// Destroys a record; null is allowed. The base frees memory of the framework's source (AfxAllocMemory, which is also
    /// behind operator new in the modules of the suite), and calls no destructor.
    virtual void AvlDeleteUserData(void* data);

    /// Makes a node that is in no tree yet. It belongs to the caller until AvlInsertHeader has taken it; AvlFreeBranch
    /// frees one that was not taken, with its record.
    /// \param data the record; null asks AvlNewUserData for one.
    /// \return null when memory has run out.
    SZoAVLHHEADER* AvlNewHeader(void* data);

    /// Inserts a node made by AvlNewHeader.
    /// \param existing set to null, or to the equal record that is in the tree already: then the tree is unchanged and
    /// the node still the caller's.
    /// \return 0; ZoErrBadCallback: \p compare is no code; ZoErrNullOutput: \p existing is null; ZoErrBadData: an equal
    /// record is there; or, with \p existing null, \p node is null or the tree deeper than any balanced one.
    DWORD AvlInsertHeader(SZoAVLHHEADER* node, void** existing, ZoAvlCompareProc compare);

    /// Finds a record equal to that of \p key, from \p start downwards, as a rule AvlGetRoot.
    /// \return null when there is none, when a comparison gives another number than -1, 0 or 1, when an argument is null
    /// or \p compare no code.
    SZoAVLHHEADER* AvlFindNode(SZoAVLHHEADER* start, SZoAVLHHEADER* key, ZoAvlCompareProc compare) const;

    /// Removes the record equal to \p keyData from the tree and destroys it, with one exception, which is prescribed:
    /// if that record's node has two children, the record stays and the one before it in order is removed and destroyed
    /// instead. Does nothing when \p keyData is null or \p compare no code.
    /// \return FALSE, whether something was removed or not.
    BOOL AvlFreeNode(void* keyData, ZoAvlCompareProc compare);

    /// Frees a subtree: left, right, then the node's record, if it has one, and the node. Null is allowed. The link that
    /// leads to it is the caller's affair, unless it is the root.
    void AvlFreeBranch(SZoAVLHHEADER* branch);
    void AvlFreeTree(); ///< AvlFreeBranch of the root

    SZoAVLHHEADER* AvlGetRoot() const { return m_pRoot; } ///< null for an empty tree

protected:
    // A link is what holds a node: the root, or one of the pointers of the node above. These operations change it when
    // another node comes to stand there.

    /// Inserts below a link; see AvlInsertHeader. \param grew set to whether the subtree became higher.
    static DWORD AvlInsertInternal(SZoAVLHHEADER*& link, SZoAVLHHEADER* node, void** existing, ZoAvlCompareProc compare,
                                   BOOL& grew);
    /// Takes a record out of the subtree at a link; see AvlFreeNode. \param victim the node taken out, which the caller
    /// destroys; null when no record is equal. \return whether the subtree became lower.
    static BOOL AvlDeleteInternal(SZoAVLHHEADER*& link, const void* keyData, ZoAvlCompareProc compare,
                                  SZoAVLHHEADER*& victim);
    /// Takes the rightmost node out of the subtree at a link, which must not be empty. \return as above.
    static BOOL AvlDescend(SZoAVLHHEADER*& link, SZoAVLHHEADER*& victim);
    /// Restores the balance of a node whose left or right subtree became lower. \return whether the node's own subtree
    /// became lower by it.
    static BOOL AvlBalanceLeft(SZoAVLHHEADER*& link);
    static BOOL AvlBalanceRight(SZoAVLHHEADER*& link);

    SZoAVLHHEADER* m_pRoot = nullptr;

private:
    void FreeHeader(SZoAVLHHEADER* node);
};
