/// \file
/// Positions in an array of pointers: the index of the element to come next, counted from 1.
#pragma once

#include <afxcoll.h>

inline POSITION FirstPosition(const CPtrArray& array)
{
    return array.IsEmpty() ? nullptr : reinterpret_cast<POSITION>(INT_PTR{1});
}

/// The element at \p position, which is then moved on; null behind the last one.
inline void* NextElement(const CPtrArray& array, POSITION& position)
{
    const INT_PTR next = reinterpret_cast<INT_PTR>(position);
    position = next < array.GetSize() ? reinterpret_cast<POSITION>(next + 1) : nullptr;
    return array[next - 1];
}

/// Takes the element out of the array, if it is in it.
inline void RemoveElement(CPtrArray& array, const void* element)
{
    for (INT_PTR i = 0; i < array.GetSize(); ++i) {
        if (array[i] == element) {
            array.RemoveAt(i);
            return;
        }
    }
}
