#include <zogbl/avl.h>

#include <common/without_throwing.h>

#include "ground/callback.h"

#include <memory>
#include <new>
#include <utility>

namespace {

using Header = SZoAVLHHEADER;

/// More levels than a balanced tree that fits in memory can have.
constexpr int kMaxDepth = 64;

/// \p child comes up and \p link's node becomes its left or right one. Balances are the caller's affair.
void RotateRight(Header*& link)
{
    Header* node = link;
    Header* child = node->pLeft;
    node->pLeft = std::exchange(child->pRight, node);
    link = child;
}
void RotateLeft(Header*& link)
{
    Header* node = link;
    Header* child = node->pRight;
    node->pRight = std::exchange(child->pLeft, node);
    link = child;
}

/// The grandchild between a node and its child comes up two levels; the node's side that was too high is its left one.
void RotateLeftRight(Header*& link)
{
    Header* node = link;
    Header* child = node->pLeft;
    const DWORD middle = child->pRight->dwBalance;
    RotateLeft(node->pLeft);
    RotateRight(link);
    node->dwBalance = middle == ZO_AVL_LEFT_HIGHER ? ZO_AVL_RIGHT_HIGHER : ZO_AVL_BALANCED;
    child->dwBalance = middle == ZO_AVL_RIGHT_HIGHER ? ZO_AVL_LEFT_HIGHER : ZO_AVL_BALANCED;
    link->dwBalance = ZO_AVL_BALANCED;
}
void RotateRightLeft(Header*& link)
{
    Header* node = link;
    Header* child = node->pRight;
    const DWORD middle = child->pLeft->dwBalance;
    RotateRight(node->pRight);
    RotateLeft(link);
    node->dwBalance = middle == ZO_AVL_RIGHT_HIGHER ? ZO_AVL_LEFT_HIGHER : ZO_AVL_BALANCED;
    child->dwBalance = middle == ZO_AVL_LEFT_HIGHER ? ZO_AVL_RIGHT_HIGHER : ZO_AVL_BALANCED;
    link->dwBalance = ZO_AVL_BALANCED;
}

/// The subtree on one side of a node has become higher. \return whether the node's own has.
bool GrewLeft(Header*& link)
{
    Header* node = link;
    if (node->dwBalance != ZO_AVL_LEFT_HIGHER)
        return --node->dwBalance == ZO_AVL_LEFT_HIGHER;
    if (node->pLeft->dwBalance == ZO_AVL_LEFT_HIGHER) {
        RotateRight(link);
        node->dwBalance = ZO_AVL_BALANCED;
        link->dwBalance = ZO_AVL_BALANCED;
    } else {
        RotateLeftRight(link);
    }
    return false;
}
bool GrewRight(Header*& link)
{
    Header* node = link;
    if (node->dwBalance != ZO_AVL_RIGHT_HIGHER)
        return ++node->dwBalance == ZO_AVL_RIGHT_HIGHER;
    if (node->pRight->dwBalance == ZO_AVL_RIGHT_HIGHER) {
        RotateLeft(link);
        node->dwBalance = ZO_AVL_BALANCED;
        link->dwBalance = ZO_AVL_BALANCED;
    } else {
        RotateRightLeft(link);
    }
    return false;
}

} // namespace

CZoAvl::~CZoAvl() { CZoAvl::AvlFreeTree(); }

void* CZoAvl::AvlNewUserData() { return nullptr; }
void CZoAvl::AvlDeleteUserData(void* data) { ::operator delete(data); }

SZoAVLHHEADER* CZoAvl::AvlNewHeader(void* data)
{
    return ResultOr<CMemoryException>(nullptr, [&]() -> SZoAVLHHEADER* {
        auto node = std::make_unique<Header>(Header{nullptr, nullptr, ZO_AVL_BALANCED, data});
        if (data == nullptr)
            node->pUserData = AvlNewUserData();
        return node.release();
    });
}

// Inserting -----------------------------------------------------------------------------------------------------------

DWORD CZoAvl::AvlInsertHeader(SZoAVLHHEADER* node, void** existing, ZoAvlCompareProc compare)
{
    if (!IsCode(compare))
        return ZoErrBadCallback;
    if (existing == nullptr)
        return ZoErrNullOutput;
    *existing = nullptr;
    if (node == nullptr)
        return ZoErrBadData;
    BOOL grew = FALSE;
    return AvlInsertInternal(m_pRoot, node, existing, compare, grew);
}

DWORD CZoAvl::AvlInsertInternal(SZoAVLHHEADER*& link, SZoAVLHHEADER* node, void** existing, ZoAvlCompareProc compare,
                                BOOL& grew)
{
    grew = FALSE;
    Header** path[kMaxDepth]; // the links on the way down
    int depth = 0;
    Header** place = &link;
    while (Header* present = *place) {
        if (depth == kMaxDepth)
            return ZoErrBadData;
        __builtin_prefetch(present->pLeft); // one of them comes next, and comparing takes its time
        __builtin_prefetch(present->pRight);
        const int order = compare(present->pUserData, node->pUserData);
        if (order == 0) {
            *existing = present->pUserData;
            return ZoErrBadData;
        }
        path[depth++] = place;
        place = order > 0 ? &present->pLeft : &present->pRight;
    }
    *place = node;
    bool higher = true;
    while (higher && depth > 0) { // back up, as far as subtrees have grown
        Header** above = path[--depth];
        higher = place == &(*above)->pLeft ? GrewLeft(*above) : GrewRight(*above);
        place = above;
    }
    grew = higher;
    return ERROR_SUCCESS;
}

// Finding -------------------------------------------------------------------------------------------------------------

SZoAVLHHEADER* CZoAvl::AvlFindNode(SZoAVLHHEADER* start, SZoAVLHHEADER* key, ZoAvlCompareProc compare) const
{
    if (key == nullptr || !IsCode(compare))
        return nullptr;
    const void* wanted = key->pUserData;
    for (Header* node = start; node != nullptr;) {
        const int order = compare(wanted, node->pUserData);
        if (order != -1 && order != 1)
            return order == 0 ? node : nullptr;
        node = order < 0 ? node->pLeft : node->pRight;
    }
    return nullptr;
}

// Removing ------------------------------------------------------------------------------------------------------------

BOOL CZoAvl::AvlFreeNode(void* keyData, ZoAvlCompareProc compare)
{
    if (keyData == nullptr || !IsCode(compare))
        return FALSE;
    Header* victim = nullptr;
    AvlDeleteInternal(m_pRoot, keyData, compare, victim);
    if (victim != nullptr)
        FreeHeader(victim);
    return FALSE; // found or not: see the header
}

BOOL CZoAvl::AvlDeleteInternal(SZoAVLHHEADER*& link, const void* keyData, ZoAvlCompareProc compare,
                               SZoAVLHHEADER*& victim)
{
    victim = nullptr;
    Header* node = link;
    if (node == nullptr)
        return FALSE;
    const int order = compare(keyData, node->pUserData);
    if (order < 0)
        return AvlDeleteInternal(node->pLeft, keyData, compare, victim) && AvlBalanceLeft(link);
    if (order > 0)
        return AvlDeleteInternal(node->pRight, keyData, compare, victim) && AvlBalanceRight(link);
    if (node->pLeft != nullptr && node->pRight != nullptr) // the node stays, and the one before it goes: see the header
        return AvlDescend(node->pLeft, victim) && AvlBalanceLeft(link);
    victim = node;
    link = node->pRight == nullptr ? node->pLeft : node->pRight;
    return TRUE;
}

BOOL CZoAvl::AvlDescend(SZoAVLHHEADER*& link, SZoAVLHHEADER*& victim)
{
    Header* node = link;
    if (node->pRight != nullptr)
        return AvlDescend(node->pRight, victim) && AvlBalanceRight(link);
    victim = node;
    link = node->pLeft;
    return TRUE;
}

BOOL CZoAvl::AvlBalanceLeft(SZoAVLHHEADER*& link)
{
    Header* node = link;
    if (node->dwBalance != ZO_AVL_RIGHT_HIGHER)
        return ++node->dwBalance == ZO_AVL_BALANCED;
    Header* child = node->pRight;
    if (child->dwBalance == ZO_AVL_LEFT_HIGHER) {
        RotateRightLeft(link);
        return TRUE;
    }
    RotateLeft(link);
    const bool wasBalanced = child->dwBalance == ZO_AVL_BALANCED;
    node->dwBalance = wasBalanced ? ZO_AVL_RIGHT_HIGHER : ZO_AVL_BALANCED;
    child->dwBalance = wasBalanced ? ZO_AVL_LEFT_HIGHER : ZO_AVL_BALANCED;
    return !wasBalanced;
}

BOOL CZoAvl::AvlBalanceRight(SZoAVLHHEADER*& link)
{
    Header* node = link;
    if (node->dwBalance != ZO_AVL_LEFT_HIGHER)
        return --node->dwBalance == ZO_AVL_BALANCED;
    Header* child = node->pLeft;
    if (child->dwBalance == ZO_AVL_RIGHT_HIGHER) {
        RotateLeftRight(link);
        return TRUE;
    }
    RotateRight(link);
    const bool wasBalanced = child->dwBalance == ZO_AVL_BALANCED;
    node->dwBalance = wasBalanced ? ZO_AVL_LEFT_HIGHER : ZO_AVL_BALANCED;
    child->dwBalance = wasBalanced ? ZO_AVL_RIGHT_HIGHER : ZO_AVL_BALANCED;
    return !wasBalanced;
}

// Freeing -------------------------------------------------------------------------------------------------------------

void CZoAvl::AvlFreeBranch(SZoAVLHHEADER* branch)
{
    if (branch == m_pRoot)
        m_pRoot = nullptr;
    // The way back up stands in the left links, so that even a tree without any balance needs no deep stack.
    Header* node = branch;
    Header* above = nullptr;
    bool isFirstVisit = true;
    while (node != nullptr) {
        Header* next = isFirstVisit ? std::exchange(node->pLeft, above) : nullptr;
        if (next == nullptr)
            next = std::exchange(node->pRight, nullptr);
        isFirstVisit = next != nullptr;
        if (isFirstVisit) {
            above = std::exchange(node, next);
        } else {
            Header* done = std::exchange(node, node->pLeft);
            FreeHeader(done);
        }
    }
}

void CZoAvl::AvlFreeTree() { AvlFreeBranch(m_pRoot); }

void CZoAvl::FreeHeader(SZoAVLHHEADER* node)
{
    if (node->pUserData != nullptr)
        AvlDeleteUserData(node->pUserData);
    delete node;
}
